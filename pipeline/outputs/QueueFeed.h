#pragma once

#include "pipeline/outputs/MessageQueueOutput.h"
#include "store/Alarm.h"
#include "store/Journal.h"

#include <functional>

namespace nordkeep {

/// Sends each new event of the journal to the message queue, in order and at least once, with the entry's id
/// as the message's. Its place is kept with the journal, so that it goes on there after whatever has happened
/// to either side.
class QueueFeed {
 public:
    using Build = std::function<QueueMessage(const cAlarm&)>;
    QueueFeed(MessageQueueOutput& queue, Journal& journal, Build build);

    /// To be called when the journal has been opened, before the first event: who is told for the first time
    /// is told from there on. One that cannot be opened then is taken up later.
    void Open();
    /// The journal is being written. While it is not, its events have to be sent as they come.
    bool IsInCharge() const { return journal_.IsWorking(); }
    /// Entries that may still have to be sent.
    std::size_t WaitingCount() const;
    /// To be called several times a second.
    void Tick(int intervalMs);
    /// Keeps the place in mind, behind the last Tick.
    void Close();

 private:
    void SendSome();
    void KeepPlace(int intervalMs);

    MessageQueueOutput& queue_;
    Journal& journal_;
    Build build_;
    bool isOpen_ = false;
    int sinceKeptMs_ = 0;
    std::int64_t sentUpTo_ = 0;    // handed to the queue, or none of its business
    std::int64_t place_ = 0;       // everything up to this entry is at the broker
    std::int64_t keptPlace_ = -1;  // as the journal has it
};

}  // namespace nordkeep
