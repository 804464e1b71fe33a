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

InformationTable::InformationTable() : QTableWidget(0, 2) {
    horizontalHeader()->hide();
    verticalHeader()->hide();
    horizontalHeader()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
    horizontalHeader()->setStretchLastSection(true);
    verticalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
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
