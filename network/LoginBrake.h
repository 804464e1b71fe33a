#pragma once

#include "platform/Text.h"

#include <cstdint>
#include <map>

namespace nordkeep {

/// Slows down who tries one password after the other: after five wrong ones of an address it is listened to
/// once a second, until a right one comes or a quarter of an hour has passed.
class LoginBrake {
 public:
    enum class Verdict { Free, Refused, RefusedForTheFirstTime };
    /// Whether a login of this address is looked at now.
    Verdict Ask(const Text& address, std::int64_t nowMs);
    void NoteOutcome(const Text& address, bool isRight, std::int64_t nowMs);

 private:
    struct Tries {
        int wrong = 0;
        std::int64_t lastMs = 0;
        bool isTold = false;
    };
    void Forget(std::int64_t nowMs);

    std::map<Text, Tries> tries_{};
};

}  // namespace nordkeep
