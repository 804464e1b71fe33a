#include "ports/ReplyQueue.h"

namespace nordkeep {

void ReplyQueue::SendInOrder(Text reply, Then then) {
    if (reply.empty() && then == Then::GoOn) return;
    replies_.push_back({nextTicket_++, std::move(reply), State::Ready, then});
    SendReady();
}

ReplyQueue::Ticket ReplyQueue::Hold(Text reply, Then then) {
    replies_.push_back({nextTicket_, std::move(reply), State::Waiting, then});
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
    Text together;
    bool hangsUp = false;
    while (!replies_.empty() && replies_.front().state != State::Waiting && !hangsUp) {
        if (replies_.front().state == State::Ready) together += replies_.front().bytes;
        // Also without its reply: a closed line tells the sender to try again.
        hangsUp = replies_.front().then == Then::HangUp;
        replies_.pop_front();
    }
    if (!together.empty()) send_(together);
    if (!hangsUp) return;
    Clear();
    hangUp_();
}

void ReplyQueue::Clear() {
    replies_.clear();
}

}  // namespace nordkeep
