#include "console/views/boxes/EditorWindow.h"

#include "console/lists/SharedCaptions.h"
#include "platform/qt/QtText.h"

#include <QtCore/QSignalBlocker>
#include <QtGui/QCloseEvent>
#include <QtGui/QFontDatabase>
#include <QtGui/QShortcut>
#include <QtGui/QTextBlock>
#include <QtWidgets/QBoxLayout>

namespace nordkeep {
namespace {}  // namespace

EditorWindow::EditorWindow(EditorBox& editor, const Captions& captions, QWidget* parent)
    : QDialog(parent), editor_(editor) {
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
    layout->addWidget(text_, 1);
    layout->addWidget(notice_);
    layout->addLayout(buttons);
    connect(text_, &QPlainTextEdit::textChanged, this, [this] {
        editor_.Type(TypedText(text_->toPlainText()));
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
    if (shownGeneration_ != editor_.Generation()) {
        shownGeneration_ = editor_.Generation();
        const QSignalBlocker silence(text_);
        // Every character as it is, since all of them are written back.
        text_->setPlainText(ToQString(editor_.Typed()).replace(QLatin1String("\r\n"), QLatin1String("\n")));
    }
    if (const int line = editor_.TakeLine(); line > 0) {
        text_->setTextCursor(QTextCursor(text_->document()->findBlockByNumber(line - 1)));
        text_->centerCursor();
    }
    Refresh();
    BringToFront(*this, by == OpenedBy::Operator);
    text_->setFocus();
}

void EditorWindow::Refresh() {
    notice_->SetNotice(ShownText(editor_.Notice().text), editor_.Notice().isGood);
    text_->setReadOnly(!editor_.MaySave());
    save_->setEnabled(editor_.MaySave() && editor_.IsChanged());
}

void EditorWindow::closeEvent(QCloseEvent* event) {
    event->ignore();
    editor_.Close();
}

}  // namespace nordkeep
