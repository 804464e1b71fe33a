#include "ports/dc09/Dc09Accounts.h"

#include "platform/AesCbc.h"
#include "ports/formats/TelegramFields.h"
#include "runtime/Fields.h"

#include <algorithm>
#include <utility>

namespace nordkeep {
namespace {

// Accounts that are not named in the settings. What more come are served, and not remembered.
constexpr std::size_t kMostUnnamed = 10'000;
// A line that has lost its network loses all accounts at once; each of them is an event.
constexpr std::size_t kMostSilentInOneTick = 64;
// A longer pause between two ticks is one of the program, not of the senders.
constexpr std::int64_t kLongestTickMs = 5000;

constexpr std::int64_t kRepeatMs = 120'000;
constexpr std::size_t kMostRepeats = 50'000;

constexpr std::int64_t kSeriesMs = 3'600'000;
constexpr std::size_t kMostSeries = 100;

constexpr int kMostSeconds = 2'000'000;

}  // namespace

std::optional<Dc09AccountSetting> ReadDc09Account(TextView value) {
    const std::size_t comma = value.find(',');
    const TextView digits = TrimBlanks(value.substr(0, comma));
    const TextView seconds = comma == TextView::npos ? TextView() : TrimBlanks(value.substr(comma + 1));
    Dc09AccountSetting setting{.key = HexToBytes(digits)};
    const bool isKey =
        digits.empty() || (setting.key.size() * 2 == digits.size() && IsAesKeyLength(setting.key.size()));
    if (!isKey || (!seconds.empty() && !IsNumeric(seconds))) return std::nullopt;
    setting.seconds = std::min(LeadingInt32(seconds), kMostSeconds);
    return setting;
}

Dc09Accounts::Dc09Accounts(Dc09AccountSettings settings) : settings_(std::move(settings)) {
    for (const auto& [name, setting] : settings_) {
        if (name != kOtherDc09Accounts) accounts_[name];
    }
}

const Dc09AccountSetting* Dc09Accounts::SettingOf(const Text& account) const {
    auto found = settings_.find(account);
    if (found == settings_.end()) found = settings_.find(kOtherDc09Accounts);
    return found == settings_.end() ? nullptr : &found->second;
}

Dc09Account& Dc09Accounts::Of(const Text& account) {
    const auto known = accounts_.find(account);
    return known == accounts_.end() ? strangers_ : known->second;
}

bool Dc09Accounts::NoteHeard(const Text& account, OleDate now) {
    const bool hasRoom = accounts_.size() < settings_.size() + kMostUnnamed;
    Dc09Account& heard = hasRoom ? accounts_[account] : Of(account);
    heard.heardMs = openMs_;
    heard.heardAt = now;
    heard.isKeyTold = heard.isClockTold = false;
    return std::exchange(heard.isSilent, false);
}

std::vector<LineAccount> Dc09Accounts::List() const {
    std::vector<LineAccount> list;
    list.reserve(accounts_.size());
    for (const auto& [name, account] : accounts_)
        list.push_back({.name = name, .lastMessage = account.heardAt, .isSilent = account.isSilent});
    return list;
}

std::vector<Dc09Accounts::Silent> Dc09Accounts::Tick(const ServiceTick& tick) {
    const std::int64_t passedMs = std::min(tick.monotonicMs - tickedMs_, kLongestTickMs);
    if (hasTicked_ && tick.isOpen) openMs_ += std::max<std::int64_t>(passedMs, 0);
    tickedMs_ = tick.monotonicMs;
    hasTicked_ = true;
    std::vector<Silent> silent;
    for (auto& [name, account] : accounts_) {
        const Dc09AccountSetting* setting = SettingOf(name);
        const bool isWatched = setting && setting->seconds > 0 && !account.isSilent;
        if (!isWatched || openMs_ - account.heardMs <= setting->seconds * 1000LL) continue;
        account.isSilent = true;
        silent.push_back({name, account.protocol, setting->seconds});
        if (silent.size() >= kMostSilentInOneTick) break;
    }
    return silent;
}

Dc09Repeats::Noted Dc09Repeats::Note(const Text& message, std::int64_t nowMs) {
    while (!seen_.empty() && (nowMs - seen_.front().atMs > kRepeatMs || seen_.size() >= kMostRepeats))
        DropFirst();
    const auto [known, isNew] = numbers_.try_emplace(message, last_ + 1);
    if (isNew) seen_.push_back({message, ++last_, nowMs});
    return {known->second, isNew};
}

/// Where the message of this number stands; the end when it has been forgotten.
Dc09Repeats::Numbers::const_iterator Dc09Repeats::Find(std::uint64_t number) const {
    if (seen_.empty() || number < seen_.front().number || number > last_) return numbers_.end();
    const auto known = numbers_.find(seen_[static_cast<std::size_t>(number - seen_.front().number)].message);
    return known != numbers_.end() && known->second == number ? known : numbers_.end();
}

void Dc09Repeats::DropFirst() {
    Forget(seen_.front().number);
    seen_.pop_front();
}

void Dc09Repeats::Forget(std::uint64_t number) {
    // The place in line stays; only its message is none any more.
    if (const auto known = Find(number); known != numbers_.end()) numbers_.erase(known);
}

bool Dc09Repeats::Knows(std::uint64_t number) const {
    return Find(number) != numbers_.end();
}

bool Dc09Refusals::IsNew(const Text& what, std::int64_t nowMs) {
    std::erase_if(told_, [nowMs](const auto& told) { return nowMs - told.second > kSeriesMs; });
    const auto told = told_.find(what);
    if (told == told_.end() && told_.size() >= kMostSeries) return false;
    if (told == told_.end()) return told_.emplace(what, nowMs).second;
    told->second = nowMs;
    return false;
}

}  // namespace nordkeep
