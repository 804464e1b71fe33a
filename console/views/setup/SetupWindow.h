#pragma once

#include "console/setup/SetupBox.h"
#include "console/views/setup/LinesPane.h"

class QLineEdit;
class QListWidget;
class QStackedWidget;

namespace nordkeep {

/// The window of the set-up: pages on the left, a search over all of them, the fields of one on the right.
class SetupWindow final : public QDialog, public WindowView {
 public:
    SetupWindow(SetupBox& box, const Captions& captions, QWidget* parent = nullptr);

    void Show(OpenedBy by) override;
    void Refresh() override;
    void Close() override { hide(); }

 protected:
    void reject() override;
    void closeEvent(QCloseEvent* event) override;

 private:
    QWidget* NewLeft();
    QWidget* NewRight();
    void AddKeys();
    void ShowPages();

    SetupBox& box_;
    const Captions& captions_;
    QLineEdit* search_ = nullptr;
    QListWidget* pages_ = nullptr;
    QStackedWidget* sides_ = nullptr;
    LinesPane* lines_ = nullptr;
    FieldPane* fields_ = nullptr;
    NoticeBar* notice_ = nullptr;
    QPushButton* revert_ = nullptr;
    QPushButton* apply_ = nullptr;
};

}  // namespace nordkeep
