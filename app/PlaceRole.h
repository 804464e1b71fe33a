#pragma once

#include "app/CentreConditions.h"
#include "app/NetworkPeers.h"
#include "app/OperatorPorts.h"
#include "app/PlaceLines.h"
#include "app/PlaceState.h"
#include "app/ReloadRequest.h"
#include "console/boxes/CentreOperations.h"
#include "console/boxes/EditorBox.h"
#include "console/boxes/MapBox.h"
#include "console/lists/AlarmLists.h"
#include "reports/HistorySource.h"
#include "reports/HistoryWork.h"

namespace nordkeep {

/// What differs between the operator's place of a copy with ports of its own and that of a client. Chosen
/// once; nothing at the place asks for the role.
struct PlaceRole {
    std::unique_ptr<DataFiles> files{};
    std::unique_ptr<MapPictures> maps{};
    std::unique_ptr<EditorHost> editorHost{};
    std::unique_ptr<CentreOperations> centre{};
    std::unique_ptr<ServerContact> server{};
    std::unique_ptr<PlaceState> state{};
    std::unique_ptr<LineControl> lines{};
    std::unique_ptr<HistorySource> localHistory{};  // none on a client
    HistorySource* history = nullptr;
    bool readsObjectFiles = true;  // see AlarmPage
    bool knowsCallers = true;      // see ObjectList
    bool hasLines = false;         // of its own, which have to be set up first of all
    bool asksForLogin = false;     // when the window has come up for the first time
};

/// What the place of either role is made of.
struct PlaceParts {
    Foundation& foundation;
    EventStore& store;
    AlarmLists& lists;
    ServicePeriods& servicePeriods;
    Deeds& deeds;
    HistoryWork& history;
    const AliveTestTimers& timers;
    ObjectViews& objectViews;
    TorvexLink& torvex;
    const SoundPlayer& sound;
    const CentreConditions& conditions;
    NetworkRole& network;
    NetworkPeers& peers;  // built behind this
    OperatorPorts& ports;
    RunningCheck& check;
    PortList& portList;  // built behind this
    ReloadRequest& reload;
};
PlaceRole MakePlaceRole(const PlaceParts& parts);

}  // namespace nordkeep
