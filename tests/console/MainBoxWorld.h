#pragma once

#include "console/history/ReportBox.h"
#include "console/window/MainBox.h"
#include "reports/LocalHistory.h"
#include "tests/console/ConsoleDoubles.h"
#include "tests/doubles/FakeDialogs.h"
#include "tests/doubles/ManualTime.h"
#include "tests/doubles/MemoryJournal.h"
#include "tests/doubles/RecordingIntake.h"
#include "tests/doubles/TempFolder.h"
#include "tests/doubles/TestCore.h"

#include <fstream>
#include <iterator>

namespace nordkeep {

/// Counts how often the end was asked for.
struct RecordingEnd final : ProgramEnd {
    void EndProgram() override { ++ends; }
    void EndOnFailure() override { ++ends; }
    int ends = 0;
};

/// A copy with its main window as a model: a store, a set "Town" on one port, and everything in the test's
/// hand. Settings are to be written before Start.
struct MainBoxWorld {
    MainBoxWorld() {
        for (const char* name : {"Settings", "Data\\Events", "LogFiles", "Information\\Town\\1001", "Maps"}) {
            folder.MakeFolders(name);
        }
        UseLanguage("044");
        WriteGeneral("");
        folder.Write("Settings\\Town.IDCode",
                     "FORMAT=1,4,0,0,5,2\r\n1001;School;60;Town.png/10/20;;Town council\r\n1002;Shop;\r\n"
                     "1003;Water works;\r\n");
        folder.Write("Settings\\Town.TypeCode",
                     "01;1;Fire;02\r\n02;3;Fire restored;\r\n05;2;Burglary;06\r\n");
        folder.Write("Settings\\Town.DataCode", "[Event]\r\nBA=Burglary;BR;1\r\nBR=Restored;;3\r\n");
        folder.Write("Settings\\Port1.ini", "[Translate]\r\nRobofon=Town\r\n");
        port.portName = "Port1";
        editorHost.takesAll = true;
    }

    /// The texts of a language file of the program.
    void UseLanguage(const std::string& number) {
        std::ifstream file(std::string(NORDKEEP_SOURCE_DIR) + "/languages/NK_Lang." + number,
                           std::ios::binary);
        language.LoadFrom(Text{std::istreambuf_iterator<char>(file), {}});
    }
    void WriteGeneral(const Text& general, const Text& rest = {}) {
        folder.Write("Settings\\Nordkeep.INI", "[General]\r\n" + general + rest);
    }
    void Start(Role role = Role::StandAlone) { running.emplace(*this, role); }

    cAlarm& Raise(const Text& text = "Fire", int status = kStatusNew) {
        auto alarm = std::make_unique<cAlarm>();
        alarm->m_TimeStamp = alarm->m_ArrivedTime = time.Now();
        alarm->m_Status = status;
        alarm->m_AlarmCodeToStore = text;
        alarm->m_TranslatedIDCode = "School";
        alarm->m_IdCode = "1001";
        alarm->m_TypeCode = "01";
        alarm->m_TranslatedTypeCode = text;
        alarm->m_TranslationFile = "Town";
        alarm->m_TranslatedPrio = "1";
        alarm->m_PortDescription = "Receiver";
        alarm->m_Customer = "Town council";
        return running->store.StoreNew(std::move(alarm));
    }
    void SetStatus(cAlarm& alarm, int status) {
        alarm.m_Status = status;
        running->store.UpdateAlarmLists(alarm);
    }
    MainBox& Box() { return running->box; }
    void Tick() { Box().Tick(250); }
    void Click(Tab tab, const cAlarm& alarm) { Box().Select(tab, {{RowKey(alarm)}, RowKey(alarm)}); }

