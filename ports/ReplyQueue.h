#pragma once

#include "platform/Text.h"

#include <cstdint>
#include <deque>
#include <functional>

namespace nordkeep {

/// The replies of one line, in the order of what they answer. A reply to an event waits until the event is
/// safely stored; one that answers nothing stored leaves at once unless an earlier one still waits.
class ReplyQueue {
 public:
    using Ticket = std::uint64_t;

    enum class Then { GoOn, HangUp };

    explicit ReplyQueue(
        std::function<void(TextView)> send, std::function<void()> hangUp = [] {})
        : send_(std::move(send)), hangUp_(std::move(hangUp)) {}

    void SendInOrder(Text reply, Then then = Then::GoOn);
    /// Holds a reply back until Settle.
    Ticket Hold(Text reply, Then then = Then::GoOn);
    /// Lets a held reply go, or drops it when its event could not be stored. A ticket from before Clear is
    /// ignored.
    void Settle(Ticket ticket, bool isStored);
    /// The line has gone: whoever comes next did not send what these replies answer.
    void Clear();

 private:
    enum class State { Waiting, Ready, Dropped };
    struct Reply {
        Ticket ticket;
        Text bytes;
        State state;
        Then then;
    };

    void SendReady();

    std::function<void(TextView)> send_;
    std::function<void()> hangUp_;
    std::deque<Reply> replies_{};
    Ticket nextTicket_ = 1;
};

}  // namespace nordkeep
