#include "console/views/boxes/EditorWindow.h"

#include "console/lists/SharedCaptions.h"
#include "platform/qt/QtText.h"

#include <QtCore/QSignalBlocker>
#include <QtCore/QTimer>
#include <QtGui/QCloseEvent>
#include <QtGui/QFontDatabase>
#include <QtGui/QShortcut>
#include <QtGui/QTextBlock>
#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QListWidget>

namespace nordkeep {
namespace {

constexpr int kCaptionFaults = 3862;
constexpr int kCaptionFault = 4932;
constexpr int kCheckMs = 300;  // behind the last key
constexpr int kMostRows = 4;

}  // namespace

EditorWindow::EditorWindow(EditorBox& editor, const Captions& captions, QWidget* parent)
    : QDialog(parent), editor_(editor), captions_(captions) {
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    setModal(false);
    text_ = new QPlainTextEdit;
    text_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    text_->setLineWrapMode(QPlainTextEdit::NoWrap);
    notice_ = new NoticeBar;
    save_ = NewButton(captions, kCaptionSave);
    auto* close = NewButton(captions, kCaptionBack);
    save_->setToolTip(QKeySequence(Qt::CTRL | Qt::Key_S).toString(QKeySequence::NativeText));
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(save_);
    buttons->addWidget(close);
    auto* layout = new QVBoxLayout(this);
    AddFaults();
    layout->addWidget(text_, 1);
    layout->addWidget(faults_);
    layout->addWidget(notice_);
    layout->addLayout(buttons);
    connect(text_, &QPlainTextEdit::textChanged, this, [this] {
        editor_.Type(TypedText(text_->toPlainText()));
        checkTimer_->start(kCheckMs);
        notice_->SetNotice({});
        save_->setEnabled(editor_.MaySave() && editor_.IsChanged());
    });
    connect(save_, &QPushButton::clicked, this, [this] { editor_.Save(); });
    connect(close, &QPushButton::clicked, this, [this] { editor_.Close(); });
    connect(new QShortcut(Qt::CTRL | Qt::Key_S, this), &QShortcut::activated, this,
            [this] { editor_.Save(); });
    resize(760, 560);
}

void EditorWindow::Show(OpenedBy by) {
    setWindowTitle(ShownLine(editor_.Title()));
    text_->setAccessibleName(windowTitle());
    if (shownGeneration_ != editor_.Generation()) {
        shownGeneration_ = editor_.Generation();
        const QSignalBlocker silence(text_);
        // Every character as it is, since all of them are written back.
        text_->setPlainText(ToQString(editor_.Typed()).replace(QLatin1String("\r\n"), QLatin1String("\n")));
    }
    if (const int line = editor_.TakeLine(); line > 0) {
        GoTo(line);
    }
    Refresh();
    BringToFront(*this, by == OpenedBy::Operator);
    text_->setFocus();
}

// The same that the check of the centre says, while somebody types.
void EditorWindow::AddFaults() {
    faults_ = new QListWidget;
    faults_->setAccessibleName(PlainCaption(captions_, kCaptionFaults).remove(QStringLiteral(" (%1)")));
    const int row = faults_->fontMetrics().height() + 4;
    faults_->setFixedHeight(kMostRows * row + 4);
    connect(faults_, &QListWidget::itemActivated, this, [this](QListWidgetItem* item) {
        GoTo(item->data(Qt::UserRole).toInt());
        text_->setFocus();
    });
    checkTimer_ = new QTimer(this);
    checkTimer_->setSingleShot(true);
    connect(checkTimer_, &QTimer::timeout, this, [this] {
        if (editor_.CheckOn()) checkTimer_->start(0);
    });
}

void EditorWindow::GoTo(int line) {
    text_->setTextCursor(QTextCursor(text_->document()->findBlockByNumber(qMax(line, 1) - 1)));
    text_->centerCursor();
}

void EditorWindow::ShowFaults() {
    const auto& found = editor_.Faults();
    faults_->clear();
    for (const Finding& finding : found) {
        const Text line = std::to_string(finding.line);
        auto* item = new QListWidgetItem(ShownLine(captions_(kCaptionFault, {line, finding.sentence})));
        QFont font = item->font();
        font.setBold(finding.severity == Severity::Error);
        item->setFont(font);
        item->setToolTip(ToolTipText(item->text()));
        item->setData(Qt::UserRole, finding.line);
        faults_->addItem(item);
    }
    faults_->setVisible(!found.empty());
}

void EditorWindow::Refresh() {
    ShowFaults();
    notice_->SetNotice(ShownText(editor_.Notice().text), editor_.Notice().isGood);
    text_->setReadOnly(!editor_.MaySave());
    save_->setEnabled(editor_.MaySave() && editor_.IsChanged());
}

void EditorWindow::closeEvent(QCloseEvent* event) {
    event->ignore();
    editor_.Close();
}

}  // namespace nordkeep
