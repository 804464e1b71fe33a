#include "platform/qt/QtEventLoop.h"

#include "platform/qt/QtTimer.h"

#include <QtCore/QBasicTimer>
#include <QtCore/QCoreApplication>
#include <QtCore/QEvent>

namespace nordkeep {
namespace {

const auto kTask = static_cast<QEvent::Type>(QEvent::registerEventType());

class TaskEvent : public QEvent {
 public:
    explicit TaskEvent(std::function<void()> task) : QEvent(kTask), task_(std::move(task)) {}
    std::function<void()> Take() { return std::move(task_); }

 private:
    std::function<void()> task_;
};

/// Ends a wait: its event makes the loop return.
class Alarm : public QObject {
 public:
    explicit Alarm(int ms) { timer_.start(ms, Qt::PreciseTimer, this); }
    bool HasRung() const { return hasRung_; }

 private:
    void timerEvent(QTimerEvent*) override {
        timer_.stop();
        hasRung_ = true;
    }

    QBasicTimer timer_{};
    bool hasRung_ = false;
};

}  // namespace

class QtEventLoop::TaskRunner : public QObject {
    bool event(QEvent* event) override {
        if (event->type() != kTask) return QObject::event(event);
        static_cast<TaskEvent*>(event)->Take()();
        return true;
    }
};

QtEventLoop::QtEventLoop() : tasks_(std::make_unique<TaskRunner>()) {}
QtEventLoop::~QtEventLoop() = default;

int QtEventLoop::Run() {
    return hasQuit_ ? status_ : QCoreApplication::exec();
}

void QtEventLoop::Quit(int status) {
    hasQuit_ = true;
    status_ = status;
    QCoreApplication::exit(status);
}

void QtEventLoop::Pump() {
    // What the first round finds ready on a socket is told by an event of the second.
    QCoreApplication::processEvents();
    QCoreApplication::processEvents();
}

void QtEventLoop::SleepAndPump(int ms) {
    if (ms <= 0) return Pump();
    const Alarm alarm(ms);
    while (!alarm.HasRung()) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

void QtEventLoop::Post(std::function<void()> task) {
    QCoreApplication::postEvent(tasks_.get(), new TaskEvent(std::move(task)), Qt::LowEventPriority);
}

std::unique_ptr<Timer> QtEventLoop::NewTimer(std::function<void()> onTick) {
    return std::make_unique<QtTimer>(std::move(onTick));
}

}  // namespace nordkeep
