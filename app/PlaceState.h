#pragma once

#include "app/CentreConditions.h"
#include "app/Foundation.h"
#include "app/NetworkPeers.h"
#include "app/OperatorPorts.h"
#include "console/window/CopyState.h"
#include "network/ClientScreen.h"
#include "pipeline/outputs/SoundPlayer.h"
#include "reports/AlarmFlood.h"

namespace nordkeep {

/// What the operator's place knows of itself at the moment.
class PlaceState : public CopyState {
 public:
    struct Needs {
        Foundation& foundation;
        const SoundPlayer& sound;
        const CentreConditions& conditions;
        const OperatorPorts& ports;
    };
    explicit PlaceState(const Needs& needs) : needs_(needs) {}

    /// A new alarm has come.
    void NoteAlarm();
    /// Who works here, on a client.
    void SetUser(const ClientUser& user) { user_ = user; }
    Text UserName() const { return user_.fullName; }
    Text Initials() const override { return user_.initials; }

    bool IsQuestionUp() const override;
    bool IsFlood() const override;
    CopyFacts Facts() const override;
    std::vector<ConditionFact> Conditions() const override { return needs_.conditions.Facts(); }

 protected:
    const Needs& Parts() const { return needs_; }
    const ClientUser& User() const { return user_; }

 private:
    Needs needs_;
    ClientUser user_{};
    AlarmFlood flood_{};
};

/// At a copy with ports of its own there is no login and no server.
class LocalPlaceState final : public PlaceState {
 public:
    using PlaceState::PlaceState;
    OperatorRights Rights() const override { return {.role = Parts().foundation.CopyRole()}; }
    bool IsRequestPending() const override { return false; }
    std::optional<std::vector<PortTreeNode>> OwnTree() const override;
};

class ClientPlaceState final : public PlaceState {
 public:
    ClientPlaceState(const Needs& needs, const ServerLink& link, const NetworkPeers& peers)
        : PlaceState(needs), link_(link), peers_(peers) {}
    std::vector<ConditionFact> Conditions() const override;
    OperatorRights Rights() const override;
    bool IsRequestPending() const override { return link_.IsRequestPending(); }
    std::optional<std::vector<PortTreeNode>> OwnTree() const override { return std::nullopt; }

 private:
    const ServerLink& link_;
    const NetworkPeers& peers_;  // built behind this
};

}  // namespace nordkeep
