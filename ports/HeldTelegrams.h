#pragma once

#include "ports/formats/TelegramStep.h"
#include "store/EventCommit.h"

#include <map>
#include <optional>

namespace nordkeep {

/// A held telegram as the journal has it.
struct KeptTelegram {
    std::int64_t entry = 0;
    Text portName{};
    Text telegram{};
    OleDate arrived{};
};

/// What the program held back when it was killed.
std::vector<KeptTelegram> KeptTelegrams(const EventCommit& commit);

/// The event of a telegram that nobody can decode any more: its bytes are its text.
DecodedEvent EventOfRest(const KeptTelegram& kept);

/// The telegrams that one port has answered and holds back, in the journal until their events are there: a
/// sender does not send again what was acknowledged.
class HeldTelegrams {
 public:
    HeldTelegrams(EventCommit& commit, const Text& portName) : commit_(commit), portName_(portName) {}

    /// Notes what the step holds, and that what it settles is done.
    void Note(const TelegramStep& step);
    /// The telegram is kept already, as this entry.
    void Keep(std::uint64_t key, std::int64_t entry) { entries_[key] = entry; }

 private:
    EventCommit& commit_;
    const Text& portName_;
    std::map<std::uint64_t, std::int64_t> entries_{};
};

}  // namespace nordkeep
