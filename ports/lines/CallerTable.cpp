#include "ports/lines/CallerTable.h"

#include "ports/lines/Listening.h"

#include <algorithm>
#include <utility>

namespace nordkeep {
namespace {

constexpr int kTextFull = 5325;

}  // namespace

CallerTable::CallerTable(const Parts& parts)
    : parts_(parts), server_(parts.sockets.NewSocket(SocketKind::Tcp)) {
    server_->SetEvents({.connectionRequest = [this](SocketRequest request) { LetIn(request); }});
}

void CallerTable::Open(const Text& place, TextView name) {
    ListenAsSet(*server_, parts_.log, place, name);
}

void CallerTable::Close() {
    server_->Close();
    for (std::size_t slot = 0; slot < slots_.size(); ++slot) HangUp(slot);
}

FarEnd CallerTable::End() const {
    const std::size_t used = slots_.size() - free_.size();
    FarEnd end;
    end.isConnected = used > 0;
    end.isAwaited = !end.isConnected;
    end.who = lastCaller_;
    if (used > 1) end.who += " (+" + std::to_string(used - 1) + ")";
    return end;
}

void CallerTable::HangUp(std::size_t slot) {
    Slot& caller = *slots_[slot];
    if (!caller.isUsed) return;
    caller.isUsed = false;
    caller.socket->Close();
    free_.push_back(slot);
}

void CallerTable::LetGo(std::size_t slot) {
    Text rest = slots_[slot]->socket->GetRest();
    HangUp(slot);
    parts_.listener.OnGone(slot, std::move(rest));
}

// The newcomer is let in first of all: what another has left may take its time, and a third may call.
void CallerTable::LetIn(SocketRequest request) {
    std::optional<Text> rest;
    if (free_.empty() && slots_.size() >= parts_.most) rest = PushOffIdlest();
    const std::size_t slot = TakeFreeSlot();
    Slot& caller = *slots_[slot];
    caller.socket->Accept(request);
    lastCaller_ = caller.socket->RemoteHostIP();
    caller.isUsed = true;
    caller.lastLifeMs = parts_.clock.MonotonicMs();
    if (rest) parts_.listener.OnGone(slot, *std::move(rest));
    parts_.listener.OnCall(slot);
}

std::size_t CallerTable::TakeFreeSlot() {
    if (free_.empty()) return NewSlot();
    const std::size_t slot = free_.back();
    free_.pop_back();
    return slot;
}

std::size_t CallerTable::NewSlot() {
    const std::size_t slot = slots_.size();
    slots_.push_back(std::make_unique<Slot>());
    slots_.back()->socket = parts_.sockets.NewSocket(SocketKind::Tcp);
    slots_.back()->socket->SetEvents({.dataArrival = [this, slot] { parts_.listener.OnData(slot); },
                                      .closed = [this, slot] { LetGo(slot); },
                                      .error = [this, slot](const Text&) { LetGo(slot); }});
    return slot;
}

Text CallerTable::PushOffIdlest() {
    LogFull();
    const auto idlest =
        std::ranges::min_element(slots_, {}, [](const auto& slot) { return slot->lastLifeMs; });
    const auto slot = static_cast<std::size_t>(idlest - slots_.begin());
    parts_.listener.OnPushedOff(slot);
    Text rest = slots_[slot]->socket->GetRest();
    HangUp(slot);
    return rest;
}

void CallerTable::LogFull() {
    if (!isFullLog_.IsDue(parts_.clock.MonotonicMs())) return;
    const Text most = std::to_string(parts_.most);
    parts_.log.Information(kTextFull, " " + parts_.log.NameAndDescription() + " (" + most + ")");
}

}  // namespace nordkeep
