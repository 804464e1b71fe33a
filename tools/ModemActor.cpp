#include "tools/Modem.h"
#include "tools/Peers.h"

#include <fcntl.h>
#include <poll.h>
#include <stdlib.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>

namespace nordkeep::tools {
namespace {

constexpr int kLookMs = 20;

/// The near end of a pseudo terminal whose other end is a port's device.
class Terminal {
 public:
    bool Open() {
        master_ = ::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
        if (master_ < 0 || ::grantpt(master_) != 0 || ::unlockpt(master_) != 0) return false;
        device_ = ::ptsname(master_);
        // Held open, so that the line stays up while no port uses it.
        holder_ = ::open(device_.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
        termios mode{};
        if (holder_ < 0 || ::tcgetattr(holder_, &mode) != 0) return false;
        ::cfmakeraw(&mode);
        return ::tcsetattr(holder_, TCSANOW, &mode) == 0;
    }
    ~Terminal() {
        if (!link_.empty()) ::unlink(link_.c_str());
        ::close(holder_);
        ::close(master_);
    }
    const std::string& Device() const { return device_; }
    /// A second name of the device, for as long as this stands; an older link of that name is replaced.
    bool LinkAs(const std::string& path) {
        char old[8];
        if (::readlink(path.c_str(), old, sizeof old) >= 0) ::unlink(path.c_str());
        link_ = path;
        return ::symlink(device_.c_str(), path.c_str()) == 0;
    }

    std::string Receive() const {
        pollfd waiting{master_, POLLIN, 0};
        char buffer[256];
        const ssize_t count = ::poll(&waiting, 1, kLookMs) > 0 ? ::read(master_, buffer, sizeof buffer) : 0;
        return count > 0 ? std::string(buffer, static_cast<std::size_t>(count)) : std::string();
    }

    void Send(const std::string& bytes, int slowMs) const {
        const std::size_t step = slowMs > 0 ? 1 : std::max<std::size_t>(bytes.size(), 1);
        for (std::size_t at = 0; at < bytes.size(); at += step) {
            const std::string piece = bytes.substr(at, step);
            if (::write(master_, piece.data(), piece.size()) < 0) return;
            if (slowMs > 0) ::poll(nullptr, 0, slowMs);
        }
    }

 private:
    int master_ = -1;
    int holder_ = -1;
    std::string device_{};
    std::string link_{};
};

}  // namespace

int ActAsModem(const SendOptions& options) {
    std::string link;
    if (options.targets.front() != "pty" && !TakeTarget(options, "pty", link))
        return Complain("the target is pty or pty:PATH", kWrongUse);
    Terminal terminal;
    if (!terminal.Open()) return Complain("there is no pseudo terminal");
    if (!link.empty() && !terminal.LinkAs(link)) return Complain("no link can be made at " + link);
    std::printf("the modem is %s\n", terminal.Device().c_str());
    std::fflush(stdout);
    Modem modem;
    modem.echoes = !options.hasNoEcho;
    modem.isSilent = options.isSilent;
    std::string toSay = options.caller.empty() ? "" : Modem::Ring(options.caller);
    long delivered = 0;
    while (delivered < options.count || !modem.messages.empty() || !toSay.empty()) {
        const std::string heard = terminal.Receive();
        if (!heard.empty() && !options.isQuiet) std::printf("<- %s\n", Readable(heard).c_str());
        toSay += modem.Take(heard);
        // A modem tells nothing before somebody is there to hear it.
        const bool hasRoom =
            delivered < options.count && modem.messages.size() < 10 && !modem.commands.empty();
        if (hasRoom) {
            const std::string text = NumberedCode(options, delivered++) + " " + options.telegram.text;
            toSay += modem.Deliver({"+46700000000", text});
        }
        if (modem.commands.empty()) continue;
        if (options.isCut) toSay.resize(toSay.size() / 2);
        if (!toSay.empty() && !options.isQuiet) std::printf("-> %s\n", Readable(toSay).c_str());
        terminal.Send(toSay, options.slowMs);
        toSay.clear();
        std::fflush(stdout);
    }
    std::printf("taken %ld\n", delivered);
    return 0;
}

}  // namespace nordkeep::tools
