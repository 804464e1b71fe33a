#include "console/lists/AlarmRows.h"

#include "runtime/Fields.h"

#include <algorithm>
#include <utility>

namespace nordkeep {
namespace {

constexpr int kIconColumn = -1;
// With more changes than this in one round, a view is quicker when it begins anew.
constexpr std::size_t kMostSingleChanges = 2000;
// Changes that may wait for a Flush; a copy without a screen may never call it.
constexpr std::size_t kMostWaiting = 20000;
// So many unread rows are looked for one by one.
constexpr std::size_t kMostToFind = 64;

void NotePriority(AlarmRows::News& news, int priority) {
    const bool isHigher = news.highestPriority == 0 || priority < news.highestPriority;
    if (priority > 0 && isHigher) news.highestPriority = priority;
}

bool IsShortNumber(TextView text) {
    return IsNumeric(text) && text.size() <= 2;
}

}  // namespace

void AlarmRows::SetLooks(const AlarmRowLooks* looks, AlarmColumns columns) {
    looks_ = looks;
    columns_ = std::move(columns);
    sorting_ = {};
    for (const auto& [key, item] : items_) item->searchText = Text();
    MarkAll();
}

// --- The rows

ListItem& AlarmRows::Update(const cAlarm& alarm) {
    std::unique_ptr<ListItem>& item = items_[alarm.m_FilePointer];
    if (!item) {
        item = std::make_unique<ListItem>();
        item->filePointer = alarm.m_FilePointer;
        item->arrival = ++lastArrival_;
        item->isMarked = true;
        item->isUnread = marksUnread_;
        if (marksUnread_) unread_.insert(alarm.m_FilePointer);
        if (marksUnread_) CountUnread(*item, 1);
        added_.push_back(item.get());
    } else if (!item->isMarked) {
        item->isMarked = true;
        marked_.push_back(item.get());
    }
    const bool hasIcon = alarm.m_Status >= kStatusNew && alarm.m_Status <= kStatusAcknowledged;
    item->icon = hasIcon ? alarm.m_Status : kStatusNew;
    ListItem& row = *item;
    if (row.isCounted) Count(row, -1);
    if (row.isUnread) CountUnread(row, -1);
    row.priority = IsShortNumber(alarm.m_TranslatedPrio) ? LeadingInt32(alarm.m_TranslatedPrio) : 0;
    row.isCounted = true;
    Count(row, 1);
    if (row.isUnread) CountUnread(row, 1);
    row.searchText.clear();
    FlushWhenTooMuchWaits();
    return row;
}

void AlarmRows::Remove(std::int32_t filePointer) {
    auto known = items_.extract(filePointer);
    if (known.empty()) return;
    known.mapped()->isGone = true;
    Count(*known.mapped(), -1);
    if (unread_.erase(filePointer) > 0) CountUnread(*known.mapped(), -1);
    gone_.push_back(std::move(known.mapped()));
    FlushWhenTooMuchWaits();
}

void AlarmRows::Count(const ListItem& item, int by) {
    const int place = item.priority >= 1 && item.priority <= 3 ? item.priority - 1 : 3;
    counts_[static_cast<std::size_t>(place)] += by;
}

void AlarmRows::CountUnread(const ListItem& item, int by) {
    unreadByPriority_[item.priority] += by;
}

int AlarmRows::PriorityOf(std::int32_t filePointer) const {
    const auto known = items_.find(filePointer);
    return known != items_.end() ? known->second->priority : 0;
}

void AlarmRows::NoteRead(const std::vector<Text>& keys) {
    for (const Text& key : keys) {
        if (unread_.erase(LeadingInt32(key)) == 0) continue;
        ListItem& item = *items_.at(LeadingInt32(key));
        CountUnread(item, -1);
        item.isUnread = false;
        if (std::exchange(item.isMarked, true)) continue;
        marked_.push_back(&item);
    }
}

Glyph AlarmRows::CellSign(int row, int column) const {
    const cAlarm* alarm = column >= 0 && column == columns_.priorityColumn ? RecordAt(row) : nullptr;
    const Text priority = alarm ? PriorityOf(*alarm) : Text();
    const int number = IsShortNumber(priority) ? LeadingInt32(priority) : 0;
    if (number < 1) return Glyph::None;
    return static_cast<Glyph>(static_cast<int>(Glyph::Priority1) + std::min(number, 4) - 1);
}

RowGround AlarmRows::Ground(int row) const {
    constexpr RowGround kGrounds[] = {RowGround::Plain,     RowGround::Commented, RowGround::Waits,
                                      RowGround::Commented, RowGround::Reset,     RowGround::Ended};
    const ListItem* item = ItemAt(row);
    const bool isWanted = looks_ && looks_->colors.behaviour == AlarmColorBehaviour::RowByStatus;
    if (!item || !isWanted || item->icon < 0 || item->icon > 5) return RowGround::Plain;
    return kGrounds[item->icon];
}

bool AlarmRows::IsUnread(int row) const {
    const ListItem* item = ItemAt(row);
    return item && item->isUnread;
}

AlarmRows::News AlarmRows::NewsOutside(int first, int last) const {
    News news;
    if (unread_.empty()) return news;
    unread_.size() <= kMostToFind ? AddExactly(news, first, last) : AddRoughly(news, first, last);
    return news;
}

void AlarmRows::AddExactly(News& news, int first, int last) const {
    int nearest = 0;
    for (const std::int32_t filePointer : unread_) {
        const ListItem& item = *items_.at(filePointer);
        const int row = item.isShown ? static_cast<int>(PlaceOf(item)) : -1;
        if (row >= first && row <= last) continue;
        // A row that is not in the list yet comes with the next Flush.
        if (row < 0 && !IsFiltered()) continue;
        ++(row < 0 ? news.hidden : row < first ? news.above : news.below);
        NotePriority(news, item.priority);
        const int distance = row < first ? first - row : row - last;
        if (row < 0 || (nearest != 0 && distance >= nearest)) continue;
        nearest = distance;
        news.next = KeyOf(row);
    }
}

// In a flood nobody counts them one by one: what matters is that there are more, and where the next one is.
void AlarmRows::AddRoughly(News& news, int first, int last) const {
    std::map<int, int> left = unreadByPriority_;
    int seen = 0;
    for (int row = std::max(first, 0); row <= std::min(last, RowCount() - 1); ++row) {
        if (!IsUnread(row)) continue;
        ++seen;
        --left[ItemAt(row)->priority];
    }
    for (const auto& [priority, count] : left) {
        if (count > 0) NotePriority(news, priority);
    }
    const int outside = static_cast<int>(unread_.size()) - seen;
    int above = std::min(first, RowCount()) - 1;
    while (above >= 0 && !IsUnread(above)) --above;
    int below = std::max(std::min(last, RowCount() - 1) + 1, 0);
    while (below < RowCount() && !IsUnread(below)) ++below;
    const bool isBelow = below < RowCount();
    const bool isAbove = above >= 0;
    news.above = isAbove ? (isBelow ? 1 : outside) : 0;
    news.below = isBelow ? outside - news.above : 0;
    news.hidden = isAbove || isBelow ? 0 : outside;
    if (isAbove || isBelow) news.next = KeyOf(isBelow ? below : above);
}

void AlarmRows::FlushWhenTooMuchWaits() {
    if (gone_.size() + added_.size() + marked_.size() > kMostWaiting) Flush();
}

bool AlarmRows::IsMarked() const {
    return isAllMarked_ || !gone_.empty() || !added_.empty() || !marked_.empty();
}

const ListItem* AlarmRows::ItemAt(int row) const {
    return row >= 0 && row < RowCount() ? shown_[static_cast<std::size_t>(row)] : nullptr;
}

const cAlarm* AlarmRows::RecordAt(int row) const {
    const ListItem* item = ItemAt(row);
    return item && !item->isGone && looks_ && looks_->cells ? looks_->cells->RecordOf(item->filePointer)
                                                            : nullptr;
}

int AlarmRows::FieldAt(int column) const {
    return column >= 0 && column < ColumnCount() ? columns_.fields[static_cast<std::size_t>(column)] : -1;
}

// --- What a view asks

Text AlarmRows::Heading(int column) const {
    const int field = FieldAt(column);
    return field >= 0 && looks_ && looks_->cells ? looks_->cells->Heading(field) : Text();
}

Text AlarmRows::Cell(int row, int column) const {
    static const int kNumberField = AlarmFieldNumber("NUMBER").value_or(-1);
    const cAlarm* alarm = RecordAt(row);
    const int field = FieldAt(column);
    if (!alarm || field < 0) return {};
    if (field == kNumberField) return std::to_string(row + 1);
    const int date = AlarmCells::DateFieldOf(field);
    const bool standsAlone = date >= 0 && std::ranges::find(columns_.fields, date) == columns_.fields.end();
    return standsAlone ? looks_->cells->CellWithoutDate(*alarm, field) : looks_->cells->Cell(*alarm, field);
}

Text AlarmRows::Line(int row, char delimiter) const {
    Text line;
    for (int column = 0; column < ColumnCount(); ++column) {
        if (column > 0) line += delimiter;
        line += Cell(row, column);
    }
    return line;
}

Text AlarmRows::KeyOf(int row) const {
    const ListItem* item = ItemAt(row);
    return item ? std::to_string(item->filePointer) + "K" : Text();
}

bool AlarmRows::Has(TextView key) const {
    return Holds(LeadingInt32(key));
}

int AlarmRows::RowOf(TextView key) const {
    const auto known = items_.find(LeadingInt32(key));
    if (known == items_.end() || !known->second->isShown) return -1;
    return static_cast<int>(PlaceOf(*known->second));
}

Glyph AlarmRows::Icon(int row) const {
    const ListItem* item = ItemAt(row);
    return item ? static_cast<Glyph>(static_cast<int>(Glyph::StatusNew) + item->icon) : Glyph::None;
}

Text AlarmRows::PriorityOf(const cAlarm& alarm) const {
    const int field = FieldAt(columns_.priorityColumn);
    if (field < 0) return {};
    static const int kRawPriority = AlarmFieldNumber("PRIO").value_or(-1);
    return field == kRawPriority ? alarm.m_Prio : alarm.m_TranslatedPrio;
}

Text AlarmRows::IconText(int row) const {
    const cAlarm* alarm = RecordAt(row);
    if (!alarm) return {};
    const Text priority = PriorityOf(*alarm);
    return IsShortNumber(priority) ? priority : Text();
}

Text AlarmRows::IconWord(int row) const {
    const ListItem* item = ItemAt(row);
    return item && looks_ && looks_->cells ? looks_->cells->StatusWord(item->icon) : Text();
}

CellColors AlarmRows::Colors(int row, int column) const {
    static const int kPriorityFields[] = {AlarmFieldNumber("PRIO").value_or(-1),
                                          AlarmFieldNumber("TRPRIO").value_or(-1)};
    const cAlarm* alarm = RecordAt(row);
    if (!alarm) return {};
    const int field = FieldAt(column);
    const bool isPriority = field == kPriorityFields[0] || field == kPriorityFields[1];
    const Text priority = PriorityOf(*alarm);
    return ColorsOf(looks_->colors,
                    {.status = alarm->m_Status,
                     .priority = priority,
                     .isIconOrPriority = column == kIconColumn || (field >= 0 && isPriority)});
}

Text AlarmRows::ToolTip(int row, int column) const {
    if (column == kIconColumn) return IconWord(row);
    const cAlarm* alarm = looks_ && looks_->hasToolTips ? RecordAt(row) : nullptr;
    return alarm ? looks_->cells->ToolTip(*alarm) : Text();
}

// --- Order and filter

Text AlarmRows::NewSortKey(const ListItem& item) const {
    const int field = FieldAt(sorting_.column);
    if (field < 0 || !looks_ || !looks_->cells) return {};
    const cAlarm* alarm = looks_->cells->RecordOf(item.filePointer);
    return alarm ? looks_->cells->SortKey(*alarm, field) : Text();
}

bool AlarmRows::StandsBefore(const ListItem& a, const ListItem& b) const {
    const int order = sorting_.column < 0 ? 0 : a.sortKey.compare(b.sortKey);
    if (order != 0) return sorting_.direction == SortDirection::Descending ? order > 0 : order < 0;
    return a.arrival < b.arrival;
}

std::size_t AlarmRows::PlaceFor(const ListItem& item) const {
    const auto before = [this](const ListItem* a, const ListItem& b) { return StandsBefore(*a, b); };
    const auto at = std::lower_bound(shown_.begin(), shown_.end(), item, before);
    return static_cast<std::size_t>(at - shown_.begin());
}

std::size_t AlarmRows::PlaceOf(const ListItem& item) const {
    return PlaceFor(item);  // no two rows stand at the same place
}

bool AlarmRows::PassesFilter(ListItem& item) const {
    if (words_.empty() || !looks_ || !looks_->cells) return true;
    if (item.searchText.empty()) {
        const cAlarm* alarm = looks_->cells->RecordOf(item.filePointer);
        if (!alarm) return false;
        item.searchText = looks_->cells->SearchText(*alarm, columns_.fields);
    }
    return std::ranges::all_of(words_,
                               [&](const Text& word) { return item.searchText.find(word) != Text::npos; });
}

void AlarmRows::SetFilter(TextView words) {
    std::vector<Text> upper;
    for (const Text& word : Split(UpperCase(words), ' ')) {
        if (!word.empty()) upper.push_back(word);
    }
    if (upper == words_) return;
    words_ = std::move(upper);
    if (words_.empty()) {
        for (const auto& [key, item] : items_) item->searchText = Text();
    }
    MarkAll();
    Flush();
}

void AlarmRows::ClickHeading(int column) {
    if (FieldAt(column) < 0) return;
    sorting_.Click(column);
    // The number is that of the place, so it has no order of its own.
    MarkAll();
    Flush();
}

void AlarmRows::Sort(Sorting sorting) {
    sorting_ = FieldAt(sorting.column) < 0 ? Sorting() : sorting;
    MarkAll();
    Flush();
}

// --- Showing the changes

bool AlarmRows::IsWorthAReset() const {
    return isAllMarked_ || gone_.size() + added_.size() + marked_.size() > kMostSingleChanges;
}

void AlarmRows::Flush() {
    if (!IsMarked()) return;
    TellRoundBegins();
    if (IsWorthAReset()) {
        ShowAll();
    } else {
        ShowRemovals();
        ShowMarked();
        ShowAdditions();
    }
    TellRoundEnds();
}

void AlarmRows::ShowAll() {
    Tell({.kind = RowChange::Kind::Reset}, [this] {
        shown_.clear();
        for (const auto& [key, item] : items_) {
            item->isMarked = false;
            item->isShown = PassesFilter(*item);
            item->sortKey = NewSortKey(*item);
            if (item->isShown) shown_.push_back(item.get());
        }
        std::sort(shown_.begin(), shown_.end(),
                  [this](const ListItem* a, const ListItem* b) { return StandsBefore(*a, *b); });
        added_.clear();
        marked_.clear();
        gone_.clear();
        isAllMarked_ = false;
    });
}

void AlarmRows::TakeOut(std::size_t first, std::size_t last) {
    const auto begin = shown_.begin();
    Tell({RowChange::Kind::Remove, static_cast<int>(first), static_cast<int>(last)}, [&] {
        for (std::size_t at = first; at <= last; ++at) shown_[at]->isShown = false;
        shown_.erase(begin + static_cast<std::ptrdiff_t>(first),
                     begin + static_cast<std::ptrdiff_t>(last) + 1);
    });
}

void AlarmRows::ShowRemovals() {
    std::erase_if(added_, [](const ListItem* item) { return item->isGone; });
    std::erase_if(marked_, [](const ListItem* item) { return item->isGone; });
    std::vector<std::size_t> places;
    for (const auto& item : gone_) {
        if (item->isShown) places.push_back(PlaceOf(*item));
    }
    std::sort(places.begin(), places.end());
    // From the bottom, so that the places above stay right.
    for (std::size_t end = places.size(); end > 0;) {
        std::size_t begin = end - 1;
        while (begin > 0 && places[begin - 1] + 1 == places[begin]) --begin;
        TakeOut(places[begin], places[end - 1]);
        end = begin;
    }
    gone_.clear();
}

/// True when the row has stayed where it was.
bool AlarmRows::MoveWhenNeeded(ListItem& item) {
    Text newKey = NewSortKey(item);
    if (newKey == item.sortKey) return true;
    const std::size_t from = PlaceOf(item);
    Text oldKey = std::exchange(item.sortKey, std::move(newKey));
    // Of the others each half is in order, so the new place is the number of rows before it.
    const auto before = [this](const ListItem* a, const ListItem* b) { return StandsBefore(*a, *b); };
    const auto middle = shown_.begin() + static_cast<std::ptrdiff_t>(from);
    const auto above = std::lower_bound(shown_.begin(), middle, &item, before) - shown_.begin();
    const auto below = std::lower_bound(middle + 1, shown_.end(), &item, before) - (middle + 1);
    const std::size_t to = static_cast<std::size_t>(above + below);
    if (to == from) return true;
    std::swap(item.sortKey, oldKey);
    const RowChange move{RowChange::Kind::Move, static_cast<int>(from), static_cast<int>(from),
                         static_cast<int>(to)};
    Tell(move, [&] {
        item.sortKey = std::move(oldKey);
        const auto at = [this](std::size_t place) {
            return shown_.begin() + static_cast<std::ptrdiff_t>(place);
        };
        if (to > from) std::rotate(at(from), at(from) + 1, at(to) + 1);
        if (to < from) std::rotate(at(to), at(from), at(from) + 1);
    });
    return false;
}

void AlarmRows::ShowMarked() {
    Items changed;
    for (ListItem* item : std::exchange(marked_, {})) {
        item->isMarked = false;
        const bool passes = PassesFilter(*item);
        if (!passes && item->isShown) {
            const std::size_t place = PlaceOf(*item);
            TakeOut(place, place);
        } else if (passes && !item->isShown) {
            added_.push_back(item);
        } else if (passes) {
            MoveWhenNeeded(*item);
            changed.push_back(item);
        }
    }
    TellCellsOf(changed);
}

void AlarmRows::TellCellsOf(const Items& items) {
    std::vector<std::size_t> places;
    for (const ListItem* item : items) places.push_back(PlaceOf(*item));
    std::sort(places.begin(), places.end());
    for (std::size_t begin = 0; begin < places.size();) {
        std::size_t end = begin + 1;
        while (end < places.size() && places[end] <= places[end - 1] + 1) ++end;
        TellCells(static_cast<int>(places[begin]), static_cast<int>(places[end - 1]));
        begin = end;
    }
}

void AlarmRows::ShowAdditions() {
    Items coming;
    for (ListItem* item : std::exchange(added_, {})) {
        item->isMarked = false;
        item->sortKey = NewSortKey(*item);
        if (PassesFilter(*item)) coming.push_back(item);
    }
    std::sort(coming.begin(), coming.end(),
              [this](const ListItem* a, const ListItem* b) { return StandsBefore(*a, *b); });
    for (std::size_t begin = 0; begin < coming.size();) {
        const std::size_t place = PlaceFor(*coming[begin]);
        std::size_t end = begin + 1;
        while (end < coming.size() &&
               (place == shown_.size() || StandsBefore(*coming[end], *shown_[place]))) {
            ++end;
        }
        const auto last = static_cast<int>(place + (end - begin) - 1);
        Tell({RowChange::Kind::Insert, static_cast<int>(place), last}, [&] {
            for (std::size_t at = begin; at < end; ++at) coming[at]->isShown = true;
            const auto from = coming.begin();
            shown_.insert(shown_.begin() + static_cast<std::ptrdiff_t>(place),
                          from + static_cast<std::ptrdiff_t>(begin), from + static_cast<std::ptrdiff_t>(end));
        });
        begin = end;
    }
}

}  // namespace nordkeep
