#pragma once

#include "console/boxes/CentreOperations.h"
#include "console/boxes/EditorBox.h"
#include "console/boxes/SimulationBox.h"
#include "console/editors/EditorsHost.h"
#include "console/editors/RowsBox.h"
#include "console/editors/SetEditors.h"
#include "console/lists/OperatorWindows.h"
#include "console/lists/WindowView.h"
#include "console/print/PrintDocument.h"
#include "console/setup/LinesBox.h"
#include "console/setup/SetupBox.h"
#include "console/window/CopyState.h"
#include "console/window/DebugPage.h"
#include "network/NetworkServer.h"
#include "runtime/Fields.h"

namespace nordkeep {

/// The operator's place in the test's hand.
struct FakeOperatorState : OperatorState {
    OperatorRights rights{};
    bool isQuestionUp = false;
    bool isRequestPending = false;
    bool isFlood = false;

    OperatorRights Rights() const override { return rights; }
    bool IsQuestionUp() const override { return isQuestionUp; }
    bool IsRequestPending() const override { return isRequestPending; }
    bool IsFlood() const override { return isFlood; }
};

/// The same, as the main window knows it. Silence is kept, and the tree is that of one port.
struct FakeCopy final : CopyState, CopyFacts, SoundSwitch {
    explicit FakeCopy(const PortBinding& binding) : port(binding) {}

    OperatorRights rights{};
    bool isRequestPending = false;
    bool isFlood = false;
    const PortBinding& port;

    OperatorRights Rights() const override { return rights; }
    bool IsQuestionUp() const override { return false; }
    bool IsRequestPending() const override { return isRequestPending; }
    bool IsFlood() const override { return isFlood; }
    CopyFacts Facts() const override { return *this; }
    std::vector<ConditionFact> Conditions() const override { return conditions; }
    std::optional<std::vector<PortTreeNode>> OwnTree() const override {
        return MakePortTree({{"Receiver", &port}});
    }
    void SilenceSound() override { isSounding = false; }
    void RingSound() override { isSounding = true; }
    std::vector<ConditionFact> conditions{};
};

/// Writes down what was asked of the centre; service periods are set when there are any.
struct RecordingCentre final : CentreOperations {
    explicit RecordingCentre(ServicePeriods* servicePeriods = nullptr) : periods(servicePeriods) {}

    void SetService(cTranslate& set, cIDCode& object, const ServicePeriod& period) override {
        reason = period.reason;
        if (periods) periods->Set(set, object, period);
    }
    void ResetAliveTests(cTranslate&, cIDCode& object) override { calls += "reset " + object.m_IdCode + ";"; }
    bool SendToDispatcher(const Text& line) override {
        dispatched += line;
        return isDispatcherThere;
    }
    void Reload() override { calls += "reload;"; }
    void SetClocks() override { calls += "clocks;"; }
    void LoadEvents() override { calls += "events;"; }

