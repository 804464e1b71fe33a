#pragma once

#include "runtime/Findings.h"

namespace nordkeep {

/// Checks a text as the content of a file while somebody works on it.
class TextCheck {
 public:
    virtual ~TextCheck() = default;
    /// What was going on is dropped. A file of a kind that nobody checks has no findings.
    virtual void Begin(const Text& path, const Text& content) = 0;
    /// Some milliseconds. False when all is done.
    virtual bool Continue() = 0;
    /// By lines, once Continue has said so.
    virtual std::vector<Finding> Take() = 0;
};

}  // namespace nordkeep
