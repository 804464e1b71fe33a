#pragma once

#include "app/EngineSettings.h"
#include "console/boxes/CommentSettings.h"
#include "console/boxes/PictureSettings.h"
#include "console/print/AlarmPrinting.h"
#include "console/window/ConsoleSettings.h"
#include "console/window/ViewState.h"
#include "pipeline/DispatchSettings.h"
#include "pipeline/IntakeSettings.h"
#include "pipeline/OutputSettings.h"
#include "pipeline/ResetSettings.h"
#include "store/StoreSettings.h"
#include "translation/TranslationSettings.h"

namespace nordkeep {

/// All settings that are read at start, each subsystem's in its own struct.
struct CentreSettings {
    explicit CentreSettings(const Settings& files);

    EngineSettings engine;
    StoreSettings store;
    TranslationSettings translation;
    IntakeSettings intake;
    ResetSettings resets;
    DispatchSettings dispatch;
    DeskSettings desk;
    TorvexSettings torvex;
    OutputSettings outputs;
    ComCallSettings comCall;
    ViewState view;
    ConsoleSettings console;
    CommentSettings comments;
    PictureSettings pictures;
    PrinterSettings printer;
    AlarmPageSettings alarmPages;
};

}  // namespace nordkeep
