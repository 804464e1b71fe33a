#include "platform/Files.h"

#include "platform/posix/Descriptor.h"
#include "platform/posix/LocalTime.h"

#include <fcntl.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>

namespace nordkeep {
namespace {

/// Larger files are none of this system's own; reading one would only use up the memory.
constexpr off_t kLargestFile = off_t{1} << 30;

std::optional<Text> ReadAll(int descriptor, std::size_t expected) {
    // One byte more than expected, so that the end of the file is usually seen without a second round.
    Text bytes(expected + 1, '\0');
    std::size_t used = 0;
    while (true) {
        const ssize_t count = ::read(descriptor, bytes.data() + used, bytes.size() - used);
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return std::nullopt;
        used += static_cast<std::size_t>(count);
        if (count == 0 || used > static_cast<std::size_t>(kLargestFile)) break;
        if (used == bytes.size()) bytes.resize(bytes.size() * 2);
    }
    bytes.resize(used);
    return bytes;
}

/// The file that a link leads to, so that a replacement changes the file and leaves the link.
NativePath BehindLinks(const NativePath& path) {
    struct stat status {};
    if (::lstat(path.c_str(), &status) != 0 || !S_ISLNK(status.st_mode)) return path;
    return CanonicalPath(path).value_or(path);
}

/// The name begins with a dot and ends with "~", which no mask of the system fits.
NativePath TemporaryNameFor(const NativePath& path) {
    const std::size_t leaf = path.rfind('/') + 1;
    return path.substr(0, leaf) + "." + path.substr(leaf) + "." + std::to_string(::getpid()) + ".tmp~";
}

/// `mode` is that of the file to be replaced; none for a new one.
bool WriteTemporary(const NativePath& path, TextView bytes, const mode_t* mode) {
    Descriptor file = OpenRegular(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_NOFOLLOW);
    if (!file) return false;
    if (mode && ::fchmod(file.Get(), *mode) != 0) return false;
    // Else a power cut could leave the new name with nothing behind it.
    return WriteAll(file.Get(), bytes) && ::fsync(file.Get()) == 0 && file.Close();
}

/// A rename goes over a file whatever its mode; what this program may not write is not its own to replace,
/// and of what it cannot read nobody here knows what would be lost.
bool MayReplace(const NativePath& path) {
    return static_cast<bool>(OpenRegular(path.c_str(), O_RDWR));
}

/// Without a mode the file gets the usual rights.
bool PutAt(const NativePath& target, TextView bytes, const mode_t* mode) {
    const NativePath temporary = TemporaryNameFor(target);
    if (WriteTemporary(temporary, bytes, mode) && ::rename(temporary.c_str(), target.c_str()) == 0)
        return SynchroniseFolderOf(target);
    ::unlink(temporary.c_str());
    return false;
}

/// `status` is that of what stands there; none when there is nothing. `ofNew` are the rights of a file that
/// is made; none for the usual ones.
bool ReplaceAt(const NativePath& target, TextView bytes, const struct stat* status,
               const mode_t* ofNew = nullptr) {
    if (status && (!S_ISREG(status->st_mode) || !MayReplace(target))) return false;
    const mode_t mode = status ? status->st_mode & 07777 : 0;
    return PutAt(target, bytes, status ? &mode : ofNew);
}

bool AppendToReadOnly(const NativePath& path, TextView bytes) {
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) return false;
    const mode_t mode = status.st_mode & 07777;
    if (::chmod(path.c_str(), mode | S_IWUSR) != 0) return false;
    Descriptor file = OpenForAppending(path);
    const bool isWritten = file && AppendOnce(file.Get(), bytes);
    ::chmod(path.c_str(), mode);
    return isWritten;
}

}  // namespace

FileStamp StampOf(const NativePath& path) {
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) return {};
    return {.inode = status.st_ino,
            .size = status.st_size,
            .modifiedNs = status.st_mtim.tv_sec * 1'000'000'000LL + status.st_mtim.tv_nsec};
}

OleDate FileTime(const NativePath& path) {
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) return {};
    return LocalTime(status.st_mtim);
}

std::optional<Text> ReadFile(const NativePath& path) {
    const Descriptor file = OpenRegular(path.c_str(), O_RDONLY);
    struct stat status {};
    if (!file || ::fstat(file.Get(), &status) != 0 || status.st_size > kLargestFile) return std::nullopt;
    return ReadAll(file.Get(), static_cast<std::size_t>(status.st_size));
}

