#pragma once

#include "runtime/Findings.h"

namespace nordkeep {

/// What the last check of the centre's files has found.
class FindingsSource {
 public:
    virtual ~FindingsSource() = default;
    virtual const std::vector<Finding>& Found() const = 0;
};

}  // namespace nordkeep
