#include "ports/ReplyQueue.h"

namespace nordkeep {

void ReplyQueue::SendInOrder(Text reply) {
    if (reply.empty()) return;
    replies_.push_back({nextTicket_++, std::move(reply), State::Ready});
    SendReady();
}

ReplyQueue::Ticket ReplyQueue::Hold(Text reply) {
    replies_.push_back({nextTicket_, std::move(reply), State::Waiting});
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
    while (!replies_.empty() && replies_.front().state != State::Waiting) {
        if (replies_.front().state == State::Ready) together += replies_.front().bytes;
        replies_.pop_front();
    }
    if (!together.empty()) send_(together);
}

void ReplyQueue::Clear() {
    replies_.clear();
}

}  // namespace nordkeep
