#pragma once

#include "platform/Text.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace nordkeep {

struct Rgb {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;
    friend bool operator==(const Rgb&, const Rgb&) = default;
};

/// The colours of a cell; none: those of the theme.
struct CellColors {
    std::optional<Rgb> background{};
    std::optional<Rgb> text{};
    friend bool operator==(const CellColors&, const CellColors&) = default;
};

/// A small picture in front of a row or a tree node. Each has its own shape, so that none depends on colour.
enum class Glyph {
    None,
    StatusNew,  // the six statuses of an alarm, in their order
    StatusCommented,
    StatusNewWaiting,
    StatusCommentedWaiting,
    StatusReset,
    StatusEnded,
    LogFailure,
    LogInformation,
    LogOddity,
    LogAlarm,
    ObjectInService,
    ObjectServicePlanned,
    ObjectFailed,
    ObjectInUse,
    TreePlain,
    TreeAlive,
    TreeFailed,
    LineUp,
    LineAwaits,
    LineFailed,
    LineShut,
    LineMuted,
    LineQuiet,
    Priority1,
    Priority2,
    Priority3,
    PriorityLow,
};

/// What stands behind a row whose colours nobody has set; the view knows the colours.
enum class RowGround { Plain, Waits, Commented, Reset, Ended };

/// One change of the rows that a model shows.
struct RowChange {
    enum class Kind { Insert, Remove, Move, Reset };
    Kind kind = Kind::Reset;
    int first = 0;  // of the rows inserted, removed or moved
    int last = 0;
    int to = 0;  // Move: the place of the row afterwards
};

/// Who shows the rows of a model. Every change is told before and after it happens; a round of changes
/// belongs to one repaint.
class RowObserver {
 public:
    virtual ~RowObserver() = default;
    virtual void RoundBegins() = 0;
    virtual void Before(const RowChange& change) = 0;
    virtual void After(const RowChange& change) = 0;
    /// The cells of these rows are to be painted again.
    virtual void CellsChanged(int first, int last) = 0;
    virtual void RoundEnds() = 0;
};

enum class SortDirection { None, Ascending, Descending };

/// How a list is sorted.
struct Sorting {
    int column = -1;
    SortDirection direction = SortDirection::None;
    /// A click on a heading: ascending, descending, unsorted, and so on.
    void Click(int clicked);
};

/// A list on the screen: rows with texts, pictures and colours, all made when they are asked for. Rows and
/// columns count from 0; a row is named by its key, which it keeps for its life. For a row or column that is
/// not there the answers are empty.
class RowModel {
 public:
    virtual ~RowModel() = default;
    RowModel() = default;
    RowModel(const RowModel&) = delete;
    RowModel& operator=(const RowModel&) = delete;

    virtual int RowCount() const = 0;
    virtual int ColumnCount() const = 0;
    virtual Text Heading(int column) const = 0;
    virtual Text Cell(int row, int column) const = 0;
    virtual Text KeyOf(int row) const = 0;
    /// -1 for a key that is not shown.
    virtual int RowOf(TextView key) const = 0;
    /// There is a row with this key, shown or hidden.
    virtual bool Has(TextView key) const { return RowOf(key) >= 0; }

    virtual Glyph Icon(int) const { return Glyph::None; }
    /// Whether rows may have a text beside their icons.
    virtual bool HasIconTexts() const { return false; }
    /// At most two characters beside the icon.
    virtual Text IconText(int) const { return {}; }
    /// What the icon says, in words.
    virtual Text IconWord(int) const { return {}; }
    /// Column -1 is that of the icon.
    virtual CellColors Colors(int, int) const { return {}; }
    virtual Text ToolTip(int, int) const { return {}; }
    /// In front of the text of a cell.
    virtual Glyph CellSign(int, int) const { return Glyph::None; }
    virtual RowGround Ground(int) const { return RowGround::Plain; }
    /// Nobody has looked at it yet.
    virtual bool IsUnread(int) const { return false; }
    /// The default width of a column, in device-independent pixels.
    virtual int DefaultWidth(int) const { return 200; }

    /// A click on a heading: ascending, descending, unsorted, and so on.
    virtual void ClickHeading(int) {}
    /// As it was kept from the last time; a column that is not there sorts nothing.
    virtual void Sort(Sorting) {}
    virtual int SortColumn() const { return -1; }
    virtual SortDirection Direction() const { return SortDirection::None; }

    /// Shows what has changed since the last time.
    virtual void Flush() {}

    /// One observer; none ends it.
    void SetObserver(RowObserver* observer) { observer_ = observer; }

 protected:
    /// Tells the observer before and after the change itself.
    template <class Change>
    void Tell(const RowChange& what, Change&& change) {
        if (observer_) observer_->Before(what);
        change();
        if (observer_) observer_->After(what);
    }
    void TellCells(int first, int last) {
        if (observer_) observer_->CellsChanged(first, last);
    }
    void TellRoundBegins() {
        if (observer_) observer_->RoundBegins();
    }
    void TellRoundEnds() {
        if (observer_) observer_->RoundEnds();
    }

 private:
    RowObserver* observer_ = nullptr;
};

/// The text for a screen: control characters become blanks.
Text Printable(Text text);

/// A key whose bytes sort as people sort texts: without regard to case, accents behind their letters, å ä ö
/// at the end, and runs of digits by their number.
Text CollationKey(TextView text);

}  // namespace nordkeep
