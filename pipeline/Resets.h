#pragma once

#include "pipeline/AlarmHandling.h"
#include "pipeline/ResetSettings.h"

namespace nordkeep {

/// Pairs new records with active alarms: repeats of an alarm, and resets that end one.
class Resets {
 public:
    Resets(EventStore& store, AlarmHandling& handling, const Clock& clock, const ResetSettings& settings)
        : store_(store), handling_(handling), clock_(clock), settings_(settings) {}

    /// Marks a record that repeats an active alarm, and acknowledges it when it follows closely enough.
    void DetectRepeat(cAlarm& alarm);
    /// Ends the alarms that this record resets, as far as the settings say, and gives the record the status
    /// of a reset. False when it resets nothing.
    bool ResolveResets(cAlarm& alarm);
    /// Acknowledges alarms whose reset was received longer ago than the delay.
    void AcknowledgeDelayed(OleDate now);

 private:
    void TakeOverTexts(cAlarm& alarm) const;

    EventStore& store_;
    AlarmHandling& handling_;
    const Clock& clock_;
    const ResetSettings& settings_;
};

}  // namespace nordkeep
