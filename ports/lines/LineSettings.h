#pragma once

#include "runtime/SettingTable.h"

namespace nordkeep {

/// Where the other end of a port is, and how it is reached.
struct LineSettings {
    Text PortDescription{};  // equals the port's name when the key is blank
    int PortNumber = 0;      // COM number, TCP or UDP port
    Text PortSetting{"0"};   // by type: line settings, host, URL, path
    Text BindSocketToAddress{};
    int Handshaking = 0;
    int ReopenInterval = 0;  // seconds between open attempts
};

std::span<const SettingRow<LineSettings>> LineSettingRows();
LineSettings LoadLineSettings(const Settings& files, const Text& portName);

}  // namespace nordkeep
