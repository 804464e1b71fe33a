#include "network/ClientSlots.h"

#include "runtime/Fields.h"

#include <algorithm>
#include <utility>

namespace nordkeep {
namespace {

constexpr int kTextNoSignOfLife = 1064;
constexpr int kTextConnectionError = 1069;
constexpr int kTextDisconnected = 1070;
constexpr int kTextConnected = 1071;
constexpr int kTextNotAllowed = 1074;
constexpr int kTextTooMany = 1075;

/// A client that takes nothing any more must not fill the memory with what it still is to get.
constexpr std::size_t kMostUnsent = 64 << 20;
/// What one client may have of one turn of the loop. It may ask as much as it likes; others are served in
/// between.
constexpr int kMostFramesInOneTurn = 50;
constexpr int kMostMsInOneTurn = 4;
constexpr int kSupervisionMs = 1000;
/// A caller that does not prove itself by a certificate within this time holds no slot.
constexpr int kProofMs = 10'000;
constexpr int kIntervalsOfSilence = 5;
constexpr int kFarewellMs = 2000;
constexpr int kFarewellStepMs = 10;

}  // namespace

bool IsAllowedToCall(TextView clientAddresses, TextView caller) {
    if (clientAddresses == "*") return true;
    for (const Text& address : Split(clientAddresses, ',')) {
        if (address.empty()) return false;
        if (address == caller) return true;
    }
    return false;
}

ClientSlots::ClientSlots(const NetworkParts& needs)
    : needs_(needs), log_(needs.log, needs.clock), listener_(needs.sockets.NewSocket(SocketKind::Tcp)) {
    listener_->SetEvents({.connectionRequest = [this](SocketRequest request) { OnCall(request); }});
    for (int slot = 0; slot < kSlotCount; ++slot) {
        At(slot).socket = needs_.sockets.NewSocket(SocketKind::Tcp);
        At(slot).socket->SetTls(needs_.tls);
        At(slot).socket->SetEvents(EventsOf(slot));
    }
    refusal_ = needs_.sockets.NewSocket(SocketKind::Tcp);
}

SocketEvents ClientSlots::EventsOf(int slot) {
    return {.dataArrival = [this, slot] { OnData(slot); },
            .connected = [this, slot] { Welcome(slot); },
            .closed = [this, slot] { OnClosed(slot); },
            .error = [this, slot](const Text& description) { OnError(slot, description); },
            .sendComplete = [this, slot] { OnSendComplete(slot); }};
}

bool ClientSlots::Listen() {
    listener_->SetLocalPort(needs_.settings.NetworkPort);
    return listener_->Listen();
}

int ClientSlots::ConnectedCount() const {
    int count = 0;
    for (int slot = 0; slot < kSlotCount; ++slot) count += IsConnected(slot) ? 1 : 0;
    return count;
}

bool ClientSlots::IsConnected(int slot) const {
    return At(slot).isWelcome && At(slot).socket->State() == SocketState::Connected;
}

int ClientSlots::FreeSlot() const {
    for (int slot = 0; slot < kSlotCount; ++slot) {
        if (At(slot).socket->State() == SocketState::Closed) return slot;
    }
    return -1;
}

Text ClientSlots::Line(int textNumber, const Text& address) const {
    return needs_.language.GetLanguageText(textNumber) + " " + address;
}

void ClientSlots::Refuse(Winsock& socket, const Text& address, int textNumber) {
    socket.Close();
    log_.Write(address, Line(textNumber, address), LogKind::Failure);
}

// A caller's address is known only once the call has been taken; who may not stay is let go without a byte.
void ClientSlots::OnCall(SocketRequest request) {
    const int free = ConnectedCount() < kSlotCount ? FreeSlot() : -1;
    Winsock& socket = free < 0 ? *refusal_ : *At(free).socket;
    socket.Accept(request);
    const Text address = socket.RemoteHostIP();
    if (free < 0) return Refuse(socket, address, kTextTooMany);
    if (!IsAllowedToCall(needs_.settings.ClientAddresses, address))
        return Refuse(socket, address, kTextNotAllowed);
    At(free).lastHeardMs = needs_.clock.MonotonicMs();
    At(free).address = address;
    if (socket.State() == SocketState::Connected) return Welcome(free);
    // One with an encrypted link has to prove itself first.
    if (socket.State() != SocketState::Connecting) OnError(free, socket.LastError());
}

void ClientSlots::Welcome(int slot) {
    At(slot).isWelcome = true;
    if (handler_ != nullptr) handler_->ClientCame(slot);
    Log(slot, Line(kTextConnected, AddressOf(slot)), LogKind::Information);
}

void ClientSlots::OnClosed(int slot) {
    OnData(slot);  // what came together with the close
    if (At(slot).socket->State() == SocketState::Closed) return;
    Log(slot, Line(kTextDisconnected, AddressOf(slot)), LogKind::Information);
    LetGo(slot);
}

void ClientSlots::OnError(int slot, const Text& description) {
    Log(slot, Line(kTextConnectionError, AddressOf(slot)) + " (" + description + ")", LogKind::Failure);
    LetGo(slot);
}

// What the client has done before it left counts: the slot is free when its frames have had their turns.
void ClientSlots::LetGo(int slot) {
    At(slot).hasPeerLeft = At(slot).hasFramesLeft;
    if (At(slot).hasPeerLeft) return;
    CloseSlot(slot);
}

void ClientSlots::OnSendComplete(int slot) {
    At(slot).isSendCompleted = true;
    if (handler_ != nullptr) handler_->SendCompleted(slot);
}

void ClientSlots::OnData(int slot) {
    if (At(slot).hasFramesLeft) return;
    const Text arrived = At(slot).socket->GetData();
    if (arrived.empty()) return;
    At(slot).lastHeardMs = needs_.clock.MonotonicMs();
    At(slot).buffer.Append(arrived);
    if (HandleFrames(slot)) RequestTurn();
}

// True when frames are left for a later turn.
bool ClientSlots::HandleFrames(int slot) {
    FrameBuffer& buffer = At(slot).buffer;
    const std::int64_t endMs = needs_.clock.MonotonicMs() + kMostMsInOneTurn;
    At(slot).hasFramesLeft = false;
    for (int i = 0; i < kMostFramesInOneTurn; ++i) {
        const std::optional<Frame> frame = buffer.Next();
        if (!frame) {
            if (buffer.IsTooLong()) OnError(slot, "frame too long");
            return false;
        }
        needs_.traffic.WriteTrafficLine(frame->number, frame->payload.size(), TrafficDirection::Received);
        if (handler_ != nullptr) handler_->HandleMessage(slot, frame->number, frame->payload);
        if (needs_.clock.MonotonicMs() >= endMs) break;
    }
    return At(slot).hasFramesLeft = true;
}

void ClientSlots::RequestTurn() {
    if (std::exchange(isTurnRequested_, true)) return;
    needs_.loop.Post([this, life = std::weak_ptr<bool>(life_)] {
        if (!life.expired()) TakeTurn();
    });
}

void ClientSlots::TakeTurn() {
    isTurnRequested_ = false;
    bool isMoreToDo = false;
    for (int slot = 0; slot < kSlotCount; ++slot) {
        if (At(slot).hasFramesLeft) {
            isMoreToDo |= HandleFrames(slot);
            if (!At(slot).hasFramesLeft) At(slot).hasPeerLeft ? LetGo(slot) : OnData(slot);
        }
        if (handler_ != nullptr) isMoreToDo |= handler_->ContinueWork(slot);
    }
    if (isMoreToDo) RequestTurn();
}

// What the client had sent but not completed is none of its successor's, which would be read askew by it.
void ClientSlots::CloseSlot(int slot) {
    At(slot).socket->Close();
    At(slot).buffer.Clear();
    At(slot).hasFramesLeft = At(slot).hasPeerLeft = At(slot).isWelcome = false;
}

void ClientSlots::SendTo(int slot, Message message, TextView payload) {
    WriteClientSocket(slot, NotedFrame(message, payload));
}

void ClientSlots::SendEach(int slot, Message message, std::span<const Text> payloads) {
    Text frames;
    for (const Text& payload : payloads) frames += NotedFrame(message, payload);
    if (!frames.empty()) WriteClientSocket(slot, frames);
}

Text ClientSlots::NotedFrame(Message message, TextView payload) {
    needs_.traffic.WriteTrafficLine(static_cast<std::uint8_t>(message), payload.size(),
                                    TrafficDirection::Sent);
    return FrameOf(message, payload);
}

void ClientSlots::SendToAllBut(int excepted, Message message, TextView payload) {
    const Text frame = NotedFrame(message, payload);
    for (int slot = 0; slot < kSlotCount; ++slot) {
        if (slot != excepted) WriteClientSocket(slot, frame);
    }
}

void ClientSlots::WriteClientSocket(int slot, TextView frame) {
    if (!IsConnected(slot)) return;
    Winsock& socket = *At(slot).socket;
    if (socket.UnsentBytes() <= kMostUnsent && socket.SendData(frame)) return;
    const bool isBacklog = socket.UnsentBytes() > kMostUnsent;
    const Text reason = isBacklog ? "takes no data" : socket.LastError();
    CloseSlot(slot);
    Log(slot, Line(kTextConnectionError, AddressOf(slot)) + " (" + reason + ")", LogKind::Failure);
}

void ClientSlots::Supervise(int elapsedMs) {
    supervisionMs_ += elapsedMs;
    if (supervisionMs_ < kSupervisionMs) return;
    supervisionMs_ = 0;
    const std::int64_t now = needs_.clock.MonotonicMs();
    for (int slot = 0; slot < kSlotCount; ++slot) {
        const bool isProving = At(slot).socket->State() == SocketState::Connecting;
        if (isProving && now - At(slot).lastHeardMs > kProofMs) OnError(slot, "no TLS");
    }
    const int interval = needs_.settings.NetworkKeepAliveInterval;
    if (interval <= 0) return;
    const std::int64_t longest = std::int64_t{kIntervalsOfSilence} * interval / 1000 * 1000;
    for (int slot = 0; slot < kSlotCount; ++slot) {
        if (!IsConnected(slot) || now - At(slot).lastHeardMs <= longest) continue;
        Log(slot, Line(kTextNoSignOfLife, AddressOf(slot)), LogKind::Failure);
        CloseSlot(slot);
        At(slot).lastHeardMs = now;
    }
}

void ClientSlots::Shutdown() {
    listener_->Close();
    for (Slot& slot : slots_) slot.isSendCompleted = false;
    const int connected = ConnectedCount();
    SendToAll(Message::ServerIsShuttingDown, {});
    const auto completed = [this] { return std::ranges::count(slots_, true, &Slot::isSendCompleted); };
    for (int waited = 0; waited < kFarewellMs && completed() < connected; waited += kFarewellStepMs)
        needs_.loop.SleepAndPump(kFarewellStepMs);
    for (Slot& slot : slots_) {
        slot.isSendCompleted = slot.isWelcome = false;
        slot.socket->Close();
    }
}

}  // namespace nordkeep
