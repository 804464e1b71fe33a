#pragma once

#include <QtCore/QObject>

#include <functional>

namespace nordkeep {

/// When a task runs among those that wait for the same turn of the loop.
enum class TaskOrder {
    Usual,        // in the order of their coming
    Behind,       // behind the usual ones, so behind the handlers of all sockets that are ready
    BehindThose,  // last
    AtEnd,        // behind all of them, and of this turn although it is added while their tasks run
};

/// Runs tasks in turns of the loop. A task added while a turn's tasks run is one of the next turn, and the
/// sockets and timers are looked at in between.
class TaskQueue : public QObject {
 public:
    ~TaskQueue() override { Clear(); }
    void Add(std::function<void()> task, TaskOrder order = TaskOrder::Usual);
    /// Drops what has not run yet.
    void Clear();
};

}  // namespace nordkeep
