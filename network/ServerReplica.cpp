#include "network/ServerReplica.h"

#include "network/messages/EventRecord.h"
#include "network/messages/ObjectMessages.h"
#include "translation/Translate.h"

namespace nordkeep {

bool ServerReplica::SendAlarm(cAlarm& alarm, NetworkEvent event) {
    if (HasClients()) slots_.SendToAll(static_cast<Message>(event), EventPayload(alarm));
    return true;
}

void ServerReplica::SendObjectUpdate(const cTranslate& set, const cIDCode& object) {
    if (HasClients()) slots_.SendToAll(Message::UpdateIdCode, ObjectUpdatePayload(set, object));
}

void ServerReplica::SendServiceMode(const cTranslate& set, const cIDCode& object) {
    const ServiceModeChange change{.object = {set.m_FileName, object.m_IdCode},
                                   .mode = object.m_ServiceMode,
                                   .begin = object.m_ServicePeriodBegin,
                                   .end = object.m_ServicePeriodEnd};
    slots_.SendToAll(Message::SetServiceMode, PayloadOf(change));
}

void ServerReplica::SendAliveTestReset(const cTranslate& set, const cIDCode& object) {
    slots_.SendToAll(Message::ResetAliveTestTimer, PayloadOf(ObjectName{set.m_FileName, object.m_IdCode}));
}

}  // namespace nordkeep
