#include "ports/PortSettings.h"

#include <array>

namespace nordkeep {
namespace {

constexpr SettingScope kPort = SettingScope::Port;
constexpr const char* kGeneral = "General";
constexpr int kMostSeconds = 2'000'000;
constexpr int kMostCallers = 4000;

const std::array kRows = {
    SettingRow<PortSettings>{kGeneral, "PortType", kPort, &PortSettings::PortType},
    SettingRow<PortSettings>{kGeneral, "MessageFormat", kPort, &PortSettings::MessageFormat},
    SettingRow<PortSettings>{kGeneral, "ClosePortIfTorvexIsLost", kPort,
                             &PortSettings::ClosePortIfTorvexIsLost},
    SettingRow<PortSettings>{kGeneral, "ClosePortWhenNoNetworkClientsAreConnected", kPort,
                             &PortSettings::ClosePortWhenNoNetworkClientsAreConnected, -1, kMostSeconds},
    SettingRow<PortSettings>{kGeneral, "AutoPurgeBufferTime", kPort, &PortSettings::AutoPurgeBufferTime, 0,
                             kMostSeconds},
    SettingRow<PortSettings>{kGeneral, "MaxCallers", kPort, &PortSettings::MaxCallers, 1, kMostCallers},
};

const std::array kDc09Rows = {
    SettingRow<Dc09CallerSettings>{"DC09", "MaxCallers", kPort, &Dc09CallerSettings::MaxCallers, 1,
                                   kMostCallers},
};

}  // namespace

std::span<const SettingRow<Dc09CallerSettings>> Dc09CallerRows() {
    return kDc09Rows;
}

std::span<const SettingRow<PortSettings>> PortSettingRows() {
    return kRows;
}

}  // namespace nordkeep
