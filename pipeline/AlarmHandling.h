#pragma once

#include "pipeline/BulkDeeds.h"
#include "pipeline/Deeds.h"
#include "pipeline/OperatorDesk.h"
#include "platform/Clock.h"
#include "store/EventStore.h"

#include <functional>
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
        const Clock& clock;
        OperatorDesk& desk;
        Deeds& deeds;
    };
    explicit AlarmHandling(const Needs& needs) : needs_(needs), bulk_(needs.clock) {}

    // --- What an operator does at this place. A record that has left the store meanwhile is left alone. Of
    // many the first are done at once, the others by ContinueBulk.

    /// A short comment that was typed is taken in the same step.
    void End(cAlarm& alarm, const std::optional<Text>& smallComment = {});
    /// Told, when all are done, of those that were ended by this, as they were before.
    using EndTold = std::function<void(std::vector<EndedAlarm>)>;
    void EndSeveral(std::span<const std::int32_t> filePointers, EndTold told = {});
    /// All that are not ended yet. The sound goes off also when there are none.
    void EndAll(EndTold told = {});
    /// Takes an end back. What has been changed or archived since is left alone.
    void Reopen(std::vector<EndedAlarm> ended);
    /// The comment is in the file of the object: the alarm counts as commented.
    void Comment(cAlarm& alarm, const std::optional<Text>& smallComment);
    void TakeSmallComment(cAlarm& alarm, const Text& smallComment);
    /// On a client the server takes the records out.
    void Archive(std::span<const std::int32_t> filePointers);
    /// A slice of what takes more than one turn of the loop. True while more is to be done.
    bool ContinueBulk() { return bulk_.Continue(); }

    // --- What others do

    /// To status 5, or to 4 when the acknowledge follows later.
    void EndByReset(cAlarm& alarm, AlarmStatus status);
    /// A client's change, as the client made it. Gives what has become of the record, which may have left.
    cAlarm TakeOver(cAlarm& alarm, cAlarm changed, const Doer& by);

 private:
    Doer Operator() const { return {.user = needs_.desk.UserName(), .station = kHere}; }
    void EndOne(cAlarm& alarm, const Doer& by, const std::optional<Text>& smallComment = {});
    void EndEach(std::vector<std::int32_t> filePointers, bool isOnlyOpen, EndTold told);
    /// Does it to each record that is still there, with one line in the log. False of `deed`: it was left
    /// alone.
    void DoToEach(JournalKind kind, std::vector<std::int32_t> filePointers,
                  std::function<bool(std::size_t, cAlarm&, const Doer&)> deed,
                  std::function<void()> finish = {});
    /// None for a record that has gone.
    cAlarm* Find(std::int32_t filePointer) const;

    Needs needs_;
    BulkDeeds bulk_;
};

}  // namespace nordkeep
