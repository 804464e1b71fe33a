#pragma once

#include "console/boxes/CommentBox.h"
#include "console/views/boxes/InformationTable.h"
#include "console/views/lists/ViewParts.h"

class QBoxLayout;
class QComboBox;
class QLineEdit;
class QListWidget;
class QShortcut;
class QSplitter;

namespace nordkeep {

inline constexpr int kSheetWidth = 940;  // px
inline constexpr int kSheetHeight = 640;

/// The window of the comment sheet.
class CommentWindow final : public QDialog, public WindowView {
 public:
    CommentWindow(CommentBox& sheet, const Captions& captions, QWidget* parent = nullptr);

    void Show(OpenedBy by) override;
    void Refresh() override;
    void Close() override { onHide(); }

    /// One column that fits beside a list, or the two of a window.
    void SetNarrow(bool isNarrow);
    /// How the sheet comes and goes, as long as something else than itself shows it.
    std::function<void(bool takesFocus)> onShow = [this](bool takesFocus) {
        BringToFront(*this, takesFocus);
    };
    std::function<void()> onHide = [this] { hide(); };
    /// The operator wants it beside the list, or in a window of its own.
    std::function<void()> onMove = [] {};

 protected:
    void closeEvent(QCloseEvent* event) override;
    /// Esc; drops nothing that has been typed.
    void reject() override { sheet_.CloseIfUntouched(); }

 private:
    void AddKeys();
    QLayout* NewHeader();
    QLayout* NewAids();
    QWidget* NewSteps();
    void ShowSteps();
    void FitSteps();
    void Insert(const QString& text);
    void PopUpPhrases();
    void PopUpPhones(bool isToCall);
    void Call(const PhoneNumber& phone);
    void TellOfLink(const Text& value, bool isOpened);
    QWidget* NewKnowledge();
    QWidget* NewComments();
    QWidget* NewSending();
    QLayout* NewButtons();
    void ConnectAll();
    void ConnectAids();
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
    InformationTable* form_ = nullptr;
    QSplitter* columns_ = nullptr;
    QBoxLayout* header_ = nullptr;
    QBoxLayout* buttonRows_ = nullptr;
    QWidget* stepPart_ = nullptr;
    QListWidget* steps_ = nullptr;
    QPushButton* stamp_ = nullptr;
    QPushButton* phrases_ = nullptr;
    QPushButton* phones_ = nullptr;
    QPushButton* move_ = nullptr;
    QShortcut* moveKey_ = nullptr;  // beside the list it is the main window's
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
    std::vector<std::pair<QPushButton*, int>> captionsOfButtons_{};
};

}  // namespace nordkeep
