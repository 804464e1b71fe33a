#pragma once

#include "ports/formats/ServiceTick.h"
#include "ports/formats/TelegramStep.h"
#include "runtime/SettingRow.h"

#include <deque>
#include <optional>
#include <utility>

namespace nordkeep {

struct RobofonExportSettings {
    int RBM600ExportTestTelegramInterval = -1;  // seconds between line tests; 0 or less: none
    int RBM600ExportRetries = 5;                // a telegram is sent once more than this
    int RBM600ExportTimeout = 1000;             // milliseconds; only whole seconds count
    Text PortDescription{};
    Text droppedText{};  // what the log says of a telegram that nobody acknowledges
};

std::span<const SettingRow<RobofonExportSettings>> RobofonExportSettingRows();

/// One telegram on its way out.
struct c26ByteTelegram {
    std::int64_t lastSendMs = 0;
    int m_NumberOfTransmissions = 0;
    Text text{};       // the ID code
    Text classCode{};  // two hexadecimal digits; what is none stands for class "0"
};

/// The 26 bytes of a telegram sent at this time.
Text ExportBytes(const c26ByteTelegram& telegram, OleDate now);

/// What one line of format "Robofon (RBM600) Export" has to send: one telegram at a time, repeated until the
/// far end acknowledges.
class RobofonExport {
 public:
    explicit RobofonExport(RobofonExportSettings settings) : settings_(std::move(settings)) {}

    void Add(const Text& idCode, const Text& classCode);
    /// Sends what the other has not sent yet, or not been answered for.
    void TakeOver(RobofonExport& other) { queue_ = std::exchange(other.queue_, {}); }
    /// What has come back; it is consumed whole.
    TelegramStep Receive(TextView received);
    /// What is to be sent now.
    TelegramStep Tick(const ServiceTick& tick);

    std::size_t Size() const { return queue_.size(); }

 private:
    void DropFirst();
    void DropUnanswered(std::int64_t nowMs);
    bool IsDue(const c26ByteTelegram& telegram, std::int64_t nowMs) const;
    void SendNext(TelegramStep& step, const ServiceTick& tick);

    RobofonExportSettings settings_;
    std::deque<c26ByteTelegram> queue_{};
    std::vector<DecoderNote> dropped_{};  // not yet reported
    std::optional<std::int64_t> lastTestMs_{};
};

}  // namespace nordkeep
