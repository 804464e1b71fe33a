#pragma once

#include "platform/Text.h"

namespace nordkeep {

/// A text that stays one line wherever it is shown: characters below 32, which could steer a terminal or end
/// the line, become "?". Tabs stay.
Text PlainLine(TextView text);

}  // namespace nordkeep
