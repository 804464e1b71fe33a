#pragma once

#include "console/boxes/LoginBox.h"
#include "console/boxes/SimulationBox.h"
#include "console/setup/SetupBox.h"
#include "console/window/MainBox.h"

namespace nordkeep {

struct CommandTargets {
    MainBox& window;
    AlarmPage& alarms;
    ObjectPage& objects;
    LinesPage& lines;
    MainBoxView& view;
    CentreOperations& centre;
    ServerContact& server;
    SoundSwitch& sound;
    LoginBox& login;
    SimulationBox& simulation;
    SetupBox& setup;
    HistoryBox& history;
    ShiftBox& shift;
};

}  // namespace nordkeep
