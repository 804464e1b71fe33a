#pragma once

#include "translation/ServiceNotes.h"

namespace nordkeep {

/// Keeps no service mode.
class NoServiceNotes final : public ServiceNotes {
 public:
    void NoteService(const cTranslate&, const cIDCode&, int, const Doer&, const Text&) override {}
};

}  // namespace nordkeep
