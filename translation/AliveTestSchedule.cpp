#include "translation/AliveTestSchedule.h"

#include "runtime/Fields.h"

#include <algorithm>
#include <cstdint>
#include <vector>

namespace nordkeep {
namespace {

constexpr std::int64_t kNoStart = -1;

/// Seconds since midnight; a window ends in its deadline.
struct Entry {
    std::int64_t start = kNoStart;
    std::int64_t deadline = 0;
};

bool HasTimesOfDay(TextView schedule) {
    return schedule.find(':') != TextView::npos;
}

std::int64_t SecondsOf(TextView time) {
    const auto part = [time](std::size_t number) {
        return static_cast<std::int64_t>(LeadingInt32(GetField(time, number, ":")));
    };
    return part(0) * 3600 + part(1) * 60 + part(2);
}

Entry ParseEntry(TextView text) {
    const std::size_t dash = text.find('-');
    if (dash == TextView::npos) return {.deadline = SecondsOf(text)};
    return {.start = SecondsOf(text.substr(0, dash)), .deadline = SecondsOf(GetField(text, 1, "-"))};
}

/// The entries by deadline; equal deadlines keep their order.
std::vector<Entry> ParseEntries(TextView schedule) {
    std::vector<Entry> entries;
    for (const Text& piece : Split(schedule, ',')) {
        const TextView text = TrimBlanks(piece);
        if (text.empty()) break;
        if (HasTimesOfDay(text)) entries.push_back(ParseEntry(text));
    }
    std::ranges::stable_sort(entries, {}, &Entry::deadline);
    return entries;
}

/// Two or three numbers of one or two digits, within their hour and day.
bool IsTimeOfDay(TextView text) {
    constexpr std::int64_t kDay = 86400;
    const std::vector<Text> parts = Split(TrimBlanks(text), ':');
    if (parts.size() < 2 || parts.size() > 3) return false;
    for (const Text& part : parts) {
        if (!IsNumeric(part) || part.size() > 2) return false;
        if (&part != &parts.front() && LeadingNumber(part) > 59) return false;
    }
    return SecondsOf(TrimBlanks(text)) <= kDay;
}

bool IsEntry(TextView text) {
    const std::size_t dash = text.find('-');
    if (dash == TextView::npos) return IsTimeOfDay(text);
    const TextView end = text.substr(dash + 1);
    return IsTimeOfDay(text.substr(0, dash)) && IsTimeOfDay(end) &&
           ParseEntry(text).start <= ParseEntry(text).deadline;
}

ScheduleFlaw FlawOfTimes(TextView schedule) {
    bool isOver = false;
    for (const Text& piece : Split(schedule, ',')) {
        const TextView entry = TrimBlanks(piece);
        if (isOver && !entry.empty()) return ScheduleFlaw::BehindEmpty;
        isOver = isOver || entry.empty();
        if (!isOver && !IsEntry(entry)) return ScheduleFlaw::Unreadable;
    }
    return LeadingNumber(schedule) <= 0 ? ScheduleFlaw::LostOnSave : ScheduleFlaw::None;
}

OleDate NextTimeOfDay(TextView schedule, OleDate heard) {
    const std::vector<Entry> entries = ParseEntries(schedule);
    if (entries.empty()) return {};
    const OleDate today = heard.Midnight();
    const std::int64_t now = heard.SecondOfDay();
    const auto next = std::ranges::find_if(entries, [now](const Entry& e) { return e.deadline >= now; });
    if (next == entries.end()) {
        // The day is done, so this sign of life has already met tomorrow's first deadline.
        return entries.size() > 1 ? today.PlusDays(1).PlusSeconds(entries[1].deadline)
                                  : today.PlusDays(2).PlusSeconds(entries[0].deadline);
    }
    if (now < next->start) return today.PlusSeconds(next->deadline);
    const auto following = next + 1;
    return following == entries.end() ? today.PlusDays(1).PlusSeconds(entries[0].deadline)
                                      : today.PlusSeconds(following->deadline);
}

}  // namespace

bool IsScheduleInUse(TextView schedule) {
    return LeadingNumber(schedule) != 0 || HasTimesOfDay(schedule);
}

ScheduleFlaw FlawOf(TextView schedule) {
    constexpr std::size_t kMostDigits = 9;
    const TextView text = TrimBlanks(schedule);
    if (HasTimesOfDay(text)) return FlawOfTimes(text);
    const bool isNumber = text.empty() || (IsNumeric(text) && text.size() <= kMostDigits);
    return isNumber ? ScheduleFlaw::None : ScheduleFlaw::Unreadable;
}

OleDate NextDeadline(TextView schedule, OleDate heard, AliveTestPace pace) {
    if (HasTimesOfDay(schedule)) return NextTimeOfDay(schedule, heard);
    const int steps = LeadingInt32(schedule);
    return pace == AliveTestPace::Seconds ? heard.PlusSeconds(steps) : heard.PlusMinutes(steps);
}

Text ReadableSchedule(TextView schedule, TextView unit) {
    if (HasTimesOfDay(schedule)) return Text(schedule);
    const int minutes = LeadingInt32(schedule);
    Text readable =
        std::to_string(minutes / 1440) + "/" + Digits(minutes % 1440 / 60, 2) + ":" + Digits(minutes % 60, 2);
    return readable.append(" (").append(TrimBlanks(schedule)).append(" ").append(unit).append(")");
}

}  // namespace nordkeep
