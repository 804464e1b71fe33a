#include "network/PeerLog.h"

#include <algorithm>
#include <utility>

namespace nordkeep {
namespace {

constexpr std::int64_t kMinuteMs = 60'000;
/// A flood from ever new addresses must not fill the memory; all beyond share one allowance.
constexpr std::size_t kMostPeers = 256;
constexpr const char* kAllOthers = "";

}  // namespace

PeerLog::Peer& PeerLog::PeerOf(const Text& address) {
    const std::int64_t now = clock_.MonotonicMs();
    if (peers_.size() >= kMostPeers && !peers_.contains(address)) {
        std::erase_if(peers_, [now](const auto& peer) {
            return peer.second.left == 0 && now - peer.second.minuteStartMs >= kMinuteMs;
        });
    }
    const bool isFull = peers_.size() >= kMostPeers && !peers_.contains(address);
    Peer& peer = peers_.try_emplace(isFull ? kAllOthers : address, Peer{.minuteStartMs = now}).first->second;
    if (now - peer.minuteStartMs >= kMinuteMs) {
        peer.minuteStartMs = now;
        peer.lines = 0;
    }
    return peer;
}

void PeerLog::Write(const Text& address, TextView text, LogKind kind) {
    Peer& peer = PeerOf(address);
    if (peer.lines >= kMostLines) {
        ++peer.left;
        return;
    }
    ++peer.lines;
    Text line(text);
    std::ranges::replace_if(
        line, [](char c) { return static_cast<unsigned char>(c) < 32; }, '?');
    if (const int left = std::exchange(peer.left, 0)) line += " (+" + std::to_string(left) + ")";
    log_.WriteSysLog(line, kind);
}

}  // namespace nordkeep
