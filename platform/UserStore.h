#pragma once

#include "platform/Text.h"

#include <optional>

namespace nordkeep {

/// The per-user store for window geometry, apart from the settings files.
class UserStore {
 public:
    virtual ~UserStore() = default;
    /// Section "Settings" of the application; none when the key has never been written.
    virtual std::optional<int> Read(const Text& key) const = 0;
    virtual void Write(const Text& key, int value) = 0;
};

}  // namespace nordkeep
