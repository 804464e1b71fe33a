#include "platform/KeptFiles.h"

#include "platform/posix/Descriptor.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <utility>

namespace nordkeep {
namespace {

bool IsAt(const NativePath& path, int descriptor) {
    struct stat open {};
    struct stat named {};
    return ::fstat(descriptor, &open) == 0 && ::stat(path.c_str(), &named) == 0 &&
           open.st_dev == named.st_dev && open.st_ino == named.st_ino;
}

}  // namespace

void AppendingFile::Close() {
    Descriptor(std::exchange(descriptor_, -1)).Close();
    hold_ = {};
}

// Asked for first and looked at then: whatever takes its place from here on is told.
bool AppendingFile::Open(const NativePath& file) {
    Close();
    descriptor_ = OpenForAppending(file).Release();
    if (!IsOpen()) return false;
    hold_ = folder_.Hold(file);
    if (!IsAt(file, descriptor_)) hold_ = {};
    return true;
}

bool AppendingFile::Append(TextView path, TextView bytes) {
    if (!IsOpen() || path != path_ || !hold_.Stands()) {
        path_ = path;
        const NativePath file = folder_.Resolve(path);
        if (!Open(file)) return AppendToFile(file, bytes);
    }
    const bool isWritten = AppendOnce(descriptor_, bytes);
    if (!hold_.IsKnown()) Close();
    return isWritten;
}

bool AppendingFile::AppendUnlessTaken(TextView path, TextView bytes) {
    hold_.LookAgain();
    return Append(path, bytes);
}

OverwritingFile& OverwritingFile::operator=(OverwritingFile&& other) noexcept {
    std::swap(descriptor_, other.descriptor_);
    std::swap(inode_, other.inode_);
    return *this;
}

void OverwritingFile::Close() {
    Descriptor(std::exchange(descriptor_, -1)).Close();
}

bool OverwritingFile::Overwrite(const NativePath& path, const FileStamp& stamp, std::size_t offset,
                                TextView bytes) {
    if (static_cast<std::size_t>(stamp.size) < offset + bytes.size()) return false;
    if (descriptor_ < 0 || inode_ != stamp.inode) {
        Close();
        Descriptor file = OpenRegular(path.c_str(), O_WRONLY);
        struct stat status {};
        if (!file || ::fstat(file.Get(), &status) != 0 || status.st_ino != stamp.inode) return false;
        inode_ = status.st_ino;
        descriptor_ = file.Release();
    }
    const ssize_t written = ::pwrite(descriptor_, bytes.data(), bytes.size(), static_cast<off_t>(offset));
    return written == static_cast<ssize_t>(bytes.size());
}

}  // namespace nordkeep
