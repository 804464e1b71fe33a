#include "platform/qt/TaskQueue.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QEvent>

#include <utility>

namespace nordkeep {
namespace {

const auto kTask = static_cast<QEvent::Type>(QEvent::registerEventType());

class TaskEvent : public QEvent {
 public:
    explicit TaskEvent(std::function<void()> task) : QEvent(kTask), task_(std::move(task)) {}
    void Run() const { task_(); }

 private:
    std::function<void()> task_;
};

int PriorityOf(TaskOrder order) {
    switch (order) {
        case TaskOrder::Behind:
            return Qt::LowEventPriority;
        case TaskOrder::BehindThose:
            return Qt::LowEventPriority - 1;
        default:
            return Qt::NormalEventPriority;
    }
}

}  // namespace

void TaskQueue::Add(std::function<void()> task, TaskOrder order) {
    QCoreApplication::postEvent(this, new TaskEvent(std::move(task)), PriorityOf(order));
}

void TaskQueue::Clear() {
    QCoreApplication::removePostedEvents(this, kTask);
}

bool TaskQueue::event(QEvent* event) {
    if (event->type() != kTask) return QObject::event(event);
    static_cast<const TaskEvent*>(event)->Run();
    return true;
}

}  // namespace nordkeep
