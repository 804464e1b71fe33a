#include "tests/powercut/RecordedDisk.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <stdarg.h>
#include <stdio.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <utility>

namespace nordkeep {
namespace {

namespace fs = std::filesystem;

RecordedDisk* current = nullptr;

std::string FolderOf(const std::string& path) {
    return path.substr(0, path.rfind('/'));
}

}  // namespace

RecordedDisk* RecordedDisk::Current() {
    return current;
}

RecordedDisk::RecordedDisk(std::string folder) : folder_(std::move(folder)) {
    ReadFolder(folder_);
    safeNames_ = present_;
    current = this;
}

RecordedDisk::~RecordedDisk() {
    Stop();
}

void RecordedDisk::Stop() {
    if (current == this) current = nullptr;
}

void RecordedDisk::ReadFolder(const std::string& folder) {
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        if (entry.is_directory()) subfolders_.push_back(entry.path().string().substr(folder_.size()));
        if (!entry.is_regular_file()) continue;
        std::ifstream in(entry.path(), std::ios::binary);
        const int file = FileOf(entry.path().string());
        contents_[file].safe = std::string(std::istreambuf_iterator<char>(in), {});
    }
}

int RecordedDisk::FileOf(const std::string& path) {
    int& file = present_[path];
    if (file == 0) file = ++lastFile_;
    return file;
}

void RecordedDisk::NoteOpen(int descriptor, const std::string& path, bool isEmptied) {
    if (fs::is_directory(path)) {
        open_[descriptor] = {0, path};
        return;
    }
    const bool isNew = !present_.contains(path);
    const int file = FileOf(path);
    open_[descriptor] = {file, path};
    if (isNew) calls_.push_back({.kind = Kind::Name, .file = file, .path = path});
    if (!isNew && isEmptied) calls_.push_back({.kind = Kind::Truncate, .file = file});
}

void RecordedDisk::NoteWrite(int descriptor, std::int64_t offset, const char* bytes, std::size_t count) {
    const auto open = open_.find(descriptor);
    if (open == open_.end()) return;
    calls_.push_back({.kind = Kind::Write,
                      .file = open->second.file,
                      .path = open->second.path,
                      .offset = offset,
                      .bytes = std::string(bytes, count)});
}

void RecordedDisk::NoteTruncate(int descriptor, std::int64_t size) {
    const auto open = open_.find(descriptor);
    if (open == open_.end()) return;
    calls_.push_back({.kind = Kind::Truncate, .file = open->second.file, .offset = size});
}

void RecordedDisk::NoteSync(int descriptor) {
    const auto open = open_.find(descriptor);
    if (open == open_.end()) return;
    const bool isFolder = open->second.file == 0;
    calls_.push_back({.kind = isFolder ? Kind::SyncFolder : Kind::SyncFile,
                      .file = open->second.file,
                      .path = open->second.path});
}

void RecordedDisk::NoteRename(const std::string& from, const std::string& to) {
    const auto file = present_.extract(from);
    if (!file) return;
    present_[to] = file.mapped();
    calls_.push_back({.kind = Kind::Move, .file = file.mapped(), .path = from, .to = to});
}

void RecordedDisk::NoteUnlink(const std::string& path) {
    const auto file = present_.extract(path);
    if (file) calls_.push_back({.kind = Kind::Unname, .file = file.mapped(), .path = path});
}

void RecordedDisk::NoteFolder(const std::string& path) {
    calls_.push_back({.kind = Kind::Name, .file = kFolder, .path = path});
}

void RecordedDisk::ApplyName(Names& names, const Call& call) {
    if (call.kind == Kind::Name) {
        names[call.path] = call.file;
    } else {
        names.erase(call.path);
        if (call.kind == Kind::Move) names[call.to] = call.file;
    }
}

void RecordedDisk::ApplyWrite(std::string& content, const Call& call, std::size_t count) {
    if (call.kind == Kind::Truncate) return content.resize(static_cast<std::size_t>(call.offset));
    const auto begin = static_cast<std::size_t>(call.offset);
    if (content.size() < begin + count) content.resize(begin + count);
    content.replace(begin, count, call.bytes, 0, count);
}

