#pragma once

#include "platform/EventLoop.h"

namespace nordkeep {

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
    std::unique_ptr<Timer> NewTimer(std::function<void()> onTick) override;

 private:
    class TaskRunner;

    std::unique_ptr<TaskRunner> tasks_;
    bool hasQuit_ = false;
    int status_ = 0;
};

}  // namespace nordkeep
