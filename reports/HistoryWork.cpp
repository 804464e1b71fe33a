#include "reports/HistoryWork.h"

#include "reports/AlarmTally.h"

#include <algorithm>

namespace nordkeep {
namespace {

constexpr int kTickMs = 10;
constexpr std::int64_t kBudgetUs = 5000;
/// Somebody who waits is told at least this often how far it has come.
constexpr std::int64_t kPatienceMs = 1500;
constexpr std::size_t kSlice = 100;

}  // namespace

bool IsUsable(const ReportSpan& span) {
    return !span.from.IsNever() && span.from < span.to &&
           span.to <= span.from.PlusDays(ReportSpan::kMostDays + 1);
}

struct HistoryWork::Job {
    Job(HistoryTaker& whose, std::int32_t which) : taker(&whose), number(which) {}
    virtual ~Job() = default;
    Job(const Job&) = delete;
    Job& operator=(const Job&) = delete;
    virtual bool IsReport() const = 0;
    /// Some milliseconds' work. True when it is done, and Answer has something to give.
    virtual bool Advance(Journal& journal) = 0;
    virtual void Answer() = 0;

    HistoryTaker* taker;
    std::int32_t number;
};

struct HistoryWork::Search final : Job {
    Search(HistoryTaker& whose, std::int32_t which, const HistoryQuery& query, const Clock& time)
        : Job(whose, which), walk(query, time), clock(time), sinceMs(time.MonotonicMs()) {}
    bool IsReport() const override { return false; }
    bool Advance(Journal& journal) override {
        return walk.Step(journal) || clock.MonotonicMs() - sinceMs >= kPatienceMs;
    }
    void Answer() override { taker->TakePage(number, walk.Page()); }

    HistoryWalk walk;
    const Clock& clock;
    std::int64_t sinceMs;
};

struct HistoryWork::Report final : Job {
    Report(HistoryTaker& whose, std::int32_t which, const ReportSpan& span, const Clock& clock)
        : Job(whose, which),
          tally(span.from, span.to, clock),
          stretch{.from = UtcStamp(clock.UtcOf(span.from)), .most = kSlice} {}
    bool IsReport() const override { return true; }
    bool Advance(Journal& journal) override {
        if (isRead) return tally.FinishSome();
        std::size_t seen = 0;
        isReadable = journal.ReadStretch(stretch, [&](const JournalRow& row) {
            ++seen;
            place = {row.time, row.id};
            tally.Take(row);
        });
        stretch.besideTime = place.time;
        stretch.besideId = place.id;
        isRead = !isReadable || seen < kSlice || tally.IsDone();
        return false;
    }
    void Answer() override {
        AlarmFigures figures = tally.TakeFigures();
        figures.isReadable = isReadable;
        taker->TakeReport(number, figures);
    }

    AlarmTally tally;
    JournalStretch stretch;
    HistoryPlace place{};
    bool isRead = false;
    bool isReadable = true;
};

HistoryWork::HistoryWork(Journal& journal, const Clock& clock, EventLoop& loop)
    : journal_(journal), clock_(clock), timer_(loop.NewTimer([this] { Tick(); })) {}

HistoryWork::~HistoryWork() = default;

void HistoryWork::Ask(HistoryTaker& taker, std::int32_t number, const HistoryQuery& query) {
    Add(std::make_unique<Search>(taker, number, query, clock_));
}

void HistoryWork::Ask(HistoryTaker& taker, std::int32_t number, const ReportSpan& span) {
    const OleDate now = clock_.Now();
    Add(std::make_unique<Report>(taker, number, IsUsable(span) ? span : ReportSpan{now, now}, clock_));
}

void HistoryWork::Add(std::unique_ptr<Job> job) {
    std::erase_if(jobs_, [&](const auto& old) {
        return old->taker == job->taker && old->IsReport() == job->IsReport();
    });
    jobs_.push_back(std::move(job));
    if (!timer_->IsRunning()) timer_->Start(kTickMs);
}

void HistoryWork::Forget(HistoryTaker& taker) {
    std::erase_if(jobs_, [&](const auto& job) { return job->taker == &taker; });
}

// A job leaves the list before its answer is given: who gets it may ask for more.
void HistoryWork::Tick() {
    const std::int64_t endUs = clock_.MonotonicUs() + kBudgetUs;
    while (!jobs_.empty() && clock_.MonotonicUs() < endUs) {
        std::unique_ptr<Job> job = std::move(jobs_.front());
        jobs_.pop_front();
        if (job->Advance(journal_)) {
            job->Answer();
        } else {
            jobs_.push_back(std::move(job));
        }
    }
    if (jobs_.empty()) timer_->Stop();
}

}  // namespace nordkeep
