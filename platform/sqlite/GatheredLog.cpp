#include "platform/sqlite/GatheredLog.h"

#include <sqlite3.h>

#include <algorithm>
#include <map>
#include <memory>
#include <new>

namespace nordkeep {
namespace {

/// More than a turn of the loop commonly writes, and as much as the library's own layer takes in one write.
constexpr std::size_t kMostGathered = 1 << 16;
/// Asks the file of a log to lengthen itself; the library leaves numbers from 100 on to others.
constexpr int kMakeRoom = 0x4e4b01;

/// The log of one database. The file of the layer below stands behind it in the memory that the library
/// gives.
struct LogFile {
    sqlite3_file base{};
    sqlite3_file* below = nullptr;
    std::string gathered{};
    sqlite3_int64 offset = 0;  // of what has been gathered

    int Flush() {
        if (gathered.empty()) return SQLITE_OK;
        const int size = static_cast<int>(gathered.size());
        const int result = below->pMethods->xWrite(below, gathered.data(), size, offset);
        gathered.clear();
        return result;
    }

    // Zeros tell the library that its log has come to an end.
    int Lengthen(sqlite3_int64 from, sqlite3_int64 to) {
        const std::string zeros(kMostGathered, '\0');
        for (sqlite3_int64 at = from; at < to;) {
            const auto size = std::min(to - at, static_cast<sqlite3_int64>(zeros.size()));
            const int result = below->pMethods->xWrite(below, zeros.data(), static_cast<int>(size), at);
            if (result != SQLITE_OK) return result;
            at += size;
        }
        return below->pMethods->xSync(below, SQLITE_SYNC_NORMAL);
    }

