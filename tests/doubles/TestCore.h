#pragma once

#include "pipeline/Core.h"
#include "platform/posix/DurableFiles.h"
#include "tests/doubles/FakeWinsock.h"
#include "tests/doubles/RecordingDesk.h"
#include "tests/doubles/RowViews.h"

namespace nordkeep {

/// What a test chooses of the surroundings of its core. Without a choice the neighbours are quiet, or write
/// down what they are told.
struct CoreGround {
    const FileTree& dataFolder;
    Settings& files;
    const Language& language;
    SysLog& log;
    const Clock& clock;
    EventLoop& loop;
    SocketFactory& sockets;
    Role role = Role::StandAlone;
    AlarmReplica* alarmReplica = nullptr;
    ObjectReplica* objectReplica = nullptr;
    AlarmViews* alarmViews = nullptr;
    ObjectViews* objectViews = nullptr;
    CoreSettings settings{};
    Journal* journal = nullptr;
};

/// What a client has in place of a server that answers: its records are not its own.
class SilentServer final : public AlarmReplica {
 public:
    bool SendAlarm(cAlarm&, NetworkEvent) override { return false; }
};

/// The neighbours of a test's core.
struct CoreNeighbours {
    explicit CoreNeighbours(const CoreGround& ground)
        : settings(ground.settings),
          torvex({.settings = settings.torvex,
                  .sockets = ground.sockets,
                  .loop = ground.loop,
                  .log = ground.log,
                  .language = ground.language}) {}

    CoreParts PartsOn(const CoreGround& ground) {
        return {.dataFolder = ground.dataFolder,
                .files = ground.files,
                .language = ground.language,
                .clock = ground.clock,
                .log = ground.log,
                .disk = disk,
                .journal = ground.journal,
                .requestCommit = [] {},
                .alarmReplica = ReplicaOn(ground),
                .objectReplica = ground.objectReplica ? *ground.objectReplica : noObjectReplica,
                .alarmViews = ground.alarmViews ? *ground.alarmViews : views,
                .objectViews = ground.objectViews ? *ground.objectViews : noObjectViews,
                .desk = desk,
                .outputs = outputs,
                .torvex = torvex,
                .telegramExport = telegramExport,
                .role = ground.role,
                .randomSeed = 1};
    }

    AlarmReplica& ReplicaOn(const CoreGround& ground) {
        if (ground.alarmReplica) return *ground.alarmReplica;
        return ground.role == Role::Client ? static_cast<AlarmReplica&>(silentServer) : noReplica;
    }

    CoreSettings settings;
    DurableFiles disk{};
    NoReplica noReplica{};
    SilentServer silentServer{};
    NoObjectReplica noObjectReplica{};
    NoObjectViews noObjectViews{};
    RowViews views{};
    RecordingDesk desk{};
    QuietOutputs outputs{};
    TorvexLink torvex;
    NoTelegramExport telegramExport{};
};

/// A core among them.
struct TestCore : CoreNeighbours, Core {
    explicit TestCore(const CoreGround& ground) : CoreNeighbours(ground), Core(PartsOn(ground), settings) {}
};

}  // namespace nordkeep
