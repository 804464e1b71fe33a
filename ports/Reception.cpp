#include "ports/Reception.h"

#include <utility>

namespace nordkeep {
namespace {

constexpr int kTextPurged = 1135;
constexpr int kTextTooMuch = 3604;

// What a line may hold without a complete telegram in it.
constexpr std::size_t kMostReceived = 1 << 20;
// Telegrams of one line in one turn of the loop; the others wait their turn behind the other lines.
constexpr int kTelegramsInOneTurn = 64;
constexpr int kChunksInOneTurn = 16;
// Many callers may part in one turn; what more they leave waits its turn as well.
constexpr int kTelegramsAtOneParting = 4;
// What callers who are gone may leave to wait.
constexpr std::size_t kMostLeftBehind = 4 << 20;

}  // namespace

Reception::Reception(const Parts& parts, std::unique_ptr<LineFormat> format)
    : parts_(parts),
      clock_(parts.line.clock),
      log_(parts.line.log),
      line_(MakeLine(parts.type, parts.line, *this)),
      format_(std::move(format)),
      replies_(*this) {}

void Reception::OnNewStream(Text rest) {
    if (!rest.empty() && TakeIn(rest)) streams_.back().Append(rest);
    replies_.Clear();
    if (streams_.back().IsEmpty()) return;
    streams_.emplace_back();
    if (!isContinuing_) ServeReceived(kTelegramsAtOneParting);
    // Callers who leave much and come again at once pay with the time of all, not with the memory of all.
    while (LeftBehind() > kMostLeftBehind && ServeNext()) continue;
}

void Reception::OnDataWaiting() {
    // While earlier telegrams still wait their turn, the bytes stay with the system, which slows the sender.
    if (!isContinuing_) TakeChunks();
}

void Reception::TakeChunks() {
    for (int i = 0; i < kChunksInOneTurn && !isContinuing_; ++i) {
        const Text chunk = line_->Take();
        if (chunk.empty()) return;
        if (!TakeIn(chunk)) continue;
        streams_.back().Append(chunk);
        ServeReceived(kTelegramsInOneTurn);
    }
    if (isContinuing_) return;
    parts_.loop.Post([this] { OnDataWaiting(); });
}

bool Reception::TakeIn(const Text& bytes) {
    parts_.taker.NoteTraffic(bytes, TrafficDirection::Received);
    lastReceiveSecond_ = clock_.Now().SecondOfDay();
    return !parts_.taker.IsMuted();
}

void Reception::ServeReceived(int most) {
    const StallWatch::Mark mark(parts_.stalls, log_.Name());
    for (int i = 0; i < most; ++i) {
        if (!ServeNext()) return DropWhatNeverEnds();
    }
    GoOnLater();
}

void Reception::GoOnLater() {
    if (std::exchange(isContinuing_, true)) return;
    parts_.loop.Post([this] {
        isContinuing_ = false;
        ServeReceived(kTelegramsInOneTurn);
        if (!isContinuing_) TakeChunks();
    });
}

bool Reception::ServeNext() {
    while (true) {
        TelegramStep step = format_->Next(streams_.front().Front(), clock_.Now());
        const bool isOfGoneCaller = streams_.size() > 1;
        if (step.consumed > 0) {
            // Dropped before it is acted on: what follows may wait, and the next chunk then comes in nested.
            streams_.front().Drop(step.consumed);
            if (isOfGoneCaller) {
                parts_.taker.TakeStep(std::move(step), {});
            } else {
                Act(std::move(step));
            }
            return true;
        }
        if (!isOfGoneCaller) return false;
        streams_.pop_front();
    }
}

void Reception::DropWhatNeverEnds() {
    if (streams_.back().Size() <= kMostReceived) return;
    log_.Failure(kTextTooMuch, log_.NameAndDescription());
    streams_.back().Clear();
}

std::size_t Reception::LeftBehind() const {
    std::size_t size = 0;
    for (std::size_t i = 0; i + 1 < streams_.size(); ++i) size += streams_[i].Size();
    return size;
}

void Reception::Act(TelegramStep step) {
    const Behind behind = step.closesLine ? Behind::HangUp : Behind::StayUp;
    Text reply = std::move(step.reply);
    if (step.events.empty() && step.held.empty()) {
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
    while (ServeNext()) continue;
    Act(format_->Due({.now = clock_.Now(), .monotonicMs = clock_.MonotonicMs(), .isProgramEnding = true}));
}

// Compares seconds of the day, so a half telegram from before midnight stays until the clock has passed its
// time again.
void Reception::PurgeHalfTelegram() {
    if (parts_.purgeSeconds <= 0 || lastReceiveSecond_ <= 0) return;
    const int second = clock_.Now().SecondOfDay();
    if (second <= lastReceiveSecond_ || second - lastReceiveSecond_ <= parts_.purgeSeconds) return;
    if (!streams_.back().IsEmpty() && !isContinuing_) {
        log_.Information(kTextPurged, " " + log_.Line().PortDescription);
        streams_.back().Clear();
    }
    lastReceiveSecond_ = second;
}

}  // namespace nordkeep
