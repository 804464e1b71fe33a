#include "platform/amqp/AmqpWorker.h"

#include <algorithm>
#include <utility>

namespace nordkeep {
namespace {

using std::chrono::milliseconds;
using Clock = std::chrono::steady_clock;

constexpr milliseconds kTendEvery{5000};
constexpr std::size_t kMostReports = 16;

}  // namespace

AmqpWorker::AmqpWorker(const QueueAddress& address, const AmqpPace& pace)
    : pace_(pace), connection_(address, pace.timeoutMs) {}

void AmqpWorker::Add(QueueMessage message) {
    const Lock lock(mutex_);
    if (waiting_.size() >= pace_.limit) {
        // The first one may have reached the broker already.
        waiting_.erase(waiting_.begin() + (isSending_ && waiting_.size() > 1 ? 1 : 0));
        if (!std::exchange(isDropReported_, true)) Report(QueueReport::Kind::Dropped);
    }
    waiting_.push_back(std::move(message));
    wake_.notify_one();
}

std::optional<QueueReport> AmqpWorker::TakeReport() {
    const Lock lock(mutex_);
    if (reports_.empty()) return std::nullopt;
    QueueReport report = std::move(reports_.front());
    reports_.pop_front();
    return report;
}

bool AmqpWorker::End(int patienceMs) {
    Lock lock(mutex_);
    isToEnd_ = true;
    lastMoment_ = Clock::now() + milliseconds(patienceMs);
    wake_.notify_one();
    return ended_.wait_until(lock, lastMoment_, [this] { return hasEnded_; });
}

std::size_t AmqpWorker::WaitingCount() {
    const Lock lock(mutex_);
    return waiting_.size();
}

std::int64_t AmqpWorker::DeliveredUpTo() {
    const Lock lock(mutex_);
    return deliveredUpTo_;
}

bool AmqpWorker::IsToGoOn() const {
    if (!isToEnd_) return true;
    return !waiting_.empty() && !isAway_ && Clock::now() < lastMoment_;
}

void AmqpWorker::Run() {
    Lock lock(mutex_);
    while (IsToGoOn()) {
        const bool isDue = !waiting_.empty() && (!isAway_ || Clock::now() >= nextAttempt_);
        isDue ? SendFirst(lock) : WaitForWork(lock);
    }
    lock.unlock();
    connection_.Close();
    lock.lock();
    hasEnded_ = true;
    ended_.notify_all();
}

void AmqpWorker::WaitForWork(Lock& lock) {
    if (!waiting_.empty()) {
        wake_.wait_until(lock, nextAttempt_);
    } else if (!connection_.IsOpen()) {
        wake_.wait(lock);
    } else if (wake_.wait_for(lock, kTendEvery) == std::cv_status::timeout) {
        lock.unlock();
        // One that is gone is made anew for the next message.
        connection_.Tend();
        lock.lock();
    }
}

void AmqpWorker::SendFirst(Lock& lock) {
    const QueueMessage message = waiting_.front();
    isSending_ = true;
    lock.unlock();
    const AmqpConnection::Failure failure = Deliver(message);
    lock.lock();
    isSending_ = false;
    if (!failure) {
        waiting_.pop_front();
        deliveredUpTo_ = std::max(deliveredUpTo_, message.id);
    }
    NoteOutcome(failure);
}

AmqpConnection::Failure AmqpWorker::Deliver(const QueueMessage& message) {
    // A connection may have died while nothing was sent; that is no reason to let the message wait.
    if (connection_.IsOpen() && !connection_.Publish(message)) return {};
    if (auto failure = connection_.Open()) return failure;
    return connection_.Publish(message);
}

void AmqpWorker::NoteOutcome(const AmqpConnection::Failure& failure) {
    if (failure) {
        nextAttempt_ = Clock::now() + milliseconds(pace_.retryMs);
        if (!std::exchange(isAway_, true)) Report(QueueReport::Kind::Failed, *failure);
    } else if (std::exchange(isAway_, false)) {
        isDropReported_ = false;
        Report(QueueReport::Kind::Restored);
    }
}

void AmqpWorker::Report(QueueReport::Kind kind, const std::string& detail) {
    if (reports_.size() < kMostReports) reports_.push_back({kind, FromUtf8(detail)});
}

}  // namespace nordkeep
