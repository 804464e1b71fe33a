#pragma once

namespace nordkeep {

/// To Winsock::Bind: every address of this machine, of the shorter and the longer kind.
inline constexpr const char* kAnyAddress = "*";

}  // namespace nordkeep
