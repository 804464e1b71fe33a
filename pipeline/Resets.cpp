#include "pipeline/Resets.h"

namespace nordkeep {
namespace {

constexpr int kAcknowledgeAtOnce = 1;
constexpr int kAcknowledgeAfterDelay = 2;

}  // namespace

void Resets::DetectRepeat(cAlarm& alarm) {
    if (alarm.m_Repeated != 0) return;
    const auto partner = store_.Events().Active().FirstRepeatPartner(alarm);
    if (!partner) return;
    cAlarm& older = *store_.Events().Find(*partner);
    // A mark on the newer record, not a count; the older one stays as it is.
    alarm.m_Repeated = -1;
    if (settings_.AutoAckRepeatedEvents != 0) {
        if (older.m_RepeatedCompareTime.IsNever()) older.m_RepeatedCompareTime = older.m_ArrivedTime;
        const OleDate end = older.m_RepeatedCompareTime.PlusSeconds(settings_.AutoAckRepeatedEvents);
        if (end > alarm.m_ArrivedTime) alarm.m_Status = kStatusAcknowledged;
        older.m_RepeatedCompareTime = alarm.m_ArrivedTime;
    }
    store_.Update(older);
}

bool Resets::ResolveResets(cAlarm& alarm) {
    const ActiveAlarms& active = store_.Events().Active();
    if (!active.HasResetHit(alarm)) return false;
    TakeOverTexts(alarm);
    const int mode = settings_.AutoAckResetEvents;
    if (mode == kAcknowledgeAtOnce || mode == kAcknowledgeAfterDelay) {
        for (const EventSequence hit : active.ResetHits(alarm)) {
            if (cAlarm* waiting = store_.Events().Find(hit)) {
                handling_.EndByReset(*waiting,
                                     mode == kAcknowledgeAtOnce ? kStatusAcknowledged : kStatusReset);
            }
        }
    }
    alarm.m_Status = settings_.AutoCloseResetEvents ? kStatusAcknowledged : kStatusReset;
    alarm.m_AckedTime = clock_.Now();
    return true;
}

// The event belongs to another code than the object of the alarm that it ends, so it shows that object.
void Resets::TakeOverTexts(cAlarm& alarm) const {
    const auto hit = store_.Events().Active().LastHitByIdCode(alarm);
    if (!hit) return;
    const cAlarm& waiting = *store_.Events().Find(*hit);
    alarm.m_TranslatedIDCode = waiting.m_TranslatedIDCode;
    alarm.m_ObjectInformation = waiting.m_ObjectInformation;
    alarm.m_ExtraText = waiting.m_ExtraText;
    alarm.m_Originator = waiting.m_Originator;
    alarm.m_Customer = waiting.m_Customer;
}

void Resets::AcknowledgeDelayed(OleDate now) {
    if (settings_.AutoAckResetEvents != kAcknowledgeAfterDelay) return;
    const std::vector<EventSequence> received(store_.Events().ResetReceived().begin(),
                                              store_.Events().ResetReceived().end());
    for (const EventSequence sequence : received) {
        cAlarm* alarm = store_.Events().Find(sequence);
        if (!alarm || alarm->m_Status != kStatusReset) continue;
        if (alarm->m_AckedTime.PlusMinutes(settings_.AutoAckResetEventsTimeout) < now) {
            handling_.EndByReset(*alarm, kStatusAcknowledged);
        }
    }
}

}  // namespace nordkeep
