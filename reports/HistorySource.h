#pragma once

#include "reports/AlarmFigures.h"
#include "reports/HistoryWalk.h"

namespace nordkeep {

/// The stretch of a report, local; the end is not included.
struct ReportSpan {
    static constexpr int kMostDays = 92;
    OleDate from{};
    OleDate to{};
    friend bool operator==(const ReportSpan&, const ReportSpan&) = default;
};
/// With both ends, the second behind the first, and not too long.
bool IsUsable(const ReportSpan& span);

/// Who has asked for something of the history. Answers come later, with the number of the question; what was
/// asked before and not answered yet is dropped.
class HistoryTaker {
 public:
    virtual ~HistoryTaker() = default;
    virtual void TakePage(std::int32_t number, const HistoryPage& page) = 0;
    virtual void TakeReport(std::int32_t number, const AlarmFigures& figures) = 0;
};

/// The history of the centre, as this copy comes to it.
class HistorySource {
 public:
    enum class State { Ready, NoContact, NotAllowed, NotKnown };

    virtual ~HistorySource() = default;
    /// Whether it can be asked now; else why not.
    virtual State Readiness() const = 0;
    virtual void Ask(HistoryTaker& taker, std::int32_t number, const HistoryQuery& query) = 0;
    virtual void Ask(HistoryTaker& taker, std::int32_t number, const ReportSpan& span) = 0;
    /// Nothing is given to it any more.
    virtual void Forget(HistoryTaker& taker) = 0;
    /// Keeps the handover of a shift as an entry. False when it could not be kept.
    virtual bool SignOver(const Text& note, const Text& list) = 0;
};

}  // namespace nordkeep
