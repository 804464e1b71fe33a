#pragma once

#include "platform/Clock.h"
#include "platform/EventLoop.h"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <utility>

namespace nordkeep {

/// Clock and event loop in one, whose time moves only when a test moves it or a handler waits. What is
/// planned runs in the order of its time, and at the same time in the order of its planning; a wait inside a
/// handler runs it nested, as the real loop does.
class ManualTime : public Clock, public EventLoop {
 public:
    explicit ManualTime(OleDate start = OleDate::FromCivil({2024, 3, 5, 7, 8, 9})) : start_(start) {}

    OleDate Now() const override { return start_.PlusMilliseconds(nowMs_); }
    std::int64_t MonotonicMs() const override { return nowMs_ += passesWithEachLookMs; }
    /// As if the zone were UTC.
    std::int64_t UtcMs() const override { return Now().Milliseconds() - 25'569LL * 86'400'000; }

    /// Sets the wall clock; what is planned keeps its distance.
    void Set(OleDate now) { start_ = now.PlusMilliseconds(-nowMs_); }
    /// Moves time on and runs what falls due on the way.
    void Advance(std::int64_t ms) {
        const std::int64_t end = nowMs_ + ms;
        while (!plan_.empty() && plan_.begin()->first <= end) RunFirst();
        // A handler that waited may have moved time beyond the end.
        if (nowMs_ < end) nowMs_ = end;
    }

    /// Runs until Quit or until nothing is planned any more.
    int Run() override {
        hasQuit_ = false;
        while (!hasQuit_ && !plan_.empty()) RunFirst();
        return status_;
    }
    void Quit(int status) override {
        hasQuit_ = true;
        status_ = status;
    }
    void Pump() override { Advance(0); }
    void SleepAndPump(int ms) override { Advance(ms); }
    void Post(std::function<void()> task) override { Plan(nowMs_, std::move(task)); }
    /// Runs a task after so many milliseconds: a peer's answer, an operator's click.
    void After(std::int64_t ms, std::function<void()> task) { Plan(nowMs_ + ms, std::move(task)); }
    std::unique_ptr<Timer> NewTimer(std::function<void()> onTick) override {
        return std::make_unique<PlannedTimer>(*this, std::move(onTick));
    }

    /// So that work which looks at the time comes to its end in several slices.
    std::int64_t passesWithEachLookMs = 0;

    bool HasQuit() const { return hasQuit_; }
    /// Tasks and timer ticks that are still to come.
    std::size_t PlannedCount() const { return plan_.size(); }

 private:
    class PlannedTimer : public Timer {
     public:
        PlannedTimer(ManualTime& time, std::function<void()> onTick)
            : time_(time), onTick_(std::move(onTick)) {}
        ~PlannedTimer() override { Stop(); }
        void Start(int intervalMs) override {
            Stop();
            intervalMs_ = intervalMs < 1 ? 1 : intervalMs;
            PlanNext();
        }
        void Stop() override {
            // The life of this token is the tick's permission to run.
            isRunning_.reset();
        }
        bool IsRunning() const override { return isRunning_ != nullptr; }
        int IntervalMs() const override { return intervalMs_; }

     private:
        void PlanNext() {
            isRunning_ = std::make_shared<bool>(true);
            time_.Plan(time_.nowMs_ + intervalMs_, [this, alive = std::weak_ptr<bool>(isRunning_)] {
                if (alive.expired()) return;
                PlanNext();  // armed again before the handler, so that it ticks on while the handler waits
                const std::function<void()> onTick = onTick_;
                onTick();
            });
        }

        ManualTime& time_;
        std::function<void()> onTick_;
        int intervalMs_ = 0;
        std::shared_ptr<bool> isRunning_{};
    };

    void Plan(std::int64_t atMs, std::function<void()> task) { plan_.emplace(atMs, std::move(task)); }
    void RunFirst() {
        auto next = plan_.extract(plan_.begin());
        if (nowMs_ < next.key()) nowMs_ = next.key();
        next.mapped()();
    }

    OleDate start_;
    mutable std::int64_t nowMs_ = 0;
    std::multimap<std::int64_t, std::function<void()>> plan_{};
    bool hasQuit_ = false;
    int status_ = 0;
};

}  // namespace nordkeep