void RecordedDisk::SyncNames(const std::string& folder) {
    const auto isOfFolder = [&](const Call* call) { return FolderOf(call->path) == folder; };
    for (const Call* call : pendingNames_) {
        if (isOfFolder(call)) ApplyName(safeNames_, *call);
    }
    std::erase_if(pendingNames_, isOfFolder);
}

void RecordedDisk::Replay(const Call& call) {
    Content& content = contents_[call.file];
    switch (call.kind) {
        case Kind::Name:
        case Kind::Unname:
        case Kind::Move:
            pendingNames_.push_back(&call);
            break;
        case Kind::Write:
        case Kind::Truncate:
            content.pending.push_back(&call);
            break;
        case Kind::SyncFile:
            for (const Call* pending : content.pending)
                ApplyWrite(content.safe, *pending, pending->bytes.size());
            content.pending.clear();
            break;
        case Kind::SyncFolder:
            SyncNames(call.path);
            break;
    }
}

void RecordedDisk::Restore(std::size_t cut, Leftover leftover, std::uint32_t seed, const std::string& into) {
    for (; replayed_ < cut; ++replayed_) Replay(calls_[replayed_]);
    std::mt19937 random(seed);
    Names names = safeNames_;
    // A file system writes its changes of names in their order, up to some place.
    std::size_t kept = leftover == Leftover::Nothing ? 0 : pendingNames_.size();
    if (leftover == Leftover::Anything) kept = random() % (pendingNames_.size() + 1);
    for (std::size_t i = 0; i < kept; ++i) ApplyName(names, *pendingNames_[i]);
    for (const std::string& folder : subfolders_) fs::create_directories(into + folder);
    for (const auto& [path, file] : names) {
        const std::string place = into + path.substr(folder_.size());
        // What is in a folder goes with the folder's own name.
        if (!fs::exists(FolderOf(place))) continue;
        file == kFolder ? void(fs::create_directory(place)) : RestoreFile(file, leftover, random, place);
    }
}

void RecordedDisk::RestoreFile(int file, Leftover leftover, std::mt19937& random, const std::string& into) {
    const Content& content = contents_[file];
    std::string bytes = content.safe;
    for (const Call* call : content.pending) {
        if (leftover == Leftover::All) ApplyWrite(bytes, *call, call->bytes.size());
        if (leftover != Leftover::Anything || random() % 2 == 0) continue;
        const std::size_t size = call->bytes.size();
        ApplyWrite(bytes, *call, random() % 4 == 0 && size > 0 ? random() % size : size);
    }
    std::ofstream(into, std::ios::binary) << bytes;
}

}  // namespace nordkeep

// The system's own functions, with a note taken. A definition in the program comes before those of the shared
// libraries, also for the calls that other shared libraries make.
namespace {

template <class Function>
Function* Real(Function*, const char* name) {
    return reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, name));
}

std::string AbsolutePath(const char* path) {
    return nordkeep::RecordedDisk::Current() && path[0] == '/' ? std::string(path) : std::string();
}

int NoteOpened(int descriptor, const char* path, int flags) {
    nordkeep::RecordedDisk* disk = nordkeep::RecordedDisk::Current();
    if (descriptor >= 0 && disk && disk->Holds(AbsolutePath(path) + "/"))
        disk->NoteOpen(descriptor, AbsolutePath(path).substr(0, AbsolutePath(path).find_last_not_of('/') + 1),
                       (flags & O_TRUNC) != 0);
    return descriptor;
}

void NoteWritten(int descriptor, ssize_t written, const void* bytes, off_t offset) {
    nordkeep::RecordedDisk* disk = nordkeep::RecordedDisk::Current();
    if (written > 0 && disk)
        disk->NoteWrite(descriptor, offset, static_cast<const char*>(bytes),
                        static_cast<std::size_t>(written));
}

int NoteSynced(int result, int descriptor) {
    nordkeep::RecordedDisk* disk = nordkeep::RecordedDisk::Current();
    if (result == 0 && disk) disk->NoteSync(descriptor);
    return result;
}

