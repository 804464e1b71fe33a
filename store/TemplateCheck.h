#pragma once

#include "runtime/IniCheck.h"

namespace nordkeep {

/// The keys of the main settings whose values are templates of alarm texts: unknown field names in them.
void CheckTemplates(const IniLines& main, FileFindings& findings);
/// The fields that a list of columns names.
void CheckColumns(const IniLines& main, TextView section, FileFindings& findings);

}  // namespace nordkeep
