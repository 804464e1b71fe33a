#pragma once

#include "console/boxes/CentreOperations.h"
#include "console/boxes/EditorBox.h"
#include "console/boxes/PeriodBox.h"
#include "console/editors/SetEditors.h"
#include "console/lists/CodeLists.h"
#include "console/lists/ObjectList.h"
#include "console/lists/OperatorWindows.h"
#include "console/lists/PortTree.h"
#include "console/lists/RowSelection.h"
#include "console/lists/TranslationMarks.h"
#include "console/window/ConsoleSettings.h"
#include "console/window/CopyState.h"
#include "console/window/ObjectMenu.h"
#include "console/window/PageFrame.h"

namespace nordkeep {

/// The tree, and the pages of the set that is selected in it: objects, types and event codes.
class ObjectPage {
 public:
    struct Needs {
        Translations& translations;
        TranslationMarks& marks;
        const TranslationSettings& translationSettings;
        DataFiles& files;
        const Captions& captions;
        const Clock& clock;
        const ConsoleSettings& settings;
        const CopyState& state;
        CentreOperations& centre;
        OperatorWindows& windows;
        PeriodBox& period;
        EditorBox& editor;
        SetEditors& editors;
        bool knowsCallers = true;  // see ObjectList
    };
    ObjectPage(const Needs& needs, PageFrame& frame);

    PortTree& Tree() { return tree_; }
    ObjectList& Objects() { return objects_; }
    TypeList& Types() { return types_; }
    DataCodeList& DataCodes() { return dataCodes_; }

    /// A click on a node of the tree: the lists show its set.
    void SelectNode(int node);
    void ForgetTree();
    void ShowTree(const std::vector<PortTreeNode>& nodes);
    bool IsSetSelected() const { return !tree_.SelectedSet().empty(); }

    void Select(RowSelection selection);
    const RowSelection& Selection() const { return selection_; }
    bool IsAnySelected() const { return selection_.IsIn(objects_); }
    bool HasMap() const;
    /// The page has come up.
    void TurnTo(Tab tab);

    /// The popup of the selected object.
    ObjectMenu Menu();
    /// The items of its submenus, fetched when they are opened.
    std::vector<CodeText> TypeCodeItems();
    std::vector<CodeText> DataCodeItems();
    /// The maps of the folder and of the selected set's folder: file names below the data folder.
    std::vector<Text> Maps() const;
    void OpenMap(const Text& file);

    // Commands on the selected objects; without one they do nothing.
    void AskServicePeriod(int minutes = 60);
    void SetService(const ServicePeriod& period);
    /// For the length at this place of the setting ServiceIntervals. Around the clock, below 1, and several
    /// objects are asked about.
    void LogOnlyFor(int item);
    void OpenSheet();
    void OpenMapOfSelected();
    void EditInformation();
    /// The instruction for the item at this place of the submenu.
    void EditTypeCode(int item) { EditCode(TypeCodeItems(), item); }
    void EditDataCode(int item) { EditCode(DataCodeItems(), item); }
    void ResetAliveTests();
    /// Opens the objects of the selected set for editing, that which is selected in front; or its types. The
    /// program that the settings name for these files goes before the editor.
    void EditObjects();
    void EditTypes();

    /// Shows what has changed.
    void Tick(int elapsedMs);

 private:
    struct Names {
        Text set{};
        Text idCode{};
    };

    cIDCode* Selected() const { return objects_.ObjectOfRow(selection_.current); }
    std::optional<Names> NamesOfSelected() const;
    bool MayAsk() const { return !needs_.state.IsRequestPending(); }
    void ShowSet(const Text& set);
    void RenewDataCodes();
    void RenewGlyphs(int elapsedMs);
    AliveState StateOfSet(const Text& set) const;
    void EditCode(const std::vector<CodeText>& items, int item);
    void EditText(const Text& path);
    bool IsLeftToProgram(TextView ending);

    Needs needs_;
    PageFrame& frame_;
    ObjectList objects_;
    TypeList types_;
    DataCodeList dataCodes_;
    PortTree tree_{};
    RowSelection selection_{};
    bool areDataCodesToRead_ = false;
    int sinceGlyphsMs_ = 0;
    bool areGlyphsToCalc_ = true;
    std::uint64_t shownGeneration_ = 0;
};

}  // namespace nordkeep