int NoteMoved(int result, const char* from, const char* to) {
    nordkeep::RecordedDisk* disk = nordkeep::RecordedDisk::Current();
    if (result == 0 && disk && disk->Holds(AbsolutePath(to))) disk->NoteRename(from, to);
    return result;
}

int OpenWith(const char* name, const char* path, int flags, mode_t mode) {
    static_assert(sizeof(mode_t) == sizeof(int));
    using Open = int(const char*, int, ...);
    return NoteOpened(Real(static_cast<Open*>(nullptr), name)(path, flags, mode), path, flags);
}

}  // namespace

extern "C" {

int open(const char* path, int flags, ...) {
    va_list arguments;
    va_start(arguments, flags);
    const auto mode = static_cast<mode_t>(va_arg(arguments, int));
    va_end(arguments);
    return OpenWith("open", path, flags, mode);
}

int open64(const char* path, int flags, ...) {
    va_list arguments;
    va_start(arguments, flags);
    const auto mode = static_cast<mode_t>(va_arg(arguments, int));
    va_end(arguments);
    return OpenWith("open64", path, flags, mode);
}

int close(int descriptor) {
    if (nordkeep::RecordedDisk* disk = nordkeep::RecordedDisk::Current()) disk->NoteClose(descriptor);
    return Real(&close, "close")(descriptor);
}

ssize_t write(int descriptor, const void* bytes, size_t count) {
    const ssize_t written = Real(&write, "write")(descriptor, bytes, count);
    if (nordkeep::RecordedDisk::Current() && written > 0)
        NoteWritten(descriptor, written, bytes, ::lseek(descriptor, 0, SEEK_CUR) - written);
    return written;
}

ssize_t pwrite(int descriptor, const void* bytes, size_t count, off_t offset) {
    const ssize_t written = Real(&pwrite, "pwrite")(descriptor, bytes, count, offset);
    NoteWritten(descriptor, written, bytes, offset);
    return written;
}

ssize_t pwrite64(int descriptor, const void* bytes, size_t count, off64_t offset) {
    const ssize_t written = Real(&pwrite64, "pwrite64")(descriptor, bytes, count, offset);
    NoteWritten(descriptor, written, bytes, offset);
    return written;
}

int ftruncate(int descriptor, off_t size) noexcept {
    const int result = Real(&ftruncate, "ftruncate")(descriptor, size);
    if (nordkeep::RecordedDisk* disk = nordkeep::RecordedDisk::Current(); disk && result == 0)
        disk->NoteTruncate(descriptor, size);
    return result;
}

int ftruncate64(int descriptor, off64_t size) noexcept {
    const int result = Real(&ftruncate64, "ftruncate64")(descriptor, size);
    if (nordkeep::RecordedDisk* disk = nordkeep::RecordedDisk::Current(); disk && result == 0)
        disk->NoteTruncate(descriptor, size);
    return result;
}

int fsync(int descriptor) {
    return NoteSynced(Real(&fsync, "fsync")(descriptor), descriptor);
}

int fdatasync(int descriptor) {
    return NoteSynced(Real(&fdatasync, "fdatasync")(descriptor), descriptor);
}

int rename(const char* from, const char* to) noexcept {
    return NoteMoved(Real(&rename, "rename")(from, to), from, to);
}

int renameat2(int fromFolder, const char* from, int toFolder, const char* to, unsigned flags) noexcept {
    return NoteMoved(Real(&renameat2, "renameat2")(fromFolder, from, toFolder, to, flags), from, to);
}

int mkdir(const char* path, mode_t mode) noexcept {
    const int result = Real(&mkdir, "mkdir")(path, mode);
    nordkeep::RecordedDisk* disk = nordkeep::RecordedDisk::Current();
    if (result == 0 && disk && disk->Holds(AbsolutePath(path))) disk->NoteFolder(path);
    return result;
}

int unlink(const char* path) noexcept {
    const int result = Real(&unlink, "unlink")(path);
    if (nordkeep::RecordedDisk* disk = nordkeep::RecordedDisk::Current(); disk && result == 0)
        disk->NoteUnlink(path);
    return result;
}

}  // extern "C"