FileContent LoadFile(const NativePath& path) {
    using State = FileContent::State;
    const Descriptor file = OpenRegular(path.c_str(), O_RDONLY);
    if (!file && (errno == ENOENT || errno == ENOTDIR)) return {};
    struct stat status {};
    if (!file || ::fstat(file.Get(), &status) != 0)
        return {.state = State::Unreadable, .reason = SystemErrorText(errno)};
    if (status.st_size > kLargestFile) return {.state = State::Unreadable, .reason = SystemErrorText(EFBIG)};
    std::optional<Text> bytes = ReadAll(file.Get(), static_cast<std::size_t>(status.st_size));
    if (!bytes) return {.state = State::Unreadable, .reason = SystemErrorText(errno)};
    return {.state = State::Read, .bytes = std::move(*bytes)};
}

std::optional<Text> ReadFileUnlinked(const NativePath& path, std::size_t most) {
    const Descriptor file = OpenRegular(path.c_str(), O_RDONLY | O_NOFOLLOW);
    struct stat status {};
    if (!file || ::fstat(file.Get(), &status) != 0) return std::nullopt;
    if (static_cast<std::size_t>(status.st_size) > most) return std::nullopt;
    return ReadAll(file.Get(), static_cast<std::size_t>(status.st_size));
}

OleDate FileTimeUnlinked(const NativePath& path) {
    struct stat status {};
    if (::lstat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) return {};
    return LocalTime(status.st_mtim);
}

bool WriteFile(const NativePath& path, TextView bytes) {
    Descriptor file = OpenRegular(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC);
    return file && WriteAll(file.Get(), bytes) && file.Close();
}

bool ReplaceFile(const NativePath& path, TextView bytes) {
    const NativePath target = BehindLinks(path);
    struct stat status {};
    const bool exists = ::stat(target.c_str(), &status) == 0;
    return ReplaceAt(target, bytes, exists ? &status : nullptr);
}

bool ReplacePrivateFile(const NativePath& path, TextView bytes) {
    constexpr mode_t kOwnersOnly = S_IRUSR | S_IWUSR;
    const NativePath target = BehindLinks(path);
    struct stat status {};
    const bool exists = ::stat(target.c_str(), &status) == 0;
    return ReplaceAt(target, bytes, exists ? &status : nullptr, &kOwnersOnly);
}

bool ReplaceFileUnlinked(const NativePath& path, TextView bytes) {
    struct stat status {};
    const bool exists = ::lstat(path.c_str(), &status) == 0;
    return ReplaceAt(path, bytes, exists ? &status : nullptr);
}

bool AppendToFile(const NativePath& path, TextView bytes) {
    const Descriptor file = OpenForAppending(path);
    if (file) return AppendOnce(file.Get(), bytes);
    return errno == EACCES && AppendToReadOnly(path, bytes);
}

bool RemoveFile(const NativePath& path) {
    return ::unlink(path.c_str()) == 0;
}

std::optional<bool> IsOpenForWriting(const NativePath& path) {
    const Descriptor file = OpenRegular(path.c_str(), O_RDONLY);
    if (!file || IsOnAnotherMachine(file.Get())) return {};
    // Whoever opens the file during the lease breaks it, which is told by a signal; this one is ignored.
    ::fcntl(file.Get(), F_SETSIG, SIGURG);
    if (::fcntl(file.Get(), F_SETLEASE, F_RDLCK) != 0) {
        return errno == EAGAIN ? std::optional(true) : std::nullopt;
    }
    ::fcntl(file.Get(), F_SETLEASE, F_UNLCK);
    return false;
}

bool RenameFile(const NativePath& from, const NativePath& to) {
    if (::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) return true;
    if (errno != EINVAL && errno != ENOSYS) return false;
    // A file system without the flag: look first. Nobody else makes files under the names used here.
    struct stat status {};
    if (::lstat(to.c_str(), &status) == 0) return false;
    return ::rename(from.c_str(), to.c_str()) == 0;
}

// By way of a temporary name, since a half copied template would never be copied again.
bool CopyFile(const NativePath& from, const NativePath& to) {
    const std::optional<Text> bytes = ReadFile(from);
    return bytes && ReplaceFile(to, *bytes);
}

bool CopyFileWithRights(const NativePath& from, const NativePath& to) {
    struct stat status {};
    const std::optional<Text> bytes = ReadFile(from);
    if (!bytes || ::stat(from.c_str(), &status) != 0) return false;
    const mode_t mode = status.st_mode & 07777;
    return PutAt(to, *bytes, &mode);
}

std::optional<NativePath> CanonicalPath(const NativePath& path) {
    char* real = ::realpath(path.c_str(), nullptr);
    if (real == nullptr) return std::nullopt;
    NativePath result(real);
    ::free(real);
    return result;
}

}  // namespace nordkeep
