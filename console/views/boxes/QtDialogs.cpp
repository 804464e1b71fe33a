#include "console/views/boxes/QtDialogs.h"

#include "console/lists/BilingualTexts.h"
#include "console/lists/SharedCaptions.h"
#include "console/views/boxes/LanguageDialog.h"
#include "console/views/lists/ViewParts.h"

#include <QtCore/QEventLoop>
#include <QtGui/QPainter>
#include <QtGui/QShortcut>
#include <QtWidgets/QApplication>
#include <QtWidgets/QBoxLayout>

namespace nordkeep {
namespace {

constexpr int kCaptionYes = 3350;
constexpr int kCaptionNo = 3351;
constexpr int kSignSize = 40;           // px
constexpr int kMostWidth = 460;         // px, of the text
constexpr qsizetype kMostShown = 2000;  // characters

/// A round sign with one character.
class Sign final : public QWidget {
 public:
    Sign(QChar character, QColor color) : character_(character), color_(color) {
        setFixedSize(kSignSize, kSignSize);
    }

 protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(color_);
        painter.drawEllipse(rect().adjusted(1, 1, -1, -1));
        QFont large = font();
        large.setPixelSize(kSignSize * 6 / 10);
        large.setBold(true);
        painter.setFont(large);
        painter.setPen(Qt::white);
        painter.drawText(rect(), Qt::AlignCenter, character_);
    }

 private:
    QChar character_;
    QColor color_;
};

/// Sign and text; the buttons come into the layout that is returned.
QHBoxLayout* LayOut(QDialog& dialog, QChar sign, QColor color, const Text& text) {
    dialog.setWindowTitle(QStringLiteral("Nordkeep"));
    QLabel* label = NewDataLabel(ShownText(text).left(kMostShown));
    label->setMinimumWidth(qMin(kMostWidth, label->fontMetrics().horizontalAdvance(label->text()) + 8));
    auto* top = new QHBoxLayout;
    top->setSpacing(16);
    top->addWidget(new Sign(sign, color), 0, Qt::AlignTop);
    top->addWidget(label, 1);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    auto* layout = new QVBoxLayout(&dialog);
    layout->setContentsMargins(20, 20, 20, 14);
    layout->setSpacing(18);
    layout->addLayout(top);
    layout->addLayout(buttons);
    return buttons;
}

const QColor kQuestionColor(0x1F, 0x5F, 0xA8);
const QColor kMessageColor(0xA8, 0x5A, 0x00);

}  // namespace

QString QtDialogs::ButtonText(int caption, const char* bilingual) const {
    return captions_ ? CaptionText(*captions_, caption) : QString::fromUtf8(bilingual);
}

// The window that asks has the keys, and what stands in front of another one does not get them. In front of a
// window that is out of sight nobody would see it.
QWidget* QtDialogs::Parent() const {
    const auto isInSight = [](const QWidget* window) {
        return window && window->isVisible() && !window->isMinimized();
    };
    if (QWidget* asking = QApplication::activeWindow(); isInSight(asking)) return asking;
    QWidget* parent = parent_ ? parent_() : nullptr;
    return isInSight(parent) ? parent : nullptr;
}

void QtDialogs::Await(QDialog& dialog) {
    if (silence_) {
        QObject::connect(new QShortcut(Qt::Key_F8, &dialog), &QShortcut::activated, &dialog, silence_);
    }
    const QPointer<QWidget> focusBefore = QApplication::focusWidget();
    QEventLoop loop;
    QObject::connect(&dialog, &QDialog::finished, &loop, &QEventLoop::quit);
    QObject::connect(&dialog, &QObject::destroyed, &loop, &QEventLoop::quit);
    dialog.show();
    dialog.raise();
    dialog.activateWindow();
    loop.exec();
    GiveBack(focusBefore);
}

// Whatever window the system would choose, the next key belongs to where the operator was.
void QtDialogs::GiveBack(QWidget* focus) {
    if (!focus || !focus->isVisible()) return;
    focus->window()->activateWindow();
    focus->setFocus(Qt::OtherFocusReason);
}

QPushButton* QtDialogs::NewAnswer(const Text& verb, int caption, const char* bilingual) const {
    return new QPushButton(verb.empty() ? ButtonText(caption, bilingual) : ShownLine(verb));
}

bool QtDialogs::Ask(const Question& question) {
    if (question_) {
        question_->raise();
        question_->activateWindow();
        return false;
    }
    const QPointer<QDialog> dialog = new QDialog(Parent());
    question_ = dialog;
    dialog->setWindowModality(Qt::WindowModal);
    QHBoxLayout* buttons = LayOut(*dialog, u'?', kQuestionColor, question.text);
    QPushButton* yes = NewAnswer(question.yes, kCaptionYes, kBilingualYes);
    QPushButton* no = NewAnswer(question.no, kCaptionNo, kBilingualNo);
    buttons->addWidget(yes);
    buttons->addWidget(no);
    QPushButton* first = question.byDefault == Answer::Yes ? yes : no;
    first->setDefault(true);
    first->setFocus();
    QObject::connect(yes, &QPushButton::clicked, dialog, &QDialog::accept);
    QObject::connect(no, &QPushButton::clicked, dialog, &QDialog::reject);
    Await(*dialog);
    // The window it belonged to may have gone, and the question with it.
    const bool isYes = dialog && dialog->result() == QDialog::Accepted;
    if (dialog) dialog->deleteLater();
    question_.clear();
    return isYes;
}

void QtDialogs::CloseQuestion() {
    if (question_) question_->reject();
}

void QtDialogs::ShowMessage(const Text& text) {
    const QPointer<QDialog> dialog = new QDialog(Parent());
    QHBoxLayout* buttons = LayOut(*dialog, u'!', kMessageColor, text);
    auto* close = new QPushButton(ButtonText(kCaptionClose, kBilingualOk));
    close->setDefault(true);
    buttons->addWidget(close);
    QObject::connect(close, &QPushButton::clicked, dialog, &QDialog::accept);
    Await(*dialog);
    if (dialog) dialog->deleteLater();
}

void QtDialogs::ShowNotice(const Text& text) {
    auto* dialog = new QDialog(Parent());
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    QHBoxLayout* buttons = LayOut(*dialog, u'!', kMessageColor, text);
    auto* close = new QPushButton(ButtonText(kCaptionClose, kBilingualOk));
    buttons->addWidget(close);
    QObject::connect(close, &QPushButton::clicked, dialog, &QDialog::close);
    BringToFront(*dialog, false);
}

std::optional<int> QtDialogs::ChooseLanguage(const std::vector<LanguageChoice>& choices) {
    LanguageDialog dialog(choices, Parent());
    Await(dialog);
    return dialog.Chosen();
}

}  // namespace nordkeep
