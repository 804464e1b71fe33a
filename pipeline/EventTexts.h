#pragma once

#include "pipeline/IntakeRun.h"
#include "runtime/Language.h"
#include "runtime/Settings.h"

namespace nordkeep {

/// Gives the record its event type and texts from one translation set: by the data codes of SIA or Contact ID
/// on those lines, by the set's type codes on all others and for the system's own events.
void TranslateEventText(IntakeRun& run, const cTranslate& set, const Settings& settings,
                        const Language& language);

}  // namespace nordkeep
