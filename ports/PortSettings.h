#pragma once

#include "runtime/SettingTable.h"

namespace nordkeep {

/// What a port is, and when it is to be open.
struct PortSettings {
    Text PortType{};
    int MessageFormat = 0;
    bool ClosePortIfTorvexIsLost = false;
    int ClosePortWhenNoNetworkClientsAreConnected = -1;  // seconds; negative is off
    int AutoPurgeBufferTime = 5;                         // seconds of silence; 0 or less is off
};

std::span<const SettingRow<PortSettings>> PortSettingRows();

}  // namespace nordkeep
