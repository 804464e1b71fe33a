#include "platform/FileOwner.h"

#include <grp.h>
#include <pwd.h>
#include <sys/stat.h>

namespace nordkeep {

FileOwner OwnerOf(const NativePath& path) {
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0 || status.st_uid == 0) return {};
    const passwd* user = ::getpwuid(status.st_uid);
    const group* of = ::getgrgid(status.st_gid);
    return {.user = user == nullptr ? std::to_string(status.st_uid) : user->pw_name,
            .group = of == nullptr ? std::to_string(status.st_gid) : of->gr_name,
            .isRoot = false};
}

}  // namespace nordkeep
