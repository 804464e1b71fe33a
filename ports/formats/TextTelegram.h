#pragma once

#include "ports/formats/TelegramStep.h"
#include "ports/formats/TextCleaning.h"

namespace nordkeep {

struct TextTelegramSettings {
    bool WrapWithSTXETX = true;  // a message stands between STX and ETX; otherwise it ends at a line feed
    bool RequireNumericIdCode = true;  // the first word is the ID code only when it is numeric
    TextCleaning cleaning{};
};

std::span<const SettingRow<TextTelegramSettings>> TextTelegramSettingRows();

/// Decodes the front of what a line of format "Text" has received. Such a line is never answered.
TelegramStep NextTextStep(TextView received, const TextTelegramSettings& settings, OleDate now);

}  // namespace nordkeep
