#include "network/ClientSlots.h"

#include "runtime/Fields.h"

#include <algorithm>

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
constexpr int kSupervisionMs = 1000;
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
        At(slot).socket->SetEvents(EventsOf(slot));
    }
    refusal_ = needs_.sockets.NewSocket(SocketKind::Tcp);
}

SocketEvents ClientSlots::EventsOf(int slot) {
    return {.dataArrival = [this, slot] { OnData(slot); },
            .closed = [this, slot] { OnClosed(slot); },
            .error = [this, slot](const Text& description) { OnError(slot, description); },
            .sendComplete = [this, slot] { OnSendComplete(slot); }};
}

bool ClientSlots::Listen() {
    listener_->SetLocalPort(needs_.settings.NetworkPort);
    return listener_->Listen();
}

int ClientSlots::ConnectedCount() const {
    return static_cast<int>(std::ranges::count_if(
        slots_, [](const Slot& slot) { return slot.socket->State() == SocketState::Connected; }));
}

bool ClientSlots::IsConnected(int slot) const {
    return At(slot).socket->State() == SocketState::Connected;
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
    if (handler_ != nullptr) handler_->ClientCame(free);
    Log(free, Line(kTextConnected, address), LogKind::Information);
}

void ClientSlots::OnClosed(int slot) {
    OnData(slot);  // what came together with the close
    if (At(slot).socket->State() == SocketState::Closed) return;
    Log(slot, Line(kTextDisconnected, AddressOf(slot)), LogKind::Information);
    At(slot).socket->Close();
    At(slot).buffer.Clear();
}

void ClientSlots::OnError(int slot, const Text& description) {
    Log(slot, Line(kTextConnectionError, AddressOf(slot)) + " (" + description + ")", LogKind::Failure);
    At(slot).socket->Close();
    At(slot).buffer.Clear();
}

void ClientSlots::OnSendComplete(int slot) {
    At(slot).isSendCompleted = true;
    if (handler_ != nullptr) handler_->SendCompleted(slot);
}

void ClientSlots::OnData(int slot) {
    const Text arrived = At(slot).socket->GetData();
    if (arrived.empty()) return;
    At(slot).lastHeardMs = needs_.clock.MonotonicMs();
    At(slot).buffer.Append(arrived);
    HandleFrames(slot);
}

void ClientSlots::HandleFrames(int slot) {
    FrameBuffer& buffer = At(slot).buffer;
    while (const std::optional<Frame> frame = buffer.Next()) {
        needs_.traffic.WriteTrafficLine(frame->number, frame->payload.size(), TrafficDirection::Received);
        if (handler_ != nullptr) handler_->HandleMessage(slot, frame->number, frame->payload);
    }
    if (buffer.IsTooLong()) OnError(slot, "frame too long");
}

void ClientSlots::SendTo(int slot, Message message, TextView payload) {
    const Text frame = FrameOf(message, payload);
    needs_.traffic.WriteTrafficLine(static_cast<std::uint8_t>(message), payload.size(),
                                    TrafficDirection::Sent);
    WriteClientSocket(slot, frame);
}

void ClientSlots::SendToAllBut(int excepted, Message message, TextView payload) {
    const Text frame = FrameOf(message, payload);
    needs_.traffic.WriteTrafficLine(static_cast<std::uint8_t>(message), payload.size(),
                                    TrafficDirection::Sent);
    for (int slot = 0; slot < kSlotCount; ++slot) {
        if (slot != excepted) WriteClientSocket(slot, frame);
    }
}

// An own close is no Close event: the buffer stays as it is.
void ClientSlots::WriteClientSocket(int slot, TextView frame) {
    if (!IsConnected(slot)) return;
    Winsock& socket = *At(slot).socket;
    if (socket.UnsentBytes() <= kMostUnsent && socket.SendData(frame)) return;
    const bool isBacklog = socket.UnsentBytes() > kMostUnsent;
    const Text reason = isBacklog ? "takes no data" : socket.LastError();
    socket.Close();
    Log(slot, Line(kTextConnectionError, AddressOf(slot)) + " (" + reason + ")", LogKind::Failure);
}

void ClientSlots::Supervise(int elapsedMs) {
    const int interval = needs_.settings.NetworkKeepAliveInterval;
    if (interval <= 0) return;
    supervisionMs_ += elapsedMs;
    if (supervisionMs_ < kSupervisionMs) return;
    supervisionMs_ = 0;
    const std::int64_t now = needs_.clock.MonotonicMs();
    const std::int64_t longest = std::int64_t{kIntervalsOfSilence} * interval / 1000 * 1000;
    for (int slot = 0; slot < kSlotCount; ++slot) {
        if (!IsConnected(slot) || now - At(slot).lastHeardMs <= longest) continue;
        Log(slot, Line(kTextNoSignOfLife, AddressOf(slot)), LogKind::Failure);
        At(slot).socket->Close();
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
        slot.isSendCompleted = false;
        slot.socket->Close();
    }
}

}  // namespace nordkeep
