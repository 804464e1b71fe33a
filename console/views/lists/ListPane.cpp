#include "console/views/lists/ListPane.h"

#include "console/views/lists/RowDelegate.h"
#include "platform/qt/QtText.h"

#include <QtGui/QContextMenuEvent>
#include <QtGui/QPainter>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QScrollBar>

#include <algorithm>
#include <cmath>

namespace nordkeep {
namespace {

constexpr int kIconColumnWidth = 18;
constexpr int kIconColumnWithPriority = 40;
constexpr int kLeastColumn = 20;
constexpr int kHeadingMargin = 12;  // px
constexpr int kWidthsSettleMs = 400;
constexpr int kRowMargin = 7;
constexpr int kLettersMs = 1200;  // as long belong to one word
constexpr int kSliceMs = 4;
constexpr int kRowsAtOnce = 20;

}  // namespace

ListPane::ListPane(RowAdapter& rows, QWidget* parent) : QTableView(parent), rows_(rows) {
    setModel(&rows_);
    delegate_ = new RowDelegate(rows_.Rows(), this);
    setItemDelegate(delegate_);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setShowGrid(false);
    setWordWrap(false);
    setCornerButtonEnabled(false);
    setTabKeyNavigation(false);
    setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    setVerticalScrollMode(QAbstractItemView::ScrollPerItem);
    SetUpHeaders();
    ApplyRowHeight();
    standardSize_ = QFont().pointSizeF();
    rows_.OnRound([this] { RoundBegins(); }, [this] { RoundEnds(); });
    connect(&rows_, &QAbstractItemModel::modelReset, this, [this] { wasReset_ = true; });
    connect(verticalScrollBar(), &QScrollBar::valueChanged, this, [this] { onScroll(); });
    widthTimer_.setSingleShot(true);
    widthTimer_.setInterval(kWidthsSettleMs);
    connect(&widthTimer_, &QTimer::timeout, this, [this] { SaveWidths(); });
    findTimer_.setInterval(kSliceMs);
    connect(&findTimer_, &QTimer::timeout, this, [this] { LookOn(); });
}

void ListPane::SetUpHeaders() {
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    QHeaderView* header = horizontalHeader();
    header->setHighlightSections(false);
    header->setSectionsClickable(true);
    header->setSectionResizeMode(QHeaderView::Interactive);
    header->setMinimumSectionSize(kLeastColumn);
    header->setTextElideMode(Qt::ElideRight);
    connect(header, &QHeaderView::sectionClicked, this, [this](int section) {
        RowModel& rows = rows_.Rows();
        rows.ClickHeading(section - 1);
        if (widths_) widths_->Store({rows.SortColumn(), rows.Direction()});
        Reveal(CurrentKey());
    });
    connect(header, &QHeaderView::sectionResized, this, [this] {
        if (!isSettingWidths_) widthTimer_.start();
    });
}

// --- Columns

void ListPane::UseWidths(const ColumnWidths& widths) {
    widths_.emplace(widths);
    horizontalHeader()->setMinimumSectionSize(qMax(kLeastColumn, widths.Least()));
    ApplyWidths();
    if (const Sorting sorting = widths.StoredSorting(); sorting.column >= 0) rows_.Rows().Sort(sorting);
    ShowSorting();
}

void ListPane::ApplyWidths() {
    isSettingWidths_ = true;
    QHeaderView* header = horizontalHeader();
    if (header->count() > 0) {
        header->setMinimumSectionSize(kIconColumnWidth);
        header->setSectionResizeMode(0, QHeaderView::Fixed);
        header->resizeSection(0,
                              rows_.Rows().HasIconTexts() ? kIconColumnWithPriority : kIconColumnWidth + 4);
    }
    for (int column = 1; column < header->count(); ++column) {
        const int byDefault = DefaultWidth(column);
        header->resizeSection(column, Scaled(widths_ ? widths_->Width(column - 1, byDefault) : byDefault));
    }
    isSettingWidths_ = false;
}

// A heading that is cut says nothing.
int ListPane::DefaultWidth(int section) const {
    const QString heading = model()->headerData(section, Qt::Horizontal).toString();
    const int needed = horizontalHeader()->fontMetrics().horizontalAdvance(heading) + kHeadingMargin;
    return qMax(rows_.Rows().DefaultWidth(section - 1), Unscaled(needed));
}

// Widths are kept as they are at the desktop's text size.
int ListPane::Scaled(int width) const {
    return static_cast<int>(std::lround(width * scale_));
}

int ListPane::Unscaled(int width) const {
    return static_cast<int>(std::lround(width / scale_));
}

void ListPane::SaveWidths() {
    if (!widths_) return;
    widthTimer_.stop();
    QHeaderView* header = horizontalHeader();
    const int last = header->count() - (header->stretchLastSection() ? 1 : 0);
    for (int column = 1; column < last; ++column) {
        const int least = qMax(widths_->Least(), kLeastColumn);
        if (header->sectionSize(column) < least) header->resizeSection(column, least);
        const int byDefault = DefaultWidth(column);
        const int width = Unscaled(header->sectionSize(column));
        if (width != widths_->Width(column - 1, byDefault)) widths_->Store(column - 1, width);
    }
}

void ListPane::StretchLastColumn() {
    horizontalHeader()->setStretchLastSection(true);
}

void ListPane::ShowSorting() {
    QHeaderView* header = horizontalHeader();
    const RowModel& rows = rows_.Rows();
    const bool isSorted = rows.SortColumn() >= 0;
    header->setSortIndicatorShown(isSorted);
    if (isSorted) {
        header->setSortIndicator(rows.SortColumn() + 1, rows.Direction() == SortDirection::Descending
                                                            ? Qt::DescendingOrder
                                                            : Qt::AscendingOrder);
    }
}

void ListPane::ApplyRowHeight() {
    const int height = qMax(20, fontMetrics().height() + kRowMargin);
    verticalHeader()->setMinimumSectionSize(height);
    verticalHeader()->setDefaultSectionSize(height);
}

void ListPane::SetFontSize(int points) {
    QFont sized = font();
    const int own = parentWidget() ? parentWidget()->font().pointSize() : QFont().pointSize();
    sized.setPointSize(points > 0 ? points : qMax(own, 1));
    setFont(sized);
    horizontalHeader()->setFont(sized);
    ApplyRowHeight();
    const double scale = sized.pointSizeF() / qMax(standardSize_, 1.0);
    if (qFuzzyCompare(scale, scale_)) return;
    if (widthTimer_.isActive()) SaveWidths();
    scale_ = scale;
    ApplyWidths();
}

void ListPane::changeEvent(QEvent* event) {
    QTableView::changeEvent(event);
    if (event->type() == QEvent::FontChange) ApplyRowHeight();
}

void ListPane::MarkFirstCellOnly(bool isOn) {
    delegate_->MarkFirstCellOnly(isOn);
}

void ListPane::FollowEnd(bool isOn) {
    followsEnd_ = isOn;
    if (isOn) scrollToBottom();
}

void ListPane::SetEmptyText(const QString& text) {
    if (emptyText_ == text) return;
    emptyText_ = text;
    viewport()->update();
}

// --- Selection

std::vector<Text> ListPane::SelectedKeys() const {
    std::vector<Text> keys;
    for (const QItemSelectionRange& range : selectionModel()->selection()) {
        for (int row = range.top(); row <= range.bottom(); ++row) keys.push_back(rows_.KeyAt(row));
    }
    return keys;
}

Text ListPane::CurrentKey() const {
    const QModelIndex current = currentIndex();
    const QItemSelection& selection = selectionModel()->selection();
    if (current.isValid() && selection.contains(current)) return rows_.KeyAt(current.row());
    return selection.isEmpty() ? Text() : rows_.KeyAt(selection.first().top());
}

void ListPane::SelectKeys(const std::vector<Text>& keys, const Text& current) {
    QItemSelection selection;
    const int lastColumn = rows_.columnCount() - 1;
    for (const Text& key : keys) {
        const int row = rows_.Rows().RowOf(key);
        if (row >= 0) selection.select(rows_.index(row, 0), rows_.index(row, lastColumn));
    }
    const int currentRow = rows_.Rows().RowOf(current);
    isSilent_ = true;
    if (currentRow >= 0) {
        selectionModel()->setCurrentIndex(rows_.index(currentRow, 1), QItemSelectionModel::NoUpdate);
    }
    selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
    isSilent_ = false;
}

void ListPane::Reveal(const Text& key) {
    const int row = rows_.Rows().RowOf(key);
    if (row < 0) return;
    const int left = horizontalScrollBar()->value();
    scrollTo(rows_.index(row, 0), QAbstractItemView::EnsureVisible);
    horizontalScrollBar()->setValue(left);
}

std::pair<int, int> ListPane::VisibleRows() const {
    const int height = std::max(1, verticalHeader()->defaultSectionSize());
    const int first = verticalScrollBar()->value();
    return {first, std::min(first + viewport()->height() / height, model()->rowCount()) - 1};
}

void ListPane::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) {
    QTableView::selectionChanged(selected, deselected);
    if (!isSilent_ && !isInRound_) Notify();
}

