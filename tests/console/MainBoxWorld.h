#pragma once

#include "console/window/MainBox.h"
#include "network/NetworkServer.h"
#include "tests/doubles/FakeDialogs.h"
#include "tests/doubles/ManualTime.h"
#include "tests/doubles/TempFolder.h"
#include "tests/doubles/TestCore.h"

#include <fstream>
#include <iterator>

namespace nordkeep {

/// Writes down which windows were asked for.
class RecordingWindows final : public OperatorWindows {
 public:
    void OpenAlarmSheet(std::int32_t filePointer, OpenedBy) override {
        calls += "sheet " + std::to_string(filePointer) + ";";
    }
    void OpenObjectSheet(const Text& set, const Text& idCode) override {
        calls += "object " + set + "/" + idCode + ";";
    }
    void OpenMap(const Text& reference, std::int32_t, OpenedBy) override {
        calls += "map " + reference + ";";
    }
    void ShowPicture(std::int32_t, const Text&, bool) override {}
    void AlarmEnded(std::int32_t) override {}
    Text calls{};
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
    void Click(Tab tab, const cAlarm& alarm) { Box().Select(tab, {RowKey(alarm)}, RowKey(alarm)); }

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
              cells(store, captions,
                    {settings.AlarmDateFormat, settings.AlarmTimeFormat, settings.ViewStatusAsNumber}),
              dataFiles(world.folder.Tree()),
              debug({world.folder.Tree(), world.time, captions, log,
                     [&world](const Text& name, TextView bytes) { world.sent += name + ":" + Text(bytes); }}),
              commands({store, core.handling, world.dialogs, world.language}),
              box(NeedsOf(world), LoadSettings(files, ViewStateRows())) {
            log.SetRowListener([this](const LogRow& row) { sysLog.AddLine(row); });
            translations.ReloadAllTranslations(true, std::vector<PortBinding*>{&world.port});
            debug.SetPorts({{"Port1", "Receiver"}, {"Port2", "Second"}});
            lists.Attach({.rows = {&cells, LoadAlarmColors(files, false), settings.ViewAlarmToolTip},
                          .unacked = LoadAlarmColumns(files, kUnackedSection),
                          .acked = LoadAlarmColumns(files, kAckedSection)});
            box.Tick(250);
        }

        MainBox::Needs NeedsOf(MainBoxWorld& world) {
            ConsoleEffects effects;
            const auto note = [&world](const char* what) {
                return [&world, what] { world.effects += Text(what) + ";"; };
            };
            effects.silenceSound = [&world] { world.around.isSounding = false; };
            effects.exit = note("exit");
            effects.update = note("update");
            effects.showAbout = note("about");
            effects.editText = [&world](const Text& path) { world.effects += "edit " + path + ";"; };
            effects.editTranslation = effects.editText;
            effects.print = [&world](const AlarmRows&, const std::vector<Text>& keys) {
                world.effects += "print " + std::to_string(keys.size()) + ";";
            };
            effects.setService = [this](cTranslate& set, cIDCode& object, const ServicePeriod& period) {
                core.servicePeriods.Set(set, object, period);
            };
            return {.store = store,
                    .lists = lists,
                    .commands = commands,
                    .cells = cells,
                    .translations = translations,
                    .marks = marks,
                    .translationSettings = core.settings.translation,
                    .sysLog = sysLog,
                    .debug = debug,
                    .files = dataFiles,
                    .captions = captions,
                    .clock = world.time,
                    .settings = settings,
                    .windows = world.windows,
                    .portTree =
                        [&world] {
                            return MakePortTree({{"Receiver", &world.port}});
                        },
                    .surroundings = [&world] { return world.around; },
                    .effects = effects};
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
        AlarmCells cells;
        LocalDataFiles dataFiles;
        SysLogList sysLog{};
        DebugPage debug;
        AlarmCommands commands;
        MainBox box;
    };

    TempFolder folder{};
    ManualTime time{};
    Language language{};
    FakeDialogs dialogs{};
    FakeSockets sockets{};
    RecordingWindows windows{};
    PortBinding port{};
    ConsoleSurroundings around{};
    Text effects{};
    Text sent{};
    std::optional<Running> running{};
};

}  // namespace nordkeep
