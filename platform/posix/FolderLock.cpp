#include "platform/FolderLock.h"

#include "platform/posix/Descriptor.h"

#include <fcntl.h>
#include <sys/file.h>

#include <cerrno>

namespace nordkeep {

FolderLock::FolderLock(const NativePath& folder) {
    const NativePath path = folder + "/Nordkeep.lock";
    Descriptor file = OpenRegular(path.c_str(), O_RDWR | O_CREAT);
    if (!file) return;
    if (::flock(file.Get(), LOCK_EX | LOCK_NB) == 0) {
        outcome_ = Outcome::Held;
        descriptor_ = file.Release();
    } else if (errno == EWOULDBLOCK) {
        outcome_ = Outcome::HeldByAnother;
    }
}

// The file itself stays: removing it would let a third process lock a new one while a second waits on the
// old.
FolderLock::~FolderLock() {
    Descriptor(descriptor_).Close();
}

}  // namespace nordkeep
