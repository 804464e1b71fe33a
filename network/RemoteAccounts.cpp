#include "network/RemoteAccounts.h"

#include "network/messages/CentreMessages.h"
#include "network/messages/Messages.h"

namespace nordkeep {
namespace {

constexpr std::int64_t kPeriodMs = 5'000;
// Most lines have none, and get none while they are what they are.
constexpr std::int64_t kPeriodOfNoneMs = 60'000;
// The names come from the server, which can have others each second.
constexpr std::size_t kMostLines = 1000;

}  // namespace

std::vector<LineAccount> RemoteAccounts::Of(const Text& line) {
    if (lines_.size() > kMostLines) lines_.clear();
    const auto [told, isNew] = lines_.try_emplace(line);
    const bool isToAsk =
        knowsUpTo_ >= static_cast<std::int32_t>(Message::Accounts) && (isNew || IsDue(told->second));
    if (isToAsk && link_.SendToServer(Message::Accounts, PayloadOf(LineName{line})))
        told->second.askedAtMs = clock_.MonotonicMs();
    return told->second.accounts;
}

bool RemoteAccounts::IsDue(const Told& told) const {
    const std::int64_t sinceMs = clock_.MonotonicMs() - told.askedAtMs;
    return told.askedAtMs == 0 || sinceMs >= (told.accounts.empty() ? kPeriodOfNoneMs : kPeriodMs);
}

void RemoteAccounts::NoteLoss() {
    knowsUpTo_ = 0;
    lines_.clear();
}

// What was not asked is not kept.
void RemoteAccounts::Take(TextView payload) {
    LineAccounts told = ReadAccounts(payload);
    const auto line = lines_.find(told.line);
    if (line != lines_.end()) line->second.accounts = std::move(told.accounts);
}

}  // namespace nordkeep
