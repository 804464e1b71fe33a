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
    int MaxCallers = 1;                                  // at once, on a port that listens by TCP
};

std::span<const SettingRow<PortSettings>> PortSettingRows();

/// The same of a port whose senders have a section of their own.
struct Dc09CallerSettings {
    int MaxCallers = 1000;
};

std::span<const SettingRow<Dc09CallerSettings>> Dc09CallerRows();

}  // namespace nordkeep
