#pragma once

#include "console/lists/OperatorRights.h"
#include "platform/Text.h"

namespace nordkeep {

/// What windows have to know of the operator's place at the moment. It may change with every turn of the
/// loop, so that it is asked again behind whatever waits.
class OperatorState {
 public:
    virtual ~OperatorState() = default;
    virtual OperatorRights Rights() const = 0;
    /// Of who works here; empty where nobody logs in.
    virtual Text Initials() const { return {}; }
    /// The operator is being asked something.
    virtual bool IsQuestionUp() const = 0;
    /// A request to the server is under way: until its answer no other begins, and files look missing.
    virtual bool IsRequestPending() const = 0;
    /// Alarms come faster than a person can open them.
    virtual bool IsFlood() const = 0;
};

}  // namespace nordkeep
