#include "console/window/ObjectPage.h"

#include "runtime/Fields.h"

namespace nordkeep {
namespace {

constexpr int kTextService = 3106;
constexpr int kTextEditObject = 3112;
constexpr int kGlyphPeriodMs = 1000;
// From this many on, single rows are no longer told apart.
constexpr std::size_t kManyObjects = 1000;

}  // namespace

ObjectPage::ObjectPage(const Needs& needs, PageFrame& frame)
    : needs_(needs),
      frame_(frame),
      objects_({needs.translations, needs.captions, needs.clock, needs.knowsCallers}),
      types_(needs.translations, needs.captions),
      dataCodes_(needs.captions) {}

// --- The tree

void ObjectPage::SelectNode(int node) {
    tree_.Select(node);
    ShowSet(tree_.SelectedSet());
    frame_.PageChanged();
}

void ObjectPage::ShowSet(const Text& set) {
    objects_.ShowSet(set);
    types_.ShowSet(set);
    areDataCodesToRead_ = true;
    shownGeneration_ = needs_.translations.Generation();
    if (frame_.CurrentTab() == Tab::DataCodes || set.empty()) RenewDataCodes();
}

// The file is read when its page is looked at; on a client a request that waits goes first.
void ObjectPage::RenewDataCodes() {
    if (!areDataCodesToRead_) return;
    const Text set = tree_.SelectedSet();
    if (!set.empty() && !MayAsk()) return;
    areDataCodesToRead_ = false;
    dataCodes_.ShowFile(set.empty() ? Text() : needs_.files.ReadTextFile(DataCodeFileOf(set)));
}

void ObjectPage::TurnTo(Tab tab) {
    if (tab == Tab::DataCodes) RenewDataCodes();
}

void ObjectPage::ForgetTree() {
    tree_.Clear();
    ShowSet({});
    frame_.PageChanged();
}

void ObjectPage::ShowTree(const std::vector<PortTreeNode>& nodes) {
    tree_.Show(nodes);
    areGlyphsToCalc_ = true;
    ShowSet(tree_.SelectedSet());
    frame_.PageChanged();
}

void ObjectPage::Tick(int elapsedMs) {
    if (needs_.marks.TakeTree()) {
        if (const auto nodes = needs_.state.OwnTree()) ShowTree(*nodes);
    }
    if (shownGeneration_ != needs_.translations.Generation()) ShowSet(tree_.SelectedSet());
    const auto changed = needs_.marks.TakeObjects();
    for (const TranslationMarks::Object& object : changed) objects_.NoteObject(object.set, object.idCode);
    if (changed.size() >= kManyObjects) objects_.NoteAll();
    objects_.Flush();
    RenewGlyphs(elapsedMs);
    if (frame_.CurrentTab() == Tab::DataCodes) RenewDataCodes();
}

void ObjectPage::RenewGlyphs(int elapsedMs) {
    sinceGlyphsMs_ += elapsedMs;
    if (needs_.marks.TakeGlyphs()) areGlyphsToCalc_ = true;
    if (!areGlyphsToCalc_ || sinceGlyphsMs_ < kGlyphPeriodMs) return;
    areGlyphsToCalc_ = false;
    sinceGlyphsMs_ = 0;
    tree_.RecalcGlyphs([this](const Text& set) { return StateOfSet(set); });
}

AliveState ObjectPage::StateOfSet(const Text& set) const {
    const cTranslate* found =
        needs_.translationSettings.ViewAliveTestStatusInTree ? needs_.translations.Find(set) : nullptr;
    AliveState worst = AliveState::NotSupervised;
    if (!found) return worst;
    const OleDate now = needs_.clock.Now();
    for (const auto& object : found->m_IdCodes) {
        const ObjectState state = StateOf(*object, now);
        if (state == ObjectState::Failed) return AliveState::Failed;
        if (state == ObjectState::InUse) worst = AliveState::Alive;
    }
    return worst;
}

// --- Selection and popup

void ObjectPage::Select(RowSelection selection) {
    selection_ = std::move(selection);
    frame_.PageChanged();
}

bool ObjectPage::HasMap() const {
    const cIDCode* object = Selected();
    return object && !object->m_MapName.empty();
}

ObjectMenu ObjectPage::Menu() {
    ObjectMenu menu;
    const cIDCode* object = Selected();
    if (!object) return menu;
    menu.service = needs_.captions(kTextService) + ": " + ServiceWord(needs_.captions, *object);
    menu.mode = object->m_ServiceMode;
    menu.logOnly = LogOnlyItems(needs_.captions, needs_.translationSettings.ServiceIntervals);
    if (!menu.logOnly.empty()) {
        menu.logOnly.back().isChecked = menu.mode == static_cast<int>(ServiceMode::LogOnly);
    }
    menu.edit = needs_.captions(kTextEditObject);
    const Text path = ObjectInfoFile(objects_.Set(), object->m_IdCode);
    // Asking the server may let other handlers run: nothing of the object is touched behind it.
    const bool exists = !path.empty() && MayAsk() && !needs_.files.FileTimeStamp(path).IsNever();
    if (exists) menu.edit += " *";
    return menu;
}

std::vector<CodeText> ObjectPage::TypeCodeItems() {
    const cIDCode* object = Selected();
    const cTranslate* set = needs_.translations.Find(objects_.Set());
    if (!object || !set) return {};
    const Text idCode = object->m_IdCode;
    std::vector<CodeText> items = TypeTextsOf(*set);
    return MayAsk() ? MarkedItems(needs_.files, objects_.Set(), idCode, std::move(items)) : items;
}

std::vector<CodeText> ObjectPage::DataCodeItems() {
    const cIDCode* object = Selected();
    if (!object || !MayAsk()) return {};
    const Text idCode = object->m_IdCode;
    const Text set = objects_.Set();
    return MarkedItems(needs_.files, set, idCode, EventTextsOf(needs_.files, set));
}

// --- Commands

std::optional<ObjectPage::Names> ObjectPage::NamesOfSelected() const {
    const cTranslate* set = needs_.translations.Find(objects_.Set());
    const cIDCode* object = Selected();
    if (!set || !object) return std::nullopt;
    return Names{set->m_FileName, object->m_IdCode};
}

void ObjectPage::AskServicePeriod(int minutes) {
    const auto first = NamesOfSelected();
    if (!first) return;
    // The one whose period the box begins with stands first.
    std::vector<Text> idCodes = {first->idCode};
    for (const Text& key : selection_.KeysInOrder(objects_)) {
        const cIDCode* object = objects_.ObjectOfRow(key);
        if (object && object->m_IdCode != first->idCode) idCodes.push_back(object->m_IdCode);
    }
    needs_.period.Open(first->set, std::move(idCodes), minutes);
}

void ObjectPage::SetService(const ServicePeriod& period) {
    cTranslate* set = needs_.translations.Find(objects_.Set());
    if (!set || !Selected()) return;
    for (const Text& key : selection_.KeysInOrder(objects_)) {
        if (cIDCode* object = objects_.ObjectOfRow(key)) needs_.centre.SetService(*set, *object, period);
    }
}

void ObjectPage::LogOnlyFor(int item) {
    if (item <= 0) return AskServicePeriod();
    const TranslationSettings& settings = needs_.translationSettings;
    if (selection_.KeysInOrder(objects_).size() > 1)
        return AskServicePeriod(MinutesOfInterval(settings, item));
    SetService(LogForInterval(settings, item, needs_.clock.Now()));
}

void ObjectPage::OpenSheet() {
    if (const auto names = NamesOfSelected()) needs_.windows.OpenObjectSheet(names->set, names->idCode);
}

void ObjectPage::OpenMapOfSelected() {
    if (const cIDCode* object = Selected()) {
        needs_.windows.OpenMap(object->m_MapName, 0, OpenedBy::Operator);
    }
}

void ObjectPage::EditText(const Text& path) {
    needs_.editor.Open({.path = path, .title = path, .program = needs_.settings.EditApp});
}

void ObjectPage::EditInformation() {
    const auto names = NamesOfSelected();
    if (names) needs_.editors.EditInformation(names->set, names->idCode, Selected()->m_ObjectName);
}

// Fetching the items may have let other handlers run: the object is looked up behind it.
void ObjectPage::EditCode(const std::vector<CodeText>& items, int item) {
    const auto place = static_cast<std::size_t>(item);
    const auto names = NamesOfSelected();
    if (!names || item < 0 || place >= items.size()) return;
    EditText(CodeInfoFile(names->set, names->idCode, items[place].code));
}

void ObjectPage::ResetAliveTests() {
    cTranslate* set = needs_.translations.Find(objects_.Set());
    cIDCode* object = Selected();
    if (set && object) needs_.centre.ResetAliveTests(*set, *object);
}

bool ObjectPage::IsLeftToProgram(TextView ending) {
    const Text path = "Settings\\" + tree_.SelectedSet() + Text(ending);
    return needs_.editor.StartProgram(
        {.path = path, .title = path, .program = needs_.settings.TypeAndIDCodeEditApp});
}

void ObjectPage::EditObjects() {
    if (IsLeftToProgram(".IDCode")) return;
    const cIDCode* object = Selected();
    needs_.editors.EditObjects(tree_.SelectedSet(), object ? object->m_IdCode : Text());
}

void ObjectPage::EditTypes() {
    if (!IsLeftToProgram(".TypeCode")) needs_.editors.EditTypes(tree_.SelectedSet());
}

// --- Maps

std::vector<Text> ObjectPage::Maps() const {
    if (!MayAsk()) return {};
    std::vector<Text> maps = needs_.files.ScanForFiles("Maps\\*.*");
    if (const Text set = tree_.SelectedSet(); !set.empty()) {
        for (const Text& name : needs_.files.ScanForFiles("Maps\\" + set + "\\*.*")) {
            maps.push_back(set + "\\" + name);
        }
    }
    return maps;
}

void ObjectPage::OpenMap(const Text& file) {
    if (needs_.state.Rights().MayOperate()) needs_.windows.OpenMap(file, 0, OpenedBy::Operator);
}

}  // namespace nordkeep