    struct Running {
        Running(MainBoxWorld& world, Role role)
            : files(world.folder.Tree()),
              settings(LoadSettings(files, ConsoleSettingRows())),
              log(world.folder.Tree(), world.time),
              core({.dataFolder = world.folder.Tree(),
                    .files = files,
                    .language = world.language,
                    .log = log,
                    .clock = world.time,
                    .loop = world.time,
                    .sockets = world.sockets,
                    .role = role,
                    .alarmViews = &lists,
                    .objectViews = &marks,
                    .settings = LoadCoreSettings(files)}),
              captions(world.language),
              cells(store, captions, fileTexts,
                    {settings.AlarmDateFormat, settings.AlarmTimeFormat, settings.ViewStatusAsNumber}),
              dataFiles(world.folder.Tree()),
              sysLog(captions),
              debug({world.folder.Tree(), world.time, captions, log, world.ports}),
              printing({store, captions, printerSettings, pageSettings, world.printer}),
              centre(&core.servicePeriods),
              commands({store, core.handling, world.dialogs, world.language, world.time, world.around}),
              login(world.server),
              period({translations, centre, captions, world.time, world.around}),
              editor({dataFiles, world.dialogs, captions, world.around, world.editorHost, world.textCheck}),
              simulation({world.intake, translations, world.time, world.time, world.ports, 1}),
              lines({.files = dataFiles,
                     .dialogs = world.dialogs,
                     .captions = captions,
                     .state = world.around,
                     .clock = world.time,
                     .dataFolder = world.folder.Tree(),
                     .control = world.lineControl}),
              setup({.files = files,
                     .centreFiles = dataFiles,
                     .dialogs = world.dialogs,
                     .captions = captions,
                     .state = world.around,
                     .host = world.setupHost,
                     .sections = {&lines},
                     .dataFolder = world.folder.Tree(),
                     .programFolder = world.folder.Tree()}),
              shift({store, translations, captions, world.time, printerSettings}),
              journal(journalFile, world.folder.Tree(), world.time),
              work(journal, world.time, world.time),
              source(work, core.deeds),
              history(HistoryNeeds(world)),
              report(HistoryNeeds(world)),
              shiftBox({shift, source, captions, world.time, world.printer}),
              card({translations, store, dataFiles, captions, world.time, world.around, centre, world.windows,
                    period, history, source}),
              box(NeedsOf(world), LoadSettings(files, ViewStateRows())) {
            log.SetRowListener([this](const LogRow& row) { sysLog.AddLine(row); });
            translations.ReloadAllTranslations(true, std::vector<PortBinding*>{&world.port});
            debug.SetPorts({{"Port1", "Receiver"}, {"Port2", "Second"}});
            lists.Attach({.rows = {&cells, LoadAlarmColors(files, false), settings.ViewAlarmToolTip},
                          .unacked = LoadAlarmColumns(files, kUnackedSection),
                          .acked = LoadAlarmColumns(files, kAckedSection)});
            box.Tick(250);
        }

        HistoryBox::Needs HistoryNeeds(MainBoxWorld& world) {
            return {source, captions, world.time, world.printer, printerSettings};
        }
        MainBox::Needs NeedsOf(MainBoxWorld& world) {
            const bool isClient = world.around.rights.IsClient();
            return {.lists = lists,
                    .sysLog = sysLog,
                    .debug = debug,
                    .captions = captions,
                    .clock = world.time,
                    .dialogs = world.dialogs,
                    .settings = settings,
                    .state = world.around,
                    .centre = centre,
                    .server = world.server,
                    .sound = world.around,
                    .end = world.end,
                    .login = login,
                    .simulation = simulation,
                    .setup = setup,
                    .history = history,
                    .shift = shiftBox,
                    .card = card,
                    .loop = world.time,
                    .lines = world.lineControl,
                    .alarms = {.store = store,
                               .lists = lists,
                               .commands = commands,
                               .printing = printing,
                               .cells = cells,
                               .files = dataFiles,
                               .captions = captions,
                               .settings = settings,
                               .state = world.around,
                               .windows = world.windows,
                               .readsObjectFiles = !isClient},
                    .objects = {.translations = translations,
                                .marks = marks,
                                .translationSettings = core.settings.translation,
                                .files = dataFiles,
                                .captions = captions,
                                .clock = world.time,
                                .settings = settings,
                                .state = world.around,
                                .centre = centre,
                                .windows = world.windows,
                                .period = period,
                                .editor = editor,
                                .editors = world.setEditors,
                                .knowsCallers = !isClient}};
        }

        Settings files;
        ConsoleSettings settings;
        SysLog log;
        TranslationMarks marks{};
        AlarmLists lists{};
        TestCore core;
        EventStore& store = core.store;
        Translations& translations = core.translations;
        Captions captions;
        FileTexts fileTexts{};
        AlarmCells cells;
        LocalDataFiles dataFiles;
        SysLogList sysLog;
        DebugPage debug;
        PrinterSettings printerSettings{};
        AlarmPageSettings pageSettings{};
        AlarmPrinting printing;
        RecordingCentre centre;
        AlarmCommands commands;
        LoginBox login;
        PeriodBox period;
        EditorBox editor;
        SimulationBox simulation;
        LinesBox lines;
        SetupBox setup;
        ShiftList shift;
        MemoryJournal journalFile{};
        Journal journal;
        HistoryWork work;
        LocalHistory source;
        HistoryBox history;
        ReportBox report;
        ShiftBox shiftBox;
        CardBox card;
        MainBox box;
    };

    TempFolder folder{};
    ManualTime time{};
    Language language{};
    FakeDialogs dialogs{};
    FakeSockets sockets{};
    RecordingWindows windows{};
    PortBinding port{};
    FakeCopy around{port};
    FakePorts ports{};
    RecordingServer server{};
    RecordingSetupHost setupHost{};
    RecordingSetEditors setEditors{};
    FakeTextCheck textCheck{};
    RecordingLines lineControl{};
    RecordingPrinter printer{};
    RecordingEditorHost editorHost{};
    RecordingIntake intake{};
    RecordingEnd end{};
    std::optional<Running> running{};
};

}  // namespace nordkeep
