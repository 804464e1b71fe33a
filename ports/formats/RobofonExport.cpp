#include "ports/formats/RobofonExport.h"

#include "ports/formats/Robofon.h"
#include "ports/formats/TelegramFields.h"
#include "runtime/Dates.h"
#include "runtime/Fields.h"
#include "runtime/SharedTexts.h"

#include <algorithm>
#include <array>

namespace nordkeep {
namespace {

constexpr std::int64_t kFirstTestDelayMs = 5000;
// A line that is never opened must not fill the memory; the oldest telegrams go first.
constexpr std::size_t kLongestQueue = 10'000;

constexpr SettingScope kPort = SettingScope::Port;
const std::array kRows = {
    SettingRow<RobofonExportSettings>{"General", "RBM600ExportTestTelegramInterval", kPort,
                                      &RobofonExportSettings::RBM600ExportTestTelegramInterval},
    SettingRow<RobofonExportSettings>{"General", "RBM600ExportRetries", kPort,
                                      &RobofonExportSettings::RBM600ExportRetries, 0, 32767},
    SettingRow<RobofonExportSettings>{"General", "RBM600ExportTimeout", kPort,
                                      &RobofonExportSettings::RBM600ExportTimeout, 0},
};

char ClassByte(const Text& classCode) {
    const auto isHexDigit = [](char c) { return HexDigit(c) >= 0; };
    const bool isHex = !classCode.empty() && std::ranges::all_of(classCode, isHexDigit);
    const int code = isHex ? HexToLong(classCode) : '0';
    return code <= 255 ? static_cast<char>(code) : '0';
}

}  // namespace

std::span<const SettingRow<RobofonExportSettings>> RobofonExportSettingRows() {
    return kRows;
}

Text ExportBytes(const c26ByteTelegram& telegram, OleDate now) {
    // Receiver 0, line 0.
    return EncodeRobofon({.timeOrFirstPart = FormatDate(now, "YYMMDDHHNN"),
                          .classCode = ClassByte(telegram.classCode),
                          .id = telegram.text});
}

void RobofonExport::Add(const Text& idCode, const Text& classCode) {
    if (queue_.size() >= kLongestQueue) DropFirst();
    queue_.push_back({.text = idCode, .classCode = classCode});
}

void RobofonExport::DropFirst() {
    Text tail = settings_.PortDescription + settings_.droppedText + " (" + queue_.front().text + ")";
    if (dropped_.size() < kLongestQueue) dropped_.push_back({kTextPort, std::move(tail)});
    queue_.pop_front();
}

TelegramStep RobofonExport::Receive(TextView received) {
    const bool isAcknowledged = received.find(bytes::ACK) != TextView::npos;
    if (isAcknowledged && !queue_.empty() && queue_.front().m_NumberOfTransmissions > 0) queue_.pop_front();
    return {.consumed = received.size(), .isTraffic = isAcknowledged};
}

bool RobofonExport::IsDue(const c26ByteTelegram& telegram, std::int64_t nowMs) const {
    const std::int64_t timeoutMs = settings_.RBM600ExportTimeout / 1000 * 1000LL;
    return telegram.m_NumberOfTransmissions == 0 || nowMs - telegram.lastSendMs >= timeoutMs;
}

void RobofonExport::DropUnanswered(std::int64_t nowMs) {
    const auto isGivenUp = [&](const c26ByteTelegram& telegram) {
        return telegram.m_NumberOfTransmissions > settings_.RBM600ExportRetries && IsDue(telegram, nowMs);
    };
    while (!queue_.empty() && isGivenUp(queue_.front())) DropFirst();
}

void RobofonExport::SendNext(TelegramStep& step, const ServiceTick& tick) {
    const std::int64_t testMs = settings_.RBM600ExportTestTelegramInterval * 1000LL;
    if (!queue_.empty()) {
        c26ByteTelegram& telegram = queue_.front();
        if (!IsDue(telegram, tick.monotonicMs)) return;
        step.reply = ExportBytes(telegram, tick.now);
        telegram.lastSendMs = tick.monotonicMs;
        ++telegram.m_NumberOfTransmissions;
    } else if (testMs > 0 && tick.monotonicMs - *lastTestMs_ >= testMs) {
        step.reply = Text(1, bytes::BEL);
    } else {
        return;
    }
    lastTestMs_ = tick.monotonicMs;
}

TelegramStep RobofonExport::Tick(const ServiceTick& tick) {
    TelegramStep step;
    if (!lastTestMs_) lastTestMs_ = tick.monotonicMs + kFirstTestDelayMs;
    if (tick.canSend) {
        DropUnanswered(tick.monotonicMs);
        SendNext(step, tick);
    }
    step.notes.swap(dropped_);
    return step;
}

}  // namespace nordkeep
