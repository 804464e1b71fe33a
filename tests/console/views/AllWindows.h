#pragma once

#include "console/editors/ObjectFormat.h"
#include "console/editors/TypeFormat.h"
#include "console/views/boxes/AboutDialog.h"
#include "console/views/boxes/CommentWindow.h"
#include "console/views/boxes/EditorWindow.h"
#include "console/views/boxes/LoginDialog.h"
#include "console/views/boxes/MapWindow.h"
#include "console/views/boxes/PeriodDialog.h"
#include "console/views/boxes/PictureWindow.h"
#include "console/views/boxes/ReconnectDialog.h"
#include "console/views/boxes/SimulationDialog.h"
#include "console/views/editors/RowsPane.h"
#include "console/views/editors/SetsPane.h"
#include "console/views/history/HistoryWindow.h"
#include "console/views/history/ShiftWindow.h"
#include "console/views/print/PreviewWindow.h"
#include "console/views/setup/LinesPane.h"
#include "console/views/setup/SetupWindow.h"
#include "tests/console/PlayedHistory.h"
#include "tests/console/SheetWorld.h"
#include "tests/doubles/RecordingIntake.h"

#include <QtCore/QBuffer>
#include <QtWidgets/QApplication>

#include <fstream>

namespace nordkeep {

inline Text LanguageFile(const char* number) {
    std::ifstream file(std::string(NORDKEEP_SOURCE_DIR) + "/languages/NK_Lang." + number, std::ios::binary);
    return Text{std::istreambuf_iterator<char>(file), {}};
}

inline Text PngOf(int width, int height) {
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(Qt::blue);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    image.save(&buffer, "PNG");
    return Text(bytes.constData(), static_cast<std::size_t>(bytes.size()));
}

struct LanguageWorld : SheetWorld {
    explicit LanguageWorld(const char* number) { language.LoadFrom(LanguageFile(number)); }
};

/// What nobody means well with.
inline Text Hostile() {
    return "<b>fat</b><img src=x> &File %1 \x01\x1b " + Text(2000, 'W');
}

/// Every window of the operator with something in it, in one language.
struct AllWindows : LanguageWorld {
    /// The sample stands wherever a text comes from data.
    explicit AllWindows(const char* languageNumber, Text sampleText = Hostile())
        : LanguageWorld(languageNumber), sample(std::move(sampleText)) {
        folder.Write("Information\\A\\B\\1.TXT", sample);
        folder.Write("Information\\A\\B\\1\\E1.TXT", sample);
        folder.Write(kComments, sample);
        folder.Write("Settings\\TorvexReceivers.INI", "[Receivers]\r\n1=" + sample + "\r\n");
        folder.Write("Maps\\Shop.png", PngOf(64, 48));
        Raise("1", kStatusAcknowledged, sample);
        alarm = &Raise("1", kStatusNew, sample);
        auto set = std::make_unique<cTranslate>();
        set->m_FileName = "A/B";
        set->m_IdCodes.push_back(std::make_unique<cIDCode>());
        set->m_IdCodes.back()->m_IdCode = "1";
        set->m_IdCodes.back()->m_ObjectName = sample;
        translations.Add(std::move(set));
        ports.ports = {{sample, nullptr}};
        sheet.SetView(sheetWindow);
        mapBox.SetView(mapWindow);
        picture.SetView(pictureWindow);
        login.SetView(loginDialog);
        reconnect.SetView(reconnectDialog);
        period.SetView(periodDialog);
        editor.SetView(editorWindow);
        simulation.SetView(simulationDialog);
        setup.SetView(setupWindow);
        setupWindow.AddPane(lineBox, new LinesPane(lineBox, captions));
        setupWindow.AddPane(sets, new SetsPane(sets, captions));
        setupWindow.AddPane(objectRows, new RowsPane(objectRows, captions));
        setupWindow.AddPane(typeRows, new RowsPane(typeRows, captions));
    }
    std::vector<QWidget*> Open() {
        sheet.OpenAlarm(alarm->m_FilePointer, OpenedBy::Operator);
        mapBox.Open("Shop.png/10/20", 0, OpenedBy::Operator);
        picture.Show(1, sample, false);
        login.Open(OpenedBy::Operator);
        reconnect.ShowLinkState(LinkState::Lost);
        period.Open("A/B", {"1"});
        editor.Open({kComments, sample, ""});
        simulation.Open();
        setup.Open();
        about = std::make_unique<AboutDialog>(MakeAboutText(captions, "1", sample, Role::Server), captions);
        for (int i = 0; i < 3; ++i) {
            source.journal.Note(
                {.kind = JournalKind::Event, .event = "A1", .object = sample, .text = sample});
        }
        source.journal.Commit();
        history.Open();
        report.Make(report.SpanOf(ReportBox::Usual::Today));
        shiftBox.Open();
        time.Advance(500);
        preview = std::make_unique<PreviewWindow>(
            PageLayout({.title = sample, .heading = sample, .lines = {sample, "x"}}, {210, 297}, "now",
                       captions),
            captions);
        preview->setAttribute(Qt::WA_DeleteOnClose, false);
        for (QWidget* window : {static_cast<QWidget*>(about.get()), static_cast<QWidget*>(preview.get())}) {
            window->show();
        }
        QApplication::processEvents();
        return {&sheetWindow,  &mapWindow,     &pictureWindow,    &loginDialog, &reconnectDialog,
                &periodDialog, &editorWindow,  &simulationDialog, &setupWindow, about.get(),
                &shiftWindow,  &historyWindow, preview.get()};
    }

