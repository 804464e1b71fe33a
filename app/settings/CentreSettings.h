#pragma once

#include "app/settings/EngineSettings.h"
#include "console/boxes/CommentSettings.h"
#include "console/boxes/PictureSettings.h"
#include "console/print/AlarmPrinting.h"
#include "console/window/ConsoleSettings.h"
#include "console/window/ViewState.h"
#include "pipeline/Core.h"
#include "pipeline/OutputSettings.h"
#include "status/MqttSettings.h"
#include "status/StatusSettings.h"

namespace nordkeep {

/// All settings that are read at start: those of the core, and each further subsystem's in its own struct.
struct CentreSettings : CoreSettings {
    explicit CentreSettings(const Settings& files);

    EngineSettings engine;
    OutputSettings outputs;
    ComCallSettings comCall;
    ViewState view;
    ConsoleSettings console;
    CommentSettings comments;
    PictureSettings pictures;
    PrinterSettings printer;
    AlarmPageSettings alarmPages;
    StatusSettings status;
    MqttSettings mqtt;
};

}  // namespace nordkeep
