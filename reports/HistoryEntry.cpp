#include "reports/HistoryEntry.h"

#include "runtime/Fields.h"
#include "runtime/Json.h"

#include <charconv>
#include <chrono>

namespace nordkeep {
namespace {

constexpr std::size_t kStampLength = 24;  // "2026-11-21T20:15:30.123Z"

/// The number at a place of the stamp; -1 for none.
int NumberAt(std::string_view stamp, std::size_t at, std::size_t digits) {
    int value = -1;
    const char* const begin = stamp.data() + at;
    const auto [end, error] = std::from_chars(begin, begin + digits, value);
    return error == std::errc() && end == begin + digits ? value : -1;
}

}  // namespace

std::int64_t UtcMsOf(std::string_view stamp) {
    if (stamp.size() != kStampLength || stamp[10] != 'T' || stamp.back() != 'Z') return 0;
    const int year = NumberAt(stamp, 0, 4);
    const int month = NumberAt(stamp, 5, 2);
    const int day = NumberAt(stamp, 8, 2);
    const int hour = NumberAt(stamp, 11, 2);
    const int minute = NumberAt(stamp, 14, 2);
    const int second = NumberAt(stamp, 17, 2);
    const int rest = NumberAt(stamp, 20, 3);
    if (year < 0 || month < 1 || day < 1 || hour < 0 || minute < 0 || second < 0 || rest < 0) return 0;
    const std::chrono::year_month_day date{std::chrono::year(year),
                                           std::chrono::month(static_cast<unsigned>(month)),
                                           std::chrono::day(static_cast<unsigned>(day))};
    if (!date.ok()) return 0;
    const std::int64_t days = std::chrono::sys_days(date).time_since_epoch().count();
    return ((days * 24 + hour) * 60 + minute) * 60'000 + second * 1000 + rest;
}

Text TextOf(const HistoryPlace& place) {
    return place.IsBegin() ? Text() : place.time + "|" + std::to_string(place.id);
}

HistoryPlace ReadHistoryPlace(TextView text) {
    const std::size_t bar = text.find('|');
    if (bar == TextView::npos || UtcMsOf(text.substr(0, bar)) == 0) return {};
    std::int64_t id = 0;
    std::from_chars(text.data() + bar + 1, text.data() + text.size(), id);
    return {.time = std::string(text.substr(0, bar)), .id = id};
}

HistoryEntry HistoryEntryOf(const JournalRow& row, const Clock& clock) {
    HistoryEntry entry{.place = {row.time, row.id},
                       .time = clock.LocalOf(UtcMsOf(row.time)),
                       .kind = row.kind,
                       .event = row.event,
                       .status = row.status.value_or(-2),
                       .priority = FromUtf8(row.priority),
                       .object = FromUtf8(row.object),
                       .type = FromUtf8(row.type),
                       .port = FromUtf8(row.port),
                       .user = FromUtf8(row.user),
                       .station = FromUtf8(row.station),
                       .text = FromUtf8(row.text)};
    const auto data = ReadJsonObject(row.data);
    if (!data) return entry;
    entry.objectName = data->String("objectName");
    entry.typeName = data->String("typeName");
    entry.set = data->String("set");
    entry.comment = data->String(row.kind == "service" ? "reason" : "comment");
    return entry;
}

Text DoerOf(const HistoryEntry& entry) {
    return entry.user.empty() ? entry.station : entry.user;
}

}  // namespace nordkeep
