#pragma once

#include "platform/EventLoop.h"
#include "reports/HistorySource.h"
#include "store/Journal.h"

#include <deque>
#include <memory>

namespace nordkeep {

/// Answers questions to the journal in slices of some milliseconds, in turn, so that telegrams are taken in
/// between. Each taker has at most one question of a kind.
class HistoryWork {
 public:
    HistoryWork(Journal& journal, const Clock& clock, EventLoop& loop);
    ~HistoryWork();
    HistoryWork(const HistoryWork&) = delete;
    HistoryWork& operator=(const HistoryWork&) = delete;

    void Ask(HistoryTaker& taker, std::int32_t number, const HistoryQuery& query);
    /// A span that is not usable is answered with empty figures.
    void Ask(HistoryTaker& taker, std::int32_t number, const ReportSpan& span);
    void Forget(HistoryTaker& taker);
    bool IsIdle() const { return jobs_.empty(); }

 private:
    struct Job;
    struct Search;
    struct Report;

    void Add(std::unique_ptr<Job> job);
    void Tick();

    Journal& journal_;
    const Clock& clock_;
    std::unique_ptr<Timer> timer_;
    std::deque<std::unique_ptr<Job>> jobs_{};
};

}  // namespace nordkeep
