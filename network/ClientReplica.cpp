#include "network/ClientReplica.h"

#include "network/messages/EventRecord.h"
#include "runtime/Fields.h"
#include "store/Alarm.h"
#include "translation/Translate.h"

namespace nordkeep {
namespace {

constexpr std::size_t kInitials = 3;

}  // namespace

// Always as a change: the server takes no new events from its clients.
bool ClientReplica::SendAlarm(cAlarm& alarm, NetworkEvent) {
    alarm.m_User = FitWidth(user_.initials, kInitials);
    link_.SendToServer(Message::OldEvent, EventPayload(alarm));
    return false;
}

void ClientReplica::SendServiceMode(const cTranslate& set, const cIDCode& object) {
    RequestServiceMode(set, object,
                       {.mode = object.m_ServiceMode,
                        .begin = object.m_ServicePeriodBegin,
                        .end = object.m_ServicePeriodEnd});
}

void ClientReplica::SendAliveTestReset(const cTranslate& set, const cIDCode& object) {
    RequestAliveTestReset(set, object);
}

void ClientReplica::RequestServiceMode(const cTranslate& set, const cIDCode& object,
                                       const ServicePeriod& period) {
    const ServiceModeChange change{.object = {set.m_FileName, object.m_IdCode},
                                   .mode = period.mode,
                                   .begin = period.begin,
                                   .end = period.end};
    link_.SendToServer(Message::SetServiceMode, PayloadOf(change));
}

void ClientReplica::TellServiceReason(const cTranslate& set, const cIDCode& object, const Text& reason) {
    link_.SendToServer(Message::ServiceReason,
                       PayloadOf(ServiceReasonGiven{{set.m_FileName, object.m_IdCode}, reason}));
}

void ClientReplica::RequestAliveTestReset(const cTranslate& set, const cIDCode& object) {
    link_.SendToServer(Message::ResetAliveTestTimer, PayloadOf(ObjectName{set.m_FileName, object.m_IdCode}));
}

void ClientReplica::RequestTorvexLine(TextView line) {
    link_.SendToServer(Message::SendToTorvex, PayloadOf(ShortText{Text(line)}));
}

void ClientReplica::RequestLogin(const LoginRequest& request) {
    link_.SendToServer(Message::Login, PayloadOf(request));
}

void ClientReplica::RequestLogout() {
    link_.SendToServer(Message::Logout);
}

}  // namespace nordkeep
