#pragma once

#include "runtime/Settings.h"

namespace nordkeep {

/// The device file of serial line COM n: what section SerialPorts names, else the machine's n-th line.
inline Text SerialDeviceOf(const Settings& settings, int number) {
    return settings.ReadIni("SerialPorts", "COM" + std::to_string(number),
                            "/dev/ttyS" + std::to_string(number - 1));
}

}  // namespace nordkeep
