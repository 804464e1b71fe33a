#pragma once

#include "network/ClientScreen.h"
#include "network/ServerLink.h"
#include "network/messages/HistoryMessages.h"

#include <deque>

namespace nordkeep {

/// A client's way to the journal of its server. One question at a time is on its way; the others wait.
class RemoteHistory final : public HistorySource {
 public:
    RemoteHistory(ServerLink& link, const Clock& clock, const ClientUser& user)
        : link_(link), clock_(clock), user_(user) {}

    State Readiness() const override;
    void Ask(HistoryTaker& taker, std::int32_t number, const HistoryQuery& query) override;
    void Ask(HistoryTaker& taker, std::int32_t number, const ReportSpan& span) override;
    void Forget(HistoryTaker& taker) override;
    bool SignOver(const Text& note, const Text& list) override;

    /// What both know, by the answer to message 30; 0: nothing.
    void NoteServerKnows(std::int32_t upTo) { knowsUpTo_ = upTo; }
    /// The connection has gone, and with it what was asked.
    void NoteLoss();
    void TakeHistory(TextView payload);
    void TakeReport(TextView payload);

 private:
    struct Question {
        HistoryTaker* taker = nullptr;  // none: it has been forgotten
        std::int32_t number = 0;        // its own
        Message message = Message::History;
        Text payload{};
        std::int32_t sentAs = 0;
    };

    void Add(HistoryTaker& taker, std::int32_t number, Message message, Text payload, std::int32_t sentAs);
    void SendFirst();
    /// The question that is on its way, if this answers it.
    std::optional<Question> Take(Message message, std::int32_t number);

    ServerLink& link_;
    const Clock& clock_;
    const ClientUser& user_;
    std::int32_t knowsUpTo_ = 0;
    std::int32_t lastSent_ = 0;
    std::deque<Question> questions_{};  // the first is on its way
};

}  // namespace nordkeep
