#pragma once

#include "runtime/SettingRow.h"

namespace nordkeep {

// Keys that more than one settings struct has. Each stands here once, with its default, and a settings struct
// that has it is derived from it and names its row in the table.

/// The dates of alarms in lists and lines.
struct AlarmDateSettings {
    Text AlarmDateFormat{"Short Date"};
    Text AlarmTimeFormat{"Long Time"};
};
template <class Struct>
inline constexpr SettingRow<Struct> kAlarmDateRow{"General", "AlarmDateFormat", SettingScope::Workstation,
                                                  &Struct::AlarmDateFormat};
template <class Struct>
inline constexpr SettingRow<Struct> kAlarmTimeRow{"General", "AlarmTimeFormat", SettingScope::Workstation,
                                                  &Struct::AlarmTimeFormat};

/// The dates of the alarm log and of the archive.
struct AlarmLogDateSettings {
    Text AlarmLogFileDateFormat{"Short Date"};
    Text AlarmLogFileTimeFormat{"Long Time"};
};
template <class Struct>
inline constexpr SettingRow<Struct> kAlarmLogDateRow{"General", "AlarmLogFileDateFormat",
                                                     SettingScope::Centre, &Struct::AlarmLogFileDateFormat};
template <class Struct>
inline constexpr SettingRow<Struct> kAlarmLogTimeRow{"General", "AlarmLogFileTimeFormat",
                                                     SettingScope::Centre, &Struct::AlarmLogFileTimeFormat};

/// The dates on paper.
struct PrinterDateSettings {
    Text PrinterDateFormat{"Short Date"};
    Text PrinterTimeFormat{"Long Time"};
};
template <class Struct>
inline constexpr SettingRow<Struct> kPrinterDateRow{"General", "PrinterDateFormat", SettingScope::Workstation,
                                                    &Struct::PrinterDateFormat};
template <class Struct>
inline constexpr SettingRow<Struct> kPrinterTimeRow{"General", "PrinterTimeFormat", SettingScope::Workstation,
                                                    &Struct::PrinterTimeFormat};

/// Characters of the small comment, in event files and on the sheet; 0: there is none.
struct SmallCommentSettings {
    int SmallCommentSize = 0;
};
template <class Struct>
inline constexpr SettingRow<Struct> kSmallCommentRow{
    "General", "SmallCommentSize", SettingScope::Centre, &Struct::SmallCommentSize, 0, 128};

/// Priority of the events that are signs of life for alive test 2, and test alarms; 9999 for none.
struct TestPrioSettings {
    int AliveTest2ResetTimerPrio = 9999;
};
template <class Struct>
inline constexpr SettingRow<Struct> kTestPrioRow{"General", "AliveTest2ResetTimerPrio", SettingScope::Centre,
                                                 &Struct::AliveTest2ResetTimerPrio};

/// Seconds that an event is parked which may be the reset of an alarm that has not come; below 1 none is.
struct ParkingSettings {
    int UnAssociatedResetEventsTimeout = 0;
};
template <class Struct>
inline constexpr SettingRow<Struct> kParkingRow{"General", "UnAssociatedResetEventsTimeout",
                                                SettingScope::Centre,
                                                &Struct::UnAssociatedResetEventsTimeout};

/// Milliseconds that the picture of an alarm stays: below 0 there is none, or speech makes no difference to
/// it; 0: it stays.
struct PictureTimeSettings {
    int AlarmPictureTime = -1;
    int SpeechPictureTime = -1;
};
template <class Struct>
inline constexpr SettingRow<Struct> kAlarmPictureTimeRow{
    "General", "AlarmPictureTime", SettingScope::Workstation, &Struct::AlarmPictureTime};
template <class Struct>
inline constexpr SettingRow<Struct> kSpeechPictureTimeRow{
    "General", "SpeechPictureTime", SettingScope::Workstation, &Struct::SpeechPictureTime};

/// Type of the event made from a SIA block that cannot be decoded.
struct SiaErrorSettings {
    int SIADecodeErrorType = 0;
};
template <class Struct>
inline constexpr SettingRow<Struct> kSiaErrorRow{
    "General", "SIADecodeErrorType", SettingScope::Centre, &Struct::SIADecodeErrorType, -32768, 32767};

/// The event's time is the telegram's.
struct TelegramTimeSettings {
    bool TimeStampFromRBM = false;
};
template <class Struct>
inline constexpr SettingRow<Struct> kTelegramTimeRow{"General", "TimeStampFromRBM", SettingScope::Port,
                                                     &Struct::TimeStampFromRBM};

/// The character that stands for a line end within a text.
struct LineEndSettings {
    int SMSCrLfReplaceCharacter = 9;
};
template <class Struct>
inline constexpr SettingRow<Struct> kLineEndRow{"General", "SMSCrLfReplaceCharacter", SettingScope::Port,
                                                &Struct::SMSCrLfReplaceCharacter};

/// The number in front of a text is its ID code.
struct NumericCodeSettings {
    bool ParseNumericIDCodeFieldUsingSpace = true;
};
template <class Struct>
inline constexpr SettingRow<Struct> kNumericCodeRow{"General", "ParseNumericIDCodeFieldUsingSpace",
                                                    SettingScope::Port,
                                                    &Struct::ParseNumericIDCodeFieldUsingSpace};

/// The elements of a document are found in any case.
struct XmlNameSettings {
    bool XmlNamesIgnoreCase = false;
};
template <class Struct>
inline constexpr SettingRow<Struct> kXmlNameRow{"General", "XmlNamesIgnoreCase", SettingScope::Port,
                                                &Struct::XmlNamesIgnoreCase};

}  // namespace nordkeep
