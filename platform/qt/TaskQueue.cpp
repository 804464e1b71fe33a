#include "platform/qt/TaskQueue.h"

#include <QtCore/QAbstractEventDispatcher>
#include <QtCore/QPointer>

#include <cstdint>
#include <map>
#include <utility>

namespace nordkeep {
namespace {

/// The tasks of all queues. They run as a turn begins, which costs nothing, where an event posted to an
/// object wakes the loop by way of the system each time.
class Turns : public QObject {
 public:
    explicit Turns(QAbstractEventDispatcher* dispatcher) : QObject(dispatcher), dispatcher_(dispatcher) {
        QObject::connect(dispatcher, &QAbstractEventDispatcher::awake, this, [this] { RunOne(); });
        QObject::connect(dispatcher, &QAbstractEventDispatcher::aboutToBlock, this, [this] { StayAwake(); });
    }

    /// Those of the application that there is.
    static Turns* Present() {
        static QPointer<Turns> present;
        auto* const dispatcher = QAbstractEventDispatcher::instance();
        if (present.isNull() && dispatcher != nullptr) present = new Turns(dispatcher);
        return present;
    }

    void Add(const TaskQueue* queue, std::function<void()> task, TaskOrder order) {
        tasks_.emplace(Place{order, nextNumber_++}, Task{queue, std::move(task)});
    }

    void Remove(const TaskQueue* queue) {
        std::erase_if(tasks_, [queue](const auto& task) { return task.second.queue == queue; });
    }

 private:
    using Place = std::pair<TaskOrder, std::uint64_t>;
    struct Task {
        const TaskQueue* queue;
        std::function<void()> run;
    };

    /// A task that waits in its midst runs the others in a turn of their own.
    void RunOne() {
        RunAll(TaskOrder::Usual, TaskOrder::BehindThose);
        RunAll(TaskOrder::AtEnd, TaskOrder::AtEnd);
    }

    void RunAll(TaskOrder first, TaskOrder last) {
        const std::uint64_t end = nextNumber_;
        for (auto task = Next(first, last, end); task != tasks_.end(); task = Next(first, last, end)) {
            const auto taken = tasks_.extract(task);
            taken.mapped().run();
        }
    }

    std::map<Place, Task>::iterator Next(TaskOrder first, TaskOrder last, std::uint64_t end) {
        auto task = tasks_.lower_bound({first, 0});
        while (task != tasks_.end() && task->first.first <= last && task->first.second >= end) ++task;
        return task != tasks_.end() && task->first.first <= last ? task : tasks_.end();
    }

    void StayAwake() {
        if (!tasks_.empty()) dispatcher_->wakeUp();
    }

    QAbstractEventDispatcher* dispatcher_;
    std::map<Place, Task> tasks_{};
    std::uint64_t nextNumber_ = 0;
};

}  // namespace

void TaskQueue::Add(std::function<void()> task, TaskOrder order) {
    if (Turns* const turns = Turns::Present()) turns->Add(this, std::move(task), order);
}

void TaskQueue::Clear() {
    if (Turns* const turns = Turns::Present()) turns->Remove(this);
}

}  // namespace nordkeep
