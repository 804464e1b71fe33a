#pragma once

#include "network/ServerLink.h"
#include "runtime/CentreState.h"

#include <map>
#include <vector>

namespace nordkeep {

/// The senders that share a line of the server, as a client knows them: asked for when they are
/// wanted for the first time, and again after some seconds.
class RemoteAccounts {
 public:
    RemoteAccounts(ServerLink& link, const Clock& clock) : link_(link), clock_(clock) {}

    /// What the server has told last; nothing as long as it has not.
    std::vector<LineAccount> Of(const Text& line);

    /// What both know, by the answer to message 30; 0: nothing.
    void NoteServerKnows(std::int32_t upTo) { knowsUpTo_ = upTo; }
    /// The connection has gone, and with it what was told.
    void NoteLoss();
    void Take(TextView payload);

 private:
    struct Told {
        std::vector<LineAccount> accounts{};
        std::int64_t askedAtMs = 0;  // monotonic
    };

    bool IsDue(const Told& told) const;

    ServerLink& link_;
    const Clock& clock_;
    std::int32_t knowsUpTo_ = 0;
    std::map<Text, Told> lines_{};
};

}  // namespace nordkeep
