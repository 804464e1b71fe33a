#include "app/ServiceStatus.h"

namespace nordkeep {
namespace {

constexpr int kTextPortsOpen = 3625;
constexpr int kTextNewAlarms = 3626;

}  // namespace

ServiceStatus::ServiceStatus(ServiceNotify& manager, EventLoop& loop, const Language& language)
    : manager_(manager),
      language_(language),
      watchdog_(loop.NewTimer([this] { manager_.Tell("WATCHDOG=1\n"); })) {}

void ServiceStatus::Ready(const Figures& figures) {
    if (!manager_.IsSupervised()) return;
    told_ = StatusLine(figures);
    Tell("READY=1\n" + told_);
    if (manager_.WatchdogMs() > 0) watchdog_->Start(manager_.WatchdogMs() / 3);
}

void ServiceStatus::Update(const Figures& figures) {
    if (!manager_.IsSupervised()) return;
    if (!waiting_.empty()) Tell({});
    std::string line = StatusLine(figures);
    if (line == told_) return;
    Tell(line);
    told_ = std::move(line);
}

void ServiceStatus::Stopping() {
    if (manager_.IsSupervised()) Tell("STOPPING=1\n");
}

// What the manager does not take now goes along with what follows: that the copy is ready must not get lost.
void ServiceStatus::Tell(const std::string& state) {
    constexpr std::size_t kMostWaiting = 4096;
    waiting_ += state;
    if (manager_.Tell(waiting_) || waiting_.size() > kMostWaiting) waiting_.clear();
}

std::string ServiceStatus::StatusLine(const Figures& figures) const {
    Text line = language_.GetLanguageText(kTextPortsOpen) + std::to_string(figures.portsOpen) + "/" +
                std::to_string(figures.ports) + language_.GetLanguageText(kTextNewAlarms) +
                std::to_string(figures.newAlarms);
    if (!figures.wrong.empty()) line += ". " + figures.wrong;
    return "STATUS=" + ToUtf8(line) + "\n";
}

}  // namespace nordkeep
