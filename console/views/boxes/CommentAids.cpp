#include "console/views/boxes/CommentWindow.h"
#include "platform/qt/QtText.h"

#include <QtCore/QSignalBlocker>
#include <QtGui/QShortcut>
#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QMenu>

// What helps an operator on the sheet: steps to tick, time, phrases, telephone numbers, and the keys of it
// all.

namespace nordkeep {
namespace {

constexpr int kCaptionSteps = 5156;
constexpr int kCaptionStamp = 5157;
constexpr int kCaptionPhrases = 5158;
constexpr int kCaptionPhones = 5159;
constexpr int kCaptionCopied = 5160;
constexpr int kCaptionNoProgram = 5161;
constexpr int kCaptionCall = 5165;
constexpr int kCaptionCopy = 5166;
constexpr int kCaptionCalls = 5167;
constexpr int kCaptionNoPhones = 5168;
constexpr int kMostStepsShown = 6;
constexpr int kStepGap = 1;  // px around each, so that the boxes do not touch

/// 1 to 9, then letters: a menu's entry is chosen by one key.
QString KeyOf(int number) {
    return number < 9 ? QString::number(number + 1) : QString(QChar(static_cast<char16_t>('A' + number - 9)));
}

}  // namespace

QWidget* CommentWindow::NewSteps() {
    stepPart_ = new QWidget;
    auto* layout = new QVBoxLayout(stepPart_);
    layout->setContentsMargins(0, 0, 0, 0);
    steps_ = new QListWidget;
    steps_->setWordWrap(true);
    steps_->setSpacing(kStepGap);
    layout->addWidget(NewHeading(CaptionText(captions_, kCaptionSteps), steps_));
    layout->addWidget(steps_);
    return stepPart_;
}

QLayout* CommentWindow::NewAids() {
    auto* row = new QHBoxLayout;
    stamp_ = NewButton(captions_, kCaptionStamp);
    phrases_ = NewButton(captions_, kCaptionPhrases);
    phones_ = NewButton(captions_, kCaptionPhones);
    for (QPushButton* button : {stamp_, phrases_, phones_}) {
        button->setAutoDefault(false);
        button->setFocusPolicy(Qt::TabFocus);
        row->addWidget(button);
    }
    row->addStretch(1);
    return row;
}

void CommentWindow::ConnectAids() {
    connect(steps_, &QListWidget::itemChanged, this, [this](const QListWidgetItem* item) {
        sheet_.TickStep(static_cast<std::size_t>(steps_->row(item)), item->checkState() == Qt::Checked);
    });
    connect(stamp_, &QPushButton::clicked, this, [this] { Insert(ToQString(sheet_.Stamp())); });
    connect(phrases_, &QPushButton::clicked, this, [this] { PopUpPhrases(); });
    connect(phones_, &QPushButton::clicked, this, [this] { PopUpPhones(true); });
    form_->onLink = [this](const Text& value, bool isOpened) { TellOfLink(value, isOpened); };
    form_->onCopy = [this](const Text& value) {
        notice_->SetNotice(ShownText(captions_(kCaptionCopied, {value})), true);
    };
    AddKeys();
}

void CommentWindow::ShowSteps() {
    const QSignalBlocker silence(steps_);
    const auto& steps = sheet_.Steps();
    while (steps_->count() > static_cast<int>(steps.size())) delete steps_->takeItem(steps_->count() - 1);
    for (int number = 0; number < static_cast<int>(steps.size()); ++number) {
        const InstructionStep& step = steps[static_cast<std::size_t>(number)];
        if (number == steps_->count()) steps_->addItem(QString());
        QListWidgetItem* item = steps_->item(number);
        const QString text = ShownLine(step.text);
        if (item->text() != text) item->setText(text);
        // What has been saved cannot be taken back.
        const auto isOpen = step.isOnFile ? Qt::NoItemFlags : Qt::ItemFlags(Qt::ItemIsUserCheckable);
        item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | isOpen);
        item->setCheckState(step.IsDone() ? Qt::Checked : Qt::Unchecked);
    }
    stepPart_->setVisible(!steps.empty());
    FitSteps();
}

