#pragma once

#include "platform/Clock.h"
#include "platform/JournalFile.h"
#include "reports/AlarmFigures.h"
#include "reports/AlarmFlood.h"

#include <deque>
#include <map>
#include <unordered_map>

namespace nordkeep {

/// Makes figures of the journal's entries, which come in the order of their times: those of the stretch, and
/// as many behind it as are needed to see what became of its alarms.
class AlarmTally {
 public:
    /// More alarms than these would only use up the memory.
    static constexpr std::int32_t kMostAlarms = 200'000;
    static constexpr std::int64_t kStaleMs = 86'400'000;

    AlarmTally(OleDate from, OleDate to, const Clock& clock);

    void Take(const JournalRow& row);
    /// Nothing that comes later changes the figures.
    bool IsDone() const { return isDone_; }
    /// Works on the figures for some milliseconds; to be called until it returns true.
    bool FinishSome();
    AlarmFigures TakeFigures() { return std::move(figures_); }

 private:
    struct Case {
        std::int64_t cameMs = 0;
        std::int32_t touch = -1;  // seconds
        std::int32_t comment = -1;
        std::int32_t end = -1;
        int repeated = 0;
        int priority = 0;
        int hour = 0;
        std::uint32_t source = 0;
        std::string ender{};
        bool isClosed = false;
    };
    struct Seconds {
        std::int32_t alarms = 0;
        std::vector<std::int32_t> touch{};
        std::vector<std::int32_t> comment{};
        std::vector<std::int32_t> end{};
    };
    struct Source {
        AlarmSource shown{};
        std::deque<std::int64_t> latest{};  // of the last minute, at most three
        std::uint32_t object = 0;           // its place among the objects
        std::int32_t chatters = 0;
        std::int32_t stale = 0;
        bool isUnknown = false;
    };

    void TakeEvent(const JournalRow& row, std::int64_t ms);
    void TakeChange(const JournalRow& row, std::int64_t ms);
    void TakeDeed(const JournalRow& row, std::int64_t ms);
    std::uint32_t SourceOf(const JournalRow& row);
    void NoteOccurrence(Source& source, std::int64_t ms);
    void NoteFlood(std::int64_t ms);
    void CloseFlood(std::int64_t ms);
    void Close(Case& closed, std::int64_t ms);
    void Settle(const Case& settled);
    bool SettleSome();
    void PlanReactions();
    void Plan(Reaction& reaction, Text group, Seconds& seconds);
    template <class Count>
    static std::vector<AlarmSource> Top(const std::vector<Source>& sources, Count count);
    void RankSources();

    const Clock& clock_;
    AlarmFigures figures_{};
    std::int64_t fromMs_;
    std::int64_t toMs_;
    bool isDone_ = false;
    std::unordered_map<std::string, Case> cases_{};  // by event
    std::size_t openCases_ = 0;
    std::vector<Source> sources_{};  // an object with a type
    std::vector<Source> objects_{};  // an object alone
    std::unordered_map<std::string, std::uint32_t> sourceOf_{};
    std::unordered_map<std::string, std::uint32_t> objectOf_{};
    Seconds all_{};
    std::map<int, Seconds> byPriority_{};
    std::map<int, Seconds> byHour_{};
    std::map<std::string, Seconds> byOperator_{};
    AlarmFlood flood_{};
    std::int64_t floodSinceMs_ = -1;
    std::int64_t floodMs_ = 0;
    /// What is still to be worked out, one after the other.
    struct Sum {
        Durations* result = nullptr;
        std::vector<std::int32_t>* seconds = nullptr;
    };
    std::deque<Sum> plan_{};
    enum class Stage { Cases, Sums, Sources, Done };
    Stage stage_ = Stage::Cases;
};

}  // namespace nordkeep
