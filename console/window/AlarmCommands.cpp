#include "console/window/AlarmCommands.h"

#include "console/lists/Captions.h"
#include "runtime/Fields.h"

namespace nordkeep {
namespace {

constexpr int kTextEndAll = 1021;
constexpr int kTextEndSelected = 1053;
constexpr int kTextArchiveSelected = 1055;
constexpr int kTextCount = 3557;

}  // namespace

bool AlarmCommands::Asks(int text, Answer byDefault, const Text& behind) const {
    return needs_.dialogs.AskYesNo(needs_.language.GetLanguageText(text) + behind, byDefault) && mayChange_();
}

cAlarm* AlarmCommands::RecordOf(const Text& rowKey) const {
    cAlarm* alarm = needs_.store.FindAlarmByKey(LeadingInt32(rowKey));
    return alarm && alarm->m_Status != kStatusRemoved ? alarm : nullptr;
}

void AlarmCommands::End(cAlarm& alarm) {
    alarm.m_Status = kStatusAcknowledged;
    alarm.m_AckedTime = needs_.clock.Now();
    needs_.store.UpdateToDisk(alarm);
    needs_.store.UpdateAlarmLists(alarm);
    needs_.alarmEnded(alarm.m_FilePointer);
}

void AlarmCommands::AckAll(bool isFiltered) {
    const std::size_t count = needs_.store.Events().Unacknowledged().size();
    const Text line = Captions(needs_.language)(kTextCount, {std::to_string(count)});
    if (!Asks(kTextEndAll, Answer::No, isFiltered ? "\r\n" + line : Text())) return;
    needs_.views.BeginBulkLoad();
    // A copy, since an alarm that ends leaves the set.
    const auto& open = needs_.store.Events().Unacknowledged();
    for (const EventSequence sequence : std::vector<EventSequence>(open.begin(), open.end())) {
        if (cAlarm* alarm = needs_.store.Events().Find(sequence)) End(*alarm);
    }
    needs_.views.EndBulkLoad();
    needs_.views.RecalcStatusBars();
    needs_.silenceSound();
}

void AlarmCommands::CloseSelected(std::span<const Text> rowKeys) {
    if (!Asks(kTextEndSelected, Answer::Yes)) return;
    for (const Text& key : rowKeys) {
        if (cAlarm* alarm = RecordOf(key)) End(*alarm);
    }
    needs_.views.RecalcStatusBars();
}

void AlarmCommands::ArchiveSelected(std::span<const Text> rowKeys) {
    if (!Asks(kTextArchiveSelected, Answer::No)) return;
    for (const Text& key : rowKeys) {
        cAlarm* alarm = RecordOf(key);
        if (!alarm) continue;
        if (needs_.role != Role::Client) {
            needs_.store.RemoveAlarm(*alarm);
            continue;
        }
        // The server takes the record out; the one here stays until the next connection.
        alarm->m_Status = kStatusRemoved;
        needs_.store.UpdateAlarmLists(*alarm);
        needs_.store.UpdateToDisk(*alarm);
    }
    needs_.views.RecalcStatusBars();
}

}  // namespace nordkeep
