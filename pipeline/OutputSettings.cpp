#include "pipeline/OutputSettings.h"

#include <array>

namespace nordkeep {
namespace {

constexpr const char* kGeneral = "General";
constexpr const char* kComCall = "ComCall";
constexpr SettingScope kOwn = SettingScope::Workstation;
constexpr SettingScope kCentre = SettingScope::Centre;
constexpr int kMostAlarmsOnPage = 1000;
constexpr int kLongestRelayDelay = 1'000'000;

using O = OutputSettings;
const std::array kOutputs = {
    SettingRow<O>{kGeneral, "MSMQFormatName", kCentre, &O::MSMQFormatName},
    SettingRow<O>{kGeneral, "MSMQLabel", kCentre, &O::MSMQLabel},
    SettingRow<O>{kGeneral, "MSMQBody", kCentre, &O::MSMQBody},
    SettingRow<O>{kGeneral, "RelayBehaviour", kOwn, &O::RelayBehaviour},
    SettingRow<O>{kGeneral, "PrinterFormFeed", kOwn, &O::PrinterFormFeed, 0, kMostAlarmsOnPage},
    SettingRow<O>{kGeneral, "RelayDelay", kOwn, &O::RelayDelay, 0, kLongestRelayDelay},
    SettingRow<O>{kGeneral, "AlarmSoundDevice", kOwn, &O::AlarmSoundDevice},
};

using C = ComCallSettings;
const std::array kComCallRows = {
    SettingRow<C>{kComCall, "Address", kCentre, &C::Address},
    SettingRow<C>{kComCall, "Format", kCentre, &C::Format},
    SettingRow<C>{kComCall, "ReconnectInterval", kCentre, &C::ReconnectInterval, 0},
    SettingRow<C>{kComCall, "LineFeedPeriod", kCentre, &C::LineFeedPeriod, 0},
};

}  // namespace

std::span<const SettingRow<OutputSettings>> OutputSettingRows() {
    return kOutputs;
}
std::span<const SettingRow<ComCallSettings>> ComCallSettingRows() {
    return kComCallRows;
}

}  // namespace nordkeep
