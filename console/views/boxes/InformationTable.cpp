#include "console/views/boxes/InformationTable.h"

#include "console/views/lists/ViewParts.h"
#include "platform/qt/QtText.h"

#include <QtCore/QUrl>
#include <QtGui/QClipboard>
#include <QtGui/QDesktopServices>
#include <QtGui/QGuiApplication>
#include <QtGui/QKeyEvent>
#include <QtWidgets/QHeaderView>

namespace nordkeep {
namespace {

constexpr int kCellMargin = 4;  // px, beside and between the texts

}  // namespace

InformationTable::InformationTable() : QTableWidget(0, 2) {
    horizontalHeader()->hide();
    verticalHeader()->hide();
    horizontalHeader()->setMinimumSectionSize(1);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setTabKeyNavigation(false);
    setShowGrid(false);
    setAlternatingRowColors(true);
    setWordWrap(true);
    connect(this, &QTableWidget::cellDoubleClicked, this, [this](int row) { Follow(row); });
}

void InformationTable::ShowRows(const std::vector<InformationRow>& rows) {
    if (rows == rows_) return;
    rows_ = rows;
    clearContents();
    clearSpans();
    setRowCount(static_cast<int>(rows_.size()));
    for (int number = 0; number < rowCount(); ++number) {
        const InformationRow& row = rows_[static_cast<std::size_t>(number)];
        auto* value = new QTableWidgetItem(ShownText(row.value));
        value->setTextAlignment(Qt::AlignTop | Qt::AlignLeft);
        if (!row.link.empty()) {
            QFont font = value->font();
            font.setUnderline(true);
            value->setFont(font);
            value->setForeground(palette().color(QPalette::Link));
            value->setToolTip(ToolTipText(QString::fromStdString(row.link)));
        }
        // A text of its own takes both columns.
        if (row.caption.empty()) {
            setItem(number, 0, value);
            setSpan(number, 0, 1, 2);
            continue;
        }
        auto* caption = new QTableWidgetItem(ShownLine(row.caption));
        caption->setTextAlignment(Qt::AlignTop | Qt::AlignLeft);
        setItem(number, 0, caption);
        setItem(number, 1, value);
    }
    FitCells();
}

// By hand: the header would measure a text of its own, which takes both columns, as if it had only the first.
void InformationTable::FitCells() {
    int captions = 0;
    for (int row = 0; row < rowCount(); ++row) {
        if (rows_[static_cast<std::size_t>(row)].caption.empty()) continue;
        captions = qMax(captions, fontMetrics().horizontalAdvance(item(row, 0)->text()));
    }
    const int room = viewport()->width();
    setColumnWidth(0, qMin(captions + 3 * kCellMargin, room / 2));
    setColumnWidth(1, room - columnWidth(0));
    for (int row = 0; row < rowCount(); ++row) {
        const bool isSpanned = rows_[static_cast<std::size_t>(row)].caption.empty();
        const int caption = TextHeight(item(row, 0), isSpanned ? room : columnWidth(0));
        setRowHeight(row, qMax(caption, TextHeight(item(row, 1), columnWidth(1))));
    }
}

int InformationTable::TextHeight(const QTableWidgetItem* item, int width) const {
    const QRect room(0, 0, qMax(width - 2 * kCellMargin, 1), 1'000'000);
    const QString text = item ? item->text() : QString();
    return fontMetrics()
               .boundingRect(room, Qt::TextWordWrap, text.isEmpty() ? QStringLiteral(" ") : text)
               .height() +
           kCellMargin;
}

void InformationTable::resizeEvent(QResizeEvent* event) {
    QTableWidget::resizeEvent(event);
    FitCells();
}

void InformationTable::changeEvent(QEvent* event) {
    QTableWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange) FitCells();
}

void InformationTable::Follow(int row) {
    if (row < 0 || row >= static_cast<int>(rows_.size())) return;
    const InformationRow& followed = rows_[static_cast<std::size_t>(row)];
    if (followed.link.empty()) return;
    PutOnClipboard(followed.value);
    onLink(followed.value, OpenLink(followed.link));
}

void InformationTable::CopyValue(int row) {
    if (row < 0 || row >= static_cast<int>(rows_.size())) return;
    const Text& value = rows_[static_cast<std::size_t>(row)].value;
    PutOnClipboard(value);
    onCopy(value);
}

void InformationTable::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Copy)) return CopyValue(currentRow());
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isEnter && event->modifiers() == Qt::NoModifier) return Follow(currentRow());
    QTableWidget::keyPressEvent(event);
}

bool OpenLink(const std::string& link) {
    const bool isKnown = link.starts_with("tel:") || link.starts_with("geo:") || link.starts_with("mailto:");
    return isKnown && QDesktopServices::openUrl(QUrl(QString::fromStdString(link), QUrl::StrictMode));
}

void PutOnClipboard(const Text& text) {
    QGuiApplication::clipboard()->setText(ToQString(text));
}

}  // namespace nordkeep
