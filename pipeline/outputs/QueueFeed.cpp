#include "pipeline/outputs/QueueFeed.h"

#include "store/RecordJson.h"

#include <algorithm>

namespace nordkeep {
namespace {

// One more than the last entry that the broker has; 0 where there is no queue.
constexpr const char* kPlaceMark = "queue";
constexpr int kKeepMs = 2000;
constexpr std::size_t kMostOnTheirWay = 200;
constexpr std::size_t kEntriesAtOnce = 200;

}  // namespace

QueueFeed::QueueFeed(MessageQueueOutput& queue, Journal& journal, Build build)
    : queue_(queue), journal_(journal), build_(std::move(build)) {}

std::size_t QueueFeed::WaitingCount() const {
    return isOpen_ ? static_cast<std::size_t>(std::max<std::int64_t>(0, journal_.LastId() - place_)) : 0;
}

void QueueFeed::Open() {
    if (isOpen_ || !journal_.IsOpen()) return;
    const std::int64_t kept = journal_.Mark(kPlaceMark);
    isOpen_ = true;
    if (!queue_.IsConfigured()) {
        // A queue that comes back one day is not told what happened meanwhile.
        if (kept != 0) journal_.KeepMark({.name = kPlaceMark, .value = 0});
        return;
    }
    place_ = sentUpTo_ = kept > 0 ? kept - 1 : journal_.LastId();
    keptPlace_ = kept - 1;
    KeepPlace(kKeepMs);
}

void QueueFeed::Tick(int intervalMs) {
    if (!journal_.IsOpen()) return;
    Open();
    if (!queue_.IsConfigured() || !queue_.Open()) return;
    place_ = queue_.WaitingCount() == 0 ? sentUpTo_ : std::max(place_, queue_.DeliveredUpTo());
    SendSome();
    KeepPlace(intervalMs);
}

void QueueFeed::SendSome() {
    if (queue_.WaitingCount() >= kMostOnTheirWay || sentUpTo_ >= journal_.LastId()) return;
    journal_.ReadSome(sentUpTo_, kEntriesAtOnce, [this](const JournalRow& row) {
        sentUpTo_ = row.id;
        if (row.kind != NameOf(JournalKind::Event)) return;
        const std::optional<cAlarm> alarm = ReadRecordJson(row.data);
        if (!alarm) return;
        QueueMessage message = build_(*alarm);
        message.id = row.id;
        queue_.Send(std::move(message));
    });
}

void QueueFeed::KeepPlace(int intervalMs) {
    sinceKeptMs_ += intervalMs;
    if (sinceKeptMs_ < kKeepMs || place_ == keptPlace_) return;
    sinceKeptMs_ = 0;
    if (journal_.KeepMark({.name = kPlaceMark, .value = place_ + 1})) keptPlace_ = place_;
}

void QueueFeed::Close() {
    if (!isOpen_ || !queue_.IsConfigured()) return;
    place_ = std::max(place_, queue_.DeliveredUpTo());
    KeepPlace(kKeepMs);
    isOpen_ = false;
}

}  // namespace nordkeep
