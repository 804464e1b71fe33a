#include "network/ServerLink.h"

#include "runtime/Fields.h"

namespace nordkeep {
namespace {

constexpr int kTextLost = 1062;
constexpr int kTextConnected = 1076;
constexpr std::int64_t kConnectMs = 30'000;
constexpr int kStepMs = 10;
/// A wait lasts the time-out and one tick of the display's timer more.
constexpr int kTickMs = 100;

/// Never none.
std::vector<Text> AddressesOf(const Text& list) {
    std::vector<Text> addresses;
    for (const Text& piece : Split(list, ',')) {
        const TextView address = TrimBlanks(piece);
        if (!address.empty()) addresses.emplace_back(address);
    }
    if (addresses.empty()) addresses.emplace_back();
    return addresses;
}

}  // namespace

ServerLink::ServerLink(const NetworkParts& needs)
    : needs_(needs),
      socket_(needs.sockets.NewSocket(SocketKind::Tcp)),
      addresses_(AddressesOf(needs.settings.ServerAddress)) {
    socket_->SetTls(needs.tls);
    socket_->SetEvents({.dataArrival = [this] { OnData(); },
                        .closed = [this] { OnClosed(); },
                        .error = [this](const Text& description) { OnError(description); }});
}

// Half a frame or a request of the old connection would spoil the new one.
bool ServerLink::ConnectToServer() {
    if (pushes_ != nullptr) pushes_->ConnectionStarts();
    Close();
    addresses_ = AddressesOf(needs_.settings.ServerAddress);
    current_ %= addresses_.size();
    // One that took the connection and then said nothing must not hold its clients off the other.
    if (!hasAnswered_) current_ = (current_ + 1) % addresses_.size();
    const auto count = static_cast<std::int64_t>(addresses_.size());
    for (std::int64_t i = 0; i < count; ++i) {
        if (ConnectTo(addresses_[current_], kConnectMs / count)) return true;
        current_ = (current_ + 1) % addresses_.size();
    }
    return false;
}

bool ServerLink::ConnectTo(const Text& address, std::int64_t mostMs) {
    hasAnswered_ = false;
    socket_->SetRemoteHost(address);
    socket_->SetRemotePort(needs_.settings.NetworkPort);
    const std::int64_t end = needs_.clock.MonotonicMs() + mostMs;
    const auto isUnderWay = [this] {
        return socket_->State() == SocketState::Resolving || socket_->State() == SocketState::Connecting;
    };
    if (!socket_->Connect()) {
        Lose(socket_->LastError());
        return false;
    }
    while (isUnderWay() && needs_.clock.MonotonicMs() < end) needs_.loop.SleepAndPump(kStepMs);
    isLost_ = socket_->State() != SocketState::Connected;
    if (isLost_) socket_->Close();
    return !isLost_;
}

void ServerLink::Close() {
    socket_->Close();
    buffer_.Clear();
    isPending_ = false;
    isLost_ = true;
}

Text ServerLink::ConnectionText() const {
    return socket_->RemoteHostIP() + needs_.language.GetLanguageText(kTextConnected) + ServerAddress() + ":" +
           std::to_string(needs_.settings.NetworkPort);
}

void ServerLink::Lose(const Text& reason) {
    const bool isNew = !isLost_;
    isLost_ = true;
    socket_->Close();
    buffer_.Clear();
    if (!isNew && reason.empty()) return;
    const Text behind = reason.empty() ? Text() : " (" + reason + ")";
    needs_.log.WriteSysLog(needs_.language.GetLanguageText(kTextLost) + behind, LogKind::Failure);
}

bool ServerLink::SendToServer(Message message, TextView payload) {
    if (isLost_) return false;
    if (socket_->State() == SocketState::Connected && socket_->SendData(FrameOf(message, payload))) {
        needs_.traffic.WriteTrafficLine(static_cast<std::uint8_t>(message), payload.size(),
                                        TrafficDirection::Sent);
        return true;
    }
    Lose();
    return false;
}

bool ServerLink::SendToServerAndWait(Message message, TextView payload) {
    if (isPending_ || isLost_) return false;
    isPending_ = true;
    text_.clear();
    number_ = 0;
    const bool isAnswered = SendToServer(message, payload) && AwaitAnswer();
    isPending_ = false;
    if (pushes_ != nullptr) pushes_->RequestEnded();
    return isAnswered;
}

bool ServerLink::AwaitAnswer() {
    for (int left = needs_.settings.NetworkTimeout + kTickMs; left > 0 && isPending_ && !isLost_;
         left -= kStepMs) {
        needs_.loop.SleepAndPump(kStepMs);
    }
    if (!isPending_) return true;
    Lose();
    return false;
}

std::optional<std::int32_t> ServerLink::RequestVersion() {
    if (!SendToServerAndWait(Message::ProtocolVersion, {})) return std::nullopt;
    return number_;
}

std::optional<Text> ServerLink::RequestFile(Message message, TextView path) {
    if (!SendToServerAndWait(message, PayloadOf(ShortText{Text(path)}))) return std::nullopt;
    return std::move(text_);
}

std::optional<Text> ServerLink::RequestTextFile(TextView path) {
    return RequestFile(Message::ReadTextFile, path);
}

std::optional<Text> ServerLink::RequestBinaryFile(TextView path) {
    return RequestFile(Message::ReadBinaryFile, path);
}

std::optional<Text> ServerLink::RequestScan(TextView pattern) {
    return RequestFile(Message::ScanForFiles, pattern);
}

std::optional<std::int32_t> ServerLink::RequestFileTime(TextView path) {
    if (!SendToServerAndWait(Message::FileDateTimeStamp, PayloadOf(ShortText{Text(path)})))
        return std::nullopt;
    return number_;
}

bool ServerLink::RequestMakeDir(TextView path) {
    return SendToServerAndWait(Message::MakeDir, PayloadOf(ShortText{Text(path)}));
}

void ServerLink::OnData() {
    buffer_.Append(socket_->GetData());
    HandleFrames();
}

void ServerLink::OnClosed() {
    OnData();  // what came together with the close
    if (socket_->State() != SocketState::Closed) Lose();
}

void ServerLink::OnError(const Text& description) {
    Lose(description);
}

void ServerLink::HandleFrames() {
    while (const std::optional<Frame> frame = buffer_.Next()) HandleFrame(*frame);
    if (buffer_.IsTooLong()) OnError("frame too long");
}

void ServerLink::HandleFrame(const Frame& frame) {
    hasAnswered_ = true;
    needs_.traffic.WriteTrafficLine(frame.number, frame.payload.size(), TrafficDirection::Received);
    if (TakeAnswer(static_cast<Message>(frame.number), frame.payload)) {
        isPending_ = false;
    } else if (pushes_ != nullptr) {
        pushes_->HandleMessage(frame.number, frame.payload);
    }
}

bool ServerLink::TakeAnswer(Message message, TextView payload) {
    switch (message) {
        case Message::ReadTextFile:
        case Message::ReadBinaryFile:
            text_ = ReadPayload<LongText>(payload).text;
            return true;
        case Message::ScanForFiles:
            text_ = ReadPayload<ShortText>(payload).text;
            return true;
        case Message::FileDateTimeStamp:
        case Message::ProtocolVersion:
            number_ = ReadPayload<LongNumber>(payload).value;
            return true;
        case Message::ClosePending:
        case Message::MakeDir:
            return true;
        default:
            return false;
    }
}

}  // namespace nordkeep