void ListPane::Notify() {
    onSelection();
}

// --- Finding

void ListPane::FindNext(const QString& words) {
    LookFor(FromQString(words), RowFinder::By::Words, rows_.Rows().RowOf(CurrentKey()) + 1);
}

void ListPane::keyboardSearch(const QString& letters) {
    if (!followsTyping_) return;
    if (!sinceLetter_.isValid() || sinceLetter_.elapsed() > kLettersMs) letters_.clear();
    sinceLetter_.restart();
    letters_ += letters;
    LookFor(FromQString(letters_), RowFinder::By::Begin, rows_.Rows().RowOf(CurrentKey()));
}

void ListPane::LookFor(const Text& wanted, RowFinder::By by, int from) {
    finder_.Begin(wanted, by, from);
    LookOn();
}

// A list may have more rows than can be looked at between two keys.
void ListPane::LookOn() {
    QElapsedTimer slice;
    slice.start();
    int row = -1;
    while (row < 0 && finder_.IsBusy() && slice.elapsed() < kSliceMs) {
        row = finder_.Step(rows_.Rows(), kRowsAtOnce);
    }
    if (row >= 0) {
        selectRow(row);
        Reveal(rows_.KeyAt(row));
    }
    if (finder_.IsBusy()) {
        findTimer_.start();
    } else {
        findTimer_.stop();
    }
}

