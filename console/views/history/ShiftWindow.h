#pragma once

#include "console/history/ShiftBox.h"
#include "console/views/lists/ViewParts.h"

class QPlainTextEdit;
class QSpinBox;
class QTreeWidget;

namespace nordkeep {

/// What one shift tells the next.
class ShiftWindow final : public QDialog, public WindowView {
 public:
    explicit ShiftWindow(ShiftBox& shift, QWidget* parent = nullptr);
    ~ShiftWindow() override { shift_.SetView(nullptr); }

    void Show(OpenedBy by) override;
    void Refresh() override;
    void Close() override { hide(); }

 private:
    void FillList();

    ShiftBox& shift_;
    QTreeWidget* list_ = nullptr;
    QSpinBox* hours_ = nullptr;
    QPlainTextEdit* note_ = nullptr;
    NoticeBar* notice_ = nullptr;
    QPushButton* sign_ = nullptr;
};

}  // namespace nordkeep
