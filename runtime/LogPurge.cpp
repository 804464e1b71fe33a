#include "runtime/LogPurge.h"

#include "runtime/SysLog.h"

namespace nordkeep {

void PurgeOldLogs(const FileTree& dataFolder, Role role, int days, OleDate now) {
    if (days < 1) return;
    for (const LogKind kind : {LogKind::Information, LogKind::Alarm}) {
        const LogPlace place = PlaceOfLog(kind, role == Role::Client);
        for (const Text& name : ListFiles(dataFolder.Resolve(place.folder))) {
            if (!MatchesMask(name, "*" + place.extension)) continue;
            const NativePath path = dataFolder.Resolve(place.folder + name);
            if (FileTime(path).Midnight().PlusDays(days) < now.Midnight()) RemoveFile(path);
        }
    }
}

}  // namespace nordkeep
