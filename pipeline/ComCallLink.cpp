#include "pipeline/ComCallLink.h"

#include "runtime/Fields.h"

namespace nordkeep {
namespace {

// A slow peer needs this long to answer; an attempt is not given up before, however short the interval.
constexpr int kShortestAttemptMs = 10'000;

}  // namespace

ComCallLink::ComCallLink(const ComCallSettings& settings, SocketFactory& sockets)
    : settings_(settings), socket_(sockets.NewSocket(SocketKind::Tcp)) {
    socket_->SetEvents({.dataArrival = [this] { socket_->GetData(); },
                        .closed = [this] { socket_->Close(); },
                        .error = [this](const Text&) { socket_->Close(); }});
}

bool ComCallLink::Send(TextView line) {
    return IsConnected() && socket_->SendData(line);
}

void ComCallLink::Tick(int intervalMs) {
    if (!IsConfigured() || settings_.ReconnectInterval < 1) return;
    FeedLine(intervalMs);
    attemptAgeMs_ = std::min(attemptAgeMs_ + intervalMs, kShortestAttemptMs);
    // Stays at 0 while the line stands, so that a broken one is made anew at once.
    reconnectCountdownMs_ = std::max(reconnectCountdownMs_ - intervalMs, 0);
    if (reconnectCountdownMs_ >= 1 || IsConnected() || IsStillTrying()) return;
    Connect();
    reconnectCountdownMs_ = settings_.ReconnectInterval;
}

void ComCallLink::FeedLine(int intervalMs) {
    if (settings_.LineFeedPeriod < 1) return;
    lineFeedCounterMs_ += intervalMs;
    if (lineFeedCounterMs_ < settings_.LineFeedPeriod) return;
    lineFeedCounterMs_ = 0;
    Send("\n");
}

bool ComCallLink::IsStillTrying() const {
    const SocketState state = socket_->State();
    const bool isTrying = state == SocketState::Connecting || state == SocketState::Resolving;
    return isTrying && attemptAgeMs_ < kShortestAttemptMs;
}

void ComCallLink::Connect() {
    attemptAgeMs_ = 0;
    socket_->Close();
    socket_->SetRemoteHost(Text(TrimBlanks(GetField(settings_.Address, 0, ":"))));
    socket_->SetRemotePort(LeadingInt32(GetField(settings_.Address, 1, ":")));
    socket_->Connect();
}

}  // namespace nordkeep
