#pragma once

#include "pipeline/DispatchSettings.h"

namespace nordkeep {

/// The outputs that work on behind a dispatched alarm, as far as the dispatcher need not know of it.
struct OutputSettings {
    Text MSMQFormatName{};  // the queue; empty: none
    Text MSMQLabel{};
    Text MSMQBody{};
    int RelayBehaviour = 1;   // 1: raised for an alarm, lowered at rest; 0: the other way round
    int RelayDelay = 10;      // seconds
    int PrinterFormFeed = 0;  // behind so many alarms on the line printer; 0: none
    Text AlarmSoundDevice{};  // the system's name of the sound output; empty: its default
};

/// The ComCall line. Without an address there is none; with an interval of 0 it is never connected.
struct ComCallSettings {
    Text Address{};  // "host:port"
    Text Format{kLineFormat};
    int ReconnectInterval = 0;  // ms
    int LineFeedPeriod = 0;     // ms; 0: no line feeds
};

std::span<const SettingRow<OutputSettings>> OutputSettingRows();
std::span<const SettingRow<ComCallSettings>> ComCallSettingRows();

}  // namespace nordkeep
