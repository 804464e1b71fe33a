#pragma once

#include "platform/EventLoop.h"

namespace nordkeep {

class TaskQueue;

/// The event loop of the toolkit. The application object must live as long as it.
class QtEventLoop : public EventLoop {
 public:
    QtEventLoop();
    ~QtEventLoop() override;

    int Run() override;
    void Quit(int status) override;
    void Pump() override;
    void SleepAndPump(int ms) override;
    void Post(std::function<void()> task) override;
    void PostAtEnd(std::function<void()> task) override;
    std::unique_ptr<Timer> NewTimer(std::function<void()> onTick) override;

 private:
    void WakeOuterWait();

    std::unique_ptr<TaskQueue> tasks_;
    int waits_ = 0;  // on the stack
    bool hasQuit_ = false;
    int status_ = 0;
};

}  // namespace nordkeep
