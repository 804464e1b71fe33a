#pragma once

#include "platform/Text.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>

namespace nordkeep {

/// Where a queue is found. All texts are UTF-8, without NUL.
struct QueueAddress {
    std::string host = "127.0.0.1";
    int port = 5672;
    std::string user = "guest";
    std::string password = "guest";
    std::string virtualHost = "/";
    std::string queue{};
};

struct QueueMessage {
    Text label{};
    Text body{};
    std::int64_t id = 0;  // rising; the message's id at the broker; 0 for none
};

/// Something that happened on the way to the queue, once for each outage.
struct QueueReport {
    enum class Kind { Failed, Restored, Dropped };
    Kind kind = Kind::Failed;
    Text detail{};  // of Failed: why
};

/// Takes messages for a queue of a message broker and sends them in their order. No operation but Close
/// waits: what cannot be sent now waits, up to a limit beyond which the oldest message is dropped.
class MessageQueue {
 public:
    virtual ~MessageQueue() = default;
    virtual void Send(QueueMessage message) = 0;
    /// What has happened since the last call; none when there is nothing more to tell.
    virtual std::optional<QueueReport> TakeReport() = 0;
    /// The highest id of a message that the broker has confirmed; 0 before the first.
    virtual std::int64_t DeliveredUpTo() const = 0;
    /// Messages that have not left yet.
    virtual std::size_t WaitingCount() const = 0;
    /// Sends no more. What waits may still leave for so long; the number of messages that did not.
    virtual std::size_t Close(int patienceMs) = 0;
};

class MessageQueueFactory {
 public:
    virtual ~MessageQueueFactory() = default;
    virtual std::unique_ptr<MessageQueue> NewQueue(const QueueAddress& address) = 0;
};

}  // namespace nordkeep
