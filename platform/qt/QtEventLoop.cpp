#include "platform/qt/QtEventLoop.h"

#include "platform/qt/QtTimer.h"
#include "platform/qt/TaskQueue.h"

#include <QtCore/QAbstractEventDispatcher>
#include <QtCore/QBasicTimer>
#include <QtCore/QCoreApplication>

#include <utility>

namespace nordkeep {
namespace {

/// Ends a wait: its event makes the loop return.
class WakeUp : public QObject {
 public:
    explicit WakeUp(int ms) { timer_.start(ms, Qt::PreciseTimer, this); }
    bool HasCome() const { return hasCome_; }

 private:
    void timerEvent(QTimerEvent*) override {
        timer_.stop();
        hasCome_ = true;
    }

    QBasicTimer timer_{};
    bool hasCome_ = false;
};

}  // namespace

QtEventLoop::QtEventLoop() : tasks_(std::make_unique<TaskQueue>()) {}
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
    WakeOuterWait();
}

void QtEventLoop::SleepAndPump(int ms) {
    if (ms <= 0) return Pump();
    ++waits_;
    WakeUp wakeUp(ms);
    while (!wakeUp.HasCome()) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    --waits_;
    WakeOuterWait();
}

// The time of an outer wait can have come while this one ran: it is on its way into the toolkit's own
// waiting, from which nothing would wake it again.
void QtEventLoop::WakeOuterWait() {
    if (waits_ > 0) QAbstractEventDispatcher::instance()->wakeUp();
}

void QtEventLoop::Post(std::function<void()> task) {
    tasks_->Add(std::move(task));
}

void QtEventLoop::PostAtEnd(std::function<void()> task) {
    tasks_->Add(std::move(task), TaskOrder::AtEnd);
}

std::unique_ptr<Timer> QtEventLoop::NewTimer(std::function<void()> onTick) {
    return std::make_unique<QtTimer>(std::move(onTick));
}

}  // namespace nordkeep
