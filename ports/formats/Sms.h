#pragma once

#include "ports/formats/TelegramStep.h"
#include "ports/formats/TextCleaning.h"
#include "runtime/SharedSettings.h"

#include <optional>

namespace nordkeep {

/// How text messages and calls become events.
struct SmsSettings : LineEndSettings, NumericCodeSettings {
    bool UseSenderAsIDCode = false;
    bool IA5toISOLatin1 = false;
    Text DefaultCountryCode{"046"};  // with or without zeros in front
    TextCleaning cleaning{};
};

std::span<const SettingRow<SmsSettings>> SmsSettingRows();

/// The alphabet of text messages to Windows-1252. Codes that mean the same in both stay.
Text Ia5ToLatin1(TextView text);
/// "00" and the country code without its leading zeros.
Text CountryCode(TextView setting);

/// True when a modem's answer to a read command holds a message.
bool HoldsSms(TextView answer);
/// True when that answer has come to its end.
bool IsSmsComplete(TextView answer);
/// The event of the message in an answer; none for an empty message.
std::optional<DecodedEvent> DecodeSms(TextView answer, const SmsSettings& settings, OleDate now);

/// The number of the caller that a line "+CLIP: number,type,.." tells; empty when it is hidden.
Text CallerNumber(TextView line, const SmsSettings& settings);
DecodedEvent CallEvent(const Text& number, OleDate now);

}  // namespace nordkeep
