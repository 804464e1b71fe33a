#pragma once

#include "tools/Modem.h"

#include <fcntl.h>
#include <poll.h>
#include <stdlib.h>
#include <termios.h>
#include <unistd.h>

#include <atomic>
#include <mutex>
#include <thread>

namespace nordkeep {

/// A modem at the end of a pseudo terminal, on a thread of its own. It may write in small pieces, slowly.
class ModemOnPty {
 public:
    struct Manner {
        std::size_t pieceSize = 4096;
        int pauseMs = 0;  // in front of each piece
    };

    explicit ModemOnPty(Manner manner = {.pieceSize = 4096, .pauseMs = 0}) : manner_(manner) {
        master_ = ::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
        ::grantpt(master_);
        ::unlockpt(master_);
        device_ = ::ptsname(master_);
        // Held open, so that the line stays up while nobody uses it.
        holder_ = ::open(device_.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
        termios mode{};
        ::tcgetattr(holder_, &mode);
        ::cfmakeraw(&mode);
        ::tcsetattr(holder_, TCSANOW, &mode);
        thread_ = std::thread([this] { Run(); });
    }
    ~ModemOnPty() {
        isEnding_ = true;
        thread_.join();
        ::close(holder_);
        ::close(master_);
    }
    ModemOnPty(const ModemOnPty&) = delete;
    ModemOnPty& operator=(const ModemOnPty&) = delete;

    const std::string& Device() const { return device_; }
    void Deliver(const tools::Modem::Message& message) {
        const std::lock_guard lock(mutex_);
        toSay_ += modem_.Deliver(message);
    }
    void Ring(const std::string& number) {
        const std::lock_guard lock(mutex_);
        toSay_ += tools::Modem::Ring(number);
    }
    void SetSilent(bool isSilent) {
        const std::lock_guard lock(mutex_);
        modem_.isSilent = isSilent;
    }
    void SetEcho(bool echoes) {
        const std::lock_guard lock(mutex_);
        modem_.echoes = echoes;
    }
    std::size_t MessageCount() {
        const std::lock_guard lock(mutex_);
        return modem_.messages.size();
    }
    bool HasHeard(const std::string& command) {
        const std::lock_guard lock(mutex_);
        return std::find(modem_.commands.begin(), modem_.commands.end(), command) != modem_.commands.end();
    }

 private:
    void Run() {
        while (!isEnding_) {
            pollfd waiting{master_, POLLIN, 0};
            const bool hasCome = ::poll(&waiting, 1, 5) > 0;
            char buffer[256];
            const ssize_t count = hasCome ? ::read(master_, buffer, sizeof buffer) : 0;
            std::string answer;
            {
                const std::lock_guard lock(mutex_);
                if (count > 0) toSay_ += modem_.Take({buffer, static_cast<std::size_t>(count)});
                answer.swap(toSay_);
            }
            Say(answer);
        }
    }

    void Say(const std::string& text) const {
        for (std::size_t at = 0; at < text.size(); at += manner_.pieceSize) {
            if (manner_.pauseMs > 0) ::poll(nullptr, 0, manner_.pauseMs);
            const std::string piece = text.substr(at, manner_.pieceSize);
            if (::write(master_, piece.data(), piece.size()) < 0) return;
        }
    }

    Manner manner_;
    int master_ = -1;
    int holder_ = -1;
    std::string device_{};
    std::mutex mutex_{};
    tools::Modem modem_{};
    std::string toSay_{};
    std::atomic<bool> isEnding_ = false;
    std::thread thread_{};
};

}  // namespace nordkeep
