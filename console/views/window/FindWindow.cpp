#include "console/views/window/FindWindow.h"

#include "console/views/lists/ListPane.h"
#include "console/views/lists/ViewParts.h"
#include "platform/qt/QtText.h"

#include <QtGui/QKeyEvent>
#include <QtWidgets/QApplication>
#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QLineEdit>

namespace nordkeep {
namespace {

constexpr int kCaptionTitle = 5601;
constexpr int kCaptionField = 5602;
constexpr int kCaptionHits = 5613;
constexpr int kLongest = 200;

}  // namespace

FindWindow::FindWindow(FindBox& find, QWidget* parent) : QDialog(parent), find_(find), rows_(find.Rows()) {
    const Captions& words = find_.Words();
    setModal(false);
    setWindowTitle(PlainCaption(words, kCaptionTitle));
    text_ = new QLineEdit;
    text_->setPlaceholderText(CaptionText(words, kCaptionField));
    text_->setAccessibleName(text_->placeholderText());
    text_->setMaxLength(kLongest);
    text_->setClearButtonEnabled(true);
    text_->installEventFilter(this);
    list_ = new ListPane(rows_);
    list_->setAccessibleName(CaptionText(words, kCaptionHits));
    list_->setColumnHidden(0, true);
    list_->StretchLastColumn();
    list_->setSelectionMode(QAbstractItemView::SingleSelection);
    list_->onActivate = [this] { find_.Activate(list_->CurrentKey()); };
    notice_ = NewLabel();
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(text_);
    layout->addWidget(list_, 1);
    layout->addWidget(notice_);
    connect(text_, &QLineEdit::textEdited, this,
            [this](const QString& text) { find_.SetText(FromQString(text)); });
    find_.SetView(this);
    resize(760, 420);
}

void FindWindow::Show(OpenedBy by) {
    text_->clear();
    Refresh();
    KeepOnScreen(*this);
    BringToFront(*this, by == OpenedBy::Operator);
    text_->setFocus();
}

// The first row is what Enter takes until somebody chooses another.
void FindWindow::Refresh() {
    if (text_->text().isEmpty() != find_.Wanted().empty()) text_->setText(ToQString(find_.Wanted()));
    notice_->setText(ShownLine(find_.Notice()));
    if (list_->CurrentKey().empty()) SelectRow(0);
}

void FindWindow::SelectRow(int row) {
    const int last = find_.Rows().RowCount() - 1;
    if (last < 0) return;
    const Text key = find_.Rows().KeyOf(qBound(0, row, last));
    list_->SelectKeys({key}, key);
    list_->Reveal(key);
}

// Who types walks the list without leaving the field.
bool FindWindow::eventFilter(QObject* watched, QEvent* event) {
    if (watched != text_ || event->type() != QEvent::KeyPress) return QDialog::eventFilter(watched, event);
    const auto& key = static_cast<QKeyEvent&>(*event);
    const int row = find_.Rows().RowOf(list_->CurrentKey());
    switch (key.key()) {
        case Qt::Key_Down:
            SelectRow(row + 1);
            return true;
        case Qt::Key_Up:
            SelectRow(row - 1);
            return true;
        case Qt::Key_PageDown:
            SelectRow(row + 10);
            return true;
        case Qt::Key_PageUp:
            SelectRow(row - 10);
            return true;
        case Qt::Key_Return:
        case Qt::Key_Enter:
            find_.Activate(list_->CurrentKey());
            return true;
        default:
            return QDialog::eventFilter(watched, event);
    }
}

}  // namespace nordkeep
