#pragma once

namespace nordkeep {

/// A TCP and UDP port that is this test program's own until it ends. Its number lies outside the range from
/// which the system takes ports for calls and for whoever asks for any, and a lock that goes with the process
/// keeps other test programs from it, so nobody gets it between here and its use.
int FreePort();

}  // namespace nordkeep
