#pragma once

#include "console/lists/OperatorState.h"
#include "pipeline/AlarmHandling.h"
#include "platform/Dialogs.h"
#include "runtime/Language.h"

#include <functional>
#include <memory>
#include <span>

namespace nordkeep {

/// What operators do with alarms from the lists. A question names the one alarm, or how many there are and
/// the most urgent priority among them; an end of several can be taken back for some seconds. Each command
/// asks first; any answer but yes changes nothing. Rows are named by their keys; a row whose record has gone
/// is left alone.
class AlarmCommands {
 public:
    /// Captions of a button: for one alarm, and for several with their number.
    struct Verb {
        int one = 0;
        int several = 0;
    };
    struct Needs {
        const EventStore& store;
        AlarmHandling& handling;
        Dialogs& dialogs;
        const Language& language;
        const Clock& clock;
        /// Asked behind every question, since rights and connection may have gone while it was up.
        const OperatorState& state;
    };
    explicit AlarmCommands(const Needs& needs) : needs_(needs) {}

    /// Ends all alarms that are not ended yet, also those that a filter hides, and silences the sound.
    void AckAll();
    /// Ends the selected new alarms.
    void CloseSelected(std::span<const Text> rowKeys);
    /// Archives the selected old alarms.
    void ArchiveSelected(std::span<const Text> rowKeys);

    /// Alarms whose end can still be taken back.
    std::size_t UndoCount() const;
    /// For so long.
    int UndoSeconds() const;
    void Undo();

 private:
    /// `about`: the second line of the question.
    bool Asks(int text, Verb verb, Answer byDefault, std::span<const std::int32_t> filePointers) const;
    /// What a question about these alarms is about; empty without any.
    Text About(std::span<const std::int32_t> filePointers) const;
    /// For a while these can be taken back.
    AlarmHandling::EndTold Offering();
    void Offer(std::vector<EndedAlarm> ended);

    Needs needs_;
    std::vector<EndedAlarm> ended_{};
    std::int64_t undoUntilMs_ = 0;
    std::shared_ptr<bool> life_ = std::make_shared<bool>(true);  // for an end that outlives the window
};

}  // namespace nordkeep
