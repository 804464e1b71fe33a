#include "console/views/setup/SetupWindow.h"

#include "console/lists/SharedCaptions.h"
#include "platform/qt/QtText.h"

#include <QtCore/QSignalBlocker>
#include <QtGui/QCloseEvent>
#include <QtGui/QShortcut>
#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QSplitter>
#include <QtWidgets/QStackedWidget>

namespace nordkeep {
namespace {

constexpr int kCaptionTitle = 3860;
constexpr int kCaptionSearch = 3861;
constexpr int kCaptionApply = 3863;
constexpr int kCaptionRevert = 3864;
constexpr int kLeftWidth = 230;  // px
constexpr int kGap = 12;         // px
constexpr int kPagePadding = 8;  // px

}  // namespace

SetupWindow::SetupWindow(SetupBox& box, const Captions& captions, QWidget* parent)
    : QDialog(parent), box_(box), captions_(captions) {
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    setModal(false);
    setWindowTitle(PlainCaption(captions, kCaptionTitle));
    auto* sides = new QSplitter(Qt::Horizontal);
    sides->setChildrenCollapsible(false);
    sides->addWidget(NewLeft());
    sides->addWidget(NewRight());
    sides->setStretchFactor(1, 1);
    sides->setSizes({kLeftWidth, 3 * kLeftWidth});
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(sides, 1);
    fields_->FollowInTabs(pages_);
    AddKeys();
    resize(1080, 700);
}

QWidget* SetupWindow::NewLeft() {
    auto* left = new QWidget;
    search_ = new QLineEdit;
    search_->setPlaceholderText(CaptionText(captions_, kCaptionSearch));
    search_->setAccessibleName(search_->placeholderText());
    search_->setClearButtonEnabled(true);
    pages_ = new QListWidget;
    pages_->setAccessibleName(PlainCaption(captions_, kCaptionTitle));
    auto* layout = new QVBoxLayout(left);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(search_);
    layout->addWidget(pages_, 1);
    connect(search_, &QLineEdit::textChanged, this,
            [this](const QString& words) { box_.Search(FromQString(words)); });
    connect(pages_, &QListWidget::currentRowChanged, this, [this](int row) {
        if (row >= 0) box_.ShowPage(static_cast<std::size_t>(row));
    });
    return left;
}

QWidget* SetupWindow::NewRight() {
    auto* right = new QWidget;
    fields_ = new FieldPane(box_, captions_);
    sides_ = new QStackedWidget;
    sides_->addWidget(fields_);
    notice_ = new NoticeBar;
    revert_ = NewButton(captions_, kCaptionRevert);
    apply_ = NewButton(captions_, kCaptionApply);
    apply_->setToolTip(QKeySequence(Qt::CTRL | Qt::Key_S).toString(QKeySequence::NativeText));
    QPushButton* close = NewButton(captions_, kCaptionClose);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    for (QPushButton* button : {revert_, apply_, close}) buttons->addWidget(button);
    auto* layout = new QVBoxLayout(right);
    layout->setContentsMargins(kGap, 0, 0, 0);
    layout->addWidget(sides_, 1);
    layout->addWidget(notice_);
    layout->addLayout(buttons);
    connect(revert_, &QPushButton::clicked, this, [this] { box_.Revert(); });
    connect(apply_, &QPushButton::clicked, this, [this] { box_.Apply(); });
    connect(close, &QPushButton::clicked, this, [this] { box_.Close(); });
    return right;
}

void SetupWindow::AddPane(const SetupSection* section, SectionPane* pane) {
    pane->onChange = [this] { box_.NoteSection(); };
    sides_->addWidget(pane);
    panes_.push_back({section, pane});
    pane->FollowInTabs(pages_);
}

QWidget* SetupWindow::PaneOf(const SetupSection* section) const {
    for (const Side& side : panes_) {
        if (side.section == section) return side.pane;
    }
    return fields_;
}

void SetupWindow::AddKeys() {
    connect(new QShortcut(Qt::CTRL | Qt::Key_S, this), &QShortcut::activated, this, [this] { box_.Apply(); });
    connect(new QShortcut(Qt::CTRL | Qt::Key_F, this), &QShortcut::activated, this, [this] {
        search_->setFocus();
        search_->selectAll();
    });
}

void SetupWindow::Show(OpenedBy by) {
    for (const Side& side : panes_) side.pane->Refresh();
    BringToFront(*this, by == OpenedBy::Operator);
    search_->setFocus();
}

void SetupWindow::Refresh() {
    ShowPages();
    sides_->setCurrentWidget(PaneOf(box_.Section()));
    fields_->Refresh();
    notice_->SetNotice(ShownText(box_.Notice().text), box_.Notice().isGood);
    revert_->setEnabled(box_.IsChanged());
    apply_->setEnabled(box_.MayApply());
}

void SetupWindow::ShowPages() {
    const QSignalBlocker silence(pages_);
    const auto& pages = box_.Pages();
    const int count = static_cast<int>(pages.size());
    while (pages_->count() < count) {
        pages_->addItem(QString());
        // Lower rows would cut the dots of capital letters.
        pages_->item(pages_->count() - 1)->setSizeHint({0, pages_->fontMetrics().height() + kPagePadding});
    }
    while (pages_->count() > count) delete pages_->takeItem(pages_->count() - 1);
    for (int row = 0; row < count; ++row) {
        const SetupPage& page = pages[static_cast<std::size_t>(row)];
        QString text = ShownLine(page.caption);
        if (page.isChanged) text += QStringLiteral(" *");
        if (page.faults > 0) text += QStringLiteral("  ! %1").arg(page.faults);
        if (pages_->item(row)->text() != text) pages_->item(row)->setText(text);
    }
    const bool isSearch = !box_.SearchedFor().empty();
    pages_->setCurrentRow(isSearch ? -1 : static_cast<int>(box_.CurrentPage()));
    const QSignalBlocker silentSearch(search_);
    if (!isSearch && !TrimBlanks(FromQString(search_->text())).empty()) search_->clear();
}

void SetupWindow::reject() {
    if (search_->text().isEmpty()) {
        box_.Close();
    } else {
        search_->clear();
    }
}

void SetupWindow::closeEvent(QCloseEvent* event) {
    event->ignore();
    box_.Close();
}

}  // namespace nordkeep
