#pragma once

#include "store/EventFiles.h"

namespace nordkeep {

/// What every reading of event files has in common: which bytes are a record, which records stay, and what is
/// told of those that do not.
class EventReading {
 public:
    EventReading(const StoreParts& parts, const StoreSettings& settings, EventFiles& files);

    /// The record of a file; none, and its name kept for the log, when its bytes are none.
    std::unique_ptr<cAlarm> RecordOf(const EventFileName& file, const std::optional<Text>& content);
    void NoteUnreadable(Text name) { unreadable_.push_back(std::move(name)); }
    /// A record that is too old goes to the archive. False, with its file deleted, when it does not stay.
    bool Stays(cAlarm& alarm);
    void NoteDropped(std::size_t count) { dropped_ += count; }
    void LogCounts() const;

 private:
    const StoreParts& parts_;
    const StoreSettings& settings_;
    EventFiles& files_;
    OleDate today_;
    std::vector<Text> unreadable_{};
    std::size_t dropped_ = 0;
    std::size_t tooOld_ = 0;
};

}  // namespace nordkeep
