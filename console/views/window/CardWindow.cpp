#include "console/views/window/CardWindow.h"

#include "console/lists/SharedCaptions.h"

#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QSplitter>
#include <QtWidgets/QTreeWidget>

namespace nordkeep {
namespace {

constexpr int kCaptionSheet = 5633;
constexpr int kCaptionMap = 5634;
constexpr int kCaptionService = 5635;
constexpr int kCaptionReset = 5636;
constexpr int kCaptionHistory = 5637;
constexpr int kCaptionInstruction = 5638;

}  // namespace

CardWindow::CardWindow(CardBox& card, QWidget* parent) : QDialog(parent), card_(card) {
    const Captions& words = card_.Words();
    setModal(false);
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    parts_ = new QTreeWidget;
    parts_->setHeaderHidden(true);
    instruction_ = NewReadOnlyBox();
    heading_ = NewHeading(CaptionText(words, kCaptionInstruction), instruction_);
    auto* below = new QWidget;
    auto* belowLayout = new QVBoxLayout(below);
    belowLayout->setContentsMargins(0, 0, 0, 0);
    belowLayout->addWidget(heading_);
    belowLayout->addWidget(instruction_);
    auto* halves = new QSplitter(Qt::Vertical);
    halves->addWidget(parts_);
    halves->addWidget(below);
    halves->setStretchFactor(0, 1);
    halves->setChildrenCollapsible(false);
    auto* buttons = new QHBoxLayout;
    const auto add = [&](QPushButton*& button, int caption, auto act) {
        button = NewButton(words, caption);
        button->setAutoDefault(false);
        buttons->addWidget(button);
        connect(button, &QPushButton::clicked, this, act);
    };
    add(sheet_, kCaptionSheet, [this] { card_.OpenSheet(); });
    add(map_, kCaptionMap, [this] { card_.OpenMap(); });
    add(service_, kCaptionService, [this] { card_.AskService(); });
    add(reset_, kCaptionReset, [this] { card_.ResetAliveTests(); });
    add(history_, kCaptionHistory, [this] { card_.ShowHistory(); });
    buttons->addStretch(1);
    QPushButton* close = nullptr;
    add(close, kCaptionClose, [this] { card_.Close(); });
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(halves, 1);
    layout->addLayout(buttons);
    card_.SetView(this);
    resize(720, 640);
}

void CardWindow::Show(OpenedBy by) {
    Refresh();
    KeepOnScreen(*this);
    BringToFront(*this, by == OpenedBy::Operator);
    parts_->setFocus();
}

void CardWindow::Refresh() {
    setWindowTitle(ShownLine(card_.Title()));
    parts_->setAccessibleName(windowTitle());
    FillParts();
    SetBoxText(*instruction_, ShownText(card_.Instruction()));
    const bool hasInstruction = !card_.Instruction().empty();
    instruction_->parentWidget()->setVisible(hasInstruction);
    sheet_->setEnabled(card_.MayComment());
    map_->setEnabled(card_.HasMap());
    service_->setEnabled(card_.MayChange());
    reset_->setEnabled(card_.MayChange());
}

// Who reads it is not thrown back to its begin by what has not changed.
void CardWindow::FillParts() {
    if (shown_ == card_.Parts()) return;
    shown_ = card_.Parts();
    parts_->clear();
    for (const CardBox::Part& part : shown_) {
        auto* heading = new QTreeWidgetItem(parts_, {ShownLine(part.heading)});
        QFont bold = heading->font(0);
        bold.setBold(true);
        heading->setFont(0, bold);
        if (part.lines.empty()) new QTreeWidgetItem(heading, {CaptionText(card_.Words(), kCaptionNoLines)});
        for (const Text& line : part.lines) new QTreeWidgetItem(heading, {ShownLine(line)});
        heading->setExpanded(true);
    }
}

}  // namespace nordkeep
