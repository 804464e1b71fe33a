#pragma once

#include "console/lists/AlarmCells.h"
#include "console/lists/ListColumns.h"

#include <array>
#include <map>
#include <memory>
#include <set>
#include <unordered_map>

namespace nordkeep {

/// One row of an alarm list. Everything but the key and the icon is the list's own.
struct ListItem {
    std::int32_t filePointer = 0;
    int icon = 0;  // the status, 0 to 5

    std::uint64_t arrival = 0;  // place in the order of arrival
    Text sortKey{};             // by which the row stands where it stands
    Text searchText{};          // what a filter looks through; empty until it does
    bool isShown = false;       // stands among the rows that are shown
    bool isMarked = false;      // is to be painted again, and perhaps moved
    bool isGone = false;
    bool isCounted = false;  // by its priority
    bool isUnread = false;   // until it is selected for the first time
    int priority = 0;        // below 1: none
};

/// How the rows of both alarm lists look.
struct AlarmRowLooks {
    const AlarmCells* cells = nullptr;  // none: rows without texts
    AlarmColorSettings colors{};
    bool hasToolTips = false;
};

/// The rows of one list of alarms. Changes cost the same however many rows there are, and are shown at the
/// next Flush, which tells exactly what has come, gone, moved or changed.
class AlarmRows final : public RowModel {
 public:
    AlarmRows() = default;

    void SetLooks(const AlarmRowLooks* looks, AlarmColumns columns);
    const AlarmColumns& Columns() const { return columns_; }

    /// All rows, also those that a filter hides or that are not shown yet.
    std::size_t Count() const { return items_.size(); }
    bool Holds(std::int32_t filePointer) const { return items_.contains(filePointer); }
    /// Adds or marks the row of a record.
    ListItem& Update(const cAlarm& alarm);
    /// A row that comes is unread until somebody selects it; not while stored alarms are read.
    void MarkNewUnread(bool isOn) { marksUnread_ = isOn; }
    void NoteRead(const std::vector<Text>& keys);
    /// Unread rows that stand outside those that can be seen, rows `first` to `last`.
    struct News {
        int above = 0;  // of very many the split is a rough one
        int below = 0;
        int hidden = 0;           // by the filter
        int highestPriority = 0;  // the lowest number above 0
        Text next{};              // the key of the nearest
        int Count() const { return above + below + hidden; }
    };
    News NewsOutside(int first, int last) const;
    /// Below 1: none.
    int PriorityOf(std::int32_t filePointer) const;
    /// How many rows have priority 1, 2, 3, and another one.
    using PriorityCounts = std::array<int, 4>;
    const PriorityCounts& CountsByPriority() const { return counts_; }
    void Remove(std::int32_t filePointer);
    /// The next Flush renews everything in one go.
    void MarkAll() { isAllMarked_ = true; }
    bool IsMarked() const;

    /// All words must stand in the shown columns of a row; an empty text shows all rows.
    void SetFilter(TextView words);
    bool IsFiltered() const { return !words_.empty(); }
    std::size_t HiddenCount() const { return items_.size() - shown_.size(); }

    /// All shown columns of a row, separated by `delimiter`.
    Text Line(int row, char delimiter) const;

    int RowCount() const override { return static_cast<int>(shown_.size()); }
    int ColumnCount() const override { return static_cast<int>(columns_.fields.size()); }
    Text Heading(int column) const override;
    Text Cell(int row, int column) const override;
    Text KeyOf(int row) const override;
    int RowOf(TextView key) const override;
    bool Has(TextView key) const override;
    Glyph Icon(int row) const override;
    Text IconText(int row) const override;
    Text IconWord(int row) const override;
    /// In the column of the priority.
    Glyph CellSign(int row, int column) const override;
    RowGround Ground(int row) const override;
    bool IsUnread(int row) const override;
    CellColors Colors(int row, int column) const override;
    Text ToolTip(int row, int column) const override;
    void ClickHeading(int column) override;
    void Sort(Sorting sorting) override;
    int SortColumn() const override { return sorting_.column; }
    SortDirection Direction() const override { return sorting_.direction; }
    void Flush() override;

 private:
    using Items = std::vector<ListItem*>;

    const ListItem* ItemAt(int row) const;
    const cAlarm* RecordAt(int row) const;
    int FieldAt(int column) const;
    Text PriorityOf(const cAlarm& alarm) const;

    bool StandsBefore(const ListItem& a, const ListItem& b) const;
    Text NewSortKey(const ListItem& item) const;
    bool PassesFilter(ListItem& item) const;
    std::size_t PlaceFor(const ListItem& item) const;
    std::size_t PlaceOf(const ListItem& item) const;

    void Count(const ListItem& item, int by);
    void CountUnread(const ListItem& item, int by);
    void AddExactly(News& news, int first, int last) const;
    void AddRoughly(News& news, int first, int last) const;
    void FlushWhenTooMuchWaits();
    bool IsWorthAReset() const;
    void ShowAll();
    void ShowRemovals();
    void ShowMarked();
    void ShowAdditions();
    void TakeOut(std::size_t first, std::size_t last);
    bool MoveWhenNeeded(ListItem& item);
    void TellCellsOf(const Items& items);

    const AlarmRowLooks* looks_ = nullptr;
    AlarmColumns columns_{};
    std::unordered_map<std::int32_t, std::unique_ptr<ListItem>> items_{};
    Items shown_{};  // in the order of the screen
    Items added_{};
    Items marked_{};
    std::vector<std::unique_ptr<ListItem>> gone_{};
    std::uint64_t lastArrival_ = 0;
    bool isAllMarked_ = false;
    bool marksUnread_ = false;
    std::set<std::int32_t> unread_{};
    std::map<int, int> unreadByPriority_{};  // how many of them
    PriorityCounts counts_{};
    std::vector<Text> words_{};
    Sorting sorting_{};
};

}  // namespace nordkeep
