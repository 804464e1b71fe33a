#include "console/views/history/ShiftWindow.h"

#include "console/lists/SharedCaptions.h"

#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QSpinBox>
#include <QtWidgets/QTreeWidget>

namespace nordkeep {
namespace {

constexpr int kCaptionNote = 5580;
constexpr int kCaptionSign = 5581;
constexpr int kCaptionHours = 5585;
constexpr int kNoteLines = 4;
constexpr int kMostHours = 24;

}  // namespace

ShiftWindow::ShiftWindow(ShiftBox& shift, QWidget* parent) : QDialog(parent), shift_(shift) {
    const Captions& words = shift_.Words();
    setModal(false);
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    setWindowTitle(PlainCaption(words, kCaptionShiftTitle));
    list_ = new QTreeWidget;
    list_->setHeaderHidden(true);
    list_->setAccessibleName(windowTitle());
    hours_ = new QSpinBox;
    hours_->setRange(1, kMostHours);
    note_ = new QPlainTextEdit;
    note_->setTabChangesFocus(true);
    note_->setFixedHeight(note_->fontMetrics().lineSpacing() * kNoteLines + 12);
    notice_ = new NoticeBar;
    sign_ = NewButton(words, kCaptionSign);
    auto* print = NewButton(words, kCaptionPrint);
    auto* close = NewButton(words, kCaptionClose);
    auto* bottom = new QHBoxLayout;
    bottom->addWidget(NewHeading(CaptionText(words, kCaptionHours), hours_));
    bottom->addWidget(hours_);
    bottom->addStretch(1);
    for (QPushButton* button : {sign_, print, close}) {
        button->setAutoDefault(false);
        bottom->addWidget(button);
    }
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(list_, 1);
    layout->addWidget(NewHeading(CaptionText(words, kCaptionNote), note_));
    layout->addWidget(note_);
    layout->addWidget(notice_);
    layout->addLayout(bottom);
    connect(note_, &QPlainTextEdit::textChanged, this,
            [this] { shift_.SetNote(TypedText(note_->toPlainText())); });
    connect(hours_, &QSpinBox::valueChanged, this, [this](int hours) {
        if (hours != shift_.Hours()) shift_.SetHours(hours);
    });
    connect(sign_, &QPushButton::clicked, this, [this] { shift_.SignOver(); });
    connect(print, &QPushButton::clicked, this, [this] { shift_.Print(); });
    connect(close, &QPushButton::clicked, this, &QDialog::close);
    shift_.SetView(this);
    resize(820, 620);
}

void ShiftWindow::Show(OpenedBy by) {
    note_->setPlainText({});
    Refresh();
    BringToFront(*this, by == OpenedBy::Operator);
    note_->setFocus();
}

void ShiftWindow::Refresh() {
    FillList();
    if (hours_->value() != shift_.Hours()) hours_->setValue(shift_.Hours());
    notice_->SetNotice(ShownText(shift_.Notice()), shift_.IsSignedOver());
    sign_->setEnabled(!shift_.IsSignedOver());
    note_->setReadOnly(shift_.IsSignedOver());
}

void ShiftWindow::FillList() {
    list_->clear();
    for (const ShiftList::Part& part : shift_.Parts()) {
        const bool isFigures = &part == &shift_.Parts().front();
        const QString count = isFigures ? QString() : QStringLiteral(" (%1)").arg(part.lines.size());
        auto* heading = new QTreeWidgetItem(list_, {ShownLine(part.heading) + count});
        QFont bold = heading->font(0);
        bold.setBold(true);
        heading->setFont(0, bold);
        if (part.lines.empty()) new QTreeWidgetItem(heading, {CaptionText(shift_.Words(), kCaptionNoLines)});
        for (const Text& line : part.lines) new QTreeWidgetItem(heading, {ShownLine(line)});
        heading->setExpanded(true);
    }
}

}  // namespace nordkeep
