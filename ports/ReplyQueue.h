#pragma once

#include "ports/lines/Line.h"

#include <cstdint>
#include <deque>

namespace nordkeep {

/// Puts replies on the line.
class ReplySender {
 public:
    virtual ~ReplySender() = default;
    /// `bytes` may be empty ahead of a hang-up.
    virtual void SendReply(const SocketPeer& to, TextView bytes, Behind behind) = 0;
};

/// The replies of one line, in the order of what they answer. A reply to an event waits until the event is
/// safely stored; one that answers nothing stored leaves at once unless an earlier one still waits.
class ReplyQueue {
 public:
    using Ticket = std::uint64_t;

    explicit ReplyQueue(ReplySender& sender) : sender_(sender) {}

    void SendInOrder(Text reply, Behind behind = Behind::StayUp, const SocketPeer& to = {});
    /// Holds a reply back until Settle.
    Ticket Hold(Text reply, Behind behind = Behind::StayUp, const SocketPeer& to = {});
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
        Behind behind;
        SocketPeer to;
    };

    void SendReady();
    /// What goes to the first in the queue, and as much behind it as goes to the same.
    void SendRun();

    ReplySender& sender_;
    std::deque<Reply> replies_{};
    Ticket nextTicket_ = 1;
};

}  // namespace nordkeep
