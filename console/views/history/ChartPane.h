#pragma once

#include "console/print/Chart.h"

#include <QtWidgets/QWidget>

namespace nordkeep {

/// A chart on the screen, in the colours of the window.
class ChartPane final : public QWidget {
 public:
    explicit ChartPane(QWidget* parent = nullptr);
    void Show(const Chart& chart);
    QSize sizeHint() const override;

 protected:
    void paintEvent(QPaintEvent* event) override;

 private:
    Chart chart_{};
};

}  // namespace nordkeep
