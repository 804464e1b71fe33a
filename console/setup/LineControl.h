#pragma once

#include "platform/OleDate.h"
#include "platform/Text.h"

#include <optional>
#include <vector>

namespace nordkeep {

enum class LineState {
    Open,
    Closed,    // it is to be open, and could not be opened
    Disabled,  // until a date
    Held,      // closed by hand
    Waiting,   // its settings let it be closed now: no dispatcher, no client
    Unusable,  // its settings make no line
};

/// How a line does at the moment.
struct LineFigures {
    Text name{};  // of its settings file, "Port1"
    LineState state = LineState::Closed;
    OleDate since{};  // of the state
    OleDate lastTraffic{};
    int telegramsToday = 0;
    int refusedToday = 0;  // answered with a no, or thrown away
};

/// The lines of this copy, for the dialog that sets them up. A client has none: its server takes up the files
/// that it writes.
class LineControl {
 public:
    virtual ~LineControl() = default;
    virtual std::vector<LineFigures> Lines() const = 0;
    /// Settings files of lines have been written or have gone: those lines are made anew, the others go on.
    /// `what` names the change for the journal.
    virtual void FilesChanged(const Text& what) = 0;
    /// Closes a line until it is opened again or the program starts anew.
    virtual void Hold(const Text& name, bool isHeld) = 0;
    /// Takes the settings file of a line away into Settings\Backup; false when that cannot be done here.
    virtual bool RemoveFile(const Text& name) = 0;
    /// Sends a test telegram to the line as a transmitter would; false when this kind of line takes none.
    virtual bool StartTest(const Text& name) = 0;
    /// Once, when it is over: whether it was acknowledged.
    virtual std::optional<bool> TakeTestOutcome() = 0;
};

}  // namespace nordkeep
