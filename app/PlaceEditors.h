#pragma once

#include "app/Foundation.h"
#include "console/boxes/EditorBox.h"
#include "console/boxes/MapBox.h"
#include "console/editors/EditorsHost.h"
#include "console/editors/RowsBox.h"
#include "console/editors/SetEditors.h"
#include "console/lists/ObjectList.h"
#include "pipeline/AlarmOutputs.h"
#include "pipeline/Intake.h"
#include "ports/SetUses.h"
#include "store/EventStore.h"

namespace nordkeep {

/// What the editors of the set-up ask of this copy, and what it knows of an object beside its file.
class PlaceEditors final : public EditorsHost, public RowFacts {
 public:
    struct Needs {
        Foundation& foundation;
        const Captions& captions;
        const OperatorState& state;
        DataFiles& files;
        MapPictures& maps;
        EditorHost& host;
        EditorBox& editor;
        SetEditors& setEditors;
        const Translations& translations;
        const EventStore& store;
        AlarmOutputs& outputs;
        const TorvexLink& torvex;
        // Built behind the place; nothing is asked of them before the program runs.
        Intake& intake;
        const Dispatcher& dispatcher;
    };
    explicit PlaceEditors(const Needs& needs)
        : needs_(needs), ground_(needs.foundation.DataFolder(), needs.foundation.Files()) {}

    // --- EditorsHost
    void KeepVersion(const Text& path) override;
    void NoteSaved(const Text& path) override { needs_.host.NoteSaved(path); }
    void OpenAsText(const Text& path) override;
    void EditInformation(const Text& set, const Text& idCode, const Text& name) override {
        needs_.setEditors.EditInformation(set, idCode, name);
    }
    std::vector<CodeText> CodeTexts(const Text& set, const Text& idCode) override;
    SetSurroundings SurroundingsOf(const Text& set) override;
    Text LinesOf(const Text& set) override;
    bool RenameSet(const Text& from, const Text& to) override;
    Text MapOf(const Text& reference) override { return needs_.maps.Read(ParseMapReference(reference)); }

    std::vector<Text> Maps() override { return needs_.files.ScanForFiles("Maps\\*.*"); }

    // --- RowFacts
    Text FactsOf(const Text& set, const RowFormat::Values& row) override;
    Text Try(const Text& set, const Text& telegram) override;

 private:
    bool IsAtServer() const { return needs_.state.Rights().IsClient(); }
    std::vector<Protocol> ProtocolsOf(const Text& set);
    Text SupervisionOf(const cIDCode& object) const;
    Text OutcomeOf(const Intake::Trial& trial) const;
    Text ForwardersOf(const cAlarm& alarm) const;
    Text AlarmsOf(const Text& set, const Text& idCode) const;

    Needs needs_;
    SetGround ground_;
};

}  // namespace nordkeep
