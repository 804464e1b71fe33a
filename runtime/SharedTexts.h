#pragma once

namespace nordkeep {

// Numbers of language texts that more than one folder uses.
inline constexpr int kTextPort = 1035;
inline constexpr int kTextHiddenNumber = 1060;

}  // namespace nordkeep
