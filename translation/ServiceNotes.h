#pragma once

#include "runtime/Doer.h"

namespace nordkeep {

struct cTranslate;
struct cIDCode;

/// Keeps what becomes of the service modes of objects, so that they survive a crash and the one who changed
/// them is known.
class ServiceNotes {
 public:
    virtual ~ServiceNotes() = default;
    /// The object has its new mode; `modeBefore` is the one it had, `reason` what somebody gave for it.
    virtual void NoteService(const cTranslate& set, const cIDCode& object, int modeBefore, const Doer& by,
                             const Text& reason) = 0;
};

}  // namespace nordkeep
