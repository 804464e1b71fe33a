#pragma once

#include "platform/Text.h"

namespace nordkeep {

/// Who tells the operators that events can no longer be stored.
class StorageAlarm {
 public:
    virtual ~StorageAlarm() = default;
    /// Once for each outage, when the replies of the turn have gone. The text gives the reason.
    virtual void RaiseStorageAlarm(const Text& text) = 0;
};

/// For a store whose log is enough.
class NoStorageAlarm final : public StorageAlarm {
 public:
    void RaiseStorageAlarm(const Text&) override {}
};

}  // namespace nordkeep
