#include "console/history/HistoryRows.h"

#include "console/lists/SharedCaptions.h"
#include "runtime/Dates.h"
#include "runtime/Doer.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace nordkeep {
namespace {

constexpr int kCaptionFirstColumn = 5502;
constexpr int kCaptionFirstKind = 5510;
constexpr int kCaptionHere = 5573;

enum Column { Time, What, Object, Type, Priority, Content, By, Comment };
constexpr int kWidths[] = {140, 96, 240, 120, 36, 180, 90, 160};

constexpr std::array<TextView, 15> kKinds = {"event",   "change",    "comment", "end",    "archive",
                                             "service", "alivetest", "edit",    "login",  "logout",
                                             "refused", "send",      "silence", "reopen", "handover"};

/// The name, with the code behind it where that says more.
Text NameAndCode(const Text& name, const Text& code) {
    if (name.empty() || name == code) return code;
    return code.empty() ? name : name + " (" + code + ")";
}

}  // namespace

Text KindText(const Captions& captions, TextView kind) {
    const auto known = std::ranges::find(kKinds, kind);
    if (known == kKinds.end()) return Text(kind);
    return captions(kCaptionFirstKind + static_cast<int>(known - kKinds.begin()));
}

Text DoerText(const Captions& captions, const HistoryEntry& entry) {
    const Text station = entry.station == kHere ? captions(kCaptionHere) : entry.station;
    return entry.user.empty() ? station : entry.user;
}

void HistoryRows::Clear() {
    Renew([&] { entries_.clear(); });
}

void HistoryRows::Add(const std::vector<HistoryEntry>& entries) {
    if (entries.empty()) return;
    Renew([&] { entries_.insert(entries_.end(), entries.begin(), entries.end()); });
}

const HistoryEntry* HistoryRows::EntryOf(TextView key) const {
    const int source = SourceOf(RowOf(key));
    return source < 0 ? nullptr : &entries_[static_cast<std::size_t>(source)];
}

int HistoryRows::ColumnCount() const {
    return static_cast<int>(std::size(kWidths));
}

Text HistoryRows::Heading(int column) const {
    return column >= 0 && column < ColumnCount() ? captions_(kCaptionFirstColumn + column) : Text();
}

int HistoryRows::DefaultWidth(int column) const {
    return column >= 0 && column < ColumnCount() ? kWidths[column] : 0;
}

Text HistoryRows::Value(const HistoryEntry& entry, int column) const {
    switch (column) {
        case Time:
            return FormatDate(entry.time, "YYYY-MM-DD HH:NN:SS");
        case What: {
            const Text kind = KindText(captions_, entry.kind);
            const bool isState = entry.kind == "change" && entry.status >= 0 && entry.status <= 5;
            return isState ? kind + ": " + captions_(kCaptionFirstStatus + entry.status) : kind;
        }
        case Object:
            return NameAndCode(entry.objectName, entry.object);
        case Type:
            return entry.typeName.empty() ? entry.type : entry.typeName;
        case Priority:
            return entry.priority;
        case Content:
            return entry.text;
        case By:
            return DoerText(captions_, entry);
        case Comment:
            return entry.comment;
        default:
            return {};
    }
}

Text HistoryRows::SourceCell(int source, int column) const {
    return Value(entries_[static_cast<std::size_t>(source)], column);
}

Text HistoryRows::SourceKey(int source) const {
    return TextOf(entries_[static_cast<std::size_t>(source)].place);
}

}  // namespace nordkeep