void CommentWindow::FitSteps() {
    int height = 2 * steps_->frameWidth() + 2;
    for (int row = 0; row < qMin(steps_->count(), kMostStepsShown); ++row)
        height += steps_->sizeHintForRow(row) + 2 * kStepGap;
    if (steps_->height() != height) steps_->setFixedHeight(height);
}

// --- What is put into the comment

void CommentWindow::Insert(const QString& text) {
    if (newComments_->isReadOnly()) return;
    newComments_->insertPlainText(text);
    newComments_->setFocus();
}

void CommentWindow::PopUpPhrases() {
    const std::vector<Text>& phrases = sheet_.Texts().phrases;
    QMenu menu(this);
    for (int number = 0; number < static_cast<int>(phrases.size()); ++number) {
        const QString phrase = ShownLine(phrases[static_cast<std::size_t>(number)]);
        connect(menu.addAction(QStringLiteral("&%1  %2").arg(KeyOf(number), WithoutMnemonics(phrase))),
                &QAction::triggered, this, [this, phrase] { Insert(phrase); });
    }
    if (!menu.isEmpty()) menu.exec(phrases_->mapToGlobal(QPoint(0, phrases_->height())));
}

// --- Telephone numbers

void CommentWindow::PopUpPhones(bool isToCall) {
    const std::vector<PhoneNumber>& phones = sheet_.Texts().phones;
    if (phones.empty()) return notice_->SetNotice(CaptionText(captions_, kCaptionNoPhones));
    QMenu menu(this);
    for (int number = 0; number < static_cast<int>(phones.size()); ++number) {
        const PhoneNumber phone = phones[static_cast<std::size_t>(number)];
        const Text who = phone.who.empty() ? phone.number : phone.who + "  " + phone.number;
        const Text caption = captions_(isToCall ? kCaptionCall : kCaptionCopy, {who});
        connect(menu.addAction(
                    QStringLiteral("&%1  %2").arg(KeyOf(number), WithoutMnemonics(ShownLine(caption)))),
                &QAction::triggered, this, [this, phone, isToCall] {
                    if (isToCall) return Call(phone);
                    PutOnClipboard(phone.number);
                    form_->onCopy(phone.number);
                });
    }
    menu.exec(phones_->mapToGlobal(QPoint(0, phones_->height())));
}

void CommentWindow::Call(const PhoneNumber& phone) {
    PutOnClipboard(phone.number);
    TellOfLink(phone.number, OpenLink(LinkOf(FormKind::Phone, phone.number)));
}

void CommentWindow::TellOfLink(const Text& value, bool isOpened) {
    const int caption = isOpened ? kCaptionCalls : kCaptionNoProgram;
    notice_->SetNotice(ShownText(captions_(caption, {value})), isOpened);
}

// --- Keys

// Beside the list they are the sheet's only while somebody works in it.
void CommentWindow::AddKeys() {
    const auto key = [this](QKeySequence keys, auto action) -> QShortcut* {
        auto* shortcut = new QShortcut(keys, this);
        shortcut->setContext(Qt::WidgetWithChildrenShortcut);
        connect(shortcut, &QShortcut::activated, this, action);
        return shortcut;
    };
    key(Qt::CTRL | Qt::Key_S, [this] { sheet_.Save(); });
    key(Qt::CTRL | Qt::Key_Return, [this] { sheet_.EndAlarm(); });
    key(Qt::CTRL | Qt::Key_Enter, [this] { sheet_.EndAlarm(); });
    key(Qt::CTRL | Qt::Key_T, [this] { Insert(ToQString(sheet_.Stamp())); });
    key(Qt::Key_F7, [this] { PopUpPhrases(); });
    key(Qt::Key_F9, [this] { PopUpPhones(true); });
    key(Qt::SHIFT | Qt::Key_F9, [this] { PopUpPhones(false); });
    moveKey_ = key(Qt::SHIFT | Qt::Key_F6, [this] { onMove(); });
}

}  // namespace nordkeep
