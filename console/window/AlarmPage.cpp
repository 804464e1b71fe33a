#include "console/window/AlarmPage.h"

#include "console/window/ObjectMenu.h"
#include "runtime/Fields.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace nordkeep {
namespace {

constexpr int kDefaultDelimiter = 9;
constexpr int kCaptionUndo = 5065;
constexpr int kCaptionNewsBelow = 5070;
constexpr int kCaptionNewsAbove = 5071;
constexpr int kCaptionNewsAround = 5072;
constexpr int kCaptionNewsElsewhere = 5073;
constexpr int kCaptionNewsHidden = 5074;
constexpr int kCaptionNewsPriority = 5075;

bool IsLink(TextView url) {
    const Text upper = UpperCase(url.substr(0, 8));
    return upper.starts_with("HTTP://") || upper.starts_with("HTTPS://");
}

}  // namespace

AlarmRows& AlarmPage::ListOf(Tab tab) {
    return tab == Tab::Acked ? needs_.lists.Acked() : needs_.lists.Unacked();
}

const AlarmRows& AlarmPage::ListOf(Tab tab) const {
    return tab == Tab::Acked ? needs_.lists.Acked() : needs_.lists.Unacked();
}

void AlarmPage::SetFilter(Tab tab, TextView words) {
    ListOf(tab).SetFilter(words);
    frame_.PageChanged();
}

// --- Selection

void AlarmPage::Select(Tab tab, RowSelection selection) {
    (tab == Tab::Acked ? acked_ : unacked_) = std::move(selection);
    if (tab == Tab::Unacked) {
        needs_.lists.Unacked().NoteRead(unacked_.keys);
        NotePlace();
    }
    if (tab == frame_.CurrentTab()) TakeCurrent(tab);
    frame_.PageChanged();
}

void AlarmPage::TurnTo(Tab tab) {
    TakeCurrent(tab);
}

void AlarmPage::TakeCurrent(Tab tab) {
    const Text& key = SelectionOf(tab).current;
    if (!key.empty() && IsAnySelected(tab)) current_ = LeadingInt32(key);
}

const cAlarm* AlarmPage::Find(std::int32_t filePointer) const {
    const cAlarm* alarm = filePointer != 0 ? needs_.store.FindAlarmByKey(filePointer) : nullptr;
    return alarm && alarm->m_Status != kStatusRemoved ? alarm : nullptr;
}

const cAlarm* AlarmPage::Current() const {
    const cAlarm* alarm = Find(current_);
    if (!alarm) return nullptr;
    // What is ended is in the other list, and selected there or nowhere.
    const Tab tab = IsUnacknowledged(*alarm) ? Tab::Unacked : Tab::Acked;
    const Text key = RowKey(*alarm);
    return std::ranges::find(SelectionOf(tab).keys, key) != SelectionOf(tab).keys.end() ? alarm : nullptr;
}

// Until an alarm has been clicked, the latest one is meant.
const cAlarm* AlarmPage::OfMap() const {
    if (const cAlarm* alarm = Current()) return alarm;
    const cAlarm* latest = current_ == 0 ? Find(latest_) : nullptr;
    return latest && IsUnacknowledged(*latest) ? latest : nullptr;
}

bool AlarmPage::HasMap() const {
    const cAlarm* alarm = OfMap();
    return alarm && !alarm->m_TranslatedMapName.empty();
}

// --- New alarms

void AlarmPage::OfferNewAlarm(const cAlarm& alarm) {
    if (alarm.m_Status == kStatusAcknowledged) return;
    const bool showsLast = frame_.Checked().AlwaysShowLastAlarm;
    const bool turnsTab = frame_.Checked().ShowTabAutomatic;
    const bool isFirst =
        !IsAnySelected(Tab::Unacked) && !pending_.isToSelect && !needs_.lists.Unacked().IsFiltered();
    const bool isToSelect = isFirst || (showsLast && turnsTab);
    // The row is there at the next tick.
    if (isToSelect || showsLast) {
        pending_ = {RowKey(alarm), isToSelect, isToSelect || showsLast};
    }
    if (turnsTab && frame_.CurrentTab() != Tab::Unacked) frame_.ShowTab(Tab::Unacked);
}

