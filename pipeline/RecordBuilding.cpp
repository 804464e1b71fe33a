#include "pipeline/RecordBuilding.h"

#include "runtime/Fields.h"

#include <algorithm>

namespace nordkeep {
namespace {

Text PriorityOf(const IncomingEvent& event, const Text& nonTextDefaultPrio) {
    if (event.DefaultPrio >= 0) return std::to_string(event.DefaultPrio);
    const EventPort* port = event.PortObject;
    return port && port->m_DefaultPrio >= 0 ? std::to_string(port->m_DefaultPrio) : nonTextDefaultPrio;
}

void TakeOver(IntakeRun& run) {
    const IncomingEvent& event = run.event;
    cAlarm& alarm = *run.alarm;
    run.code = event.DefaultAlarmCode;
    alarm.m_AlarmCode = run.code;
    alarm.m_ExtraText = event.ExtraText;
    alarm.m_SIADataCode = event.DefaultAlarmCode.substr(0, 2);
    alarm.m_TimeStamp = event.AlarmTime;
    alarm.m_Originator = event.Originator;
    alarm.m_LineCardNumber = event.LineCardNumber;
    alarm.m_RawAlarmCode = event.RawAlarmCode;
    alarm.m_URL = event.URL;
    alarm.m_TranslationNumberToUse = NumberOf(event.TranslationNumberToUse);
    alarm.m_IsAConfirmationSMS = event.IsAConfirmationSMS;
    alarm.m_MessageIsFollowedBySpeech = event.MessageIsFollowedBySpeech;
    if (!event.PortObject) return;
    alarm.m_PortName = event.PortObject->PortName;
    alarm.m_PortDescription = event.PortObject->m_PortDescription;
    if (!event.LineCardNumber.empty()) alarm.m_PortDescription += " (" + event.LineCardNumber + ")";
}

// Alarm lines are split at ";", so the code must not bring one in.
Text AlarmCodeToStore(const Text& code, const Text& extraText) {
    Text joined = code;
    if (!extraText.empty()) joined = TrimBlanks(code + " " + extraText);
    std::replace(joined.begin(), joined.end(), ';', ':');
    return joined;
}

void UseSenderAsCode(IntakeRun& run) {
    const IncomingEvent& event = run.event;
    const bool applies = event.TranslationNumberToUse == Protocol::SMS && !event.Originator.empty() &&
                         event.PortObject && event.PortObject->m_UseSenderAsIDCode;
    if (!applies) return;
    cAlarm& alarm = *run.alarm;
    alarm.m_AlarmCodeToStore = run.code;
    if (event.ExtraText.empty()) {
        alarm.m_ExtraText = run.code;
    } else {
        alarm.m_AlarmCodeToStore += " " + event.ExtraText;
    }
    alarm.m_AlarmCode = run.code = event.Originator;
}

Text WithBlankBehind(TextView text) {
    return text.empty() ? Text() : Text(text) + " ";
}

Text SIAText(const IncomingEvent& event) {
    const Text front = WithBlankBehind(TrimBlanks(event.ExtraText)) + event.SIAPrefixText;
    return WithBlankBehind(TrimBlanks(front)) + event.SIASuffixText;
}

Text Marked(const Text& text) {
    return text.empty() ? Text() : "^" + text + "^";
}

Text SIACodeToStore(const IncomingEvent& event) {
    Text stored = "#" + event.ObjectID + "\\" + event.SIABlockType + event.SIAModifier;
    stored += Marked(event.SIAPrefixText) + event.DefaultAlarmCode + Marked(event.SIASuffixText);
    if (event.SIABlockType != "A" && !event.ExtraText.empty()) stored += "\\A";
    return stored + event.ExtraText;
}

bool IsSIADecodeError(const IncomingEvent& event, int siaDecodeErrorType) {
    return event.TranslationNumberToUse == Protocol::SIA && event.DefaultType >= 0 &&
           event.DefaultType == siaDecodeErrorType;
}

void BuildSIAForm(IntakeRun& run, bool isDecodeError) {
    const IncomingEvent& event = run.event;
    cAlarm& alarm = *run.alarm;
    alarm.m_ExtraText = SIAText(event);
    alarm.m_AlarmCodeToStore = SIACodeToStore(event);
    alarm.m_IdCode = event.ObjectID;
    if (!run.HasGivenType()) alarm.m_TypeCode = alarm.m_SIADataCode;
    if (event.PortObject && !isDecodeError) {
        if (event.SIABlockType == "N") alarm.m_Prio = std::to_string(event.PortObject->m_DefaultSIAPrioN);
        if (event.SIABlockType == "O") alarm.m_Prio = std::to_string(event.PortObject->m_DefaultSIAPrioO);
    }
    if (!event.ObjectID.empty()) run.code = event.ObjectID;
}

}  // namespace

void BuildRecord(IntakeRun& run, const RecordDefaults& defaults) {
    const IncomingEvent& event = run.event;
    cAlarm& alarm = *run.alarm;
    TakeOver(run);
    alarm.m_Prio = PriorityOf(event, defaults.nonTextDefaultPrio);
    if (event.DefaultType >= 0) alarm.m_TypeCode = std::to_string(event.DefaultType);
    alarm.m_AlarmCodeToStore = AlarmCodeToStore(run.code, event.ExtraText);
    UseSenderAsCode(run);
    if (event.TranslationNumberToUse == Protocol::ContactID) run.code = UpperCase(run.code);
    const bool isDecodeError = IsSIADecodeError(event, defaults.siaDecodeErrorType);
    if (event.TranslationNumberToUse == Protocol::SIA) BuildSIAForm(run, isDecodeError);
    alarm.m_TranslatedPrio = alarm.m_Prio;
    alarm.m_TranslatedTypeCode = alarm.m_TypeCode;
    if (!isDecodeError) alarm.m_TranslatedIDCode = alarm.m_IdCode;
    alarm.m_ProtocolType = event.ProtocolType;
}

void FillConfirmation(IntakeRun& run, const Text& label) {
    const IncomingEvent& event = run.event;
    cAlarm& alarm = *run.alarm;
    const auto field = [&](std::size_t number) { return GetField(event.ExtraText, number, "|"); };
    alarm.m_Status = kStatusReset;
    alarm.m_AlarmCodeToStore = field(0);
    alarm.m_ProtocolType = field(1);
    alarm.m_TranslatedPrio = field(2);
    alarm.m_TranslatedTypeCode = field(3);
    alarm.m_TranslatedIDCode = field(4);
    alarm.m_ExtraText = label;
    if (event.PortObject)
        alarm.m_TranslatedPrio = std::to_string(event.PortObject->m_DefaultTorvexAckSMSPrio);
    alarm.m_Originator = event.Originator;
}

}  // namespace nordkeep
