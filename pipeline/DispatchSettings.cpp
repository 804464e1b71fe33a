#include "pipeline/DispatchSettings.h"

#include <array>

namespace nordkeep {
namespace {

constexpr const char* kGeneral = "General";
constexpr const char* kTorvex = "Torvex";
constexpr SettingScope kOwn = SettingScope::Workstation;
constexpr SettingScope kCentre = SettingScope::Centre;

using D = DispatchSettings;
const std::array kDispatch = {
    SettingRow<D>{kGeneral, "SendNotTranslatedToOldAlarms", kCentre, &D::SendNotTranslatedToOldAlarms},
    SettingRow<D>{kGeneral, "AlarmFileFormat", kCentre, &D::AlarmFileFormat},
    kAlarmDateRow<D>,
    kAlarmTimeRow<D>,
    SettingRow<D>{kGeneral, "AlarmLogFileFileFormat", kCentre, &D::AlarmLogFileFileFormat},
    kAlarmLogDateRow<D>,
    kAlarmLogTimeRow<D>,
    SettingRow<D>{kGeneral, "CreateTypeLogFiles", kCentre, &D::CreateTypeLogFiles},
    SettingRow<D>{kGeneral, "CreateObjectLogFiles", kCentre, &D::CreateObjectLogFiles},
    SettingRow<D>{kGeneral, "ObjectLogFileFormat", kCentre, &D::ObjectLogFileFormat},
    SettingRow<D>{kGeneral, "ObjectLogFileDateFormat", kCentre, &D::ObjectLogFileDateFormat},
    SettingRow<D>{kGeneral, "ObjectLogFileTimeFormat", kCentre, &D::ObjectLogFileTimeFormat},
};

using K = DeskSettings;
const std::array kDesk = {
    SettingRow<K>{kGeneral, "AlarmPopup", kOwn, &K::AlarmPopup},
    SettingRow<K>{kGeneral, "AutoViewComment", kOwn, &K::AutoViewComment},
    SettingRow<K>{kGeneral, "AutoViewMap", kOwn, &K::AutoViewMap},
    kAlarmPictureTimeRow<K>,
    SettingRow<K>{kGeneral, "AlarmPictureUseSoundPrio", kOwn, &K::AlarmPictureUseSoundPrio},
    kSpeechPictureTimeRow<K>,
    SettingRow<K>{kGeneral, "SoundPrio", kOwn, &K::SoundPrio},
    SettingRow<K>{kGeneral, "AlarmSound", kOwn, &K::AlarmSound},
    SettingRow<K>{kGeneral, "AlarmSoundFile", kOwn, &K::AlarmSoundFile},
    SettingRow<K>{kGeneral, "AlarmSoundFile1", kOwn, &K::AlarmSoundFile1},
    SettingRow<K>{kGeneral, "AlarmSoundFile2", kOwn, &K::AlarmSoundFile2},
    SettingRow<K>{kGeneral, "AlarmSoundFile3", kOwn, &K::AlarmSoundFile3},
    SettingRow<K>{kGeneral, "RelayPrio", kOwn, &K::RelayPrio},
    SettingRow<K>{kGeneral, "RelayPort", kOwn, &K::RelayPort},
    SettingRow<K>{kGeneral, "PrinterPort", kOwn, &K::PrinterPort},
    SettingRow<K>{kGeneral, "ContinousPrinterFormat", kOwn, &K::ContinousPrinterFormat},
    kPrinterDateRow<K>,
    kPrinterTimeRow<K>,
    SettingRow<K>{kGeneral, "PrinterISO2DOS", kOwn, &K::PrinterISO2DOS},
};

using T = TorvexSettings;
const std::array kTorvexRows = {
    SettingRow<T>{kTorvex, "Port", kCentre, &T::Port, -1, 65535},
    SettingRow<T>{kTorvex, "Address", kCentre, &T::Address},
    SettingRow<T>{kTorvex, "StatusToBePassedToTorvex", kCentre, &T::StatusToBePassedToTorvex},
    SettingRow<T>{kTorvex, "Format", kCentre, &T::Format},
    SettingRow<T>{kTorvex, "DelayAndWaitForAck", kCentre, &T::DelayAndWaitForAck},
    SettingRow<T>{kTorvex, "RetryFailedTransmissions", kCentre, &T::RetryFailedTransmissions},
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