void AlarmPage::AlarmEnded(std::int32_t filePointer) {
    isToMoveOn_ |=
        std::ranges::any_of(unacked_.keys, [&](const Text& key) { return LeadingInt32(key) == filePointer; });
}

void AlarmPage::NotePlace() {
    const std::vector<Text> keys = KeysInOrder(Tab::Unacked);
    if (!keys.empty()) place_ = ListOf(Tab::Unacked).RowOf(keys.front());
}

void AlarmPage::MoveOn() {
    const AlarmRows& list = ListOf(Tab::Unacked);
    if (unacked_.IsIn(list)) return;
    isToMoveOn_ = false;
    if (list.RowCount() == 0 || place_ < 0) return;
    const Text key = list.KeyOf(std::min(place_, list.RowCount() - 1));
    Select(Tab::Unacked, {{key}, key});
    frame_.View().ShowSelection(Tab::Unacked);
}

void AlarmPage::ShowWhatIsPending() {
    if (isToMoveOn_) MoveOn();
    if (pending_.key.empty()) return;
    const PendingShow show = std::exchange(pending_, {});
    if (needs_.lists.Unacked().RowOf(show.key) < 0) return;
    if (show.isToSelect) {
        Select(Tab::Unacked, {{show.key}, show.key});
        frame_.View().ShowSelection(Tab::Unacked);
    }
    if (show.isToReveal) frame_.View().Reveal(Tab::Unacked, show.key);
}

// --- New alarms that nobody can see

void AlarmPage::NoteVisible(int first, int last) {
    firstVisible_ = first;
    lastVisible_ = last;
}

AlarmRows::News AlarmPage::News() const {
    const bool isShown = frame_.CurrentTab() == Tab::Unacked;
    constexpr int kNoRow = std::numeric_limits<int>::max();
    return isShown ? ListOf(Tab::Unacked).NewsOutside(firstVisible_, lastVisible_)
                   : ListOf(Tab::Unacked).NewsOutside(kNoRow, kNoRow);
}

Text AlarmPage::NewsText() const {
    const AlarmRows::News news = News();
    if (news.Count() == 0) return {};
    const bool isShown = frame_.CurrentTab() == Tab::Unacked;
    const int place = !isShown                           ? kCaptionNewsElsewhere
                      : news.hidden == news.Count()      ? kCaptionNewsHidden
                      : news.below > 0 && news.above > 0 ? kCaptionNewsAround
                      : news.below > 0                   ? kCaptionNewsBelow
                                                         : kCaptionNewsAbove;
    Text text = needs_.captions(place, {std::to_string(news.Count())});
    if (news.highestPriority > 0)
        text += needs_.captions(kCaptionNewsPriority, {std::to_string(news.highestPriority)});
    return text;
}

void AlarmPage::FollowNews() {
    const AlarmRows::News news = News();
    if (news.Count() == 0) return;
    if (frame_.CurrentTab() != Tab::Unacked) frame_.ShowTab(Tab::Unacked);
    if (news.next.empty()) return frame_.View().ClearFilter(Tab::Unacked);
    Select(Tab::Unacked, {{news.next}, news.next});
    frame_.View().ShowSelection(Tab::Unacked);
    frame_.View().Reveal(Tab::Unacked, news.next);
}

// --- Commands

void AlarmPage::Activate(Tab tab) {
    const std::vector<Text> keys = KeysInOrder(tab);
    if (keys.size() != 1 || !needs_.state.Rights().MayOperate()) return;
    const cAlarm* alarm = needs_.store.FindAlarmByKey(LeadingInt32(keys.front()));
    if (!alarm) return;
    current_ = alarm->m_FilePointer;
    if (ListOf(tab).Columns().doubleClickShowsMap && !alarm->m_TranslatedMapName.empty()) {
        return needs_.windows.OpenMap(alarm->m_TranslatedMapName, current_, OpenedBy::Operator);
    }
    needs_.windows.OpenAlarmSheet(current_, OpenedBy::Operator);
}

void AlarmPage::EndAll() {
    needs_.commands.AckAll();
}

void AlarmPage::EndSelected() {
    needs_.commands.CloseSelected(KeysInOrder(Tab::Unacked));
}

