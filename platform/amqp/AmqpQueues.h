#pragma once

#include "platform/MessageQueue.h"

namespace nordkeep {

/// How an AmqpQueue deals with a broker that is away.
struct AmqpPace {
    int retryMs = 30'000;      // between attempts
    int timeoutMs = 5'000;     // of each step on the way to the broker
    std::size_t limit = 1000;  // messages that may wait
};

/// Queues of an AMQP 0-9-1 broker. The client library waits for its peer, so each queue that has had a
/// message to send owns a thread: the only ones of the program, known to nobody outside this folder.
class AmqpQueues final : public MessageQueueFactory {
 public:
    explicit AmqpQueues(AmqpPace pace = {}) : pace_(pace) {}
    std::unique_ptr<MessageQueue> NewQueue(const QueueAddress& address) override;

 private:
    AmqpPace pace_;
};

}  // namespace nordkeep
