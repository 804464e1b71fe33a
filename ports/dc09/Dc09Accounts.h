#pragma once

#include "platform/Text.h"
#include "ports/formats/ServiceTick.h"
#include "runtime/CentreState.h"
#include "runtime/Protocol.h"

#include <deque>
#include <map>
#include <optional>
#include <vector>

namespace nordkeep {

/// What the settings say of an account.
struct Dc09AccountSetting {
    Text key{};       // of 16, 24 or 32 bytes; empty: its messages are not encrypted
    int seconds = 0;  // of silence, until that is told; 0: never
};

/// By account in capitals; "*" stands for all that are not named.
using Dc09AccountSettings = std::map<Text, Dc09AccountSetting>;
inline constexpr const char* kOtherDc09Accounts = "*";

/// The value "HEXKEY,SECONDS" of an account, of which both parts may be left away. None when the key has a
/// length that cannot be or another digit, or the seconds are no number.
std::optional<Dc09AccountSetting> ReadDc09Account(TextView value);

/// What a port knows of an account.
struct Dc09Account {
    std::optional<Protocol> protocol{};  // of its last event
    std::int64_t heardMs = 0;            // in the time that the line has been open
    OleDate heardAt{};                   // by the clock, for people
    bool isSilent = false;
    bool hasEncrypted = false;
    // What has been told of a series.
    bool isPlainTold = false;
    bool isKeyTold = false;
    bool isClockTold = false;
};

/// The accounts of one port: the named ones, and those that have sent what was taken. Only the time in which
/// the line is open counts as silence.
class Dc09Accounts {
 public:
    explicit Dc09Accounts(Dc09AccountSettings settings);

    /// None for an account of which the settings say nothing.
    const Dc09AccountSetting* SettingOf(const Text& account) const;
    /// The account; of those that have not sent anything good yet and are not named, all are one.
    Dc09Account& Of(const Text& account);
    /// The account has sent something good. True when it had been silent.
    bool NoteHeard(const Text& account, OleDate now);
    /// All accounts, by name.
    std::vector<LineAccount> List() const;

    struct Silent {
        Text account{};
        std::optional<Protocol> protocol{};
        int seconds = 0;
    };
    /// Time goes on: who has now been silent for too long, each once. The others of many wait for a later
    /// tick.
    std::vector<Silent> Tick(const ServiceTick& tick);

 private:
    Dc09AccountSettings settings_;
    std::map<Text, Dc09Account> accounts_{};
    Dc09Account strangers_{};
    std::int64_t openMs_ = 0;  // how long the line has been open
    std::int64_t tickedMs_ = 0;
    bool hasTicked_ = false;
};

/// The messages of a port that have come within the last two minutes. A sender that missed its answer sends
/// again, and what it sends is the same event.
class Dc09Repeats {
 public:
    struct Noted {
        std::uint64_t number = 0;  // the same for all that repeat a message
        bool isNew = false;
    };
    Noted Note(const Text& message, std::int64_t nowMs);
    /// What could not be stored has not come.
    void Forget(std::uint64_t number);
    /// The message has come, as far as that is still known.
    bool Knows(std::uint64_t number) const;

 private:
    struct Seen {
        Text message{};
        std::uint64_t number = 0;
        std::int64_t atMs = 0;
    };
    using Numbers = std::map<Text, std::uint64_t>;

    Numbers::const_iterator Find(std::uint64_t number) const;
    void DropFirst();

    std::deque<Seen> seen_{};  // in order of arrival; their numbers are consecutive
    Numbers numbers_{};
    std::uint64_t last_ = 0;
};

/// Tells once a series what goes on being refused.
class Dc09Refusals {
 public:
    /// True for the first of a series; false for all when there are too many series.
    bool IsNew(const Text& what, std::int64_t nowMs);
    /// The series is over.
    void End(const Text& what) { told_.erase(what); }

 private:
    std::map<Text, std::int64_t> told_{};  // with the time of the last one
};

}  // namespace nordkeep
