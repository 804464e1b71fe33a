#pragma once

#include "runtime/Language.h"
#include "runtime/Role.h"
#include "runtime/Settings.h"
#include "runtime/SysLog.h"
#include "store/AlarmReplica.h"
#include "store/AlarmViews.h"
#include "store/EventCommit.h"
#include "store/StorageAlarm.h"

namespace nordkeep {

/// What the store is built on; all of it outlives the store.
struct StoreParts {
    const FileTree& dataFolder;
    Settings& files;
    const Language& language;
    const Clock& clock;
    SysLog& log;
    EventCommit& commit;
    AlarmReplica& replica;
    AlarmViews& views;
    StorageAlarm& storageAlarm;
    Role role = Role::StandAlone;
    std::uint64_t randomSeed = 0;  // differs at every start

    /// A line in the log that ends with a count; none for 0.
    void LogCount(int textNumber, std::size_t count, LogKind kind, TextView behind = {}) const;
};

}  // namespace nordkeep
