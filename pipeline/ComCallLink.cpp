#include "pipeline/ComCallLink.h"

#include "runtime/Fields.h"

#include <algorithm>
#include <utility>

namespace nordkeep {
namespace {

// A slow peer needs this long to answer; an attempt is not given up before, however short the interval.
constexpr int kShortestAttemptMs = 10'000;
constexpr int kTextNoAnswer = 5222;
constexpr int kTextClosed = 5224;
constexpr int kTextUnused = 5225;

}  // namespace

ComCallLink::ComCallLink(const Needs& needs)
    : settings_(needs.settings),
      log_(needs.log),
      language_(needs.language),
      outage_(needs.log, needs.language),
      socket_(needs.sockets.NewSocket(SocketKind::Tcp)) {
    socket_->SetEvents({.dataArrival = [this] { socket_->GetData(); },
                        .connected = [this] { outage_.NoteReached(Name()); },
                        .closed =
                            [this] {
                                socket_->Close();
                                NoteFailure(language_.GetLanguageText(kTextClosed));
                            },
                        .error =
                            [this](const Text& why) {
                                socket_->Close();
                                NoteFailure(why);
                            }});
}

bool ComCallLink::Send(TextView line) {
    return IsConnected() && socket_->SendData(line);
}

void ComCallLink::Tick(int intervalMs) {
    if (!IsConfigured()) return;
    if (settings_.ReconnectInterval < 1) return NoteUnused();
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
    // The attempt before had its time.
    if (socket_->State() != SocketState::Closed) NoteFailure(language_.GetLanguageText(kTextNoAnswer));
    socket_->Close();
    socket_->SetRemoteHost(Text(TrimBlanks(GetField(settings_.Address, 0, ":"))));
    socket_->SetRemotePort(LeadingInt32(GetField(settings_.Address, 1, ":")));
    if (!socket_->Connect()) NoteFailure(socket_->LastError());
}

void ComCallLink::NoteUnused() {
    if (std::exchange(isUnusedTold_, true)) return;
    log_.WriteSysLog(language_.GetLanguageText(kTextUnused) + Name(), LogKind::Failure);
}

}  // namespace nordkeep
