#pragma once

#include "pipeline/Intake.h"
#include "store/EventFile.h"
#include "tests/doubles/FakeWinsock.h"
#include "tests/doubles/ManualTime.h"
#include "tests/doubles/RecordingDesk.h"
#include "tests/doubles/RowViews.h"
#include "tests/doubles/TempFolder.h"
#include "translation/AliveScan.h"

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
        running.emplace(*this);
        running->translations.ReloadAllTranslations(true, std::vector<PortBinding*>{&port.binding});
    }

    /// Takes an event of protocol 1 in; the code is ID and type as the set cuts them.
    cAlarm& TakeIn(const Text& code, const Text& originator = {}) {
        return TakeIn({.AlarmTime = time.Now(),
                       .ProtocolType = "Robofon",
                       .DefaultAlarmCode = code,
                       .Originator = originator,
                       .PortObject = &port,
                       .TranslationNumberToUse = 1});
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
    /// What the event file of a record holds.
    cAlarm Stored(const cAlarm& alarm) {
        cAlarm stored;
        const Text file = folder.Read("Data\\Events\\A" + Digits(alarm.m_FilePointer, 7) + ".eve");
        EXPECT_TRUE(ReadFromDisk(file, 1, stored)) << alarm.m_FilePointer;
        return stored;
    }

    struct Running {
        explicit Running(PipelineTest& test);

        SysLog log;
        Language language{};
        Settings files;
        DispatchSettings dispatchSettings;
        DeskSettings deskSettings;
        TorvexSettings torvexSettings;
        ResetSettings resetSettings;
        StoreSettings storeSettings;
        IntakeSettings intakeSettings;
        TranslationSettings translationSettings;
        EventCommit commit;
        NoReplica replica{};
        NoObjectReplica objectReplica{};
        NoObjectViews objectViews{};
        NoTelegramExport telegramExport{};
        RowViews lists{};
        RecordingDesk desk{};
        QuietOutputs outputs{};
        LookupRules lookup;
        AliveTestTimers timers;
        EventStore store;
        Translations translations;
        ServicePeriods periods;
        FakeSockets sockets{};
        TorvexLink torvex;
        AlarmHandling handling;
        Resets resets;
        Dispatcher dispatcher;
        ParkedEvents parked;
        Intake intake;
        AliveScan scan;
    };

    TempFolder folder{};
    ManualTime time{};
    EventPort port{};
    std::optional<Running> running{};
};

}  // namespace nordkeep
