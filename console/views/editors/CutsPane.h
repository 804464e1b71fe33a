#pragma once

#include "console/editors/SetsBox.h"

#include <QtWidgets/QWidget>

namespace nordkeep {

/// A telegram with its parts marked and named, in the order in which they stand there.
class CutsPane final : public QWidget {
 public:
    explicit CutsPane(const SetsBox& sets);

    void Renew();

 protected:
    void paintEvent(QPaintEvent* event) override;

 private:
    const SetsBox& sets_;
};

}  // namespace nordkeep
