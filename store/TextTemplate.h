#pragma once

#include "platform/Text.h"

#include <functional>
#include <optional>

namespace nordkeep {

/// The value of a placeholder's name, as the template spells it; none for an unknown name.
using PlaceholderValue = std::function<std::optional<Text>(TextView name)>;

/// Expands a template: plain text with placeholders "[name:range:width]".
///
/// The range is "from-to", counted from 0, both included; the width cuts or fills with blanks. A number from
/// 1 to 255 as name is that character. [CUTUNTIL:text], [CUTFROM:text] and [REPLACE:old:new], or CU, CF and
/// R, produce nothing and change the next value; their texts act in upper case. What is no placeholder stays
/// as it stands, and inserted values are not looked at again.
Text ExpandTemplate(TextView format, const PlaceholderValue& valueOf);

}  // namespace nordkeep
