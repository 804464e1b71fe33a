#pragma once

namespace nordkeep {

struct cAlarm;

/// Event types of the network that a changed record is told with.
enum class NetworkEvent : int { OldEvent = 7, NewEvent = 8 };

/// Where a changed record goes besides the event file. Chosen once from the role: nothing alone, the clients
/// on a server, the server on a client.
class AlarmReplica {
 public:
    virtual ~AlarmReplica() = default;
    /// True when this copy still has to write the event file.
    virtual bool SendAlarm(cAlarm& alarm, NetworkEvent event) = 0;
};

/// A copy that stands alone sends nothing and writes everything.
class NoReplica final : public AlarmReplica {
 public:
    bool SendAlarm(cAlarm&, NetworkEvent) override { return true; }
};

}  // namespace nordkeep
