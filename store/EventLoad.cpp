#include "store/EventLoad.h"

#include "store/EventFile.h"

#include <algorithm>
#include <iterator>

namespace nordkeep {
namespace {

constexpr TextView kOldFile = "Data\\Events.DAT";
constexpr TextView kConvertedFile = "Data\\Events.OLD";
constexpr std::size_t kFilesForOnePercent = 500;
constexpr std::size_t kMostPercent = 99;
bool IsEarlier(const ArrivalOrder::Item& a, const ArrivalOrder::Item& b) {
    return a.arrivedMs != b.arrivedMs ? a.arrivedMs < b.arrivedMs : a.order < b.order;
}

bool IsLater(const ArrivalOrder::Item& a, const ArrivalOrder::Item& b) {
    return IsEarlier(b, a);
}

}  // namespace

std::unique_ptr<cAlarm> ArrivalOrder::Insert(std::unique_ptr<cAlarm> alarm) {
    const std::int64_t arrivedMs = alarm->m_ArrivedTime.Milliseconds();
    items_.push_back({arrivedMs, inserted_++, std::move(alarm)});
    if (limit_ == 0) return nullptr;
    std::push_heap(items_.begin(), items_.end(), IsLater);
    if (items_.size() <= limit_) return nullptr;
    std::pop_heap(items_.begin(), items_.end(), IsLater);
    std::unique_ptr<cAlarm> oldest = std::move(items_.back().alarm);
    items_.pop_back();
    return oldest;
}

std::vector<ArrivalOrder::Item> ArrivalOrder::Take() {
    std::sort(items_.begin(), items_.end(), IsEarlier);
    return std::exchange(items_, {});
}

EventLoad::EventLoad(const StoreParts& parts, const StoreSettings& settings, EventList& events,
                     EventFiles& files)
    : parts_(parts),
      settings_(settings),
      events_(events),
      files_(files),
      reading_(parts, settings, files),
      tests_(settings.MaxTestAlarms),
      ordinary_(settings.MaxAlarms) {}

bool EventLoad::HasOldFile(const FileTree& dataFolder) {
    return StampOf(dataFolder.Resolve(kOldFile)).Exists();
}

void EventLoad::Run() {
    parts_.commit.CommitAll();  // so that the files hold what has been promised
    EmptyList();
    std::vector<EventFileName> files = files_.List();
    if (ConvertOldFile()) files = files_.List();
    parts_.views.BeginBulkLoad();
    ReadFiles(files);
    for (auto& [number, alarm] : unsaved_) TakeIn(std::move(alarm));
    FillList();
    parts_.views.EndBulkLoad();
    reading_.LogCounts();
}

// What has not reached the disk must not be lost by reading the disk.
void EventLoad::EmptyList() {
    for (EventSequence at = events_.Next(0); at != 0; at = events_.Next(at)) {
        std::unique_ptr<cAlarm> alarm = events_.TakeOut(at);
        parts_.views.RemoveAlarmRow(*alarm);
        alarm->m_ListItem = nullptr;
        const std::int32_t number = alarm->m_FilePointer;
        if (files_.IsUnsaved(number)) unsaved_[number] = std::move(alarm);
    }
}

bool EventLoad::ConvertOldFile() {
    const NativePath oldFile = parts_.dataFolder.Resolve(kOldFile);
    const std::optional<Text> content = ReadFile(oldFile);
    if (!content) return false;
    ConvertRecords(*content);
    // The old file goes only when the new ones cannot be lost any more.
    parts_.commit.SynchroniseWithThisTurn();
    parts_.commit.Commit();
    for (auto& [number, alarm] : std::exchange(converted_, {})) {
        if (files_.IsUnsaved(number)) unsaved_[number] = std::move(alarm);
    }
    const NativePath converted = parts_.dataFolder.Resolve(kConvertedFile);
    RemoveFile(converted);
    RenameFile(oldFile, converted);
    return true;
}

void EventLoad::ConvertRecords(TextView content) {
    std::int64_t position = 1;
    while (position <= static_cast<std::int64_t>(content.size())) {
        auto alarm = std::make_unique<cAlarm>();
        const std::optional<std::int32_t> length = ReadFromDisk(content, position, *alarm);
        if (!length || *length < 1) {
            reading_.NoteUnreadable("Events.DAT");
            return;
        }
        if (alarm->m_Status != kStatusRemoved) Convert(std::move(alarm));
        position += *length;
    }
}

void EventLoad::Convert(std::unique_ptr<cAlarm> alarm) {
    files_.GiveNumber(*alarm);
    files_.WriteNew(*alarm);
    converted_[alarm->m_FilePointer] = std::move(alarm);
}

void EventLoad::ReadFiles(const std::vector<EventFileName>& files) {
    for (std::size_t i = 0; i < files.size(); ++i) {
        if (std::unique_ptr<cAlarm> alarm = ReadOne(files[i])) TakeIn(std::move(alarm));
        if ((i + 1) % kFilesForOnePercent != 0) continue;
        parts_.views.ShowLoadProgress(
            static_cast<int>(std::min((i + 1) / kFilesForOnePercent, kMostPercent)));
    }
}

std::unique_ptr<cAlarm> EventLoad::ReadOne(const EventFileName& file) {
    if (const auto newer = unsaved_.extract(file.number)) return std::move(newer.mapped());
    return reading_.RecordOf(file, file.isSpare ? std::nullopt : ReadFile(file.path));
}

void EventLoad::TakeIn(std::unique_ptr<cAlarm> alarm) {
    if (!reading_.Stays(*alarm)) return;
    ArrivalOrder& list = IsTestAlarm(*alarm, settings_) ? tests_ : ordinary_;
    if (const std::unique_ptr<cAlarm> oldest = list.Insert(std::move(alarm))) Drop(*oldest);
}

void EventLoad::Drop(cAlarm& alarm) {
    files_.ArchiveToFile(alarm);
    alarm.m_Status = kStatusRemoved;
    if (parts_.replica.SendAlarm(alarm, NetworkEvent::OldEvent)) files_.Delete(alarm);
    reading_.NoteDropped(1);
}

void EventLoad::FillList() {
    std::vector<ArrivalOrder::Item> ordinary = ordinary_.Take();
    std::vector<ArrivalOrder::Item> tests = tests_.Take();
    std::vector<ArrivalOrder::Item> all;
    all.reserve(ordinary.size() + tests.size());
    // Of one time the test alarm stands behind.
    std::merge(std::make_move_iterator(ordinary.begin()), std::make_move_iterator(ordinary.end()),
               std::make_move_iterator(tests.begin()), std::make_move_iterator(tests.end()),
               std::back_inserter(all),
               [](const auto& a, const auto& b) { return a.arrivedMs < b.arrivedMs; });
    for (ArrivalOrder::Item& item : all) {
        cAlarm& alarm = *item.alarm;
        events_.Append(std::move(item.alarm), IsTestAlarm(alarm, settings_));
        parts_.views.UpdateAlarmLists(alarm);
    }
}

}  // namespace nordkeep
