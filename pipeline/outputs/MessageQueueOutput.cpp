#include "pipeline/outputs/MessageQueueOutput.h"

#include "pipeline/outputs/QueueAddress.h"

namespace nordkeep {
namespace {

constexpr int kTextNotSent = 3620;
constexpr int kTextSentAgain = 3621;
constexpr int kTextDropped = 3622;
constexpr int kTextNoQueue = 3623;
constexpr int kTextLeftBehind = 3624;
constexpr int kPatienceMs = 2000;

}  // namespace

MessageQueueOutput::MessageQueueOutput(Text formatName, MessageQueueFactory& queues, SysLog& log,
                                       const Language& language)
    : formatName_(std::move(formatName)), queues_(queues), log_(log), language_(language) {}

bool MessageQueueOutput::Open() {
    if (queue_ || isRefused_) return !isRefused_;
    const auto address = ParseQueueAddress(formatName_);
    if (address) {
        queue_ = queues_.NewQueue(*address);
        return true;
    }
    isRefused_ = true;
    Log(kTextNoQueue, formatName_);
    return false;
}

void MessageQueueOutput::Send(QueueMessage message) {
    if (Open()) queue_->Send(std::move(message));
}

void MessageQueueOutput::Tick() {
    if (!queue_) return;
    while (const auto report = queue_->TakeReport()) {
        switch (report->kind) {
            case QueueReport::Kind::Failed:
                isFailing_ = true;
                Log(kTextNotSent, report->detail);
                break;
            case QueueReport::Kind::Restored:
                isFailing_ = false;
                log_.WriteSysLog(language_.GetLanguageText(kTextSentAgain), LogKind::Information);
                break;
            case QueueReport::Kind::Dropped:
                Log(kTextDropped);
                break;
        }
    }
}

Text MessageQueueOutput::Peer() const {
    const auto address = ParseQueueAddress(formatName_);
    return address ? FromUtf8(address->queue + "@" + address->host) : formatName_;
}

std::size_t MessageQueueOutput::Close() {
    if (!queue_) return 0;
    const std::size_t left = queue_->Close(kPatienceMs);
    Tick();
    isRefused_ = false;
    return left;
}

void MessageQueueOutput::NoteLeftBehind(std::size_t count) {
    if (count > 0) Log(kTextLeftBehind, std::to_string(count));
}

void MessageQueueOutput::Log(int text, const Text& behind) {
    log_.WriteSysLog(language_.GetLanguageText(text) + behind, LogKind::Failure);
}

}  // namespace nordkeep
