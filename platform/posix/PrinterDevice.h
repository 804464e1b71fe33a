#pragma once

#include "platform/PrinterPort.h"
#include "platform/posix/Descriptor.h"

namespace nordkeep {

/// A printer's device file, or any other file that stands for one.
class PrinterDevice final : public PrinterPort {
 public:
    PrinterDevice() = default;
    ~PrinterDevice() override { Close(); }
    PrinterDevice(const PrinterDevice&) = delete;
    PrinterDevice& operator=(const PrinterDevice&) = delete;

    std::optional<std::size_t> Write(const NativePath& device, TextView bytes) override;
    PrinterTrouble Trouble() override;
    void Release() override;
    /// What the status lines of a parallel printer say, as the system's driver gives them.
    static PrinterTrouble TroubleOf(int status);

 private:
    bool Open(const NativePath& device);
    void Close();

    NativePath path_{};
    Descriptor device_{};
    bool isTerminal_ = false;
};

}  // namespace nordkeep
