#pragma once

#include "platform/MessageQueue.h"
#include "runtime/Language.h"
#include "runtime/SysLog.h"

#include <memory>

namespace nordkeep {

/// Alarms as messages of a queue. Nothing is made before the first message.
class MessageQueueOutput {
 public:
    MessageQueueOutput(Text formatName, MessageQueueFactory& queues, SysLog& log, const Language& language);

    bool IsConfigured() const { return !formatName_.empty(); }
    /// False when the name names no queue, which is told once.
    bool Open();
    void Send(QueueMessage message);
    /// Messages do not reach the queue at present.
    bool HasFailed() const { return isRefused_ || isFailing_; }
    std::size_t WaitingCount() const { return queue_ ? queue_->WaitingCount() : 0; }
    /// The highest id of a message that the broker has confirmed; 0 before the first.
    std::int64_t DeliveredUpTo() const { return queue_ ? queue_->DeliveredUpTo() : 0; }
    /// The queue and its host, without a password; what the settings say when they name none.
    Text Peer() const;
    /// Logs what has happened on the way to the queue.
    void Tick();
    /// What waits may still leave for a short time. How many did not; they are lost unless somebody else has
    /// them.
    std::size_t Close();
    void NoteLeftBehind(std::size_t count);

 private:
    void Log(int text, const Text& behind = {});

    Text formatName_;
    MessageQueueFactory& queues_;
    SysLog& log_;
    const Language& language_;
    std::unique_ptr<MessageQueue> queue_{};
    bool isFailing_ = false;
    bool isRefused_ = false;  // the name names no queue, which has been logged
};

}  // namespace nordkeep
