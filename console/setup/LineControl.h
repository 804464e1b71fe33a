#pragma once

#include "runtime/CentreState.h"

#include <optional>
#include <vector>

namespace nordkeep {

/// The lines of this copy, or of a client's server, which takes up the files that the client writes.
class LineControl {
 public:
    virtual ~LineControl() = default;
    virtual std::vector<LineFigures> Lines() const = 0;
    /// The senders that share a line and are told apart, as far as they are known here: the silent ones
    /// first.
    virtual std::vector<LineAccount> Accounts(const Text& /*name*/) const { return {}; }
    /// The ways out of this copy that are configured.
    virtual std::vector<OutputState> Outputs() const { return {}; }
    /// Settings files of lines have been written or have gone: those lines are made anew, the others go on.
    /// `what` names the change for the journal.
    virtual void FilesChanged(const Text& what) = 0;
    /// Closes a line until it is opened again or the program starts anew.
    virtual void Hold(const Text& name, bool isHeld) = 0;
    /// Throws away what comes on a line, though it is logged, for ten minutes at most. There is one such
    /// line.
    virtual void Mute(const Text& name, bool isMuted) = 0;
    /// The name of that line; empty for none.
    virtual Text MutedPort() const { return {}; }
    /// The device files of serial lines, lasting names first; none where they cannot be known.
    virtual std::vector<Text> SerialDevices() const { return {}; }
    /// The addresses that the machine has; none where they cannot be known.
    virtual std::vector<Text> Addresses() const { return {}; }
    /// Takes the settings file of a line away into Settings\Backup; false when that cannot be done here.
    virtual bool RemoveFile(const Text& name) = 0;
    /// Sends a test telegram to the line as a transmitter would; false when this kind of line takes none.
    virtual bool StartTest(const Text& name) = 0;
    /// Once, when it is over: whether it was acknowledged.
    virtual std::optional<bool> TakeTestOutcome() = 0;
};

}  // namespace nordkeep