void AlarmPage::ArchiveSelected() {
    needs_.commands.ArchiveSelected(KeysInOrder(Tab::Acked));
}

Text AlarmPage::UndoText() const {
    const std::size_t count = needs_.commands.UndoCount();
    if (count == 0) return {};
    return needs_.captions(kCaptionUndo,
                           {std::to_string(count), std::to_string(needs_.commands.UndoSeconds())});
}

void AlarmPage::Print() {
    const Tab tab = frame_.CurrentTab();
    if (!IsAlarmTab(tab)) return;
    const AlarmRows& list = ListOf(tab);
    std::vector<Text> keys = KeysInOrder(tab);
    if (keys.empty()) {
        for (int row = 0; row < list.RowCount(); ++row) keys.push_back(list.KeyOf(row));
    }
    std::vector<std::int32_t> filePointers;
    for (const Text& key : keys) filePointers.push_back(LeadingInt32(key));
    needs_.printing.PrintRows(needs_.captions(CaptionOf(tab)), filePointers);
}

void AlarmPage::OpenSheet() {
    if (const cAlarm* alarm = Current()) {
        needs_.windows.OpenAlarmSheet(alarm->m_FilePointer, OpenedBy::Operator);
    }
}

void AlarmPage::OpenMap() {
    const cAlarm* alarm = OfMap();
    if (!alarm) return;
    needs_.windows.OpenMap(alarm->m_TranslatedMapName, alarm->m_FilePointer, OpenedBy::Operator);
}

// --- Texts

Text AlarmPage::Info() {
    const cAlarm* alarm = Current();
    if (!alarm) return {};
    const Text key = RowKey(*alarm) + alarm->m_AlarmCodeToStore + alarm->m_ObjectInformation;
    if (key == infoOf_) return info_;
    Text text = NewInfo(*alarm);
    infoOf_ = key;
    return info_ = std::move(text);
}

// Reading a file of the server lets other handlers run: nothing of the record is touched behind it.
Text AlarmPage::NewInfo(const cAlarm& alarm) {
    const Text set = alarm.m_TranslationFile;
    const Text idCode = alarm.m_IdCode;
    const Text typeCode = alarm.m_TypeCode;
    Text text = alarm.m_AlarmCodeToStore;
    Text ofObject = alarm.m_ObjectInformation;
    Text ofType;
    if (const Text path = ObjectInfoFile(set, idCode); needs_.readsObjectFiles && !path.empty()) {
        if (Text file = needs_.files.ReadTextFile(path); !file.empty()) ofObject = std::move(file);
    }
    if (const Text path = CodeInfoFile(set, idCode, typeCode);
        needs_.settings.ViewTypeCodeInfo && !path.empty() && !needs_.state.IsRequestPending()) {
        ofType = needs_.files.ReadTextFile(path);
    }
    for (const Text* part : {&ofObject, &ofType}) {
        if (!TrimBlanks(*part).empty()) text.append("\r\n\r\n").append(*part);
    }
    return text;
}

Text AlarmPage::Link() const {
    const cAlarm* alarm = Current();
    return alarm && IsLink(alarm->m_URL) ? alarm->m_URL : Text();
}

Text AlarmPage::StatusLine(Tab tab) const {
    if (!needs_.settings.HasStatusLines()) return {};
    const Text& key = SelectionOf(tab).current;
    const cAlarm* alarm = key.empty() ? nullptr : needs_.store.FindAlarmByKey(LeadingInt32(key));
    if (!alarm || !IsAnySelected(tab)) return {};
    return Printable(needs_.cells.Build(
        tab == Tab::Unacked ? needs_.settings.UnackedStatusBarFormat : needs_.settings.AckedStatusBarFormat,
        *alarm));
}

Text AlarmPage::CopyText(Tab tab) const {
    const AlarmRows& list = ListOf(tab);
    const int code = needs_.settings.AlarmCopyDelimiter;
    const char delimiter = static_cast<char>(code >= 0 && code <= 255 ? code : kDefaultDelimiter);
    Text text;
    for (const Text& key : KeysInOrder(tab)) {
        text.append(list.Line(list.RowOf(key), delimiter)).append("\r\n");
    }
    return text;
}

}  // namespace nordkeep
