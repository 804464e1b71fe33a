#pragma once

#include <array>

namespace nordkeep {

/// Catches the signals that ask the program to end (SIGTERM, SIGINT), for as long as it lives; there is one.
///
/// The first one makes Descriptor readable, so that the end comes as an event of the loop. The second one
/// ends the process at once with status 1. SIGHUP, SIGPIPE and SIGXFSZ do nothing: a file that may not grow
/// is told by its failing write. Child processes inherit none of this.
class Signals {
 public:
    Signals();
    ~Signals();
    Signals(const Signals&) = delete;
    Signals& operator=(const Signals&) = delete;

    /// While it is on, a signal ends the process at once with status 0, whatever it is waiting for: right as
    /// long as there is nothing yet that a clean stop would have to save.
    void EndAtOnce(bool isOn);

    /// Readable while a signal waits to be taken.
    int Descriptor() const { return pipe_[0]; }
    /// True when a signal had come since the last call.
    bool Take();

 private:
    std::array<int, 2> pipe_{-1, -1};
};

}  // namespace nordkeep
