#pragma once

#include "console/boxes/CommentBox.h"
#include "tests/console/ConsoleDoubles.h"
#include "tests/doubles/FakeDialogs.h"
#include "tests/doubles/RecordingDesk.h"
#include "tests/store/StoreWorld.h"

namespace nordkeep {

/// Local files that write down each access as the number of the message that a client would send.
class RecordingFiles final : public DataFiles {
 public:
    explicit RecordingFiles(const FileTree& folder) : local_(folder) {}

    Text ReadTextFile(TextView path) override { return Note("18 "), local_.ReadTextFile(path); }
    FileContent LoadTextFile(TextView path) override {
        Note("18 ");
        if (isBlind) return {.state = FileContent::State::Unreadable};
        return isSilent ? FileContent{.state = FileContent::State::Read} : local_.LoadTextFile(path);
    }
    Text ReadBinaryFile(TextView path) override { return Note("22 "), local_.ReadBinaryFile(path); }
    void WriteTextFile(TextView path, TextView text) override {
        Note("19 ");
        if (!isDeaf) local_.WriteTextFile(path, text);
    }
    OleDate FileTimeStamp(TextView path) override { return Note("20 "), local_.FileTimeStamp(path); }
    std::vector<Text> ScanForFiles(TextView pattern) override {
        return Note("21 "), local_.ScanForFiles(pattern);
    }
    void MakeDataFolder(TextView path) override {
        Note("24 ");
        local_.MakeDataFolder(path);
    }

    bool isDeaf = false;    // writes come to nothing
    bool isBlind = false;   // nothing can be read
    bool isSilent = false;  // as a server answers that cannot read
    Text sent{};
    std::function<void()> onAccess{};

 private:
    void Note(const char* message) {
        sent += message;
        if (onAccess) onAccess();
    }

    LocalDataFiles local_;
};

/// A store with the needs of the operator's windows, at a place whose state is the world's own.
struct ConsoleWorld : StoreWorld, FakeOperatorState {
    explicit ConsoleWorld(Role role = Role::StandAlone) : StoreWorld({}, role) {
        rights.role = role;
        rights.level = 1;
        for (const char* name : {"Comments", "Information", "Maps", "LogFiles\\Objects", "Settings\\Temp"}) {
            folder.MakeFolders(name);
        }
        language.LoadFrom("1053=End?\r\n1080=Overwrite?\r\n1139=gone\r\n1140=trying\r\n");
    }
    cAlarm& Raise(const Text& idCode = "1", int status = kStatusNew, const Text& text = "text") {
        auto alarm = std::make_unique<cAlarm>(AlarmAt(45356.25, text));
        alarm->m_IdCode = idCode;
        alarm->m_TranslationFile = "A/B";
        alarm->m_TypeCode = "E1";
        alarm->m_TranslatedIDCode = "Shop";
        alarm->m_TranslatedMapName = "Shop.png/10/20";
        alarm->m_Status = status;
        alarm->m_AlarmId = ++lastId;
        return store->StoreNew(std::move(alarm));
    }

    std::int32_t lastId = 0;
    RecordingFiles dataFiles{folder.Tree()};
    FakeDialogs dialogs{};
    Captions captions{language};
    RecordingDesk desk{};
    Deeds deeds{commit, language, log};
    AlarmHandling handling{{*store, time, desk, deeds}};
    RecordingPrinter printer{};
    RecordingCentre centre{};
    RecordingServer server{};
    RecordingWindows opened{};
    PrinterSettings printerSettings{};
    TranslationSettings translationSettings{};
    AliveTestTimers timers{translationSettings, AliveTestPace::Minutes, log};
    NoObjectViews objectViews{};
    Translations translations{
        {folder.Tree(), files, language, time, log, objectViews, translationSettings, timers}};
};

/// The sheet on it.
struct SheetWorld : ConsoleWorld {
    explicit SheetWorld(Role role = Role::StandAlone) : ConsoleWorld(role) {
        settings.SmallCommentSize = 10;
        settings.ManualTransmissionFormat = "[TRIDCODE] [DATE] [TIME]";
        sheet.SetView(view);
    }
    static constexpr const char* kComments = "Comments\\A\\B\\1.TXT";
    Text Comments() const { return folder.Read(kComments); }
    void Type(const Text& text) { sheet.TypeNewComments(text); }

    CommentSettings settings{};
    ObjectForms forms{{.files = dataFiles, .programFolder = folder.Tree(), .captions = captions}};
    RecordingView view{};
    CommentBox sheet{{.store = *store,
                      .handling = handling,
                      .translations = translations,
                      .files = dataFiles,
                      .dialogs = dialogs,
                      .language = language,
                      .captions = captions,
                      .settings = settings,
                      .printer = printer,
                      .printerSettings = printerSettings,
                      .state = *this,
                      .centre = centre,
                      .windows = opened,
                      .forms = forms,
                      .clock = time}};
};

}  // namespace nordkeep
