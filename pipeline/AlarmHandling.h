#pragma once

#include "pipeline/Deeds.h"
#include "pipeline/OperatorDesk.h"
#include "platform/Clock.h"
#include "store/EventStore.h"

#include <optional>
#include <span>

namespace nordkeep {

/// What is done to a stored alarm, by an operator, by a reset or by a client of this server. Whoever ends,
/// comments or archives an alarm does it here, so that it is stored, told and shown in one way. The commands
/// ask their questions before.
class AlarmHandling {
 public:
    struct Needs {
        EventStore& store;
        AlarmViews& views;
        const Clock& clock;
        OperatorDesk& desk;
        Deeds& deeds;
    };
    explicit AlarmHandling(const Needs& needs) : needs_(needs) {}

    // --- What an operator does at this place. A record that has left the store meanwhile is left alone.

    /// A short comment that was typed is taken in the same step.
    void End(cAlarm& alarm, const std::optional<Text>& smallComment = {});
    void EndSeveral(std::span<const std::int32_t> filePointers);
    /// All that are not ended yet. The sound goes off also when there are none.
    void EndAll();
    /// The comment is in the file of the object: the alarm counts as commented.
    void Comment(cAlarm& alarm, const std::optional<Text>& smallComment);
    void TakeSmallComment(cAlarm& alarm, const Text& smallComment);
    /// On a client the server takes the records out.
    void Archive(std::span<const std::int32_t> filePointers);

    // --- What others do

    /// To status 5, or to 4 when the acknowledge follows later.
    void EndByReset(cAlarm& alarm, AlarmStatus status);
    /// A client's change, as the client made it. Gives what has become of the record, which may have left.
    cAlarm TakeOver(cAlarm& alarm, cAlarm changed, const Doer& by);

 private:
    Doer Operator() const { return {.user = needs_.desk.UserName(), .station = kHere}; }
    void EndOne(cAlarm& alarm, const std::optional<Text>& smallComment = {});
    /// Does it to all that `find` gives for the keys, with one line in the log.
    template <class Keys, class Finder, class Deed>
    void DoToEach(JournalKind kind, const Keys& keys, Finder find, Deed deed);
    /// None for a record that has gone.
    cAlarm* Find(std::int32_t filePointer) const;

    Needs needs_;
};

}  // namespace nordkeep
