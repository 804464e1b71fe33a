#pragma once

#include "console/views/lists/ViewParts.h"
#include "runtime/Findings.h"

#include <functional>

class QTableWidget;

namespace nordkeep {

/// What the check of the centre's files has found, for reading; a row leads to its place.
class FindingsWindow final : public QDialog {
 public:
    using Opener = std::function<void(const Finding&)>;
    FindingsWindow(std::vector<Finding> findings, const QString& title, const Captions& captions, Opener open,
                   QWidget* parent = nullptr);

 private:
    void Fill();

    std::vector<Finding> findings_;
    Opener open_;
    QTableWidget* table_ = nullptr;
};

}  // namespace nordkeep
