#include "ports/ReplyQueue.h"

namespace nordkeep {

void ReplyQueue::SendInOrder(Text reply, Behind behind, const SocketPeer& to) {
    if (reply.empty() && behind == Behind::StayUp) return;
    replies_.push_back({nextTicket_++, std::move(reply), State::Ready, behind, to});
    SendReady();
}

ReplyQueue::Ticket ReplyQueue::Hold(Text reply, Behind behind, const SocketPeer& to) {
    replies_.push_back({nextTicket_, std::move(reply), State::Waiting, behind, to});
    return nextTicket_++;
}

void ReplyQueue::Settle(Ticket ticket, bool isStored) {
    // Tickets in the queue are consecutive, so the place of one is its distance from the first.
    if (replies_.empty() || ticket < replies_.front().ticket) return;
    replies_[static_cast<std::size_t>(ticket - replies_.front().ticket)].state =
        isStored ? State::Ready : State::Dropped;
    SendReady();
}

void ReplyQueue::SendReady() {
    while (!replies_.empty() && replies_.front().state != State::Waiting) SendRun();
}

void ReplyQueue::SendRun() {
    const SocketPeer to = replies_.front().to;
    Text together;
    bool hangsUp = false;
    while (!replies_.empty() && replies_.front().state != State::Waiting && replies_.front().to == to &&
           !hangsUp) {
        if (replies_.front().state == State::Ready) together += replies_.front().bytes;
        // Also without its reply: a closed line tells the sender to try again.
        hangsUp = replies_.front().behind == Behind::HangUp;
        replies_.pop_front();
    }
    if (hangsUp) Clear();
    if (hangsUp || !together.empty())
        sender_.SendReply(to, together, hangsUp ? Behind::HangUp : Behind::StayUp);
}

void ReplyQueue::Clear() {
    replies_.clear();
}

}  // namespace nordkeep
