#include "network/LoginBrake.h"

#include <utility>

namespace nordkeep {
namespace {

constexpr int kMostWrong = 5;
constexpr std::int64_t kPauseMs = 1000;
constexpr std::int64_t kForgottenMs = 15 * 60'000;
constexpr std::size_t kMostAddresses = 1000;

}  // namespace

void LoginBrake::Forget(std::int64_t nowMs) {
    std::erase_if(tries_, [nowMs](const auto& each) { return nowMs - each.second.lastMs > kForgottenMs; });
    // More than that are no people; whoever comes next is not slowed for it.
    if (tries_.size() > kMostAddresses) tries_.clear();
}

LoginBrake::Verdict LoginBrake::Ask(const Text& address, std::int64_t nowMs) {
    Forget(nowMs);
    const auto known = tries_.find(address);
    if (known == tries_.end() || known->second.wrong < kMostWrong) return Verdict::Free;
    if (nowMs - known->second.lastMs >= kPauseMs) return Verdict::Free;
    return std::exchange(known->second.isTold, true) ? Verdict::Refused : Verdict::RefusedForTheFirstTime;
}

void LoginBrake::NoteOutcome(const Text& address, bool isRight, std::int64_t nowMs) {
    if (isRight) {
        tries_.erase(address);
        return;
    }
    Tries& tries = tries_[address];
    ++tries.wrong;
    tries.lastMs = nowMs;
}

}  // namespace nordkeep
