#include "console/views/boxes/CommentWindow.h"

#include "console/lists/SharedCaptions.h"
#include "platform/qt/QtText.h"

#include <QtCore/QSignalBlocker>
#include <QtGui/QCloseEvent>
#include <QtGui/QShortcut>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QSplitter>

namespace nordkeep {
namespace {

constexpr int kCaptionSend = 3252;
constexpr int kCaptionEndAlarm = 3253;
constexpr int kCaptionPrintLog = 3254;
constexpr int kCaptionPrintInfo = 3255;
constexpr int kCaptionMap = 3256;
constexpr int kCaptionSendTo = 3259;
constexpr int kCaptionSmallComment = 3263;
constexpr int kCaptionOtherAlarms = 3700;
constexpr int kCaptionBeside = 5162;
constexpr int kCaptionOwnWindow = 5163;
constexpr int kLeastLines = 2;
constexpr int kBoxFrame = 12;  // px

/// A column of its own without margins, in which heading and boxes stand.
struct Column {
    Column() : widget(new QWidget), layout(new QVBoxLayout(widget)) {
        layout->setContentsMargins(0, 0, 0, 0);
    }
    QWidget* widget;
    QVBoxLayout* layout;
};

}  // namespace

CommentWindow::CommentWindow(CommentBox& sheet, const Captions& captions, QWidget* parent)
    : QDialog(parent), sheet_(sheet), captions_(captions) {
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    setModal(false);
    notice_ = new NoticeBar;
    columns_ = new QSplitter(Qt::Horizontal);
    columns_->setChildrenCollapsible(false);
    columns_->setHandleWidth(12);
    columns_->addWidget(NewKnowledge());
    columns_->addWidget(NewComments());
    columns_->setStretchFactor(0, 1);
    columns_->setStretchFactor(1, 1);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(14, 12, 14, 12);
    layout->setSpacing(10);
    layout->addLayout(NewHeader());
    layout->addWidget(columns_, 1);
    layout->addWidget(NewSending());
    layout->addWidget(notice_);
    layout->addLayout(NewButtons());
    captionsOfButtons_ = {
        {end_, kCaptionEndAlarm}, {save_, kCaptionSave},           {cancel_, kCaptionBack},
        {map_, kCaptionMap},      {printInfo_, kCaptionPrintInfo}, {printLog_, kCaptionPrintLog},
        {send_, kCaptionSend}};
    ConnectAll();
    setFocusProxy(newComments_);
    resize(kSheetWidth, kSheetHeight);
}

QLayout* CommentWindow::NewHeader() {
    object_ = NewDataLabel();
    QFont large = object_->font();
    large.setBold(true);
    large.setPointSizeF(large.pointSizeF() * 1.4);
    object_->setFont(large);
    alarm_ = NewDataLabel();
    status_ = new Chip;
    move_ = NewButton(captions_, kCaptionBeside);
    move_->setFlat(true);
    move_->setToolTip(QKeySequence(Qt::SHIFT | Qt::Key_F6).toString(QKeySequence::NativeText));
    auto* words = new QVBoxLayout;
    words->setSpacing(2);
    words->addWidget(object_);
    words->addWidget(alarm_);
    auto* marks = new QHBoxLayout;
    marks->addWidget(status_);
    marks->addStretch(1);
    marks->addWidget(move_);
    header_ = new QHBoxLayout;
    header_->addLayout(words, 1);
    header_->addLayout(marks);
    header_->setAlignment(marks, Qt::AlignTop);
    return header_;
}

QWidget* CommentWindow::NewKnowledge() {
    Column column;
    information_ = NewReadOnlyBox();
    form_ = new InformationTable;
    form_->setAccessibleName(CaptionText(captions_, kCaptionObjectInformation));
    column.layout->addWidget(NewHeading(CaptionText(captions_, kCaptionObjectInformation), information_));
    column.layout->addWidget(information_, 3);
    column.layout->addWidget(form_, 3);

    Column typeCode;
    typeCodeInfo_ = NewReadOnlyBox();
    typeCode.layout->addWidget(NewHeading(CaptionText(captions_, kCaptionTypeInformation), typeCodeInfo_));
    typeCode.layout->addWidget(typeCodeInfo_);
    typeCodePart_ = typeCode.widget;
    column.layout->addWidget(typeCodePart_, 2);

    Column others;
    otherAlarms_ = new QListWidget;
    otherAlarms_->setUniformItemSizes(true);
    otherAlarms_->viewport()->setBackgroundRole(QPalette::Window);
    otherAlarms_->setTextElideMode(Qt::ElideRight);
    otherAlarms_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    others.layout->addWidget(NewHeading(CaptionText(captions_, kCaptionOtherAlarms), otherAlarms_));
    others.layout->addWidget(otherAlarms_);
    otherPart_ = others.widget;
    column.layout->addWidget(otherPart_, 2);
    return column.widget;
}

QWidget* CommentWindow::NewComments() {
    Column column;
    oldComments_ = NewReadOnlyBox();
    newComments_ = new QPlainTextEdit;
    newComments_->setTabChangesFocus(true);
    column.layout->addWidget(NewHeading(CaptionText(captions_, kCaptionComments), oldComments_));
    column.layout->addWidget(oldComments_, 3);
    column.layout->addWidget(NewSteps());
    column.layout->addWidget(NewHeading(CaptionText(captions_, kCaptionNewComment), newComments_));
    column.layout->addWidget(newComments_, 2);
    column.layout->addLayout(NewAids());

    smallPart_ = new QWidget;
    auto* small = new QHBoxLayout(smallPart_);
    small->setContentsMargins(0, 0, 0, 0);
    smallComment_ = new QLineEdit;
    smallCount_ = NewLabel();
    small->addWidget(NewHeading(CaptionText(captions_, kCaptionSmallComment), smallComment_));
    small->addWidget(smallComment_, 1);
    small->addWidget(smallCount_);
    column.layout->addWidget(smallPart_);
    return column.widget;
}

QWidget* CommentWindow::NewSending() {
    sending_ = new QWidget;
    auto* row = new QHBoxLayout(sending_);
    row->setContentsMargins(0, 0, 0, 0);
    receivers_ = new QComboBox;
    receivers_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    receivers_->setMinimumContentsLength(24);
    send_ = NewButton(captions_, kCaptionSend);
    row->addWidget(NewHeading(CaptionText(captions_, kCaptionSendTo), receivers_));
    row->addWidget(receivers_, 1);
    row->addWidget(send_);
    return sending_;
}

QLayout* CommentWindow::NewButtons() {
    end_ = NewButton(captions_, kCaptionEndAlarm);
    printLog_ = NewButton(captions_, kCaptionPrintLog);
    printInfo_ = NewButton(captions_, kCaptionPrintInfo);
    map_ = NewButton(captions_, kCaptionMap);
    cancel_ = NewButton(captions_, kCaptionBack);
    save_ = NewButton(captions_, kCaptionSave);
    end_->setToolTip(QKeySequence(Qt::CTRL | Qt::Key_Return).toString(QKeySequence::NativeText));
    save_->setToolTip(QKeySequence(Qt::CTRL | Qt::Key_S).toString(QKeySequence::NativeText));
    QFont bold = end_->font();
    bold.setBold(true);
    end_->setFont(bold);
    auto* less = new QHBoxLayout;
    for (QPushButton* button : {map_, printInfo_, printLog_}) less->addWidget(button);
    less->addStretch(1);
    auto* most = new QHBoxLayout;
    for (QPushButton* button : {end_, save_, cancel_}) most->addWidget(button);
    buttonRows_ = new QHBoxLayout;
    buttonRows_->addLayout(less, 1);
    buttonRows_->addLayout(most);
    return buttonRows_;
}

void CommentWindow::SetNarrow(bool isNarrow) {
    columns_->setOrientation(isNarrow ? Qt::Vertical : Qt::Horizontal);
    for (QBoxLayout* rows : {header_, buttonRows_})
        rows->setDirection(isNarrow ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
    // Below each other they share one height: some lines of each can always be read.
    const int least = isNarrow ? kLeastLines * fontMetrics().height() + kBoxFrame : 0;
    for (QWidget* box : std::initializer_list<QWidget*>{information_, form_, typeCodeInfo_, otherAlarms_,
                                                        oldComments_, newComments_}) {
        box->setMinimumHeight(least);
    }
    moveKey_->setEnabled(!isNarrow);
    // The letters of the buttons would be those of the main window's menus.
    for (const auto& [button, caption] : captionsOfButtons_) {
        const QString text = CaptionText(captions_, caption);
        button->setText(isNarrow ? QString(text).remove(u'&') : text);
    }
    move_->setText(CaptionText(captions_, isNarrow ? kCaptionOwnWindow : kCaptionBeside).remove(u'&'));
}

void CommentWindow::ConnectAll() {
    connect(newComments_, &QPlainTextEdit::textChanged, this,
            [this] { sheet_.TypeNewComments(TypedText(newComments_->toPlainText())); });
    connect(smallComment_, &QLineEdit::textEdited, this, [this](const QString& text) {
        sheet_.TypeSmallComment(FromQString(text));
        ShowSmallComment();
    });
    connect(send_, &QPushButton::clicked, this, [this] {
        if (receivers_->currentIndex() >= 0)
            sheet_.Send(static_cast<std::size_t>(receivers_->currentIndex()));
    });
    connect(receivers_, &QComboBox::currentIndexChanged, this, [this] { ShowControls(); });
    connect(end_, &QPushButton::clicked, this, [this] { sheet_.EndAlarm(); });
    connect(printLog_, &QPushButton::clicked, this, [this] { sheet_.PrintLog(); });
    connect(printInfo_, &QPushButton::clicked, this, [this] { sheet_.PrintInfo(); });
    connect(map_, &QPushButton::clicked, this, [this] { sheet_.ShowMap(); });
    connect(cancel_, &QPushButton::clicked, this, [this] { sheet_.Close(); });
    connect(save_, &QPushButton::clicked, this, [this] { sheet_.Save(); });
    connect(move_, &QPushButton::clicked, this, [this] { onMove(); });
    ConnectAids();
}

void CommentWindow::closeEvent(QCloseEvent* event) {
    // The model closes the window, or keeps it while it waits for an answer.
    event->ignore();
    sheet_.Close();
}

void CommentWindow::Show(OpenedBy by) {
    setWindowTitle(ShownLine(sheet_.Texts().title));
    ShowInformation();
    ShowOtherAlarms();
    ShowReceivers();
    Refresh();
    onShow(by == OpenedBy::Operator);
    // In a window of its own the keys are there when it gets them; beside the list nobody's are taken away.
    if (isWindow() || by == OpenedBy::Operator) newComments_->setFocus();
}

void CommentWindow::ShowInformation() {
    const SheetTexts& texts = sheet_.Texts();
    object_->setText(ShownLine(texts.object));
    alarm_->setText(ShownLine(texts.alarm));
    alarm_->setVisible(!texts.alarm.empty());
    SetBoxText(*information_, ShownText(texts.information));
    SetBoxText(*typeCodeInfo_, ShownText(texts.typeCodeInfo));
    typeCodePart_->setVisible(!texts.typeCodeInfo.empty());
    form_->setVisible(!texts.form.empty());
    information_->setVisible(texts.form.empty());
    form_->ShowRows(texts.form);
}

void CommentWindow::ShowOtherAlarms() {
    QStringList lines;
    for (const Text& line : sheet_.Texts().otherAlarms) lines.push_back(ShownLine(line));
    QStringList shown;
    for (int row = 0; row < otherAlarms_->count(); ++row) shown.push_back(otherAlarms_->item(row)->text());
    otherPart_->setVisible(!lines.isEmpty());
    if (lines == shown) return;
    otherAlarms_->clear();
    for (const QString& line : lines) {
        (new QListWidgetItem(line, otherAlarms_))->setToolTip(ToolTipText(line));
    }
}

void CommentWindow::ShowReceivers() {
    const QSignalBlocker silence(receivers_);
    receivers_->clear();
    for (const KeyAndValue& receiver : sheet_.Texts().receivers) {
        receivers_->addItem(ShownLine(receiver.key + "=" + receiver.value));
    }
    // Nobody is chosen until the operator has: a message to the wrong one cannot be taken back.
    receivers_->setCurrentIndex(-1);
}

void CommentWindow::Refresh() {
    const QString old = ShownText(sheet_.OldComments());
    if (oldComments_->toPlainText() != old) {
        oldComments_->setPlainText(old);
        oldComments_->verticalScrollBar()->setValue(oldComments_->verticalScrollBar()->maximum());
    }
    if (TypedText(newComments_->toPlainText()) != sheet_.NewComments()) {
        const QSignalBlocker silence(newComments_);
        newComments_->setPlainText(ShownText(sheet_.NewComments()));
        newComments_->moveCursor(QTextCursor::End);
    }
    const QString small = ShownLine(sheet_.SmallComment());
    if (smallComment_->text() != small) smallComment_->setText(small);
    const WindowNotice notice = sheet_.Notice();
    notice_->SetNotice(ShownText(notice.text), notice.isGood);
    status_->setText(ShownLine(sheet_.StatusWord()));
    status_->setVisible(!status_->text().isEmpty());
    ShowOtherAlarms();
    ShowSteps();
    ShowSmallComment();
    ShowControls();
}

void CommentWindow::ShowSmallComment() {
    const SheetControls controls = sheet_.Controls();
    smallPart_->setVisible(controls.hasSmallComment);
    smallCount_->setText(ShownLine(sheet_.SmallCommentCount()));
    QPalette colors = palette();
    if (controls.isSmallCommentTooLong) {
        colors.setColor(QPalette::Text, WarningColor(colors));
        colors.setColor(QPalette::WindowText, WarningColor(colors));
    }
    smallComment_->setPalette(colors);
    smallCount_->setPalette(colors);
}

void CommentWindow::ShowControls() {
    const SheetControls controls = sheet_.Controls();
    newComments_->setReadOnly(!controls.canType);
    smallComment_->setReadOnly(!controls.canType);
    end_->setVisible(controls.hasAlarm);
    end_->setEnabled(controls.canEnd);
    save_->setEnabled(controls.canSave);
    sending_->setVisible(controls.hasReceivers);
    send_->setEnabled(controls.canSend && receivers_->currentIndex() >= 0);
    printLog_->setEnabled(controls.canPrintLog);
    map_->setEnabled(controls.canShowMap);
}

}  // namespace nordkeep
