#include "platform/posix/DurableFiles.h"

#include "platform/posix/Descriptor.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <iterator>
#include <utility>

namespace nordkeep {
namespace {

/// A burst of telegrams must not use up the descriptors that sockets and lines need.
constexpr std::size_t kMostOpen = 64;

NativePath FolderOf(const NativePath& path) {
    const std::size_t slash = path.rfind('/');
    return slash == NativePath::npos ? "." : path.substr(0, slash + 1);
}

/// What has just been made is a regular file.
Descriptor OpenNew(const NativePath& path) {
    return Descriptor(::open(path.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0666));
}

}  // namespace

DurableFiles::~DurableFiles() {
    for (const WaitingFile& file : waiting_) ::close(file.descriptor);
}

bool DurableFiles::Write(const NativePath& path, TextView bytes, Opening opening) {
    bool isNew = opening == Opening::CreateNew;
    Descriptor file(isNew ? OpenNew(path).Release() : OpenExisting(path, isNew));
    if (!file) return Fail("open", path);
    if (!WriteAll(file.Get(), bytes)) {
        const bool isReported = Fail("write", path);
        if (isNew) ::unlink(path.c_str());
        return isReported;
    }
    KeepWaiting(file.Release(), path, isNew);
    return true;
}

bool DurableFiles::Append(const NativePath& path, TextView bytes) {
    struct stat status {};
    const bool isNew = ::stat(path.c_str(), &status) != 0;
    Descriptor file = OpenRegular(path.c_str(), O_WRONLY | O_APPEND | O_CREAT);
    if (!file) return Fail("open", path);
    const ssize_t written = ::write(file.Get(), bytes.data(), bytes.size());
    if (written != static_cast<ssize_t>(bytes.size())) return Fail("write", path);
    KeepWaiting(file.Release(), path, isNew);
    return true;
}

bool DurableFiles::Remove(const NativePath& path) {
    if (::unlink(path.c_str()) != 0) return errno == ENOENT || Fail("delete", path);
    if (const auto place = places_.find(path); place != places_.end()) {
        const auto gone = place->second;
        if (gone->descriptor >= 0) --openCount_;
        ::close(gone->descriptor);
        waiting_.erase(gone);
        places_.erase(place);
    }
    changedFolders_.insert(FolderOf(path));
    return true;
}

int DurableFiles::OpenExisting(const NativePath& path, bool& isNew) {
    Descriptor file = OpenRegular(path.c_str(), O_RDWR);
    isNew = !file && errno == ENOENT;
    return isNew ? OpenNew(path).Release() : file.Release();
}

void DurableFiles::KeepWaiting(int descriptor, const NativePath& path, bool isNew) {
    Descriptor file(descriptor);
    if (isNew) changedFolders_.insert(FolderOf(path));
    if (places_.contains(path)) return;
    const bool isToStayOpen = openCount_ < kMostOpen;
    if (isToStayOpen) ++openCount_;
    waiting_.push_back({isToStayOpen ? file.Release() : -1, path});
    places_[path] = std::prev(waiting_.end());
}

bool DurableFiles::Synchronise(std::size_t most) {
    bool isSafe = true;
    const std::size_t count = std::min(most, waiting_.size());
    if (count > 1) SetGoing(count);
    for (std::size_t i = 0; i < count; ++i) {
        WaitingFile file = std::move(waiting_.front());
        waiting_.pop_front();
        places_.erase(file.path);
        isSafe = SynchroniseFile(file) && isSafe;
    }
    return (!waiting_.empty() || SynchroniseFolders()) && isSafe;
}

// The data of all files is set going first, so that the file system's own entry which the first
// synchronisation waits for covers the others too, and these find little left to do.
void DurableFiles::SetGoing(std::size_t count) {
    auto file = waiting_.begin();
    for (std::size_t i = 0; i < count; ++i, ++file) {
        if (file->descriptor >= 0) ::sync_file_range(file->descriptor, 0, 0, SYNC_FILE_RANGE_WRITE);
    }
}

bool DurableFiles::SynchroniseFile(WaitingFile& file) {
    if (file.descriptor >= 0) --openCount_;
    const Descriptor open =
        file.descriptor >= 0 ? Descriptor(file.descriptor) : OpenRegular(file.path.c_str(), O_RDONLY);
    if (!open && errno == ENOENT) return true;  // somebody else has deleted it
    return (open && ::fsync(open.Get()) == 0) || Fail("synchronise", file.path);
}

bool DurableFiles::SynchroniseFolders() {
    bool isSafe = true;
    for (const NativePath& path : std::exchange(changedFolders_, {}))
        isSafe = (SynchroniseFolderOf(path) || Fail("synchronise", path)) && isSafe;
    return isSafe;
}

bool DurableFiles::Fail(const char* operation, const NativePath& path) {
    lastError_ = Text(operation) + " " + FromUtf8(path) + ": " + SystemErrorText(errno);
    return false;
}

}  // namespace nordkeep
