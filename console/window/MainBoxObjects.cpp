#include "console/window/MainBox.h"
#include "runtime/Fields.h"
#include "translation/ObjectLookup.h"

#include <algorithm>

namespace nordkeep {
namespace {

constexpr int kTextService = 3106;
constexpr int kTextEditObject = 3112;
constexpr int kGlyphPeriodMs = 1000;
// From this many on, single rows are no longer told apart.
constexpr std::size_t kManyObjects = 1000;

}  // namespace

// --- The tree

void MainBox::SelectNode(int node) {
    tree_.Select(node);
    ShowSet(tree_.SelectedSet());
    Recalc();
}

void MainBox::ShowSet(const Text& set) {
    objects_.ShowSet(set);
    types_.ShowSet(set);
    areDataCodesToRead_ = true;
    shownGeneration_ = needs_.translations.Generation();
    if (inputs_.tab == Tab::DataCodes || set.empty()) RenewDataCodes();
}

// The file is read when its page is looked at; on a client a request that waits goes first.
void MainBox::RenewDataCodes() {
    if (!areDataCodesToRead_) return;
    const Text set = tree_.SelectedSet();
    if (!set.empty() && !around_.mayAskServer) return;
    areDataCodesToRead_ = false;
    dataCodes_.ShowFile(set.empty() ? Text() : needs_.files.ReadTextFile(DataCodeFileOf(set)));
}

void MainBox::ForgetTree() {
    tree_.Clear();
    ShowSet({});
    Recalc();
}

void MainBox::ShowTree(const std::vector<PortTreeNode>& nodes) {
    tree_.Show(nodes);
    areGlyphsToCalc_ = true;
    ShowSet(tree_.SelectedSet());
    Recalc();
}

void MainBox::ShowChangedObjects() {
    if (needs_.marks.TakeTree() && needs_.portTree) ShowTree(needs_.portTree());
    if (shownGeneration_ != needs_.translations.Generation()) ShowSet(tree_.SelectedSet());
    const auto changed = needs_.marks.TakeObjects();
    for (const TranslationMarks::Object& object : changed) objects_.NoteObject(object.set, object.idCode);
    if (changed.size() >= kManyObjects) objects_.NoteAll();
    objects_.Flush();
    if (needs_.marks.TakeGlyphs()) areGlyphsToCalc_ = true;
    if (!areGlyphsToCalc_ || sinceGlyphsMs_ < kGlyphPeriodMs) return;
    areGlyphsToCalc_ = false;
    sinceGlyphsMs_ = 0;
    tree_.RecalcGlyphs([this](const Text& set) { return StateOfSet(set); });
}

AliveState MainBox::StateOfSet(const Text& set) const {
    const cTranslate* found =
        needs_.translationSettings.ViewAliveTestStatusInTree ? needs_.translations.Find(set) : nullptr;
    AliveState worst = AliveState::NotSupervised;
    if (!found) return worst;
    const OleDate now = needs_.clock.Now();
    for (const auto& object : found->m_IdCodes) {
        const ObjectState state = nordkeep::StateOf(*object, now);
        if (state == ObjectState::Failed) return AliveState::Failed;
        if (state == ObjectState::InUse) worst = AliveState::Alive;
    }
    return worst;
}

// --- The popup of an object

ObjectMenu MainBox::MenuOfObject() {
    ObjectMenu menu;
    const cIDCode* object = objects_.FindObject(CurrentKey(Tab::IdCodes));
    if (!object) return menu;
    menu.service = needs_.captions(kTextService) + ": " + ServiceWord(needs_.captions, *object);
    menu.mode = object->m_ServiceMode;
    menu.logOnly = LogOnlyItems(needs_.captions, needs_.translationSettings.ServiceIntervals);
    if (!menu.logOnly.empty()) {
        menu.logOnly.front().isChecked = menu.mode == static_cast<int>(ServiceMode::LogOnly);
    }
    menu.edit = needs_.captions(kTextEditObject);
    const Text path = ObjectInfoFile(objects_.Set(), object->m_IdCode);
    // Asking the server may let other handlers run: nothing of the object is touched behind it.
    const bool exists = !path.empty() && around_.mayAskServer && !needs_.files.FileTimeStamp(path).IsNever();
    if (exists) menu.edit += " *";
    return menu;
}

std::vector<ObjectMenu::CodeItem> MainBox::TypeCodeItems() {
    const cIDCode* object = objects_.FindObject(CurrentKey(Tab::IdCodes));
    const cTranslate* set = needs_.translations.Find(objects_.Set());
    if (!object || !set) return {};
    const Text idCode = object->m_IdCode;
    std::vector<ObjectMenu::CodeItem> items;
    for (const cTypeCode& type : set->m_TypeCodes) {
        items.push_back({type.m_TypeCode, type.m_TypeCode + " " + type.m_Name});
    }
    if (!around_.mayAskServer) return items;
    return MarkedItems(needs_.files, objects_.Set(), idCode, std::move(items));
}

std::vector<ObjectMenu::CodeItem> MainBox::DataCodeItems() {
    const cIDCode* object = objects_.FindObject(CurrentKey(Tab::IdCodes));
    if (!object || !around_.mayAskServer) return {};
    const Text idCode = object->m_IdCode;
    const Text set = objects_.Set();
    std::vector<ObjectMenu::CodeItem> items;
    for (const DataCodeEntry& entry : EventCodesOf(needs_.files.ReadTextFile(DataCodeFileOf(set)))) {
        items.push_back({entry.code, entry.code + " " + entry.name});
    }
    return MarkedItems(needs_.files, set, idCode, std::move(items));
}

void MainBox::SetServiceMode(const ServicePeriod& period) {
    cTranslate* set = needs_.translations.Find(objects_.Set());
    const std::vector<Text> keys = KeysInOrder(Tab::IdCodes);
    for (const Text& key : keys) {
        cIDCode* object = objects_.FindObject(key);
        if (set && object) needs_.effects.setService(*set, *object, period);
    }
}

void MainBox::RunOnObject(Command command, int item) {
    const cIDCode* object = objects_.FindObject(CurrentKey(Tab::IdCodes));
    cTranslate* set = needs_.translations.Find(objects_.Set());
    if (!object || !set) return;
    const Text idCode = object->m_IdCode;
    const Text setName = set->m_FileName;
    const auto place = static_cast<std::size_t>(item);
    switch (command) {
        case Command::SetService:
        case Command::ServicePeriod:
            return needs_.effects.askServicePeriod(setName, idCode);
        case Command::ServiceInUse:
            return SetServiceMode(InUse());
        case Command::ServiceLogOnly:
            return SetServiceMode(
                item <= 0 ? LogOnly() : LogForInterval(needs_.translationSettings, item, needs_.clock.Now()));
        case Command::ObjectComments:
            return needs_.windows.OpenObjectSheet(setName, idCode);
        case Command::ObjectEdit:
            return needs_.effects.editText(ObjectInfoFile(setName, idCode));
        case Command::TypeCodeEdit:
        case Command::DataCodeEdit: {
            const auto items = command == Command::TypeCodeEdit ? TypeCodeItems() : DataCodeItems();
            if (item < 0 || place >= items.size()) return;
            return needs_.effects.editText(CodeInfoFile(setName, idCode, items[place].code));
        }
        case Command::ResetAliveTest:
            return needs_.effects.resetAliveTests(*set, *objects_.FindObject(CurrentKey(Tab::IdCodes)));
        default:
            return;
    }
}

// --- Maps

std::vector<Text> MainBox::Maps() const {
    if (!around_.mayAskServer) return {};
    std::vector<Text> maps = needs_.files.ScanForFiles("Maps\\*.*");
    if (const Text set = tree_.SelectedSet(); !set.empty()) {
        for (const Text& name : needs_.files.ScanForFiles("Maps\\" + set + "\\*.*")) {
            maps.push_back(set + "\\" + name);
        }
    }
    return maps;
}

void MainBox::OpenMap(const Text& file) {
    if (MayShowPopup()) needs_.windows.OpenMap(file, 0, OpenedBy::Operator);
}

}  // namespace nordkeep
