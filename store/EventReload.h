#pragma once

#include "platform/FolderWalk.h"
#include "store/EventReading.h"

namespace nordkeep {

/// Brings the list to what the event files say while the program runs, in slices between which telegrams are
/// taken in: records whose files have been put there by hand come in at their place in time, those whose
/// files have changed follow them, and those whose files have gone leave. What has not reached its file, and
/// what cannot be read, stays as it is.
class EventReload {
 public:
    EventReload(const StoreParts& parts, const StoreSettings& settings, EventList& events, EventFiles& files);

    /// Works for some milliseconds. True while more is to be done.
    bool Slice(int mostMs);
    /// Behind the last slice: the lines in the log. `tooMany` records stand above the limits and are to
    /// leave.
    void Finish(std::size_t tooMany);

 private:
    using Step = bool (EventReload::*)();  // true while the same is to be done again

    bool TakeFile();
    bool LookForFile();
    bool PutFound();
    void TakeRecord(const EventFileName& file, cAlarm* known);
    void Follow(cAlarm& known, const cAlarm& onDisk);
    void Leave(cAlarm& alarm);
    void Put(std::unique_ptr<cAlarm> alarm, EventSequence before);

    const StoreParts& parts_;
    const StoreSettings& settings_;
    EventList& events_;
    EventFiles& files_;
    EventReading reading_;
    FolderWalk walk_;
    std::size_t met_ = 0;
    std::size_t step_ = 0;
    EventSequence last_;    // of those that were there at the begin
    EventSequence at_ = 0;  // where the walk over the list has come to
    // Those that have no place yet, by arrival; of one time by number, as at the start.
    std::map<std::pair<std::int64_t, std::int32_t>, std::unique_ptr<cAlarm>> found_{};
};

}  // namespace nordkeep
