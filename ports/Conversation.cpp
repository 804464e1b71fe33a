#include "ports/Conversation.h"

#include <utility>

namespace nordkeep {
namespace {

constexpr int kTextPurged = 1135;
constexpr int kTextTooMuch = 3604;

// Telegrams of one line in one turn of the loop; the others wait their turn behind the other lines.
constexpr int kTelegramsInOneTurn = 64;
constexpr int kChunksInOneTurn = 16;
// Many callers may part in one turn; what more they leave waits its turn as well.
constexpr int kTelegramsAtOneParting = 4;

}  // namespace

void Conversation::OnNewStream(Text rest) {
    if (!rest.empty() && TakeIn(rest)) streams_.back().Append(rest);
    replies_.Clear();
    if (streams_.back().IsEmpty()) return;
    parts_.leftBehind.Add(streams_.back().Size());
    streams_.emplace_back();
    if (!isContinuing_) ServeReceived(kTelegramsAtOneParting);
}

void Conversation::OnDataWaiting() {
    // While earlier telegrams still wait their turn, the bytes stay with the system, which slows the sender.
    if (!isContinuing_) TakeChunks();
}

void Conversation::TakeChunks() {
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

bool Conversation::TakeIn(const Text& bytes) {
    parts_.taker.NoteTraffic(bytes, TrafficDirection::Received);
    lastReceiveSecond_ = parts_.clock.Now().SecondOfDay();
    return !parts_.taker.IsMuted();
}

void Conversation::ServeReceived(int most) {
    const StallWatch::Mark mark(parts_.stalls, parts_.log.Name());
    for (int i = 0; i < most; ++i) {
        if (!ServeNext()) return DropWhatNeverEnds();
    }
    GoOnLater();
}

void Conversation::GoOnLater() {
    if (std::exchange(isContinuing_, true)) return;
    parts_.loop.Post([this] {
        isContinuing_ = false;
        ServeReceived(kTelegramsInOneTurn);
        if (!isContinuing_) TakeChunks();
    });
}

bool Conversation::ServeNext() {
    while (true) {
        ReceivedText& stream = streams_.front();
        TelegramStep step = format_->Next(stream.Front(), ReadLineClock(parts_.clock));
        const bool isOfGoneCaller = streams_.size() > 1;
        if (step.consumed > 0) {
            // Dropped before it is acted on: what follows may wait, and the next chunk then comes in nested.
            const std::size_t size = stream.Size();
            stream.Drop(step.consumed);
            if (isOfGoneCaller) {
                parts_.leftBehind.Drop(size - stream.Size());
                const std::uint64_t receipt = step.receipt;
                parts_.taker.TakeStep(std::move(step), WhenSettled(receipt, {}));
            } else {
                Act(std::move(step), line_->Sender());
            }
            return true;
        }
        if (!isOfGoneCaller) return false;
        parts_.leftBehind.Drop(stream.Size());
        streams_.pop_front();
    }
}

void Conversation::DropWhatNeverEnds() {
    if (streams_.back().Size() <= parts_.mostReceived) return;
    parts_.log.Failure(kTextTooMuch, parts_.log.NameAndDescription());
    streams_.back().Clear();
}

void Conversation::Act(TelegramStep step, const SocketPeer& sender) {
    const Behind behind = step.closesLine ? Behind::HangUp : Behind::StayUp;
    Text reply = std::move(step.reply);
    if (step.events.empty() && step.held.empty() && !step.isRepeat) {
        parts_.taker.TakeStep(std::move(step), {});
        return replies_.SendInOrder(std::move(reply), behind, sender);
    }
    const std::uint64_t receipt = step.receipt;
    const ReplyQueue::Ticket ticket = replies_.Hold(std::move(reply), behind, sender);
    parts_.taker.TakeStep(std::move(step), WhenSettled(receipt, ticket));
}

StepTaker::WhenStored Conversation::WhenSettled(std::uint64_t receipt,
                                                std::optional<ReplyQueue::Ticket> ticket) {
    if (receipt == 0 && !ticket) return {};
    return [this, receipt, ticket](bool isStored) {
        const bool isGood = receipt == 0 ? isStored : format_->OnStored(receipt, isStored);
        if (ticket) replies_.Settle(*ticket, isGood);
    };
}

void Conversation::SendReply(const SocketPeer& to, TextView bytes, Behind behind) {
    if (line_->SendTo(to, bytes, behind)) parts_.taker.NoteTraffic(bytes, TrafficDirection::Sent);
}

void Conversation::Finish() {
    while (ServeNext()) continue;
}

// Compares seconds of the day, so a half telegram from before midnight stays until the clock has passed its
// time again.
void Conversation::PurgeHalfTelegram() {
    if (parts_.purgeSeconds <= 0 || lastReceiveSecond_ <= 0) return;
    const int second = parts_.clock.Now().SecondOfDay();
    if (second <= lastReceiveSecond_ || second - lastReceiveSecond_ <= parts_.purgeSeconds) return;
    if (!streams_.back().IsEmpty() && !isContinuing_) {
        parts_.log.Information(kTextPurged, " " + parts_.log.Line().PortDescription);
        streams_.back().Clear();
    }
    lastReceiveSecond_ = second;
}

LineClock ReadLineClock(const Clock& clock) {
    // Days of an OleDate begin in 1899, those of the system's clock in 1970.
    constexpr std::int64_t kEpochMs = 25'569LL * 86'400'000;
    return {.now = clock.Now(),
            .utc = OleDate::FromMilliseconds(clock.UtcMs() + kEpochMs),
            .monotonicMs = clock.MonotonicMs()};
}

}  // namespace nordkeep
