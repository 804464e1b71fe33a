#include "ports/lines/Line.h"
#include "ports/lines/Listening.h"

#include <algorithm>
#include <utility>

namespace nordkeep {
namespace {

constexpr int kTextAt = 1025;
constexpr int kTextConnectionOfPort = 1026;
constexpr int kTextConnected = 1029;

// A slow peer needs this long to answer; an attempt is not given up before.
constexpr std::int64_t kShortestAttemptMs = 10'000;

// What a peer may leave unread of our replies before it counts as gone.
constexpr std::size_t kMostUnsent = 1 << 20;
constexpr int kTextRepliesUnread = 3611;

/// False, with the connection closed, when the peer does not read what it is sent.
bool SendOn(Winsock& socket, TextView bytes, PortLog& log) {
    if (bytes.empty() || socket.State() != SocketState::Connected) return false;
    if (socket.UnsentBytes() > kMostUnsent) {
        log.Failure(kTextRepliesUnread, log.NameAndDescription());
        socket.Close();
        return false;
    }
    return socket.SendData(bytes);
}

class TcpClientLine final : public Line {
 public:
    TcpClientLine(const LineParts& parts, LineListener& listener)
        : clock_(parts.clock),
          log_(parts.log),
          listener_(listener),
          socket_(parts.sockets.NewSocket(SocketKind::Tcp)) {
        socket_->SetEvents({.dataArrival = [this] { listener_.OnDataWaiting(); },
                            .connected = [this] { OnConnected(); },
                            .closed = [this] { OnClosed(); },
                            .error = [this](const Text& error) { OnError(error); }});
    }

    bool IsOpen() const override { return socket_->State() == SocketState::Connected; }

    void Open() override {
        if (isHeld_ || IsStillTrying()) return;
        listener_.OnNewStream({});
        socket_->Close();
        socket_->SetRemotePort(log_.Line().PortNumber);
        socket_->SetRemoteHost(log_.Line().PortSetting);
        attemptAtMs_ = clock_.MonotonicMs();
        if (!socket_->Connect()) return log_.OpenFailed(log_.Line().PortSetting, socket_->LastError());
        if (!isAttemptLogged_) log_.Opened(Peer());
        isAttemptLogged_ = true;
    }

    void Close(bool isShuttingDown) override {
        if (socket_->State() == SocketState::Closed) return;
        log_.Closed(isShuttingDown, Peer(), {.at = kTextAt, .subject = kTextConnectionOfPort});
        isAttemptLogged_ = false;
        socket_->Close();
    }

    Text Take() override { return socket_->GetData(); }

    void HoldCallers(bool isHeld) override { isHeld_ = isHeld; }

    bool CanSend() const override { return IsOpen(); }

    FarEnd End() const override {
        FarEnd end;
        end.isConnected = IsOpen();
        end.who = Peer();
        return end;
    }

    bool Send(TextView bytes, Behind) override { return SendOn(*socket_, bytes, log_); }

 private:
    Text Peer() const { return log_.Line().PortSetting + ":" + std::to_string(log_.Line().PortNumber); }

    bool IsStillTrying() const {
        const SocketState state = socket_->State();
        if (state != SocketState::Connecting && state != SocketState::Resolving) return false;
        const std::int64_t limit =
            std::max<std::int64_t>(log_.Line().ReopenInterval * 1000LL, kShortestAttemptMs);
        return clock_.MonotonicMs() - attemptAtMs_ < limit;
    }

    void OnConnected() {
        log_.EndFailures();
        log_.Information(kTextConnected, log_.NameAndDescription() + log_.GetLanguageText(kTextAt) + Peer() +
                                             " (MessageFormat = " + log_.FormatName() + ")");
    }

    void OnClosed() {
        Text rest = socket_->GetRest();
        Close(false);
        listener_.OnNewStream(std::move(rest));
    }

    void OnError(const Text& error) {
        log_.ConnectionFailed(Peer(), error);
        Text rest = socket_->GetRest();
        socket_->Close();
        listener_.OnNewStream(std::move(rest));
    }

    const Clock& clock_;
    PortLog& log_;
    LineListener& listener_;
    std::unique_ptr<Winsock> socket_;
    std::int64_t attemptAtMs_ = 0;
    bool isAttemptLogged_ = false;
    bool isHeld_ = false;
};

/// A listener and one caller: who calls last is served, and pushes the one before off. What had arrived of
/// him still counts.
class TcpServerLine final : public Line {
 public:
    TcpServerLine(const LineParts& parts, LineListener& listener)
        : log_(parts.log),
          listener_(listener),
          server_(parts.sockets.NewSocket(SocketKind::Tcp)),
          caller_(parts.sockets.NewSocket(SocketKind::Tcp)) {
        server_->SetEvents({.connectionRequest = [this](SocketRequest request) { OnRequest(request); }});
        caller_->SetEvents({.dataArrival = [this] { listener_.OnDataWaiting(); },
                            .closed = [this] { LetGo(); },
                            .error = [this](const Text&) { LetGo(); }});
    }

    bool IsOpen() const override { return server_->State() == SocketState::Listening; }

    void Open() override {
        listener_.OnNewStream({});
        const LineSettings& line = log_.Line();
        ListenAsSet(*server_, log_, line.PortSetting + ":" + std::to_string(line.PortNumber), "PortSettings");
    }

    void Close(bool) override {
        caller_->Close();
        server_->Close();
    }

    Text Take() override { return caller_->GetData(); }

    void HoldCallers(bool isHeld) override { server_->HoldCallers(isHeld); }

    bool CanSend() const override { return caller_->State() == SocketState::Connected; }

    FarEnd End() const override {
        FarEnd end;
        end.isConnected = CanSend();
        end.isAwaited = !end.isConnected;
        end.who = lastCaller_;
        return end;
    }

    bool Send(TextView bytes, Behind behind) override {
        const bool isSent = SendOn(*caller_, bytes, log_);
        // Closing hands over what is still unsent first.
        if (behind == Behind::HangUp) caller_->Close();
        return isSent;
    }

 private:
    void LetGo() {
        Text rest = caller_->GetRest();
        caller_->Close();
        listener_.OnNewStream(std::move(rest));
    }

    // The newcomer is let in first: what the one before has left may take its time, and a third may call.
    void OnRequest(SocketRequest request) {
        Text rest = caller_->GetRest();
        caller_->Close();
        caller_->Accept(request);
        lastCaller_ = caller_->RemoteHostIP();
        listener_.OnNewStream(std::move(rest));
    }

    PortLog& log_;
    LineListener& listener_;
    std::unique_ptr<Winsock> server_;
    std::unique_ptr<Winsock> caller_;
    Text lastCaller_{};
};

}  // namespace

std::unique_ptr<Line> MakeTcpClientLine(const LineParts& parts, LineListener& listener) {
    return std::make_unique<TcpClientLine>(parts, listener);
}

std::unique_ptr<Line> MakeTcpServerLine(const LineParts& parts, LineListener& listener) {
    return std::make_unique<TcpServerLine>(parts, listener);
}

}  // namespace nordkeep
