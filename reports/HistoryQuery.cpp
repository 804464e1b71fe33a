#include "reports/HistoryQuery.h"

#include "pipeline/DispatchSettings.h"
#include "runtime/Fields.h"

#include <algorithm>
#include <array>

namespace nordkeep {
namespace {

constexpr std::string_view kEvent = "event";
/// Of these the program lives.
constexpr std::array<std::string_view, 3> kNotShown = {"waiting", "done", "removed"};
/// Tells more than the deed that brought it about only where one record is looked at.
constexpr std::string_view kChange = "change";

bool Has(TextView text, const Text& wanted) {
    return wanted.empty() || FindNoCase(text, wanted) != Text::npos;
}

bool HasOneOf(std::initializer_list<TextView> texts, const Text& wanted) {
    return wanted.empty() || std::ranges::any_of(texts, [&](TextView text) { return Has(text, wanted); });
}

bool IsShown(const HistoryQuery& query, std::string_view kind) {
    if (kind == kChange) return !query.event.empty();
    return std::ranges::find(kNotShown, kind) == kNotShown.end();
}

}  // namespace

bool Fits(const HistoryQuery& query, const JournalRow& row) {
    using What = HistoryQuery::What;
    if (!IsShown(query, row.kind)) return false;
    const bool isAlarm = row.kind == kEvent;
    if (query.what == What::Alarms && !isAlarm) return false;
    if (query.what == What::Deeds && isAlarm) return false;
    if (!query.doer.empty() && row.user.empty() && row.station.empty()) return false;
    if (query.priority.empty()) return true;
    const PriorityRange range = ParsePriorityRange(query.priority);
    return !row.priority.empty() && range.Holds(LeadingInt32(row.priority));
}

bool Fits(const HistoryQuery& query, const HistoryEntry& entry) {
    return HasOneOf({entry.object, entry.objectName}, query.object) &&
           HasOneOf({entry.type, entry.typeName}, query.type) &&
           HasOneOf({entry.user, entry.station}, query.doer) &&
           HasOneOf({entry.text, entry.comment, entry.object, entry.objectName, entry.type, entry.typeName},
                    query.text);
}

}  // namespace nordkeep
