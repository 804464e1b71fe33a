#include "store/EventReading.h"

#include "store/EventFile.h"

namespace nordkeep {
namespace {

constexpr int kTextDropped = 3510;
constexpr int kTextTooOld = 3511;
constexpr int kTextUnreadable = 3513;
// More names than this are no help to anybody.
constexpr std::size_t kMostNames = 500;

Text JoinNames(const std::vector<Text>& names) {
    Text joined = " (";
    for (std::size_t i = 0; i < names.size() && i < kMostNames; ++i) joined += (i ? ", " : "") + names[i];
    return joined + (names.size() > kMostNames ? ", ...)" : ")");
}

}  // namespace

EventReading::EventReading(const StoreParts& parts, const StoreSettings& settings, EventFiles& files)
    : parts_(parts), settings_(settings), files_(files), today_(parts.clock.Now().Midnight()) {}

std::unique_ptr<cAlarm> EventReading::RecordOf(const EventFileName& file,
                                               const std::optional<Text>& content) {
    auto alarm = std::make_unique<cAlarm>();
    if (!content || IsBlankFile(*content) || !ReadFromDisk(*content, 1, *alarm) ||
        !HasPlausibleArrival(*alarm)) {
        if (!FolderExists(file.path)) NoteUnreadable(file.name);
        return nullptr;
    }
    alarm->m_FilePointer = file.number;
    return alarm;
}

bool EventReading::Stays(cAlarm& alarm) {
    if (alarm.m_Status != kStatusRemoved && IsTooOld(alarm, settings_, today_)) {
        files_.ArchiveToFile(alarm);
        alarm.m_Status = kStatusRemoved;
        ++tooOld_;
    }
    if (alarm.m_Status != kStatusRemoved) return true;
    files_.Delete(alarm);
    return false;
}

void EventReading::LogCounts() const {
    parts_.LogCount(kTextDropped, dropped_, LogKind::Information);
    parts_.LogCount(kTextTooOld, tooOld_, LogKind::Information);
    if (unreadable_.empty()) return;
    parts_.LogCount(kTextUnreadable, unreadable_.size(), LogKind::Failure, JoinNames(unreadable_));
}

}  // namespace nordkeep
