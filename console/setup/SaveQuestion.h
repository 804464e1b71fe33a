#pragma once

#include "console/lists/Captions.h"
#include "platform/Dialogs.h"

namespace nordkeep {

/// Whether something is saved although it is wrong: `what` says how, and the question stands apart below it.
bool AsksToSave(Dialogs& dialogs, const Captions& captions, const Text& what);

}  // namespace nordkeep
