#pragma once

#include "network/ClientSlots.h"
#include "network/messages/Messages.h"
#include "store/AlarmReplica.h"
#include "translation/ObjectReplica.h"

namespace nordkeep {

/// Tells the clients of a server about every change; the server goes on and writes its files.
class ServerReplica final : public AlarmReplica, public ObjectReplica {
 public:
    explicit ServerReplica(ClientSlots& slots) : slots_(slots) {}

    bool SendAlarm(cAlarm& alarm, NetworkEvent event) override;
    void SendObjectUpdate(const cTranslate& set, const cIDCode& object) override;
    void SendServiceMode(const cTranslate& set, const cIDCode& object) override;
    void SendAliveTestReset(const cTranslate& set, const cIDCode& object) override;

 private:
    bool HasClients() const { return slots_.ConnectedCount() > 0; }

    ClientSlots& slots_;
};

}  // namespace nordkeep
