#include "ports/Port.h"

namespace nordkeep {
namespace {

constexpr int kTextTooMuch = 3604;

// What a line may hold without a complete telegram in it.
constexpr std::size_t kMostReceived = 1 << 20;
// Telegrams of one line in one turn of the loop; the others wait their turn behind the other lines.
constexpr int kTelegramsInOneTurn = 64;
constexpr int kChunksInOneTurn = 16;

}  // namespace

void cPort::OnNewStream() {
    received_.Clear();
    replies_.Clear();
    if (lineFormat_) lineFormat_->BeginStream();
}

void cPort::OnDataWaiting() {
    // While earlier telegrams still wait their turn, the bytes stay with the system, which slows the sender.
    if (!isContinuing_) TakeChunks();
}

void cPort::TakeChunks() {
    for (int i = 0; i < kChunksInOneTurn && !isContinuing_; ++i) {
        const Text chunk = transport_->Take();
        if (chunk.empty()) return;
        parts_.trafficLog.WriteTrafficLog(chunk, TrafficDirection::Received, line_.PortDescription);
        lastReceiveSecond_ = parts_.clock.Now().SecondOfDay();
        if (isMuted_) continue;
        received_.Append(chunk);
        ServeReceived();
    }
    if (isContinuing_) return;
    parts_.loop.Post([this] { OnDataWaiting(); });
}

void cPort::ServeReceived() {
    const StallWatch::Mark mark(parts_.stalls, PortName());
    for (int i = 0; i < kTelegramsInOneTurn; ++i) {
        TelegramStep step = lineFormat_->Next(received_.Front(), parts_.clock.Now());
        if (step.consumed == 0) {
            if (received_.Size() <= kMostReceived) return;
            portLog_->Failure(kTextTooMuch, portLog_->NameAndDescription());
            return received_.Clear();
        }
        // Dropped before it is acted on: what follows may wait, and the next chunk then comes in nested.
        received_.Drop(step.consumed);
        HandleStep(std::move(step));
    }
    isContinuing_ = true;
    parts_.loop.Post([this] {
        isContinuing_ = false;
        ServeReceived();
        if (!isContinuing_) TakeChunks();
    });
}

Text cPort::LabelOf(const DecodedEvent& decoded) const {
    Text label = decoded.event.ProtocolType;
    for (const int number : decoded.labelTexts) {
        if (number == 0) break;
        const Text text = parts_.language.GetLanguageText(number);
        if (!label.empty() && !text.empty()) label += ' ';
        label += text;
    }
    return label;
}

void cPort::HandleStep(TelegramStep step, EventCommit::Completion whenStored) {
    if (step.isTraffic) NoteTraffic();
    for (const DecoderNote& note : step.notes) portLog_->Information(note.text, note.tail);
    const auto then = step.closesLine ? ReplyQueue::Then::HangUp : ReplyQueue::Then::GoOn;
    if (step.events.empty() && !whenStored) return replies_.SendInOrder(std::move(step.reply), then);
    const ReplyQueue::Ticket ticket = replies_.Hold(std::move(step.reply), then);
    parts_.commit.Begin();
    for (DecodedEvent& decoded : step.events) {
        decoded.event.ProtocolType = LabelOf(decoded);
        decoded.event.PortObject = &eventPort_;
        parts_.intake.HandleIncomingEvent(decoded.event);
    }
    parts_.commit.End([this, ticket, whenStored = std::move(whenStored)](bool isStored) {
        replies_.Settle(ticket, isStored);
        if (whenStored) whenStored(isStored);
    });
}

}  // namespace nordkeep
