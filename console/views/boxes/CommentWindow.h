#pragma once

#include "console/boxes/CommentBox.h"
#include "console/views/lists/ViewParts.h"

class QComboBox;
class QLineEdit;
class QListWidget;
class QTableWidget;

namespace nordkeep {

/// The window of the comment sheet.
class CommentWindow final : public QDialog, public WindowView {
 public:
    CommentWindow(CommentBox& sheet, const Captions& captions, QWidget* parent = nullptr);

    void Show(OpenedBy by) override;
    void Refresh() override;
    void Close() override { hide(); }

 protected:
    void closeEvent(QCloseEvent* event) override;
    /// Esc; drops nothing that has been typed.
    void reject() override { sheet_.CloseIfUntouched(); }

 private:
    QLayout* NewHeader();
    QWidget* NewKnowledge();
    QWidget* NewComments();
    QWidget* NewSending();
    QLayout* NewButtons();
    void ConnectAll();
    void ShowInformation();
    void ShowOtherAlarms();
    void ShowReceivers();
    void ShowSmallComment();
    void ShowControls();

    CommentBox& sheet_;
    const Captions& captions_;
    QLabel* object_ = nullptr;
    QLabel* alarm_ = nullptr;
    Chip* status_ = nullptr;
    NoticeBar* notice_ = nullptr;
    QPlainTextEdit* information_ = nullptr;
    QTableWidget* form_ = nullptr;
    QWidget* typeCodePart_ = nullptr;
    QPlainTextEdit* typeCodeInfo_ = nullptr;
    QWidget* otherPart_ = nullptr;
    QListWidget* otherAlarms_ = nullptr;
    QPlainTextEdit* oldComments_ = nullptr;
    QPlainTextEdit* newComments_ = nullptr;
    QWidget* smallPart_ = nullptr;
    QLineEdit* smallComment_ = nullptr;
    QLabel* smallCount_ = nullptr;
    QWidget* sending_ = nullptr;
    QComboBox* receivers_ = nullptr;
    QPushButton* send_ = nullptr;
    QPushButton* end_ = nullptr;
    QPushButton* printLog_ = nullptr;
    QPushButton* printInfo_ = nullptr;
    QPushButton* map_ = nullptr;
    QPushButton* cancel_ = nullptr;
    QPushButton* save_ = nullptr;
};

}  // namespace nordkeep
