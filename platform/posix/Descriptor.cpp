#include "platform/posix/Descriptor.h"

#include <fcntl.h>
#include <string.h>
#include <sys/stat.h>

#include <cerrno>

namespace nordkeep {

Descriptor OpenRegular(const char* path, int flags, unsigned mode) {
    Descriptor file(::open(path, flags | O_CLOEXEC | O_NONBLOCK | O_NOCTTY, mode));
    if (!file) return file;
    struct stat status {};
    if (::fstat(file.Get(), &status) == 0 && S_ISREG(status.st_mode)) return file;
    file.Close();
    errno = S_ISDIR(status.st_mode) ? EISDIR : EINVAL;
    return file;
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
