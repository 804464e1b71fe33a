#pragma once

#include "platform/PrinterPort.h"
#include "platform/posix/Descriptor.h"

namespace nordkeep {

/// A printer's device file, or any other file that stands for one.
class PrinterDevice final : public PrinterPort {
 public:
    std::optional<std::size_t> Write(const NativePath& device, TextView bytes) override;
    void Release() override;

 private:
    bool Open(const NativePath& device);

    NativePath path_{};
    Descriptor device_{};
};

}  // namespace nordkeep
