#include "reports/AlarmTally.h"

#include "reports/HistoryEntry.h"
#include "runtime/Fields.h"
#include "runtime/Json.h"
#include "store/Alarm.h"

#include <algorithm>
#include <charconv>

namespace nordkeep {
namespace {

constexpr std::int64_t kBinMs = AlarmFigures::kBinMinutes * 60'000;
constexpr std::int64_t kChatterMs = 60'000;
constexpr std::size_t kChatterCount = 3;

std::int32_t SecondsBetween(std::int64_t fromMs, std::int64_t toMs) {
    return static_cast<std::int32_t>(std::clamp<std::int64_t>((toMs - fromMs) / 1000, 0, INT32_MAX));
}

/// Every change carries the whole record: one number of it is found without reading the rest.
int RepeatsIn(std::string_view data) {
    constexpr std::string_view kName = "\"repeated\":";
    const std::size_t at = data.find(kName);
    int number = 0;
    if (at != std::string_view::npos)
        std::from_chars(data.data() + at + kName.size(), data.data() + data.size(), number);
    return number;
}

}  // namespace

AlarmTally::AlarmTally(OleDate from, OleDate to, const Clock& clock)
    : clock_(clock), fromMs_(clock.UtcOf(from)), toMs_(clock.UtcOf(to)) {
    figures_.from = from;
    figures_.to = to;
    const std::int64_t count = std::max<std::int64_t>(0, (toMs_ - fromMs_ + kBinMs - 1) / kBinMs);
    figures_.bins.resize(static_cast<std::size_t>(count));
}

void AlarmTally::Take(const JournalRow& row) {
    const std::int64_t ms = UtcMsOf(row.time);
    // What is still open then is stale, whatever becomes of it.
    if (ms >= toMs_ && (openCases_ == 0 || ms >= toMs_ + kStaleMs)) isDone_ = true;
    if (isDone_ || ms < fromMs_ || row.event.empty()) return;
    if (row.kind == "event") return ms < toMs_ ? TakeEvent(row, ms) : void();
    if (row.kind == "change" || row.kind == "removed") return TakeChange(row, ms);
    TakeDeed(row, ms);
}

std::uint32_t AlarmTally::SourceOf(const JournalRow& row) {
    const auto [known, isNew] =
        sourceOf_.try_emplace(row.object + '\n' + row.type, static_cast<std::uint32_t>(sources_.size()));
    if (!isNew) return known->second;
    Source source{.shown = {.object = FromUtf8(row.object), .type = FromUtf8(row.type)}};
    if (const auto data = ReadJsonObject(row.data)) {
        source.shown.name = data->String("objectName");
        const Text& typeName = data->String("typeName");
        // What no set knows keeps its code for a name.
        source.isUnknown = data->String("set").empty() || source.shown.name == source.shown.object ||
                           typeName == source.shown.type;
        if (!typeName.empty()) source.shown.type = typeName;
    }
    const auto [object, isNewObject] =
        objectOf_.try_emplace(row.object, static_cast<std::uint32_t>(objects_.size()));
    source.object = object->second;
    if (isNewObject) {
        objects_.push_back(source);
        objects_.back().shown.type.clear();
    }
    sources_.push_back(std::move(source));
    return known->second;
}

void AlarmTally::NoteOccurrence(Source& source, std::int64_t ms) {
    ++source.shown.count;
    ++objects_[source.object].shown.count;
    while (!source.latest.empty() && source.latest.front() <= ms - kChatterMs) source.latest.pop_front();
    source.latest.push_back(ms);
    if (source.latest.size() < kChatterCount) return;
    ++source.chatters;
    source.latest.clear();
}

void AlarmTally::CloseFlood(std::int64_t ms) {
    if (floodSinceMs_ < 0) return;
    const std::int64_t end = std::min({flood_.EndMs().value_or(ms), ms, toMs_});
    floodMs_ += std::max<std::int64_t>(0, end - floodSinceMs_);
    floodSinceMs_ = -1;
}

void AlarmTally::NoteFlood(std::int64_t ms) {
    if (!flood_.IsFlood(ms)) CloseFlood(ms);
    flood_.Note(ms);
    if (floodSinceMs_ >= 0 || !flood_.IsFlood(ms)) return;
    floodSinceMs_ = ms;
    ++figures_.floods;
}

void AlarmTally::TakeEvent(const JournalRow& row, std::int64_t ms) {
    const int priority = LeadingInt32(FromUtf8(row.priority));
    // What goes straight to the old alarms, and what raises none, asks nothing of anybody.
    if (priority < 0 || row.status.value_or(0) == kStatusAcknowledged) return;
    if (figures_.alarms >= kMostAlarms) {
        figures_.isCut = true;
        return;
    }
    ++figures_.alarms;
    ++figures_.bins[static_cast<std::size_t>((ms - fromMs_) / kBinMs)];
    NoteFlood(ms);
    const std::uint32_t source = SourceOf(row);
    NoteOccurrence(sources_[source], ms);
    const int hour = clock_.LocalOf(ms).Civil().hour;
    ++all_.alarms;
    ++byPriority_[priority].alarms;
    ++byHour_[hour].alarms;
    Case& begun = cases_[row.event];
    if (begun.cameMs != 0 && !begun.isClosed) Close(begun, ms);  // the number has come round
    begun = {.cameMs = ms, .priority = priority, .hour = hour, .source = source};
    ++openCases_;
}

void AlarmTally::TakeChange(const JournalRow& row, std::int64_t ms) {
    const auto found = cases_.find(row.event);
    if (found == cases_.end()) return;
    Case& changed = found->second;
    if (const int repeated = RepeatsIn(row.data); repeated > changed.repeated) {
        changed.repeated = repeated;
        if (ms < toMs_) NoteOccurrence(sources_[changed.source], ms);
    }
    const bool isRemoved = row.kind == "removed";
    const bool isOver = isRemoved || row.status.value_or(0) == kStatusAcknowledged;
    if (!isOver && changed.isClosed) {
        changed.isClosed = false;  // an end was taken back
        ++openCases_;
    } else if (isOver && !changed.isClosed) {
        Close(changed, ms);
    }
    if (!isRemoved) return;
    Settle(changed);
    cases_.erase(found);
}

void AlarmTally::Close(Case& closed, std::int64_t ms) {
    closed.isClosed = true;
    --openCases_;
    if (ms - closed.cameMs > kStaleMs) ++sources_[closed.source].stale;
}

void AlarmTally::TakeDeed(const JournalRow& row, std::int64_t ms) {
    const auto found = cases_.find(row.event);
    if (found == cases_.end() || row.station.empty()) return;
    Case& touched = found->second;
    const std::int32_t seconds = SecondsBetween(touched.cameMs, ms);
    Seconds& who = byOperator_[row.user.empty() ? row.station : row.user];
    if (touched.touch < 0) {
        touched.touch = seconds;
        who.touch.push_back(seconds);
        ++who.alarms;
    }
    if (row.kind == "comment" && touched.comment < 0) {
        touched.comment = seconds;
        who.comment.push_back(seconds);
    } else if (row.kind == "end" && touched.end < 0) {
        touched.end = seconds;
        touched.ender = row.user.empty() ? row.station : row.user;
    } else if (row.kind == "reopen") {
        touched.end = -1;
    }
}

void AlarmTally::Settle(const Case& settled) {
    for (Seconds* group : {&all_, &byPriority_[settled.priority], &byHour_[settled.hour]}) {
        if (settled.touch >= 0) group->touch.push_back(settled.touch);
        if (settled.comment >= 0) group->comment.push_back(settled.comment);
        if (settled.end >= 0) group->end.push_back(settled.end);
    }
    if (settled.end >= 0) byOperator_[settled.ender].end.push_back(settled.end);
}

// --- The figures

bool AlarmTally::SettleSome() {
    constexpr int kAtOnce = 2000;
    const std::int64_t nowMs = clock_.UtcMs();
    for (int i = 0; i < kAtOnce && !cases_.empty(); ++i) {
        Case& open = cases_.begin()->second;
        if (!open.isClosed) Close(open, std::min(nowMs, toMs_ + kStaleMs + 1));
        Settle(open);
        cases_.erase(cases_.begin());
    }
    return cases_.empty();
}

void AlarmTally::Plan(Reaction& reaction, Text group, Seconds& seconds) {
    reaction.group = std::move(group);
    reaction.alarms = seconds.alarms;
    plan_.push_back({&reaction.touch, &seconds.touch});
    plan_.push_back({&reaction.comment, &seconds.comment});
    plan_.push_back({&reaction.end, &seconds.end});
}

// The lists have their length before anything points into them.
void AlarmTally::PlanReactions() {
    CloseFlood(std::min(clock_.UtcMs(), toMs_));
    figures_.floodSeconds = SecondsBetween(0, floodMs_);
    Plan(figures_.all, {}, all_);
    const auto planAll = [this](std::vector<Reaction>& reactions, auto& groups, auto name) {
        reactions.resize(groups.size());
        std::size_t place = 0;
        for (auto& [group, seconds] : groups) Plan(reactions[place++], name(group), seconds);
    };
    planAll(figures_.byPriority, byPriority_, [](int priority) { return std::to_string(priority); });
    planAll(figures_.byHour, byHour_, [](int hour) { return Digits(hour, 2); });
    planAll(figures_.byOperator, byOperator_, [](const std::string& who) { return FromUtf8(who); });
}

template <class Count>
std::vector<AlarmSource> AlarmTally::Top(const std::vector<Source>& sources, Count count) {
    std::vector<AlarmSource> top;
    for (const Source& source : sources) {
        const std::int32_t number = count(source);
        const bool isFull = top.size() == AlarmFigures::kMostSources;
        if (number == 0 || (isFull && number <= top.back().count)) continue;
        if (isFull) top.pop_back();
        const auto place = std::ranges::upper_bound(top, number, std::ranges::greater(), &AlarmSource::count);
        top.insert(place, source.shown)->count = number;
    }
    return top;
}

void AlarmTally::RankSources() {
    figures_.frequent = Top(objects_, [](const Source& source) { return source.shown.count; });
    figures_.chattering = Top(sources_, [](const Source& source) { return source.chatters; });
    figures_.stale = Top(sources_, [](const Source& source) { return source.stale; });
    figures_.unknown =
        Top(sources_, [](const Source& source) { return source.isUnknown ? source.shown.count : 0; });
}

bool AlarmTally::FinishSome() {
    switch (stage_) {
        case Stage::Cases:
            if (!SettleSome()) return false;
            PlanReactions();
            stage_ = Stage::Sums;
            return false;
        case Stage::Sums:
            if (plan_.empty()) {
                stage_ = Stage::Sources;
            } else {
                *plan_.front().result = DurationsOf(*plan_.front().seconds);
                plan_.pop_front();
            }
            return false;
        case Stage::Sources:
            RankSources();
            stage_ = Stage::Done;
            break;
        case Stage::Done:
            break;
    }
    return true;
}

}  // namespace nordkeep
