#pragma once

#include "platform/Text.h"

#include <unistd.h>

#include <string>
#include <utility>

namespace nordkeep {

/// Owns an open file descriptor; -1 for none.
class Descriptor {
 public:
    explicit Descriptor(int descriptor = -1) : descriptor_(descriptor) {}
    ~Descriptor() { Close(); }
    Descriptor(Descriptor&& other) noexcept : descriptor_(std::exchange(other.descriptor_, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        std::swap(descriptor_, other.descriptor_);
        return *this;
    }

    int Get() const { return descriptor_; }
    explicit operator bool() const { return descriptor_ >= 0; }
    int Release() { return std::exchange(descriptor_, -1); }
    /// False, with errno, when the system reports a failure of what was written before.
    bool Close() { return descriptor_ < 0 || ::close(Release()) == 0; }

 private:
    int descriptor_;
};

/// Opens a regular file and nothing else; it never waits for the other end of a pipe or for a device. The
/// descriptor is not inherited by child processes. Without one errno tells why.
Descriptor OpenRegular(const char* path, int flags, unsigned mode = 0666);

/// Whether a program elsewhere can have the file open or change the folder without being told of here. True
/// also when that is not known.
bool IsOnAnotherMachine(int descriptor);
bool IsOnAnotherMachine(const char* path);

/// Opens or makes a file for lines.
Descriptor OpenForAppending(const std::string& path);
/// Appends in one write, so that lines of two programs never mix.
bool AppendOnce(int descriptor, TextView bytes);

/// Writes all bytes, in as many turns as the system wants. False, with errno, on failure.
bool WriteAll(int descriptor, TextView bytes);

/// Puts the entries of the folder that a path lies in onto the medium. True also on file systems that
/// synchronise no folders; else false, with errno.
bool SynchroniseFolderOf(const std::string& path);

/// The system's description of an errno value, in English whatever the locale.
Text SystemErrorText(int error);

}  // namespace nordkeep
