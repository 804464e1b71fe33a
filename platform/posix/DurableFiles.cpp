#include "platform/posix/DurableFiles.h"

#include "platform/posix/Descriptor.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

namespace nordkeep {
namespace {

/// A burst of telegrams must not use up the descriptors that sockets and lines need.
constexpr std::size_t kMostOpen = 256;

NativePath FolderOf(const NativePath& path) {
    const std::size_t slash = path.rfind('/');
    return slash == NativePath::npos ? "." : path.substr(0, slash + 1);
}

}  // namespace

DurableFiles::~DurableFiles() {
    for (const OpenFile& file : open_) ::close(file.descriptor);
}

bool DurableFiles::Write(const NativePath& path, TextView bytes, Opening opening) {
    bool isNew = opening == Opening::CreateNew;
    Descriptor file(isNew ? OpenNew(path) : OpenExisting(path, isNew));
    if (!file) return Fail("open", path);
    if (!WriteAll(file.Get(), bytes)) {
        const bool isReported = Fail("write", path);
        if (isNew) ::unlink(path.c_str());
        return isReported;
    }
    if (isNew) newFolders_.insert(FolderOf(path));
    open_.push_back({file.Release(), path});
    if (open_.size() >= kMostOpen) SynchroniseFiles();
    return true;
}

int DurableFiles::OpenNew(const NativePath& path) {
    return OpenRegular(path.c_str(), O_RDWR | O_CREAT | O_EXCL).Release();
}

int DurableFiles::OpenExisting(const NativePath& path, bool& isNew) {
    Descriptor file = OpenRegular(path.c_str(), O_RDWR);
    isNew = !file && errno == ENOENT;
    return isNew ? OpenNew(path) : file.Release();
}

bool DurableFiles::Synchronise() {
    SynchroniseFiles();
    SynchroniseFolders();
    return !std::exchange(hasFailed_, false);
}

void DurableFiles::SynchroniseFiles() {
    // The data of all files is set going first, so that the journal entry which the first synchronisation
    // waits for covers the others too, and these find little left to do.
    if (open_.size() > 1) {
        for (const OpenFile& file : open_) ::sync_file_range(file.descriptor, 0, 0, SYNC_FILE_RANGE_WRITE);
    }
    for (const OpenFile& file : std::exchange(open_, {})) {
        if (::fsync(file.descriptor) != 0) {
            Fail("synchronise", file.path);
            hasFailed_ = true;
        }
        ::close(file.descriptor);
    }
}

void DurableFiles::SynchroniseFolders() {
    for (const NativePath& path : std::exchange(newFolders_, {})) {
        const Descriptor folder(::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
        // Some file systems synchronise no folders, and say so; there the files alone have to do.
        if (folder && (::fsync(folder.Get()) == 0 || errno == EINVAL)) continue;
        Fail("synchronise", path);
        hasFailed_ = true;
    }
}

bool DurableFiles::Fail(const char* operation, const NativePath& path) {
    lastError_ = Text(operation) + " " + FromUtf8(path) + ": " + SystemErrorText(errno);
    return false;
}

}  // namespace nordkeep
