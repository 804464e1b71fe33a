#pragma once

#include "console/views/setup/FieldEditors.h"

namespace nordkeep {

/// The editor of a field of a row: those of the set-up, and those that only rows have.
FieldEditor* NewRowEditor(const EditorNeeds& needs);

FieldEditor* NewPickEditor(const EditorNeeds& needs);
FieldEditor* NewScheduleEditor(const EditorNeeds& needs);
FieldEditor* NewMapPlaceEditor(const EditorNeeds& needs);

}  // namespace nordkeep
