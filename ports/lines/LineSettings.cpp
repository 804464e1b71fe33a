#include "ports/lines/LineSettings.h"

#include <array>

namespace nordkeep {
namespace {

constexpr SettingScope kPort = SettingScope::Port;
constexpr const char* kGeneral = "General";

const std::array kRows = {
    SettingRow<LineSettings>{kGeneral, "PortDescription", kPort, &LineSettings::PortDescription},
    SettingRow<LineSettings>{kGeneral, "PortNumber", kPort, &LineSettings::PortNumber},
    SettingRow<LineSettings>{kGeneral, "PortSetting", kPort, &LineSettings::PortSetting},
    SettingRow<LineSettings>{kGeneral, "BindSocketToAddress", kPort, &LineSettings::BindSocketToAddress},
    SettingRow<LineSettings>{kGeneral, "Handshaking", kPort, &LineSettings::Handshaking},
    SettingRow<LineSettings>{kGeneral, "ReopenInterval", kPort, &LineSettings::ReopenInterval, 0, 2'000'000},
};

}  // namespace

std::span<const SettingRow<LineSettings>> LineSettingRows() {
    return kRows;
}

LineSettings LoadLineSettings(const Settings& files, const Text& portName) {
    LineSettings line = LoadSettings(files, LineSettingRows(), portName);
    line.PortDescription = TrimBlanks(line.PortDescription);
    if (line.PortDescription.empty()) line.PortDescription = portName;
    line.BindSocketToAddress = TrimBlanks(line.BindSocketToAddress);
    return line;
}

}  // namespace nordkeep
