#include "ports/Reception.h"

namespace nordkeep {
namespace {

constexpr int kTextPurged = 1135;
constexpr int kTextTooMuch = 3604;

// What a line may hold without a complete telegram in it.
constexpr std::size_t kMostReceived = 1 << 20;
// Telegrams of one line in one turn of the loop; the others wait their turn behind the other lines.
constexpr int kTelegramsInOneTurn = 64;
constexpr int kChunksInOneTurn = 16;

}  // namespace

Reception::Reception(const Parts& parts, std::unique_ptr<LineFormat> format)
    : parts_(parts),
      clock_(parts.line.clock),
      log_(parts.line.log),
      line_(MakeLine(parts.type, parts.line, *this)),
      format_(std::move(format)),
      replies_(*this) {}

void Reception::OnNewStream() {
    received_.Clear();
    replies_.Clear();
}

void Reception::OnDataWaiting() {
    // While earlier telegrams still wait their turn, the bytes stay with the system, which slows the sender.
    if (!isContinuing_) TakeChunks();
}

void Reception::TakeChunks() {
    for (int i = 0; i < kChunksInOneTurn && !isContinuing_; ++i) {
        const Text chunk = line_->Take();
        if (chunk.empty()) return;
        parts_.taker.NoteTraffic(chunk, TrafficDirection::Received);
        lastReceiveSecond_ = clock_.Now().SecondOfDay();
        if (parts_.taker.IsMuted()) continue;
        received_.Append(chunk);
        ServeReceived();
    }
    if (isContinuing_) return;
    parts_.loop.Post([this] { OnDataWaiting(); });
}

void Reception::ServeReceived() {
    const StallWatch::Mark mark(parts_.stalls, log_.Name());
    for (int i = 0; i < kTelegramsInOneTurn; ++i) {
        TelegramStep step = format_->Next(received_.Front(), clock_.Now());
        if (step.consumed == 0) {
            if (received_.Size() <= kMostReceived) return;
            log_.Failure(kTextTooMuch, log_.NameAndDescription());
            return received_.Clear();
        }
        // Dropped before it is acted on: what follows may wait, and the next chunk then comes in nested.
        received_.Drop(step.consumed);
        Act(std::move(step));
    }
    isContinuing_ = true;
    parts_.loop.Post([this] {
        isContinuing_ = false;
        ServeReceived();
        if (!isContinuing_) TakeChunks();
    });
}

void Reception::Act(TelegramStep step) {
    const Behind behind = step.closesLine ? Behind::HangUp : Behind::StayUp;
    Text reply = std::move(step.reply);
    if (step.events.empty()) {
        parts_.taker.TakeStep(std::move(step), {});
        return replies_.SendInOrder(std::move(reply), behind);
    }
    const ReplyQueue::Ticket ticket = replies_.Hold(std::move(reply), behind);
    parts_.taker.TakeStep(std::move(step),
                          [this, ticket](bool isStored) { replies_.Settle(ticket, isStored); });
}

void Reception::SendReply(TextView bytes, Behind behind) {
    if (line_->Send(bytes, behind)) parts_.taker.NoteTraffic(bytes, TrafficDirection::Sent);
}

void Reception::Tick(const CollectorTick& tick) {
    PurgeHalfTelegram();
    const bool canSend = line_->CanSend();
    Act(format_->Due({.now = clock_.Now(),
                      .monotonicMs = clock_.MonotonicMs(),
                      .tickMs = tick.tickMs,
                      .canSend = canSend,
                      .isClockWanted = isClockWanted_}));
    if (canSend) isClockWanted_ = false;
}

void Reception::Finish() {
    Act(format_->Due({.now = clock_.Now(), .monotonicMs = clock_.MonotonicMs(), .isProgramEnding = true}));
}

// Compares seconds of the day, so a half telegram from before midnight stays until the clock has passed its
// time again.
void Reception::PurgeHalfTelegram() {
    if (parts_.purgeSeconds <= 0 || lastReceiveSecond_ <= 0) return;
    const int second = clock_.Now().SecondOfDay();
    if (second <= lastReceiveSecond_ || second - lastReceiveSecond_ <= parts_.purgeSeconds) return;
    if (!received_.IsEmpty() && !isContinuing_) {
        log_.Information(kTextPurged, " " + log_.Line().PortDescription);
        received_.Clear();
    }
    lastReceiveSecond_ = second;
}

}  // namespace nordkeep
