#pragma once

#include "platform/Files.h"

#include <optional>

namespace nordkeep {

/// What keeps a printer from printing, as far as it tells.
enum class PrinterTrouble { None, NoPaper, OffLine, Fault };

/// A device that prints the bytes written to it, and is never waited for.
class PrinterPort {
 public:
    virtual ~PrinterPort() = default;
    /// Writes what the device takes at this moment: the number of bytes, 0 while it is busy, none on a
    /// failure. The device must exist.
    virtual std::optional<std::size_t> Write(const NativePath& device, TextView bytes) = 0;
    /// Of the device that was written to last; None for one that cannot tell.
    virtual PrinterTrouble Trouble() = 0;
    /// Nothing more is to be printed for now: other programs may have the device.
    virtual void Release() = 0;
};

}  // namespace nordkeep
