#pragma once

#include <string_view>

namespace nordkeep {

/// packaging/systemd/nordkeep.service.in, from which the shipped unit is made, too: its marks @COMMAND@,
/// @ACCOUNT@ and
/// @HIDING@ stand once each.
extern const std::string_view kServiceUnitTemplate;

}  // namespace nordkeep
