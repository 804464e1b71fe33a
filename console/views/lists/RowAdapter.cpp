#include "console/views/lists/RowAdapter.h"

#include "console/views/lists/ViewParts.h"

#include <QtGui/QTextDocument>

namespace nordkeep {
namespace {

// More of a cell than this nobody sees at once.
constexpr qsizetype kMostOfACell = 1000;

}  // namespace

QString PlainToolTip(const QString& text) {
    if (!Qt::mightBeRichText(text)) return text;
    return QStringLiteral("<p style='white-space:pre-wrap'>") + text.toHtmlEscaped() + QStringLiteral("</p>");
}

RowAdapter::RowAdapter(RowModel& rows, QObject* parent) : QAbstractTableModel(parent), rows_(rows) {
    rows_.SetObserver(this);
}

RowAdapter::~RowAdapter() {
    rows_.SetObserver(nullptr);
}

void RowAdapter::OnRound(std::function<void()> begins, std::function<void()> ends) {
    rounds_.push_back({std::move(begins), std::move(ends)});
}

int RowAdapter::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : rows_.RowCount();
}

int RowAdapter::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : rows_.ColumnCount() + 1;
}

QVariant RowAdapter::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {};
    const int row = index.row();
    const int column = index.column() - 1;
    switch (role) {
        case Qt::DisplayRole:
            return column < 0 ? (rows_.HasIconTexts() ? ShownLine(rows_.IconText(row)) : QString())
                              : ShownLine(TextView(rows_.Cell(row, column)).substr(0, kMostOfACell));
        case Qt::ToolTipRole: {
            const Text tip = rows_.ToolTip(row, column);
            return tip.empty() ? QVariant() : PlainToolTip(ShownText(TextView(tip).substr(0, 4000)));
        }
        case Qt::AccessibleTextRole:
            return column < 0 ? ShownLine(rows_.IconWord(row) + " " + rows_.IconText(row)) : QVariant();
        default:
            return {};
    }
}

QVariant RowAdapter::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal) return {};
    if (role == Qt::DisplayRole) return section == 0 ? QString() : ShownLine(rows_.Heading(section - 1));
    if (role == Qt::ToolTipRole && section > 0) return PlainToolTip(ShownLine(rows_.Heading(section - 1)));
    if (role == Qt::TextAlignmentRole) return static_cast<int>(Qt::AlignLeft | Qt::AlignVCenter);
    return {};
}

void RowAdapter::RoundBegins() {
    for (const Round& round : rounds_) round.begins();
}

void RowAdapter::RoundEnds() {
    for (const Round& round : rounds_) round.ends();
}

void RowAdapter::Before(const RowChange& change) {
    switch (change.kind) {
        case RowChange::Kind::Insert:
            return beginInsertRows({}, change.first, change.last);
        case RowChange::Kind::Remove:
            return beginRemoveRows({}, change.first, change.last);
        case RowChange::Kind::Move: {
            // The toolkit names the row before which the moved one is put, as the rows stand now.
            const int before = change.to > change.first ? change.to + 1 : change.to;
            beginMoveRows({}, change.first, change.last, {}, before);
            return;
        }
        case RowChange::Kind::Reset:
            return beginResetModel();
    }
}

void RowAdapter::After(const RowChange& change) {
    switch (change.kind) {
        case RowChange::Kind::Insert:
            return endInsertRows();
        case RowChange::Kind::Remove:
            return endRemoveRows();
        case RowChange::Kind::Move:
            return endMoveRows();
        case RowChange::Kind::Reset:
            return endResetModel();
    }
}

void RowAdapter::CellsChanged(int first, int last) {
    Q_EMIT dataChanged(index(first, 0), index(last, columnCount() - 1));
}

}  // namespace nordkeep
