#pragma once

#include "store/EventFile.h"
#include "tests/doubles/ManualTime.h"
#include "tests/doubles/TempFolder.h"
#include "tests/doubles/TestCore.h"

#include <gtest/gtest.h>

#include <optional>

namespace nordkeep {

/// Everything from the intake to the files, on a folder of its own and with time in the test's hand. Write
/// the settings and translation files first, then Start.
class PipelineTest : public ::testing::Test {
 protected:
    PipelineTest() {
        for (const char* name : {"Settings", "Data\\Events", "LogFiles", "AlarmFiles"})
            folder.MakeFolders(name);
        port.PortName = port.binding.portName = "Port1";
        port.m_PortDescription = "Receiver";
        port.m_CLIdTranslatedDefaultAliveTestTypeReset = "98";
        language.LoadFrom(
            "1049=New\n1050=Old\n1051=Env\n1052=Ascii\n1060=Hidden\n1097=Speech\n1098=Confirmed\n"
            "1200=Alarm\n1201=Restore\n1202=Opening\n1203=Closing\n1204=Report\n"
            "1205=Group:\n1206=Zone:\n1207=User:\n");
    }

    void WriteSettings(const Text& general) {
        folder.Write("Settings\\Nordkeep.INI", "[General]\r\n" + general);
    }
    /// The set "Town", bound for the plain protocol 1, for SIA and for Contact ID.
    void WriteSet(const Text& idCodes, const Text& typeCodes = {}, const Text& dataCodes = {}) {
        folder.Write("Settings\\Port1.ini", "[Translate]\r\nRobofon=Town\r\nSIA=Town\r\nContactID=Town\r\n");
        folder.Write("Settings\\Town.IDCode", idCodes);
        folder.Write("Settings\\Town.TypeCode", typeCodes);
        folder.Write("Settings\\Town.DataCode", dataCodes);
    }

    void Start() {
        running.emplace(CoreGround{.dataFolder = folder.Tree(),
                                   .files = files,
                                   .language = language,
                                   .log = log,
                                   .clock = time,
                                   .loop = time,
                                   .sockets = sockets,
                                   .settings = LoadCoreSettings(files)});
        running->store.LoadEvents();
        running->translations.ReloadAllTranslations(true, std::vector<PortBinding*>{&port.binding});
    }

    /// Takes an event of protocol 1 in; the code is ID and type as the set cuts them.
    cAlarm& TakeIn(const Text& code, const Text& originator = {}) {
        return TakeIn({.AlarmTime = time.Now(),
                       .ProtocolType = "Robofon",
                       .DefaultAlarmCode = code,
                       .Originator = originator,
                       .PortObject = &port,
                       .TranslationNumberToUse = Protocol::Robofon});
    }
    /// The last record of the list once the event has been taken in.
    cAlarm& TakeIn(const IncomingEvent& event) {
        running->intake.HandleIncomingEvent(event);
        running->commit.Commit();
        return *All().back();
    }

    /// All records in list order.
    std::vector<cAlarm*> All() {
        std::vector<cAlarm*> all;
        const EventList& events = running->store.Events();
        for (EventSequence at = events.Next(0); at != 0; at = events.Next(at)) all.push_back(events.Find(at));
        return all;
    }
    /// What the event file of a record holds at the end of the turn.
    cAlarm Stored(const cAlarm& alarm) {
        running->commit.Commit();
        cAlarm stored;
        const Text file = folder.Read("Data\\Events\\A" + Digits(alarm.m_FilePointer, 7) + ".eve");
        EXPECT_TRUE(ReadFromDisk(file, 1, stored)) << alarm.m_FilePointer;
        return stored;
    }

    TempFolder folder{};
    ManualTime time{};
    EventPort port{};
    FakeSockets sockets{};
    Settings files{folder.Tree()};
    Language language{};
    SysLog log{folder.Tree(), time};
    std::optional<TestCore> running{};
};

}  // namespace nordkeep