    Text sample;
    cAlarm* alarm = nullptr;
    CommentWindow sheetWindow{sheet, captions};
    OwnMaps maps{dataFiles};
    MapBox mapBox{{.pictures = maps, .captions = captions, .loop = time, .store = *store}};
    MapWindow mapWindow{mapBox, captions};
    PictureSettings pictures{};
    PictureBox picture{pictures, folder.Tree(), time};
    PictureWindow pictureWindow{picture, captions};
    LoginBox login{server};
    LoginDialog loginDialog{login, captions};
    ReconnectBox reconnect{
        {.language = language, .captions = captions, .clock = time, .loop = time, .server = server}};
    ReconnectDialog reconnectDialog{reconnect, language};
    PeriodBox period{{.translations = translations,
                      .centre = centre,
                      .captions = captions,
                      .clock = time,
                      .state = *this}};
    PeriodDialog periodDialog{period, captions};
    RecordingEditorHost editorHost{};
    FakeTextCheck textCheck{};
    EditorBox editor{{.files = dataFiles,
                      .dialogs = dialogs,
                      .captions = captions,
                      .state = *this,
                      .host = editorHost,
                      .check = textCheck}};
    EditorWindow editorWindow{editor, captions};
    RecordingIntake intake{};
    FakePorts ports{};
    SimulationBox simulation{
        {.intake = intake, .translations = translations, .clock = time, .loop = time, .ports = ports}};
    SimulationDialog simulationDialog{simulation, captions};
    RecordingSetupHost setupHost{};
    RecordingLines lineControl{};
    LinesBox lineBox{{.files = dataFiles,
                      .dialogs = dialogs,
                      .captions = captions,
                      .state = *this,
                      .clock = time,
                      .dataFolder = folder.Tree(),
                      .control = lineControl}};
    RecordingEditorsHost editorsHost{};
    RecordingFacts facts{};
    RowsBox::Needs RowsNeeds() {
        return {.files = dataFiles,
                .dialogs = dialogs,
                .captions = captions,
                .state = *this,
                .host = editorsHost,
                .facts = &facts};
    }
    ObjectFormat objectFormat{{captions, language, time, editorsHost}};
    RowsBox objectRows{RowsNeeds(), objectFormat};
    SetsBox sets{{.files = dataFiles,
                  .dialogs = dialogs,
                  .captions = captions,
                  .state = *this,
                  .host = editorsHost,
                  .facts = facts}};
    TypeFormat typeFormat{language};
    RowsBox typeRows{RowsNeeds(), typeFormat};
    FileTree templates{NORDKEEP_SOURCE_DIR "/templates"};
    SetupBox setup{{.files = files,
                    .centreFiles = dataFiles,
                    .dialogs = dialogs,
                    .captions = captions,
                    .state = *this,
                    .host = setupHost,
                    .sections = {&lineBox, &sets, &objectRows, &typeRows},
                    .dataFolder = folder.Tree(),
                    .programFolder = templates}};
    SetupWindow setupWindow{setup, captions};
    RecordingPrinter paper{};
    PlayedHistory source{time};
    HistoryBox::Needs HistoryNeeds() { return {source, captions, time, paper, printerSettings}; }
    HistoryBox history{HistoryNeeds()};
    ReportBox report{HistoryNeeds()};
    HistoryWindow historyWindow{history, report};
    ShiftList list{{*store, translations, captions, time, printerSettings}};
    ShiftBox shiftBox{{list, source, captions, time, paper}};
    ShiftWindow shiftWindow{shiftBox};
    std::unique_ptr<AboutDialog> about{};
    std::unique_ptr<PreviewWindow> preview{};
};

}  // namespace nordkeep
