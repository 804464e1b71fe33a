#include "platform/posix/Descriptor.h"

#include <fcntl.h>
#include <linux/magic.h>
#include <string.h>
#include <sys/stat.h>
#include <sys/vfs.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>

namespace nordkeep {

namespace {

bool IsLocal(const struct statfs& status) {
    constexpr std::uint32_t kNot[] = {NFS_SUPER_MAGIC,  CIFS_SUPER_MAGIC, SMB2_SUPER_MAGIC, SMB_SUPER_MAGIC,
                                      FUSE_SUPER_MAGIC, V9FS_MAGIC,       CEPH_SUPER_MAGIC, AFS_SUPER_MAGIC};
    return std::ranges::find(kNot, static_cast<std::uint32_t>(status.f_type)) == std::end(kNot);
}

}  // namespace

bool IsOnAnotherMachine(int descriptor) {
    struct statfs status {};
    return ::fstatfs(descriptor, &status) != 0 || !IsLocal(status);
}

bool IsOnAnotherMachine(const char* path) {
    struct statfs status {};
    return ::statfs(path, &status) != 0 || !IsLocal(status);
}

Descriptor OpenRegular(const char* path, int flags, unsigned mode) {
    Descriptor file(::open(path, flags | O_CLOEXEC | O_NONBLOCK | O_NOCTTY, mode));
    if (!file) return file;
    struct stat status {};
    if (::fstat(file.Get(), &status) == 0 && S_ISREG(status.st_mode)) return file;
    file.Close();
    errno = S_ISDIR(status.st_mode) ? EISDIR : EINVAL;
    return file;
}

Descriptor OpenForAppending(const std::string& path) {
    return OpenRegular(path.c_str(), O_WRONLY | O_APPEND | O_CREAT);
}

bool AppendOnce(int descriptor, TextView bytes) {
    return ::write(descriptor, bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size());
}

bool WriteAll(int descriptor, TextView bytes) {
    while (!bytes.empty()) {
        const ssize_t written = ::write(descriptor, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) return false;
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

bool SynchroniseFolderOf(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    const std::string folderPath = slash == std::string::npos ? "." : path.substr(0, slash + 1);
    const Descriptor folder(::open(folderPath.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    return folder && (::fsync(folder.Get()) == 0 || errno == EINVAL);
}

Text SystemErrorText(int error) {
    const char* text = ::strerrordesc_np(error);
    return text != nullptr ? Text(text) : "error " + std::to_string(error);
}

}  // namespace nordkeep
