#include "platform/amqp/AmqpQueues.h"

#include "platform/amqp/AmqpWorker.h"

#include <signal.h>

#include <thread>

namespace nordkeep {
namespace {

/// Starts a thread that no signal is delivered to: they are for the program's own thread.
std::thread StartQuietThread(std::shared_ptr<AmqpWorker> worker) {
    sigset_t all{};
    sigset_t before{};
    ::sigfillset(&all);
    ::pthread_sigmask(SIG_SETMASK, &all, &before);
    std::thread thread([worker = std::move(worker)] { worker->Run(); });
    ::pthread_sigmask(SIG_SETMASK, &before, nullptr);
    return thread;
}

class AmqpQueue final : public MessageQueue {
 public:
    AmqpQueue(const QueueAddress& address, const AmqpPace& pace)
        : worker_(std::make_shared<AmqpWorker>(address, pace)) {}
    ~AmqpQueue() override { Close(0); }

    void Send(QueueMessage message) override {
        if (isClosed_) return;
        if (!thread_.joinable()) thread_ = StartQuietThread(worker_);
        worker_->Add(std::move(message));
    }

    std::optional<QueueReport> TakeReport() override { return worker_->TakeReport(); }

    std::int64_t DeliveredUpTo() const override { return worker_->DeliveredUpTo(); }

    std::size_t WaitingCount() const override { return worker_->WaitingCount(); }

    std::size_t Close(int patienceMs) override {
        isClosed_ = true;
        if (!thread_.joinable()) return worker_->WaitingCount();
        // A thread that the library keeps waiting, for a name server for example, ends with the process.
        if (worker_->End(patienceMs)) {
            thread_.join();
        } else {
            thread_.detach();
        }
        return worker_->WaitingCount();
    }

 private:
    std::shared_ptr<AmqpWorker> worker_;
    std::thread thread_{};
    bool isClosed_ = false;
};

}  // namespace

std::unique_ptr<MessageQueue> AmqpQueues::NewQueue(const QueueAddress& address) {
    return std::make_unique<AmqpQueue>(address, pace_);
}

}  // namespace nordkeep
