#pragma once

#include "platform/amqp/AmqpConnection.h"
#include "platform/amqp/AmqpQueues.h"

#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>

namespace nordkeep {

/// The messages that wait for a queue, and the thread's work on them. Everything but Run is for the program's
/// own thread, and waits only as long as a message takes to be copied.
class AmqpWorker {
 public:
    AmqpWorker(const QueueAddress& address, const AmqpPace& pace);

    void Add(QueueMessage message);
    std::optional<QueueReport> TakeReport();
    /// Asks Run to end: at once when the broker is away, else with the last message, but no later than after
    /// this time. True when it has ended within it.
    bool End(int patienceMs);
    std::size_t WaitingCount();
    std::int64_t DeliveredUpTo();

    /// The thread's work, until End.
    void Run();

 private:
    using Moment = std::chrono::steady_clock::time_point;
    using Lock = std::unique_lock<std::mutex>;

    bool IsToGoOn() const;
    void WaitForWork(Lock& lock);
    void SendFirst(Lock& lock);
    AmqpConnection::Failure Deliver(const QueueMessage& message);
    void NoteOutcome(const AmqpConnection::Failure& failure);
    void Report(QueueReport::Kind kind, const std::string& detail = {});

    const AmqpPace pace_;
    AmqpConnection connection_;  // of the thread alone

    std::mutex mutex_{};
    std::condition_variable wake_{};
    std::condition_variable ended_{};
    // All below is guarded by the mutex.
    std::deque<QueueMessage> waiting_{};
    std::deque<QueueReport> reports_{};
    std::int64_t deliveredUpTo_ = 0;
    bool isSending_ = false;  // the first message is on its way
    bool isAway_ = false;     // the broker, since the last message
    bool isDropReported_ = false;
    Moment nextAttempt_{};
    bool isToEnd_ = false;
    bool hasEnded_ = false;
    Moment lastMoment_{};  // of a worker that is to end
};

}  // namespace nordkeep
