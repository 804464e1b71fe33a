#include "pipeline/Dispatcher.h"

#include "runtime/Dates.h"
#include "runtime/Fields.h"

#include <exception>

namespace nordkeep {
namespace {

constexpr int kTextSpeechFollows = 1097;
constexpr TextView kIsoDate = "YYYY-MM-DD";
constexpr TextView kIsoTime = "HH:NN:SS";
constexpr int kAlarmSoundBeep = 1;
constexpr int kAlarmSoundOnce = 2;
constexpr int kAlarmSoundRepeat = 3;

long PriorityOf(const cAlarm& alarm) {
    return static_cast<long>(LeadingNumber(alarm.m_TranslatedPrio));
}

}  // namespace

const Dispatcher::Step Dispatcher::kSteps[] = {
    {"repeat", Runs::Always, &Dispatcher::DetectRepeat},
    {"silent alarms", Runs::Always, &Dispatcher::SilenceAlarm},
    {"acknowledge time", Runs::Always, &Dispatcher::NoteAcknowledgeTime},
    {"alarm line", Runs::Always, &Dispatcher::WriteAlarmLine},
    {"Torvex", Runs::Always, &Dispatcher::SendToTorvex},
    {"ComCall", Runs::Always, &Dispatcher::SendToComCall},
    {"message queue", Runs::Always, &Dispatcher::SendToMessageQueue},
    {"speech", Runs::Always, &Dispatcher::MarkSpeech},
    {"store", Runs::Always, &Dispatcher::Store},
    {"alarm log", Runs::Always, &Dispatcher::WriteAlarmLog},
    {"type log", Runs::Always, &Dispatcher::WriteTypeLog},
    {"object log", Runs::Always, &Dispatcher::WriteObjectLog},
    {"selection", Runs::Always, &Dispatcher::OfferSelection},
    {"latest alarm", Runs::OnlyForNewAlarms, &Dispatcher::KeepAsLatest},
    {"popup", Runs::OnlyForNewAlarms, &Dispatcher::PopUp},
    {"comment and map", Runs::OnlyForNewAlarms, &Dispatcher::ViewCommentAndMap},
    {"picture decision", Runs::OnlyForNewAlarms, &Dispatcher::DecidePicture},
    {"sound decision", Runs::OnlyForNewAlarms, &Dispatcher::DecideSound},
    {"picture", Runs::OnlyForNewAlarms, &Dispatcher::ShowPicture},
    {"sound", Runs::OnlyForNewAlarms, &Dispatcher::PlaySound},
    {"relay", Runs::OnlyForNewAlarms, &Dispatcher::OperateRelay},
    {"line printer", Runs::OnlyForNewAlarms, &Dispatcher::PrintLine},
    {"page printer", Runs::Always, &Dispatcher::PrintPage},
};

// The selection comes last: on a client the row is known only now.
const Dispatcher::Step Dispatcher::kDeskSteps[] = {
    {"alarm line", Runs::Always, &Dispatcher::WriteAlarmLine},
    {"latest alarm", Runs::OnlyForNewAlarms, &Dispatcher::KeepAsLatest},
    {"popup", Runs::OnlyForNewAlarms, &Dispatcher::PopUp},
    {"comment and map", Runs::OnlyForNewAlarms, &Dispatcher::ViewCommentAndMap},
    {"picture decision", Runs::OnlyForNewAlarms, &Dispatcher::DecidePicture},
    {"sound decision", Runs::OnlyForNewAlarms, &Dispatcher::DecideSound},
    {"picture", Runs::OnlyForNewAlarms, &Dispatcher::ShowPicture},
    {"sound", Runs::OnlyForNewAlarms, &Dispatcher::PlaySound},
    {"relay", Runs::OnlyForNewAlarms, &Dispatcher::OperateRelay},
    {"line printer", Runs::OnlyForNewAlarms, &Dispatcher::PrintLine},
    {"page printer", Runs::Always, &Dispatcher::PrintPage},
    {"selection", Runs::OnlyForNewAlarms, &Dispatcher::OfferSelection},
};

void Dispatcher::DispatchEvent(std::unique_ptr<cAlarm> alarm) {
    cAlarm& record = *alarm;
    Dispatch dispatch{.owned = std::move(alarm), .alarm = record};
    Run(kSteps, dispatch);
}

void Dispatcher::PresentAtDesk(cAlarm& alarm) {
    Dispatch dispatch{.owned = nullptr, .alarm = alarm};
    Run(kDeskSteps, dispatch);
}

void Dispatcher::Run(std::span<const Step> steps, Dispatch& dispatch) {
    for (const Step& step : steps) {
        if (step.runs == Runs::OnlyForNewAlarms && !IsActive(dispatch.alarm)) continue;
        try {
            (this->*step.run)(dispatch);
        } catch (const std::exception& fault) {
            needs_.log.WriteSysLog("DispatchEvent, " + Text(step.name) + ": " + fault.what(),
                                   LogKind::Failure);
        }
    }
}

void Dispatcher::DetectRepeat(Dispatch& dispatch) {
    if (!dispatch.alarm.m_IsAConfirmationSMS) needs_.resets.DetectRepeat(dispatch.alarm);
}

void Dispatcher::SilenceAlarm(Dispatch& dispatch) {
    cAlarm& alarm = dispatch.alarm;
    const bool isUnknown = !alarm.m_TranslationIsOk && needs_.settings.SendNotTranslatedToOldAlarms;
    if (PriorityOf(alarm) == -1 || isUnknown) alarm.m_Status = kStatusAcknowledged;
}

void Dispatcher::NoteAcknowledgeTime(Dispatch& dispatch) {
    if (dispatch.alarm.m_Status == kStatusAcknowledged) dispatch.alarm.m_AckedTime = needs_.clock.Now();
}

void Dispatcher::WriteAlarmLine(Dispatch& dispatch) {
    const DispatchSettings& s = needs_.settings;
    needs_.log.WriteSysLog(
        needs_.text.BuildAlarmText({s.AlarmFileFormat, s.AlarmDateFormat, s.AlarmTimeFormat}, dispatch.alarm),
        LogKind::Alarm);
}

bool Dispatcher::IsToBePassedToTorvex(const cAlarm& alarm) const {
    if (alarm.m_IsAConfirmationSMS) return false;
    const Text status = std::to_string(alarm.m_Status);
    for (const Text& passed : Split(needs_.torvexSettings.StatusToBePassedToTorvex, ',')) {
        if (TrimBlanks(passed) == status) return true;
    }
    return false;
}

Text Dispatcher::TorvexLine(const cAlarm& alarm) const {
    return needs_.text.BuildAlarmText({needs_.torvexSettings.Format, kIsoDate, kIsoTime}, alarm) + "\n";
}

void Dispatcher::SendToTorvex(Dispatch& dispatch) {
    cAlarm& alarm = dispatch.alarm;
    if (needs_.torvexSettings.DelayAndWaitForAck > 0) return;
    const bool isDone = !IsToBePassedToTorvex(alarm) || !needs_.torvexSettings.RetryFailedTransmissions;
    const bool isSent =
        IsToBePassedToTorvex(alarm) && needs_.torvex.IsConfigured() && needs_.torvex.Send(TorvexLine(alarm));
    if (isSent || isDone) alarm.m_SentToTorvex = -1;
}

void Dispatcher::SendWaitingToTorvex(OleDate now) {
    const EventList& events = needs_.store.Events();
    for (EventSequence at = events.Next(0); at != 0; at = events.Next(at)) {
        cAlarm& alarm = *events.Find(at);
        // The clock of a sender can be wrong by days. Only an old record has no time of arrival.
        const OleDate came = alarm.m_ArrivedTime.IsNever() ? alarm.m_TimeStamp : alarm.m_ArrivedTime;
        const OleDate due = came.PlusSeconds(needs_.torvexSettings.DelayAndWaitForAck);
        if (alarm.m_SentToTorvex != 0 || alarm.m_Status == kStatusRemoved || due >= now) continue;
        const bool isSent = !IsToBePassedToTorvex(alarm) || needs_.torvex.Send(TorvexLine(alarm));
        if (!isSent && needs_.torvexSettings.RetryFailedTransmissions) continue;
        alarm.m_SentToTorvex = -1;
        needs_.store.Update(alarm);
    }
}

void Dispatcher::SendToComCall(Dispatch& dispatch) {
    needs_.outputs.SendToComCall(dispatch.alarm);
}

void Dispatcher::SendToMessageQueue(Dispatch& dispatch) {
    needs_.outputs.SendToMessageQueue(dispatch.alarm);
}

void Dispatcher::MarkSpeech(Dispatch& dispatch) {
    cAlarm& alarm = dispatch.alarm;
    if (!alarm.m_MessageIsFollowedBySpeech) return;
    if (!alarm.m_SIAStatus.empty()) alarm.m_SIAStatus += ' ';
    alarm.m_SIAStatus += needs_.language.GetLanguageText(kTextSpeechFollows);
}

void Dispatcher::Store(Dispatch& dispatch) {
    needs_.store.StoreNew(std::move(dispatch.owned));
}

void Dispatcher::WriteAlarmLog(Dispatch& dispatch) {
    const DispatchSettings& s = needs_.settings;
    alarmLog_.AppendUnlessTaken(
        kAlarmLogSpool,
        needs_.text.BuildAlarmText(
            {s.AlarmLogFileFileFormat, s.AlarmLogFileDateFormat, s.AlarmLogFileTimeFormat}, dispatch.alarm) +
            "\r\n");
}

void Dispatcher::WriteTypeLog(Dispatch& dispatch) {
    if (!needs_.settings.CreateTypeLogFiles) return;
    const cAlarm& alarm = dispatch.alarm;
    Text folder = "LogFiles";
    for (const Text& part : {alarm.m_TranslationFile, alarm.m_TypeCode}) {
        if (part.empty()) continue;
        folder += "\\" + FileSafeName(part);
        MakeFolder(needs_.dataFolder.Resolve(folder));
    }
    Text line = FormatDate(alarm.m_TimeStamp, "YY-MM-DD");
    for (const Text& field :
         {FormatDate(alarm.m_TimeStamp, kIsoTime), alarm.m_ProtocolType, alarm.m_TranslatedPrio,
          alarm.m_TranslatedIDCode, alarm.m_TranslatedTypeCode, alarm.m_AlarmCodeToStore}) {
        line += ";" + field;
    }
    const Text name = FormatDate(needs_.clock.Now(), "YYYYMMDD\"_\"HHNNSS") + ".LOG";
    AppendToFile(needs_.dataFolder.Resolve(folder + "\\" + name), line + "\r\n");
}

void Dispatcher::WriteObjectLog(Dispatch& dispatch) {
    if (!needs_.settings.CreateObjectLogFiles) return;
    const DispatchSettings& s = needs_.settings;
    MakeFolder(needs_.dataFolder.Resolve("LogFiles\\Objects"));
    const Text name = FileSafeName(dispatch.alarm.m_TranslatedIDCode);
    AppendToFile(
        needs_.dataFolder.Resolve("LogFiles\\Objects\\" + name + ".LOG"),
        needs_.text.BuildAlarmText(
            {s.ObjectLogFileFormat, s.ObjectLogFileDateFormat, s.ObjectLogFileTimeFormat}, dispatch.alarm) +
            "\r\n");
}

void Dispatcher::OfferSelection(Dispatch& dispatch) {
    if (dispatch.alarm.m_Status != kStatusAcknowledged) needs_.desk.OfferSelection(dispatch.alarm);
}

void Dispatcher::KeepAsLatest(Dispatch& dispatch) {
    needs_.desk.KeepAsLatest(dispatch.alarm);
}

void Dispatcher::PopUp(Dispatch&) {
    if (needs_.deskSettings.AlarmPopup) needs_.desk.PopUp();
}

void Dispatcher::ViewCommentAndMap(Dispatch& dispatch) {
    if (needs_.deskSettings.AutoViewComment) needs_.desk.ViewComment(dispatch.alarm);
    if (needs_.deskSettings.AutoViewMap) needs_.desk.ViewMap(dispatch.alarm);
}

void Dispatcher::DecidePicture(Dispatch& dispatch) {
    const DeskSettings& s = needs_.deskSettings;
    dispatch.isFollowedBySpeech = s.SpeechPictureTime >= 0 && dispatch.alarm.m_MessageIsFollowedBySpeech;
    dispatch.wantsPicture = !s.AlarmPictureUseSoundPrio || dispatch.isFollowedBySpeech;
}

void Dispatcher::DecideSound(Dispatch& dispatch) {
    if (!ParsePriorityRange(needs_.deskSettings.SoundPrio).Holds(PriorityOf(dispatch.alarm))) return;
    dispatch.wantsSound = dispatch.wantsPicture = true;
}

void Dispatcher::ShowPicture(Dispatch& dispatch) {
    if (!dispatch.wantsPicture || needs_.deskSettings.AlarmPictureTime < 0) return;
    const cAlarm& alarm = dispatch.alarm;
    needs_.desk.ShowPicture(alarm, alarm.m_TranslatedIDCode + " " + alarm.m_TranslatedTypeCode,
                            dispatch.isFollowedBySpeech);
}

void Dispatcher::PlaySound(Dispatch& dispatch) {
    if (!dispatch.wantsSound) return;
    const long priority = PriorityOf(dispatch.alarm);
    switch (needs_.deskSettings.AlarmSound) {
        case kAlarmSoundBeep:
            return needs_.desk.Beep();
        case kAlarmSoundOnce:
            return needs_.outputs.PlaySound(SoundRequest::Once, priority);
        case kAlarmSoundRepeat:
            return needs_.outputs.PlaySound(SoundRequest::Repeat, priority);
        default:
            return;
    }
}

void Dispatcher::OperateRelay(Dispatch& dispatch) {
    const DeskSettings& s = needs_.deskSettings;
    const bool isInRange = ParsePriorityRange(s.RelayPrio).Holds(PriorityOf(dispatch.alarm));
    if (isInRange && s.RelayPort >= 1) needs_.outputs.RequestRelay();
}

void Dispatcher::PrintLine(Dispatch& dispatch) {
    if (needs_.deskSettings.PrinterPort > 0) needs_.outputs.PrintAlarm(dispatch.alarm);
}

void Dispatcher::PrintPage(Dispatch& dispatch) {
    needs_.desk.PrintAlarmPage(dispatch.alarm);
}

}  // namespace nordkeep
