#include "console/window/FindBox.h"

#include "runtime/Dates.h"
#include "translation/ObjectLookup.h"

#include <algorithm>

namespace nordkeep {
namespace {

constexpr int kCaptionFirstKind = 5603;
constexpr int kCaptionFirstColumn = 5606;
constexpr int kTextSearching = 5609;
constexpr int kTextFound = 5610;
constexpr int kTextFirst = 5611;
constexpr int kTextNothing = 5612;
constexpr int kTickMs = 10;
constexpr std::int64_t kSliceUs = 4000;
constexpr int kLooksBetweenTimes = 64;
/// The lists show alarms better; whoever looks for an object must not have to go past all of its alarms.
constexpr std::size_t kMostAlarms = 10;

/// A caption as people read it.
Text Plain(Text caption) {
    std::erase(caption, '&');
    while (!caption.empty() && caption.back() == '.') caption.pop_back();
    return caption;
}

std::vector<Text> WordsOf(TextView text) {
    std::vector<Text> words;
    for (const Text& word : Split(text, ' ')) {
        if (!word.empty()) words.push_back(word);
    }
    return words;
}

/// Everything that the menus and the toolbar offer, each once.
std::vector<Command> FindableCommands() {
    std::vector<Command> commands;
    for (const MenuRow& menu : MainMenus()) {
        for (const int item : menu.items) {
            if (item >= 0) commands.push_back(static_cast<Command>(item));
        }
    }
    for (int button = 0; button < kToolBarButtons; ++button) commands.push_back(static_cast<Command>(button));
    return commands;
}

}  // namespace

// --- The rows

void FindRows::Clear() {
    Renew([&] { hits_.clear(); });
}

void FindRows::Add(std::vector<FindHit> hits) {
    if (hits.empty()) return;
    Renew([&] { std::ranges::move(hits, std::back_inserter(hits_)); });
}

const FindHit* FindRows::HitOf(TextView key) const {
    const int source = SourceOf(RowOf(key));
    return source < 0 ? nullptr : &hits_[static_cast<std::size_t>(source)];
}

std::size_t FindRows::Count(FindHit::Kind kind) const {
    return static_cast<std::size_t>(std::ranges::count(hits_, kind, &FindHit::kind));
}

Text FindRows::Heading(int column) const {
    return column >= 0 && column < ColumnCount() ? captions_(kCaptionFirstColumn + column) : Text();
}

Text FindRows::SourceCell(int source, int column) const {
    const FindHit& hit = hits_[static_cast<std::size_t>(source)];
    if (column == 0) return captions_(kCaptionFirstKind + static_cast<int>(hit.kind));
    return column == 1 ? hit.name : hit.detail;
}

// --- The search

FindBox::FindBox(const Needs& needs, FindTargets& targets)
    : needs_(needs),
      targets_(targets),
      rows_(needs.captions),
      timer_(needs.loop.NewTimer([this] { Slice(); })) {}

void FindBox::Open() {
    SetText({});
    view_->Show(OpenedBy::Operator);
}

void FindBox::Close() {
    timer_->Stop();
    stage_ = Stage::Done;
    view_->Close();
}

void FindBox::SetText(const Text& text) {
    text_ = text;
    words_ = WordsOf(text);
    rows_.Clear();
    alarm_ = 0;
    set_ = object_ = 0;
    generation_ = needs_.translations.Generation();
    stage_ = words_.empty() ? Stage::Done : Stage::Alarms;
    if (stage_ == Stage::Done) {
        timer_->Stop();
    } else {
        FindExactObjects();
        FindCommands();
        Slice();
        if (IsBusy()) timer_->Start(kTickMs);
    }
    view_->Refresh();
}

bool FindBox::HasAllWords(std::initializer_list<const Text*> fields) const {
    return std::ranges::all_of(words_, [&](const Text& word) {
        return std::ranges::any_of(fields,
                                   [&](const Text* field) { return FindNoCase(*field, word) != Text::npos; });
    });
}

void FindBox::FindCommands() {
    std::vector<FindHit> hits;
    for (const Command command : FindableCommands()) {
        const CommandState& state = targets_.StateOf(command);
        const Text name = Plain(needs_.captions(CaptionOf(command)));
        const bool isKnown = std::ranges::find(hits, name, &FindHit::name) != hits.end();
        if (!state.isVisible || !state.isEnabled || isKnown || !HasAllWords({&name})) continue;
        hits.push_back(
            {.kind = FindHit::Kind::Command, .name = name, .detail = KeysOf(command), .command = command});
    }
    rows_.Add(std::move(hits));
}

FindHit FindBox::HitOf(const cTranslate& set, const cIDCode& object) const {
    Text detail = object.m_IdCode + "   " + set.m_FileName;
    for (const Text* more : {&object.m_Customer, &object.m_Originator}) {
        if (!more->empty()) detail += "   " + *more;
    }
    return {.kind = FindHit::Kind::Object,
            .name = object.m_ObjectName.empty() ? object.m_IdCode : object.m_ObjectName,
            .detail = std::move(detail),
            .set = set.m_FileName,
            .idCode = object.m_IdCode};
}

// Whoever types a code wants that object, in front of all that only hold these letters.
void FindBox::FindExactObjects() {
    const Text code = UpperCase(TrimBlanks(text_));
    std::vector<FindHit> hits;
    for (const auto& set : needs_.translations.Sets()) {
        if (const cIDCode* object = FindExactObject(*set, code)) hits.push_back(HitOf(*set, *object));
        if (hits.size() >= kMostHits) break;
    }
    rows_.Add(std::move(hits));
}

void FindBox::Slice() {
    const std::int64_t endUs = needs_.clock.MonotonicUs() + kSliceUs;
    std::vector<FindHit> hits;
    if (stage_ == Stage::Alarms && TakeAlarms(endUs, hits)) stage_ = Stage::Objects;
    if (stage_ == Stage::Objects && TakeObjects(endUs, hits)) stage_ = Stage::Done;
    const bool isNew = !hits.empty() || !IsBusy();
    rows_.Add(std::move(hits));
    if (!IsBusy()) timer_->Stop();
    if (isNew) view_->Refresh();
}

bool FindBox::TakeAlarms(std::int64_t endUs, std::vector<FindHit>& hits) {
    const EventList& events = needs_.store.Events();
    const auto& open = events.Unacknowledged();
    int looks = 0;
    std::size_t count = rows_.Count(FindHit::Kind::Alarm);
    for (auto at = open.upper_bound(alarm_); at != open.end(); ++at) {
        if (count >= kMostAlarms) return true;
        if (++looks % kLooksBetweenTimes == 0 && needs_.clock.MonotonicUs() >= endUs) return false;
        alarm_ = *at;
        const cAlarm& alarm = *events.Find(*at);
        if (!HasAllWords({&alarm.m_TranslatedIDCode, &alarm.m_IdCode, &alarm.m_TranslatedTypeCode,
                          &alarm.m_AlarmCodeToStore, &alarm.m_Customer, &alarm.m_Originator})) {
            continue;
        }
        ++count;
        hits.push_back({.kind = FindHit::Kind::Alarm,
                        .name = alarm.m_TranslatedIDCode.empty() ? alarm.m_IdCode : alarm.m_TranslatedIDCode,
                        .detail = FormatDate(alarm.m_ArrivedTime, "HH:NN:SS") + "   " +
                                  alarm.m_TranslatedTypeCode + "   " + alarm.m_AlarmCodeToStore,
                        .filePointer = alarm.m_FilePointer});
    }
    return true;
}

// A reload has put other objects at these places: the walk begins again, without what it has found.
bool FindBox::TakeObjects(std::int64_t endUs, std::vector<FindHit>& hits) {
    if (generation_ != needs_.translations.Generation()) {
        generation_ = needs_.translations.Generation();
        set_ = object_ = 0;
    }
    const Text code = UpperCase(TrimBlanks(text_));
    const auto& sets = needs_.translations.Sets();
    int looks = 0;
    std::size_t count = rows_.Count(FindHit::Kind::Object) + hits.size();
    for (; set_ < sets.size(); ++set_, object_ = 0) {
        const cTranslate& set = *sets[set_];
        for (; object_ < set.m_IdCodes.size(); ++object_) {
            if (count >= kMostHits) return true;
            if (++looks % kLooksBetweenTimes == 0 && needs_.clock.MonotonicUs() >= endUs) return false;
            const cIDCode& object = *set.m_IdCodes[object_];
            const bool isFirst = object.m_IdCode == code;  // stands in front already
            if (isFirst || !HasAllWords({&object.m_IdCode, &object.m_ObjectName, &object.m_Customer,
                                         &object.m_Originator, &set.m_FileName})) {
                continue;
            }
            ++count;
            hits.push_back(HitOf(set, object));
        }
    }
    return true;
}

Text FindBox::Notice() const {
    if (words_.empty()) return {};
    const Text count = std::to_string(rows_.RowCount());
    if (IsBusy()) return needs_.captions(kTextSearching, {count});
    if (rows_.RowCount() == 0) return needs_.captions(kTextNothing);
    const bool isCut =
        rows_.Count(FindHit::Kind::Object) >= kMostHits || rows_.Count(FindHit::Kind::Alarm) >= kMostAlarms;
    return needs_.captions(isCut ? kTextFirst : kTextFound, {count});
}

// The window goes first: what is opened is to stand in front of it.
void FindBox::Activate(TextView key) {
    const FindHit* found = rows_.HitOf(key);
    if (!found) return;
    const FindHit hit = *found;
    Close();
    switch (hit.kind) {
        case FindHit::Kind::Command:
            return targets_.RunFound(hit.command);
        case FindHit::Kind::Alarm:
            return targets_.ShowAlarm(hit.filePointer);
        case FindHit::Kind::Object:
            return targets_.OpenCard(hit.set, hit.idCode);
    }
}

}  // namespace nordkeep
