#pragma once

#include "platform/Text.h"

namespace nordkeep {

/// The text in the code page of DOS printers, 850. Characters that it does not have become the nearest plain
/// one, or "?".
Text ToCodePage850(TextView text);

}  // namespace nordkeep
