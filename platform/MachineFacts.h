#pragma once

#include "platform/Files.h"

#include <vector>

namespace nordkeep {

/// The addresses of this machine's network interfaces, "127.0.0.1" and the like.
std::vector<Text> InterfaceAddresses();

/// What this program and others may do with a file or folder; nothing without one.
struct FileRights {
    bool isThere = false;  // of any kind, devices too
    bool isFolder = false;
    bool mayWrite = false;
    bool mayOthersRead = false;  // neither the owner nor of the owner's group
};
FileRights RightsOf(const NativePath& path);

}  // namespace nordkeep
