#pragma once

#include "app/NetworkPeers.h"
#include "reports/HistorySource.h"

namespace nordkeep {

/// The journal of a client is its server's.
class ClientHistory final : public HistorySource {
 public:
    /// Built behind this; nothing is asked of it before the program runs.
    explicit ClientHistory(const NetworkPeers& peers) : peers_(peers) {}

    State Readiness() const override {
        const RemoteHistory* server = peers_.ServerHistory();
        return server ? server->Readiness() : State::NoContact;
    }
    void Ask(HistoryTaker& taker, std::int32_t number, const HistoryQuery& query) override {
        if (RemoteHistory* server = peers_.ServerHistory()) server->Ask(taker, number, query);
    }
    void Ask(HistoryTaker& taker, std::int32_t number, const ReportSpan& span) override {
        if (RemoteHistory* server = peers_.ServerHistory()) server->Ask(taker, number, span);
    }
    void Forget(HistoryTaker& taker) override {
        if (RemoteHistory* server = peers_.ServerHistory()) server->Forget(taker);
    }
    bool SignOver(const Text& note, const Text& list) override {
        RemoteHistory* server = peers_.ServerHistory();
        return server && server->SignOver(note, list);
    }

 private:
    const NetworkPeers& peers_;
};

}  // namespace nordkeep
