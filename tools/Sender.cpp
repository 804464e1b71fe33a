#include "tools/Sender.h"

#include "tools/Line.h"
#include "tools/cli/Terminal.h"

#include <poll.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <memory>
#include <utility>
#include <vector>

namespace nordkeep::tools {
namespace {

using Steady = std::chrono::steady_clock;
using Ms = std::chrono::duration<double, std::milli>;

constexpr char kAck = 6;

/// One connection with at most one telegram under way.
struct Lane {
    Line line{};
    bool isWaiting = false;
    bool isSpent = false;  // the port hangs up behind its answer
    Steady::time_point sentAt{};
};

class Run {
 public:
    explicit Run(const SendOptions& options) : options_(options) {}

    int Go() {
        for (std::size_t i = 0; i < static_cast<std::size_t>(options_.connections); ++i) {
            lanes_.push_back(std::make_unique<Lane>());
            if (lanes_.back()->line.Open(options_.targets[i % options_.targets.size()])) continue;
            std::fprintf(stderr, "nordkeep-send: %s\n", lanes_.back()->line.Error().c_str());
            return OpeningStatus(lanes_.back()->line);
        }
        start_ = Steady::now();
        while (!isBroken_ && (sent_ < options_.count || IsAnyWaiting())) Turn();
        Summarise();
        if (isBroken_) return kFailed;
        if (acknowledged_ == expected_) return kDone;
        return isUnanswered_ ? kNoAnswer : kFailed;
    }

 private:
    bool IsAnyWaiting() const {
        return std::ranges::any_of(lanes_, [](const auto& lane) { return lane->isWaiting; });
    }

    void Turn() {
        for (const auto& lane : lanes_) {
            if (!lane->isWaiting && sent_ < options_.count && IsDue()) SendOn(*lane);
        }
        WaitForInput();
        for (const auto& lane : lanes_) Listen(*lane);
    }

    bool IsDue() const {
        if (options_.rate <= 0) return true;
        const double elapsed = std::chrono::duration<double>(Steady::now() - start_).count();
        return static_cast<double>(sent_) <= elapsed * options_.rate;
    }

    std::string NextTelegram() const {
        if (!options_.play.empty())
            return options_.play[static_cast<std::size_t>(sent_) % options_.play.size()];
        if (!options_.raw.empty()) return options_.raw;
        TelegramOptions telegram = options_.telegram;
        telegram.number = static_cast<int>(sent_);
        return MakeTelegram(telegram, NumberedCode(options_, sent_));
    }

    void SendOn(Lane& lane) {
        if (std::exchange(lane.isSpent, false) && !lane.line.Reopen()) return Break(lane.line.Error());
        std::string telegram;
        for (int i = 0; i < options_.glue; ++i) telegram += NextTelegram();
        if (options_.isCut) telegram.resize(telegram.size() / 2);
        if (!options_.isQuiet) std::printf("-> %s\n", Readable(telegram).c_str());
        lane.sentAt = Steady::now();
        if (!SendBytes(lane.line, telegram)) return Break(lane.line.Error());
        ++sent_;
        const bool isOwn = options_.raw.empty() && options_.play.empty();
        lane.isWaiting = !isOwn || HasReply(options_.telegram.format);
        if (lane.isWaiting) ++expected_;
    }

    bool SendBytes(Line& line, const std::string& bytes) const {
        if (options_.slowMs <= 0) return line.Send(bytes);
        for (const char c : bytes) {
            if (!line.Send(std::string(1, c))) return false;
            poll(nullptr, 0, options_.slowMs);
        }
        return true;
    }

    void WaitForInput() const {
        std::vector<pollfd> inputs;
        for (const auto& lane : lanes_) {
            if (!lane->line.IsLost()) inputs.push_back({lane->line.Descriptor(), POLLIN, 0});
        }
        const bool isIdle = !IsAnyWaiting();
        poll(inputs.data(), inputs.size(), isIdle && options_.rate <= 0 ? 0 : 1);
    }

    void Listen(Lane& lane) {
        const std::string reply = lane.line.Receive();
        if (lane.line.IsLost() && !lane.isSpent) {
            return Break("the connection was closed");
        }
        if (!reply.empty() && !options_.isQuiet) std::printf("<- %s\n", Readable(reply).c_str());
        if (!lane.isWaiting) return;
        const Ms elapsed = Steady::now() - lane.sentAt;
        if (!reply.empty()) {
            lane.isWaiting = false;
            lane.isSpent = ClosesBehindReply(options_.telegram.format);
            times_.push_back(elapsed.count());
            const bool isOwn = options_.raw.empty() && options_.play.empty();
            acknowledged_ += isOwn ? IsAcknowledged(options_.telegram.format, reply)
                                   : reply.find(kAck) != std::string::npos;
        } else if (elapsed.count() > options_.timeoutMs) {
            lane.isWaiting = false;
            isUnanswered_ = true;
            std::printf("no reply within %d ms\n", options_.timeoutMs);
        }
    }

    void Break(const std::string& why) {
        std::fprintf(stderr, "nordkeep-send: %s\n", why.c_str());
        isBroken_ = true;
    }

    double Percentile(double part) const {
        const auto place = static_cast<std::size_t>(part * static_cast<double>(times_.size() - 1) + 0.5);
        return times_[place];
    }

    void Summarise() {
        if (options_.count <= 1) return;
        const double seconds = std::chrono::duration<double>(Steady::now() - start_).count();
        std::ranges::sort(times_);
        std::printf("sent %ld, acknowledged %ld, %.1f messages/s\n", sent_, acknowledged_,
                    static_cast<double>(sent_) / seconds);
        if (times_.empty()) return;
        std::printf("time to ACK: 50th percentile %.3f ms, 99th percentile %.3f ms\n", Percentile(0.5),
                    Percentile(0.99));
    }

    const SendOptions& options_;
    std::vector<std::unique_ptr<Lane>> lanes_{};
    std::vector<double> times_{};
    Steady::time_point start_{};
    long sent_ = 0;
    long expected_ = 0;
    long acknowledged_ = 0;
    bool isBroken_ = false;
    bool isUnanswered_ = false;
};

}  // namespace

std::string NumberedCode(const SendOptions& options, long number) {
    std::string code = options.telegram.code;
    if (!options.numbersCodes) return code;
    const std::string digits = std::to_string(number % 1000000);
    const std::size_t front = code.size() > 2 ? code.size() - 2 : 0;
    const std::size_t width = std::min<std::size_t>(front, 6);
    const std::string tail = std::string(width, '0') + digits;
    code.replace(front - width, width, tail.substr(tail.size() - width));
    return code;
}

int OpeningStatus(const Line& line) {
    return line.IsTargetUnderstood() ? kRefused : kWrongUse;
}

int Send(const SendOptions& options) {
    return Run(options).Go();
}

}  // namespace nordkeep::tools
