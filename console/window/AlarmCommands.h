#pragma once

#include "console/lists/OperatorState.h"
#include "pipeline/AlarmHandling.h"
#include "platform/Dialogs.h"
#include "runtime/Language.h"

#include <functional>
#include <span>

namespace nordkeep {

/// What operators do with alarms from the lists. Each command asks first; any answer but yes changes nothing.
/// Rows are named by their keys; a row whose record has gone is left alone.
class AlarmCommands {
 public:
    struct Needs {
        const EventStore& store;
        AlarmHandling& handling;
        Dialogs& dialogs;
        const Language& language;
        /// Asked behind every question, since rights and connection may have gone while it was up.
        const OperatorState& state;
    };
    explicit AlarmCommands(const Needs& needs) : needs_(needs) {}

    /// Ends all alarms that are not ended yet, and silences the sound. Where a filter hides some of them the
    /// question tells how many there are.
    void AckAll(bool isFiltered = false);
    /// Ends the selected new alarms.
    void CloseSelected(std::span<const Text> rowKeys);
    /// Archives the selected old alarms.
    void ArchiveSelected(std::span<const Text> rowKeys);

 private:
    /// `behind`: a further line of the question.
    bool Asks(int text, Answer byDefault = Answer::No, const Text& behind = {}) const;

    Needs needs_;
};

}  // namespace nordkeep
