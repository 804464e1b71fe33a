#include "platform/posix/PrinterDevice.h"

#include <fcntl.h>
#include <linux/lp.h>
#include <sys/ioctl.h>
#include <termios.h>

#include <cerrno>

namespace nordkeep {

bool PrinterDevice::Open(const NativePath& device) {
    if (device_ && path_ == device) return true;
    Close();
    // Never makes the file: a printer that is not there is a failure, not a growing file.
    device_ = Descriptor(::open(device.c_str(), O_WRONLY | O_APPEND | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    path_ = device;
    isTerminal_ = device_ && ::isatty(device_.Get()) == 1;
    return static_cast<bool>(device_);
}

std::optional<std::size_t> PrinterDevice::Write(const NativePath& device, TextView bytes) {
    if (!Open(device)) return std::nullopt;
    const ssize_t written = ::write(device_.Get(), bytes.data(), bytes.size());
    if (written >= 0) return static_cast<std::size_t>(written);
    if (errno == EAGAIN || errno == EINTR) return 0;
    Close();
    return std::nullopt;
}

PrinterTrouble PrinterDevice::Trouble() {
    int status = 0;
    if (!device_ || isTerminal_ || ::ioctl(device_.Get(), LPGETSTATUS, &status) != 0)
        return PrinterTrouble::None;
    return TroubleOf(status);
}

PrinterTrouble PrinterDevice::TroubleOf(int status) {
    if ((status & LP_POUTPA) != 0) return PrinterTrouble::NoPaper;
    if ((status & LP_PSELECD) == 0) return PrinterTrouble::OffLine;
    // The line is low while there is a fault.
    return (status & LP_PERRORP) == 0 ? PrinterTrouble::Fault : PrinterTrouble::None;
}

// A printer on a serial line stays open: closing it would wait until the last character has left.
void PrinterDevice::Release() {
    if (!isTerminal_) Close();
}

void PrinterDevice::Close() {
    if (isTerminal_) ::tcflush(device_.Get(), TCOFLUSH);
    device_.Close();
    isTerminal_ = false;
}

}  // namespace nordkeep
