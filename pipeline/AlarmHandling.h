#pragma once

#include "pipeline/Deeds.h"
#include "pipeline/OperatorDesk.h"
#include "platform/Clock.h"
#include "store/EventStore.h"

#include <optional>
#include <span>
#include <vector>

namespace nordkeep {

/// What an alarm was before somebody ended it.
struct EndedAlarm {
    std::int32_t filePointer = 0;
    int status = 0;
    OleDate ackedTime{};
};

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
    /// Those that were ended by this, as they were before.
    std::vector<EndedAlarm> EndSeveral(std::span<const std::int32_t> filePointers);
    /// All that are not ended yet. The sound goes off also when there are none.
    std::vector<EndedAlarm> EndAll();
    /// Takes an end back. What has been changed or archived since is left alone. The number of the others.
    std::size_t Reopen(std::span<const EndedAlarm> ended);
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
    /// Notes what the alarm is in front of its end.
    void EndNoted(cAlarm& alarm, std::vector<EndedAlarm>& ended);
    /// Does it to all that `find` gives for the keys, with one line in the log.
    template <class Keys, class Finder, class Deed>
    std::size_t DoToEach(JournalKind kind, const Keys& keys, Finder find, Deed deed);
    /// None for a record that has gone.
    cAlarm* Find(std::int32_t filePointer) const;

    Needs needs_;
};

}  // namespace nordkeep
