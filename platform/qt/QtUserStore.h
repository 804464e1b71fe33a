#pragma once

#include "platform/UserStore.h"

namespace nordkeep {

/// The toolkit's settings store of the user.
class QtUserStore : public UserStore {
 public:
    std::optional<int> Read(const Text& key) const override;
    void Write(const Text& key, int value) override;
};

}  // namespace nordkeep
