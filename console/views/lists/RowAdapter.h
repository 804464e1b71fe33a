#pragma once

#include "console/lists/RowModel.h"

#include <QtCore/QAbstractTableModel>

#include <functional>

namespace nordkeep {

/// Shows the rows of any list to the widgets. Column 0 is that of the icon, the columns of the list follow.
/// A row is a row of the list: nothing is copied, and a change is told as what it is.
class RowAdapter final : public QAbstractTableModel, private RowObserver {
 public:
    explicit RowAdapter(RowModel& rows, QObject* parent = nullptr);
    ~RowAdapter() override;

    RowModel& Rows() const { return rows_; }
    Text KeyAt(int row) const { return rows_.KeyOf(row); }

    /// Called around the changes of one repaint. Each adds to what was set before.
    void OnRound(std::function<void()> begins, std::function<void()> ends);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
    struct Round {
        std::function<void()> begins{};
        std::function<void()> ends{};
    };

    void RoundBegins() override;
    void Before(const RowChange& change) override;
    void After(const RowChange& change) override;
    void CellsChanged(int first, int last) override;
    void RoundEnds() override;

    RowModel& rows_;
    std::vector<Round> rounds_{};
};

/// A tool tip that shows its text as it is, whatever it looks like.
QString PlainToolTip(const QString& text);

}  // namespace nordkeep
