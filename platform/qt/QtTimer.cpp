#include "platform/qt/QtTimer.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QEvent>

#include <algorithm>

namespace nordkeep {
namespace {

const auto kTick = static_cast<QEvent::Type>(QEvent::registerEventType());

}  // namespace

void QtTimer::Start(int intervalMs) {
    Stop();
    intervalMs_ = std::max(intervalMs, 1);
    // The toolkit's default joins ticks of several timers and makes 1000 ms into 1050.
    id_ = startTimer(intervalMs_, Qt::PreciseTimer);
}

void QtTimer::Stop() {
    if (id_ != 0) killTimer(id_);
    id_ = 0;
    QCoreApplication::removePostedEvents(this, kTick);
    isTickWaiting_ = false;
}

bool QtTimer::event(QEvent* event) {
    if (event->type() == QEvent::Timer) {
        PostTick();
    } else if (event->type() == kTick) {
        isTickWaiting_ = false;
        const std::function<void()> onTick = onTick_;  // the handler may be the end of this timer
        onTick();
    }
    return true;
}

void QtTimer::PostTick() {
    if (isTickWaiting_) return;
    isTickWaiting_ = true;
    QCoreApplication::postEvent(this, new QEvent(kTick));
}

}  // namespace nordkeep
