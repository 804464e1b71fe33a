#include "runtime/Fields.h"
#include "runtime/TrafficLog.h"
#include "tools/Line.h"
#include "tools/Peers.h"

#include <poll.h>

#include <chrono>
#include <cstdio>
#include <fstream>
#include <optional>
#include <set>
#include <vector>

namespace nordkeep::tools {
namespace {

using Steady = std::chrono::steady_clock;

constexpr int kDay = 86400;
constexpr int kLookMs = 20;

/// What a port had received at one time.
struct Chunk {
    int second = 0;  // of the day
    std::string bytes{};
    bool wasAnswered = false;
};

/// One line of a traffic file: "HH:MM:SS PORT <- bytes".
struct TrafficLine {
    int second = 0;
    std::string port{};
    bool isReceived = false;
    std::string bytes{};
};

bool IsHexForm(TextView text) {
    if (text.empty() || text.size() % 3 != 0) return false;
    for (std::size_t at = 0; at < text.size(); at += 3) {
        if (HexDigit(text[at]) < 0 || HexDigit(text[at + 1]) < 0 || text[at + 2] != ' ') return false;
    }
    return true;
}

std::optional<TrafficLine> ReadLine(TextView line) {
    constexpr std::size_t kTime = 8;
    constexpr std::size_t kArrow = 4;
    if (line.ends_with('\r')) line.remove_suffix(1);
    const std::size_t arrow = std::min(line.find(" <- "), line.find(" -> "));
    if (arrow == TextView::npos || arrow <= kTime || line[2] != ':' || line[5] != ':') return std::nullopt;
    const auto number = [&](std::size_t at) { return LeadingInt32(line.substr(at, 2)); };
    const TextView shown = line.substr(arrow + kArrow);
    return TrafficLine{.second = number(0) * 3600 + number(3) * 60 + number(6),
                       .port = std::string(line.substr(kTime + 1, arrow - kTime - 1)),
                       .isReceived = line[arrow + 1] == '<',
                       .bytes = IsHexForm(shown) ? FromHex(std::string(shown)) : BytesOfReadable(shown)};
}

/// What the port of this name received; without a name the only one there is. Complains otherwise.
std::optional<std::vector<Chunk>> ReadTraffic(const std::string& path, const std::string& port) {
    std::ifstream file(path, std::ios::binary);
    if (!file) return Complain(path + " cannot be read", kWrongUse), std::nullopt;
    std::vector<Chunk> chunks;
    std::set<std::string> ports;
    for (std::string text; std::getline(file, text);) {
        const auto line = ReadLine(text);
        if (!line || (!port.empty() && !EqualsNoCase(line->port, FromUtf8(port)))) continue;
        ports.insert(line->port);
        if (line->isReceived) {
            chunks.push_back({line->second, line->bytes});
        } else if (!chunks.empty()) {
            chunks.back().wasAnswered = true;
        }
    }
    if (chunks.empty()) return Complain(path + " has nothing that was received there"), std::nullopt;
    if (ports.size() == 1) return chunks;
    std::string names;
    for (const std::string& name : ports) names += "\n  " + ToUtf8(name);
    return Complain("name one port with --port:" + names), std::nullopt;
}

class Player {
 public:
    explicit Player(const SendOptions& options) : options_(options) {}

    int Play(const std::vector<Chunk>& chunks) {
        if (!line_.Open(options_.targets.front())) return Complain(line_.Error(), OpeningStatus(line_));
        long answered = 0;
        long expected = 0;
        for (std::size_t i = 0; i < chunks.size(); ++i) {
            if (i > 0 && !options_.isFast) Pause(chunks[i].second - chunks[i - 1].second);
            if (!SendChunk(chunks[i].bytes)) return Complain(line_.Error());
            if (!chunks[i].wasAnswered) continue;
            ++expected;
            answered += Await();
        }
        std::printf("sent %zu, answered %ld of %ld\n", chunks.size(), answered, expected);
        return answered == expected ? kDone : kNoAnswer;
    }

 private:
    bool SendChunk(const std::string& bytes) {
        Listen();
        // Some ports hang up behind their answer.
        if (line_.IsLost() && !line_.Reopen()) return false;
        if (!options_.isQuiet) std::printf("-> %s\n", Readable(bytes).c_str());
        return line_.Send(bytes);
    }

    /// True when something came.
    bool Listen() {
        const std::string reply = line_.IsLost() ? std::string() : line_.Receive();
        if (!reply.empty() && !options_.isQuiet) std::printf("<- %s\n", Readable(reply).c_str());
        return !reply.empty();
    }

    bool Await() {
        const auto end = Steady::now() + std::chrono::milliseconds(options_.timeoutMs);
        while (!Listen()) {
            if (line_.IsLost() || Steady::now() > end) return false;
            ::poll(nullptr, 0, 1);
        }
        return true;
    }

    /// The file of a day ends at midnight, and one that was put together may go on behind it.
    void Pause(int seconds) {
        const int wait = seconds < 0 ? seconds + kDay : seconds;
        const auto end = Steady::now() + std::chrono::seconds(wait);
        while (Steady::now() < end) {
            Listen();
            ::poll(nullptr, 0, kLookMs);
        }
    }

    const SendOptions& options_;
    Line line_{};
};

}  // namespace

int Replay(const SendOptions& options) {
    const auto chunks = ReadTraffic(options.replay, options.port);
    return chunks ? Player(options).Play(*chunks) : kWrongUse;
}

}  // namespace nordkeep::tools