    int MakeRoom(sqlite3_int64 bytes) {
        sqlite3_int64 size = 0;
        if (const int flushed = Flush(); flushed != SQLITE_OK) return flushed;
        if (const int known = below->pMethods->xFileSize(below, &size); known != SQLITE_OK) return known;
        if (size >= bytes) return SQLITE_OK;
        const int result = Lengthen(size, bytes);
        if (result != SQLITE_OK) below->pMethods->xTruncate(below, size);
        return result;
    }
};

LogFile& Log(sqlite3_file* file) {
    return *reinterpret_cast<LogFile*>(file);
}

int Close(sqlite3_file* file) {
    LogFile& log = Log(file);
    const int flushed = log.Flush();
    const int closed = log.below->pMethods->xClose(log.below);
    log.~LogFile();
    return flushed != SQLITE_OK ? flushed : closed;
}

int Read(sqlite3_file* file, void* bytes, int size, sqlite3_int64 offset) {
    LogFile& log = Log(file);
    const int flushed = log.Flush();
    return flushed != SQLITE_OK ? flushed : log.below->pMethods->xRead(log.below, bytes, size, offset);
}

int Write(sqlite3_file* file, const void* bytes, int size, sqlite3_int64 offset) {
    LogFile& log = Log(file);
    const auto end = log.offset + static_cast<sqlite3_int64>(log.gathered.size());
    const bool isFull = log.gathered.size() + static_cast<std::size_t>(size) > kMostGathered;
    if (offset != end || isFull) {
        if (const int flushed = log.Flush(); flushed != SQLITE_OK) return flushed;
    }
    if (log.gathered.empty()) log.offset = offset;
    log.gathered.append(static_cast<const char*>(bytes), static_cast<std::size_t>(size));
    return SQLITE_OK;
}

int Truncate(sqlite3_file* file, sqlite3_int64 size) {
    LogFile& log = Log(file);
    const int flushed = log.Flush();
    return flushed != SQLITE_OK ? flushed : log.below->pMethods->xTruncate(log.below, size);
}

int Sync(sqlite3_file* file, int flags) {
    LogFile& log = Log(file);
    const int flushed = log.Flush();
    return flushed != SQLITE_OK ? flushed : log.below->pMethods->xSync(log.below, flags);
}

int FileSize(sqlite3_file* file, sqlite3_int64* size) {
    LogFile& log = Log(file);
    const int flushed = log.Flush();
    return flushed != SQLITE_OK ? flushed : log.below->pMethods->xFileSize(log.below, size);
}

int Lock(sqlite3_file* file, int level) {
    return Log(file).below->pMethods->xLock(Log(file).below, level);
}

int Unlock(sqlite3_file* file, int level) {
    return Log(file).below->pMethods->xUnlock(Log(file).below, level);
}

int CheckReservedLock(sqlite3_file* file, int* isReserved) {
    return Log(file).below->pMethods->xCheckReservedLock(Log(file).below, isReserved);
}

int FileControl(sqlite3_file* file, int operation, void* argument) {
    if (operation == kMakeRoom) return Log(file).MakeRoom(*static_cast<const std::int64_t*>(argument));
    return Log(file).below->pMethods->xFileControl(Log(file).below, operation, argument);
}

int SectorSize(sqlite3_file* file) {
    return Log(file).below->pMethods->xSectorSize(Log(file).below);
}

int DeviceCharacteristics(sqlite3_file* file) {
    return Log(file).below->pMethods->xDeviceCharacteristics(Log(file).below);
}

constexpr sqlite3_io_methods kLogMethods = {.iVersion = 1,
                                            .xClose = Close,
                                            .xRead = Read,
                                            .xWrite = Write,
                                            .xTruncate = Truncate,
                                            .xSync = Sync,
                                            .xFileSize = FileSize,
                                            .xLock = Lock,
                                            .xUnlock = Unlock,
                                            .xCheckReservedLock = CheckReservedLock,
                                            .xFileControl = FileControl,
                                            .xSectorSize = SectorSize,
                                            .xDeviceCharacteristics = DeviceCharacteristics,
                                            .xShmMap = nullptr,
                                            .xShmLock = nullptr,
                                            .xShmBarrier = nullptr,
                                            .xShmUnmap = nullptr,
                                            .xFetch = nullptr,
                                            .xUnfetch = nullptr};

int Open(sqlite3_vfs* layer, const char* name, sqlite3_file* file, int flags, int* outFlags) {
    auto* const below = static_cast<sqlite3_vfs*>(layer->pAppData);
    if ((flags & SQLITE_OPEN_WAL) == 0) return below->xOpen(below, name, file, flags, outFlags);
    auto* const log = new (file) LogFile;
    log->below = reinterpret_cast<sqlite3_file*>(log + 1);
    const int result = below->xOpen(below, name, log->below, flags, outFlags);
    if (log->below->pMethods != nullptr) {
        log->base.pMethods = &kLogMethods;
    } else {
        log->~LogFile();
        file->pMethods = nullptr;
    }
    return result;
}

/// A layer as the library keeps it, for as long as the program runs.
struct Layer {
    std::string name{};
    sqlite3_vfs functions{};
};

}  // namespace

std::string GatheredLogLayer(const std::string& below) {
    static std::map<std::string, std::unique_ptr<Layer>> layers;
    sqlite3_vfs* const found = sqlite3_vfs_find(below.empty() ? nullptr : below.c_str());
    if (found == nullptr) return {};
    std::unique_ptr<Layer>& layer = layers[below];
    if (layer) return layer->name;
    layer = std::make_unique<Layer>();
    layer->name = "gathered-log-" + below;
    // All but the opening of files is that of the layer below, which is told by its own place in memory only
    // where it asks for it.
    layer->functions = *found;
    layer->functions.pNext = nullptr;
    layer->functions.zName = layer->name.c_str();
    layer->functions.szOsFile = static_cast<int>(sizeof(LogFile)) + found->szOsFile;
    layer->functions.pAppData = found;
    layer->functions.xOpen = Open;
    sqlite3_vfs_register(&layer->functions, 0);
    return layer->name;
}

bool MakeRoomInLog(sqlite3* database, std::int64_t bytes) {
    sqlite3_file* log = nullptr;
    sqlite3_file_control(database, "main", SQLITE_FCNTL_JOURNAL_POINTER, &log);
    if (log == nullptr || log->pMethods != &kLogMethods) return false;
    return log->pMethods->xFileControl(log, kMakeRoom, &bytes) == SQLITE_OK;
}

}  // namespace nordkeep
