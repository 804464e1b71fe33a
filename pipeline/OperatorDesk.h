#pragma once

#include "store/Alarm.h"

namespace nordkeep {

/// What an event, and what is done to it, brings about at the operator's place. The decisions are the
/// pipeline's; the desk carries them out.
class OperatorDesk {
 public:
    virtual ~OperatorDesk() = default;
    /// Selects and shows the row of a new alarm, unless the operator has one selected or a filter hides it.
    virtual void OfferSelection(const cAlarm& alarm) = 0;
    /// The alarm and its map become the latest ones.
    virtual void KeepAsLatest(const cAlarm& alarm) = 0;
    /// Restores a minimised window, brings it to the front and turns to the new alarms.
    virtual void PopUp() = 0;
    virtual void ViewComment(const cAlarm& alarm) = 0;
    virtual void ViewMap(const cAlarm& alarm) = 0;
    virtual void ShowPicture(const cAlarm& alarm, const Text& caption, bool isFollowedBySpeech) = 0;
    virtual void Beep() = 0;
    /// Prints the alarm on its own page if the page printer's settings say so; asked for every alarm.
    virtual void PrintAlarmPage(const cAlarm& alarm) = 0;
    /// An operator has ended the alarm here: its picture goes.
    virtual void AlarmEnded(std::int32_t filePointer) = 0;
    /// An operator has ended all alarms here: the sound goes off.
    virtual void AllAlarmsEnded() = 0;
    /// Who works here; empty where nobody logs in.
    virtual Text UserName() const = 0;
};

}  // namespace nordkeep
