#pragma once

#include "network/ServerReplica.h"
#include "network/messages/EventRecord.h"
#include "tests/doubles/MemoryJournal.h"
#include "tests/network/NetworkGround.h"

#include <set>

namespace nordkeep {

/// A server on a data folder of its own: one port with the set "A", objects 1 and 2.
struct ServerWorld : NetworkGround {
    ServerWorld(ManualTime& time_, SocketFactory& sockets_) : ServerWorld(time_, time_, sockets_) {}
    ServerWorld(const Clock& time_, EventLoop& loop_, SocketFactory& sockets_)
        : NetworkGround(time_, loop_, sockets_, {.ClientAddresses = "127.0.0.1"}) {
        for (const char* name : {"Data\\Events", "LogFiles", "Comments"}) folder.MakeFolders(name);
        folder.Write("Settings\\Nordkeep.INI", "[General]\r\nMaxAlarms=77\r\n");
        folder.Write("Settings\\Users.INI", "[Users]\r\nanna=Anna Berg,A,Secret,2\r\nbo=Bo,BB,,2\r\n");
        folder.Write("Settings\\Port1.ini", "[Translate]\r\nRobofon=A\r\n");
        folder.Write("Settings\\A.IDCode", "1/070;Shop;60;M;;;C;1;0;9;08:00:00\r\n2;House\r\n");
        folder.Write("Settings\\A.TypeCode", "E1;3;Burglary;R1\r\n");
        port.portName = "Port1";
        Reload();
        language.LoadFrom(
            "3822=kept from "
            "\n1062=lost\n1064=silent\n1069=error\n1070=gone\n1071=came\n1074=notallowed\n1075=toomany\n"
            "1076= at \n1077=unknown\n1078=nosuch\n1081=bye\n1090= refused \n1091= in \n1092=out "
            "\n3859=slowed: \n");
    }
    void Reload() {
        PortBinding* ports[] = {&port};
        translations.ReloadAllTranslations(true, ports);
    }
    cIDCode& Object(std::size_t i = 0) { return *translations.Sets().at(0)->m_IdCodes.at(i); }
    cAlarm& Raise(const Text& text, int status = kStatusNew) {
        auto alarm = std::make_unique<cAlarm>();
        alarm->m_Status = status;
        alarm->m_AlarmCodeToStore = text;
        alarm->m_URL = "url";
        alarm->m_ArrivedTime = time.Now();
        return store.StoreNew(std::move(alarm));
    }

    ClientSlots slots{{sockets, loop, time, language, log, traffic, network}};
    ServerReplica replica{slots};
    TestCore core{Below(Role::Server, replica)};
    EventStore& store = core.store;
    Translations& translations = core.translations;
    PortBinding port{};
    int reloads = 0;
    std::vector<LineAccount> accounts{};  // of Port1
    MemoryJournal journalFile{};
    Journal journal{journalFile, folder.Tree(), time};
    HistoryWork history{journal, time, loop};
    NetworkServer server{
        {.slots = slots,
         .dataFolder = folder.Tree(),
         .files = files,
         .language = language,
         .clock = time,
         .settings = network,
         .store = store,
         .commit = core.commit,
         .handling = core.handling,
         .translations = translations,
         .objectViews = core.noObjectViews,
         .objectReplica = replica,
         .servicePeriods = core.servicePeriods,
         .deeds = core.deeds,
         .history = history,
         .timers = core.timers,
         .torvex = core.torvex,
         .ports =
             [this] {
                 return std::vector<PortInTree>{{"Port one", &port}};
             },
         .accounts =
             [this](const Text& line) { return line == "Port1" ? accounts : std::vector<LineAccount>(); },
         .requestReload = [this] { ++reloads; }}};
};

}  // namespace nordkeep
