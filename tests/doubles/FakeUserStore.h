#pragma once

#include "platform/UserStore.h"

#include <map>

namespace nordkeep {

/// A user's store in memory.
class FakeUserStore : public UserStore {
 public:
    std::map<Text, int> values{};

    std::optional<int> Read(const Text& key) const override {
        const auto found = values.find(key);
        return found == values.end() ? std::nullopt : std::optional<int>(found->second);
    }
    void Write(const Text& key, int value) override { values[key] = value; }
};

}  // namespace nordkeep