    ServicePeriods* periods;
    bool isDispatcherThere = true;
    Text dispatched{};
    Text reason{};  // of the last service period
    Text calls{};
};

struct RecordingServer final : ServerContact {
    void Login(const Text& userName, const Text& password) override { calls += userName + "/" + password; }
    void Logout() override { calls += "logout;"; }
    void Reconnect() override { calls += "reconnect;"; }
    void GiveUp() override { calls += "give up;"; }
    Text calls{};
};

/// Leaves every file to the built-in editor, or takes all.
struct RecordingEditorHost final : EditorHost {
    bool StartProgram(const EditedFile& edited) override {
        if (!takesAll) return false;
        calls += "edit " + edited.path + ";";
        return true;
    }
    void NoteSaved(const Text& path) override { calls += "saved " + path + ";"; }
    bool takesAll = false;
    Text calls{};
};

/// Writes down what the set-up asks for.
struct RecordingSetupHost final : SetupHost {
    void NoteSettings(const Text& what) override { calls += "saved " + what + ";"; }
    bool PlaySound(const Text& file, const Text& device) override {
        calls += "play " + file + " on " + device + ";";
        return canPlay;
    }
    std::vector<LanguageChoice> Languages() override { return {{44, "English"}, {46, "Svenska"}}; }
    bool canPlay = true;
    Text calls{};
};

/// Knows little of an object.
struct RecordingFacts final : RowFacts {
    Text FactsOf(const Text& file, const RowFormat::Values& row) override {
        return file + ": " + row.front();
    }
    Text Try(const Text& set, const Text& telegram) override { return set + " gets " + telegram; }
};

/// Finds an error in each line that holds the word.
struct FakeTextCheck final : TextCheck {
    void Begin(const Text&, const Text& content) override {
        found.clear();
        int line = 0;
        for (const TextView text : Lines(content)) {
            ++line;
            if (text.find("wrong") == TextView::npos) continue;
            found.push_back({.line = line, .sentence = Text(text)});
        }
    }
    bool Continue() override { return false; }
    std::vector<Finding> Take() override { return found; }
    std::vector<Finding> found{};
};

/// Writes down which editors of sets were asked for.
struct RecordingSetEditors final : SetEditors {
    void EditObjects(const Text& set, const Text& idCode) override {
        calls += "objects " + set + "/" + idCode + ";";
    }
    void EditTypes(const Text& set) override { calls += "types " + set + ";"; }
    void EditInformation(const Text& set, const Text& idCode, const Text&) override {
        calls += "information " + set + "/" + idCode + ";";
    }
    Text calls{};
};

/// Writes down what the editors ask for; keeps no version.
struct RecordingEditorsHost final : EditorsHost {
    void KeepVersion(const Text& path) override { calls += "keep " + path + ";"; }
    void NoteSaved(const Text& path) override { calls += "saved " + path + ";"; }
    void OpenAsText(const Text& path) override { calls += "text " + path + ";"; }
    void EditInformation(const Text& set, const Text& idCode, const Text&) override {
        calls += "information " + set + "/" + idCode + ";";
    }
    std::vector<CodeText> CodeTexts(const Text& set, const Text& idCode) override {
        calls += "types " + set + "/" + idCode + ";";
        return {{"01", "01 Fire *"}, {"03", "03 Burglary"}};
    }
    SetSurroundings SurroundingsOf(const Text&) override { return {}; }
    Text LinesOf(const Text&) override { return "Receiver: Robofon"; }
    bool RenameSet(const Text& from, const Text& to) override {
        calls += "rename " + from + " " + to + ";";
        return canRename;
    }
    Text MapOf(const Text&) override { return map; }
    std::vector<Text> Maps() override { return {"Plan.png"}; }
    bool canRename = true;
    Text map{};
    Text calls{};
};

/// The lines that a test names.
struct RecordingLines final : LineControl {
    std::vector<LineFigures> Lines() const override { return lines; }
    std::vector<OutputState> outputs{};
    std::vector<OutputState> Outputs() const override { return outputs; }
    std::vector<LineAccount> Accounts(const Text& name) const override {
        return name == lineWithAccounts ? accounts : std::vector<LineAccount>();
    }
    void FilesChanged(const Text& what) override { calls += "changed " + what + ";"; }
    void Hold(const Text& name, bool isHeld) override { calls += (isHeld ? "hold " : "free ") + name + ";"; }
    void Mute(const Text& name, bool isMuted) override { muted = isMuted ? name : Text(); }
    Text MutedPort() const override { return muted; }
    std::vector<Text> SerialDevices() const override { return {"/dev/serial/by-id/usb-one"}; }
    std::vector<Text> Addresses() const override { return {"127.0.0.1", "10.0.0.5"}; }
    bool RemoveFile(const Text& name) override {
        calls += "remove " + name + ";";
        return canRemove && nordkeep::RemoveFile(files->Resolve("Settings\\" + name + ".ini"));
    }
    bool StartTest(const Text& name) override {
        calls += "test " + name + ";";
        return true;
    }
    std::optional<bool> TakeTestOutcome() override { return std::exchange(outcome, std::nullopt); }
    const FileTree* files = nullptr;
    bool canRemove = true;
    std::vector<LineFigures> lines{};
    Text lineWithAccounts{};
    std::vector<LineAccount> accounts{};
    Text muted{};
    std::optional<bool> outcome{};
    Text calls{};
};

/// The ports that a test names.
struct FakePorts final : SimulatedPorts, DebugLines {
    std::vector<SimulatedPort> PortsToSimulate() const override { return ports; }
    void SendOnPort(const Text& portName, TextView bytes) override { sent += portName + ":" + Text(bytes); }
    std::vector<SimulatedPort> ports{};
    Text sent{};
};

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

/// Counts what a window is told.
class RecordingView final : public WindowView {
 public:
    void Show(OpenedBy by) override { calls += by == OpenedBy::Operator ? "show " : "appear "; }
    void Refresh() override { calls += "refresh "; }
    void Close() override { calls += "close "; }
    Text calls{};
};

/// Keeps the documents.
class RecordingPrinter final : public PrintOutput {
 public:
    void Print(const PrintDocument& document) override { printed.push_back(document); }
    void Preview(const PrintDocument& document) override { previewed.push_back(document); }
    std::vector<PrintDocument> printed{};
    std::vector<PrintDocument> previewed{};
};

}  // namespace nordkeep
