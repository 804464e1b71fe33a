#pragma once

#include "pipeline/IntakeRun.h"

namespace nordkeep {

/// What a new record takes from the settings of the whole centre.
struct RecordDefaults {
    Text nonTextDefaultPrio{};
    int siaDecodeErrorType = 0;
};

/// Fills a new record from the event as it came in, before any translation.
void BuildRecord(IntakeRun& run, const RecordDefaults& defaults);

/// A confirmation message carries its texts itself and is not translated. `label` stands in for its free
/// text.
void FillConfirmation(IntakeRun& run, const Text& label);

}  // namespace nordkeep