// --- Rounds of changes

void ListPane::RoundBegins() {
    const QScrollBar* bar = verticalScrollBar();
    wasAtEnd_ = bar->value() >= bar->maximum();
    topKey_ = rows_.KeyAt(bar->value());
    keptKeys_ = SelectedKeys();
    keptCurrent_ = CurrentKey();
    wasReset_ = false;
    isInRound_ = true;
}

void ListPane::RoundEnds() {
    isInRound_ = false;
    if (wasReset_) {
        if (widthTimer_.isActive()) SaveWidths();
        ShowSorting();
        SelectKeys(keptKeys_, keptCurrent_);
        if (horizontalHeader()->count() > 0) ApplyWidths();
    }
    QScrollBar* bar = verticalScrollBar();
    if (followsEnd_ && wasAtEnd_) {
        scrollToBottom();
    } else if (const int top = rows_.Rows().RowOf(topKey_); top >= 0 && top != bar->value()) {
        updateGeometries();
        bar->setValue(top);
    }
    if (SelectedKeys() != keptKeys_ || CurrentKey() != keptCurrent_) Notify();
}

// --- Input

void ListPane::keyPressEvent(QKeyEvent* event) {
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isEnter && event->modifiers() == Qt::NoModifier) return onActivate();
    const bool isStep = event->key() == Qt::Key_Down || event->key() == Qt::Key_Up;
    // Behind a row that has gone nothing is selected: the first step takes the row that moved up.
    if (isStep && currentIndex().isValid() && !selectionModel()->hasSelection()) {
        return selectRow(currentIndex().row());
    }
    // The rows are what an operator walks, not the cells of one.
    const bool isEnd = event->key() == Qt::Key_Home || event->key() == Qt::Key_End;
    if (isEnd && event->modifiers() == Qt::NoModifier && model()->rowCount() > 0) {
        return selectRow(event->key() == Qt::Key_Home ? 0 : model()->rowCount() - 1);
    }
    QTableView::keyPressEvent(event);
}

void ListPane::mouseDoubleClickEvent(QMouseEvent* event) {
    QTableView::mouseDoubleClickEvent(event);
    if (event->button() == Qt::LeftButton && indexAt(event->pos()).isValid()) onActivate();
}

void ListPane::contextMenuEvent(QContextMenuEvent* event) {
    QPoint place = event->globalPos();
    if (event->reason() == QContextMenuEvent::Keyboard) {
        const QRect row = visualRect(currentIndex());
        place = viewport()->mapToGlobal(QPoint(kIconColumnWidth, row.isValid() ? row.bottom() : 0));
    }
    onPopup(place);
}

void ListPane::paintEvent(QPaintEvent* event) {
    QTableView::paintEvent(event);
    if (rows_.rowCount() > 0 || emptyText_.isEmpty()) return;
    QPainter painter(viewport());
    painter.setPen(palette().color(QPalette::PlaceholderText));
    painter.drawText(viewport()->rect(), Qt::AlignCenter, emptyText_);
}

}  // namespace nordkeep
