#include "runtime/LogPurge.h"

#include "runtime/SysLog.h"

namespace nordkeep {

namespace {

/// Pages that no printer took.
const LogPlace kPrinted = {"Printed\\", ".pdf"};

void PurgeFolder(const FileTree& dataFolder, const LogPlace& place, OleDate eldest) {
    for (const Text& name : ListFiles(dataFolder.Resolve(place.folder))) {
        if (!MatchesMask(name, "*" + place.extension)) continue;
        const NativePath path = dataFolder.Resolve(place.folder + name);
        if (FileTime(path).Midnight() < eldest) RemoveFile(path);
    }
}

}  // namespace

void PurgeOldLogs(const FileTree& dataFolder, Role role, int days, OleDate now) {
    if (days < 1) return;
    const OleDate eldest = now.Midnight().PlusDays(-days);
    for (const LogKind kind : {LogKind::Information, LogKind::Alarm})
        PurgeFolder(dataFolder, PlaceOfLog(kind, role == Role::Client), eldest);
    PurgeFolder(dataFolder, kPrinted, eldest);
}

}  // namespace nordkeep
