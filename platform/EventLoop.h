#pragma once

#include <functional>
#include <memory>
#include <utility>

namespace nordkeep {

/// A repeating timer that goes on ticking while its own handler waits in a nested loop.
class Timer {
 public:
    virtual ~Timer() = default;
    /// Starts, or starts over, with an interval of at least 1 ms.
    virtual void Start(int intervalMs) = 0;
    virtual void Stop() = 0;
    virtual bool IsRunning() const = 0;
    /// The interval last given to Start, in ms.
    virtual int IntervalMs() const = 0;
};

/// The one event loop of the program. Handlers run to their end; a handler that waits does so in
/// SleepAndPump, where other handlers, and its own, can run nested.
class EventLoop {
 public:
    virtual ~EventLoop() = default;
    /// Runs until Quit; the result is the status given to Quit.
    virtual int Run() = 0;
    virtual void Quit(int status) = 0;
    /// Handles what is waiting and returns at once.
    virtual void Pump() = 0;
    /// Handles events for this many milliseconds; 0 is the same as Pump.
    virtual void SleepAndPump(int ms) = 0;
    /// Runs the task on a later turn of the loop, behind everything that is waiting already.
    virtual void Post(std::function<void()> task) = 0;
    /// Runs the task at the end of the present turn of the loop, behind the handlers of all that has come in
    /// with it.
    virtual void PostAtEnd(std::function<void()> task) { Post(std::move(task)); }
    virtual std::unique_ptr<Timer> NewTimer(std::function<void()> onTick) = 0;
};

}  // namespace nordkeep
