#pragma once

#include "platform/EventLoop.h"

#include <QtCore/QObject>

namespace nordkeep {

/// A timer whose ticks arrive as events of their own, since the toolkit's timer does not tick inside its own
/// handler. A tick that still waits is not joined by a second one.
class QtTimer : public Timer, private QObject {
 public:
    explicit QtTimer(std::function<void()> onTick) : onTick_(std::move(onTick)) {}

    void Start(int intervalMs) override;
    void Stop() override;
    bool IsRunning() const override { return id_ != 0; }
    int IntervalMs() const override { return intervalMs_; }

 private:
    bool event(QEvent* event) override;
    void PostTick();

    std::function<void()> onTick_;
    int id_ = 0;
    int intervalMs_ = 0;
    bool isTickWaiting_ = false;
};

}  // namespace nordkeep
