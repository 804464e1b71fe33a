#include "pipeline/DispatchSettings.h"

#include <array>

namespace nordkeep {
namespace {

constexpr const char* kGeneral = "General";
constexpr const char* kTorvex = "Torvex";
constexpr SettingScope kOwn = SettingScope::Workstation;
constexpr SettingScope kCentre = SettingScope::Centre;
constexpr const char* kLogFormat =
    "[Date]|[Time]|[AlarmCodeToStore]|[ProtocolType]|[TrPrio]|[TrTypeCode]|[TrIDCode]";

using D = DispatchSettings;
const std::array kDispatch = {
    SettingRow<D>{kGeneral, "SendNotTranslatedToOldAlarms", "0", kCentre, &D::SendNotTranslatedToOldAlarms},
    SettingRow<D>{
        kGeneral, "AlarmFileFormat",
        "[Date];[Time];[ProtocolType];[TrPrio];[TrIDCode];[TrTypeCode];[AlarmCodeToStore];[Originator]",
        kCentre, &D::AlarmFileFormat},
    SettingRow<D>{kGeneral, "AlarmDateFormat", "Short Date", kOwn, &D::AlarmDateFormat},
    SettingRow<D>{kGeneral, "AlarmTimeFormat", "Long Time", kOwn, &D::AlarmTimeFormat},
    SettingRow<D>{kGeneral, "AlarmLogFileFileFormat", kLogFormat, kCentre, &D::AlarmLogFileFileFormat},
    SettingRow<D>{kGeneral, "AlarmLogFileDateFormat", "Short Date", kCentre, &D::AlarmLogFileDateFormat},
    SettingRow<D>{kGeneral, "AlarmLogFileTimeFormat", "Long Time", kCentre, &D::AlarmLogFileTimeFormat},
    SettingRow<D>{kGeneral, "CreateTypeLogFiles", "0", kCentre, &D::CreateTypeLogFiles},
    SettingRow<D>{kGeneral, "CreateObjectLogFiles", "0", kCentre, &D::CreateObjectLogFiles},
    SettingRow<D>{kGeneral, "ObjectLogFileFormat", kLogFormat, kCentre, &D::ObjectLogFileFormat},
    SettingRow<D>{kGeneral, "ObjectLogFileDateFormat", "Short Date", kCentre, &D::ObjectLogFileDateFormat},
    SettingRow<D>{kGeneral, "ObjectLogFileTimeFormat", "Long Time", kCentre, &D::ObjectLogFileTimeFormat},
};

using K = DeskSettings;
const std::array kDesk = {
    SettingRow<K>{kGeneral, "AlarmPopup", "1", kOwn, &K::AlarmPopup},
    SettingRow<K>{kGeneral, "AutoViewComment", "", kOwn, &K::AutoViewComment},
    SettingRow<K>{kGeneral, "AutoViewMap", "", kOwn, &K::AutoViewMap},
    SettingRow<K>{kGeneral, "AlarmPictureTime", "-1", kOwn, &K::AlarmPictureTime},
    SettingRow<K>{kGeneral, "AlarmPictureUseSoundPrio", "0", kOwn, &K::AlarmPictureUseSoundPrio},
    SettingRow<K>{kGeneral, "SpeechPictureTime", "-1", kOwn, &K::SpeechPictureTime},
    SettingRow<K>{kGeneral, "SoundPrio", "-1", kOwn, &K::SoundPrio},
    SettingRow<K>{kGeneral, "AlarmSound", "", kOwn, &K::AlarmSound},
    SettingRow<K>{kGeneral, "AlarmSoundFile", "", kOwn, &K::AlarmSoundFile},
    SettingRow<K>{kGeneral, "RelayPrio", "-1", kOwn, &K::RelayPrio},
    SettingRow<K>{kGeneral, "RelayPort", "-1", kOwn, &K::RelayPort},
    SettingRow<K>{kGeneral, "PrinterPort", "-1", kOwn, &K::PrinterPort},
    SettingRow<K>{kGeneral, "ContinousPrinterFormat", "", kOwn, &K::ContinousPrinterFormat},
    SettingRow<K>{kGeneral, "PrinterDateFormat", "Short Date", kOwn, &K::PrinterDateFormat},
    SettingRow<K>{kGeneral, "PrinterTimeFormat", "Long Time", kOwn, &K::PrinterTimeFormat},
    SettingRow<K>{kGeneral, "PrinterISO2DOS", "", kOwn, &K::PrinterISO2DOS},
};

using T = TorvexSettings;
const std::array kTorvexRows = {
    SettingRow<T>{kTorvex, "Port", "-1", kCentre, &T::Port, -1, 65535},
    SettingRow<T>{kTorvex, "Address", "", kCentre, &T::Address},
    SettingRow<T>{kTorvex, "StatusToBePassedToTorvex", "0,1,2,3,4", kCentre, &T::StatusToBePassedToTorvex},
    SettingRow<T>{kTorvex, "Format",
                  "1|[Date]|[Time]|[AlarmCodeToStore]|[ProtocolType]|[TrPrio]|[TrTypeCode]|[TrIDCode]",
                  kCentre, &T::Format},
    SettingRow<T>{kTorvex, "DelayAndWaitForAck", "", kCentre, &T::DelayAndWaitForAck},
    SettingRow<T>{kTorvex, "RetryFailedTransmissions", "", kCentre, &T::RetryFailedTransmissions},
};

}  // namespace

std::span<const SettingRow<DispatchSettings>> DispatchSettingRows() {
    return kDispatch;
}
std::span<const SettingRow<DeskSettings>> DeskSettingRows() {
    return kDesk;
}
std::span<const SettingRow<TorvexSettings>> TorvexSettingRows() {
    return kTorvexRows;
}

PriorityRange ParsePriorityRange(TextView text) {
    const auto number = [](TextView part) { return static_cast<long>(LeadingNumber(part)); };
    // Asked before the split: "-1" itself holds the separator.
    if (number(text) == -1) return {};
    const Text low = GetField(text, 0, "-");
    const Text high = GetField(text, 1, "-");
    return {number(low), high.empty() ? number(low) : number(high)};
}

}  // namespace nordkeep
