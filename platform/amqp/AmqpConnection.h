#pragma once

#include "platform/MessageQueue.h"

#include <amqp.h>

#include <memory>

namespace nordkeep {

/// A connection to a broker with one channel for one queue. Every operation waits for the broker, no longer
/// than a few times the time-out. A failure is a text and leaves the connection closed.
class AmqpConnection {
 public:
    using Failure = std::optional<std::string>;

    AmqpConnection(const QueueAddress& address, int timeoutMs) : address_(address), timeoutMs_(timeoutMs) {}

    bool IsOpen() const { return connection_ != nullptr; }
    /// Connects, logs in, and makes sure that the queue exists.
    Failure Open();
    /// Returns when the broker has the message safely in the queue.
    Failure Publish(const QueueMessage& message);
    /// To be called every few seconds while there is nothing to send: gives the broker its sign of life and
    /// notices a connection that is gone.
    Failure Tend();
    void Close();

 private:
    struct Destroy {
        void operator()(amqp_connection_state_t connection) const { amqp_destroy_connection(connection); }
    };
    using Handle = std::unique_ptr<amqp_connection_state_t_, Destroy>;

    Failure Connect();
    Failure LogIn();
    Failure OpenChannel();
    Failure CheckQueue();
    Failure AwaitConfirmation();
    Failure Drop(std::string why);

    QueueAddress address_;
    int timeoutMs_;
    Handle connection_{};
};

}  // namespace nordkeep
