#pragma once

#include "ports/formats/ServiceTick.h"
#include "ports/formats/TelegramStep.h"
#include "ports/formats/TextCleaning.h"
#include "runtime/SharedSettings.h"

#include <optional>

namespace nordkeep {

struct GoogolSettings : TelegramTimeSettings {
    int GoogolTextLimit = 120;           // so many bytes from STX may wait for their ETX
    bool GoogolTextIsAlarmCode = false;  // the first word is the ID code, numeric or not
    int SetTimeInterval = -1;            // minutes between clock telegrams; 0 or less: none
    TextCleaning cleaning{};
    Text PortDescription{};
};

std::span<const SettingRow<GoogolSettings>> GoogolSettingRows();

/// Decodes the front of what a line of format "Googol (GoogolT1)" has received: text frames from STX to ETX,
/// binary frames behind SOH, and BEL as line test.
TelegramStep NextGoogolStep(TextView received, const GoogolSettings& settings, OleDate now);

/// When the clock of the far end was set; empty before the first tick.
struct GoogolClock {
    std::optional<std::int64_t> lastSetMs{};
};

/// The clock telegram when it is due and the line can send.
TelegramStep SetClockInGoogolT1(GoogolClock& clock, const GoogolSettings& settings, const ServiceTick& tick);

}  // namespace nordkeep
