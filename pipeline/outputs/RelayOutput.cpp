#include "pipeline/outputs/RelayOutput.h"

#include <algorithm>
#include <utility>

namespace nordkeep {
namespace {

constexpr int kTextCannotOperate = 3515;
constexpr int kRetryMs = 10'000;

}  // namespace

RelayOutput::RelayOutput(RelayWiring wiring, SerialFactory& lines, SysLog& log, const Language& language)
    : wiring_(std::move(wiring)), log_(log), language_(language) {
    if (!IsConfigured()) return;
    line_ = lines.NewLine();
    line_->SetDevice(wiring_.device);
    line_->SetOnComm([this](CommEvent event) {
        line_->Input();
        if (event == CommEvent::Error) isLevelSet_ = false;
    });
}

void RelayOutput::Tick(int intervalMs) {
    if (!IsConfigured()) return;
    const bool wasDrawn = IsDrawn();
    if (ticksLeft_ > 0) --ticksLeft_;
    if (std::exchange(isRequested_, false)) {
        ticksLeft_ = std::max<std::int64_t>(wiring_.holdSeconds * std::int64_t{1000} / intervalMs, 1);
    }
    if (wasDrawn != IsDrawn()) {
        isLevelSet_ = false;
        retryLeftMs_ = 0;
    }
    if (!isLevelSet_) Operate(intervalMs);
}

void RelayOutput::Operate(int intervalMs) {
    retryLeftMs_ -= intervalMs;
    if (retryLeftMs_ > 0) return;
    retryLeftMs_ = kRetryMs;
    isLevelSet_ = SetLevel();
    if (!isLevelSet_ && !isFailureLogged_) {
        log_.WriteSysLog(
            language_.GetLanguageText(kTextCannotOperate) + " (COM" + std::to_string(wiring_.port) + ")",
            LogKind::Failure);
    }
    isFailureLogged_ = !isLevelSet_;
}

bool RelayOutput::SetLevel() {
    if (!line_->PortOpen() && !line_->SetPortOpen(true)) return false;
    return line_->SetControlLines(IsDrawn() == wiring_.isRaisedForAlarms);
}

void RelayOutput::Close() {
    if (!line_ || !line_->PortOpen()) return;
    ticksLeft_ = 0;
    SetLevel();
    line_->SetPortOpen(false);
}

}  // namespace nordkeep
