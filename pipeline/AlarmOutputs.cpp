#include "pipeline/AlarmOutputs.h"

#include "pipeline/outputs/CodePage850.h"
#include "runtime/SerialDevices.h"

#include <algorithm>

namespace nordkeep {
namespace {

constexpr int kTextSpeechFollows = 1097;
constexpr TextView kIsoDate = "YYYY-MM-DD";
constexpr TextView kIsoTime = "HH:NN:SS";

RelayWiring WiringOf(const AlarmOutputs::Needs& needs) {
    const int port = needs.deskSettings.RelayPort;
    return {.port = port,
            .device = port < 1 ? Text() : SerialDeviceOf(needs.files, port),
            .isRaisedForAlarms = needs.settings.RelayBehaviour != 0,
            .holdSeconds = needs.settings.RelayDelay};
}

/// LPT n is the device that section PrinterPorts names, else the n-th parallel printer of the machine.
NativePath PrinterOf(const AlarmOutputs::Needs& needs) {
    const int port = needs.deskSettings.PrinterPort;
    if (port < 1) return {};
    return needs.dataFolder.ResolveSetting(needs.files.ReadIni("PrinterPorts", "LPT" + std::to_string(port),
                                                               "/dev/lp" + std::to_string(port - 1)));
}

}  // namespace

AlarmOutputs::AlarmOutputs(const Needs& needs)
    : needs_(needs),
      text_(needs.dataFolder, needs.language),
      comCall_({.settings = needs.comCallSettings,
                .sockets = needs.sockets,
                .log = needs.log,
                .language = needs.language}),
      queue_(needs.settings.MSMQFormatName, needs.queues, needs.log, needs.language),
      sound_({.dataFolder = needs.dataFolder,
              .language = needs.language,
              .log = needs.log,
              .device = needs.sound},
             SoundOfSettings()),
      relay_(WiringOf(needs), needs.serial, needs.log, needs.language),
      printer_(PrinterOf(needs), needs.printer, needs.log, needs.language, needs.settings.PrinterFormFeed) {
    if (!needs.journal) return;
    queueFeed_.emplace(queue_, *needs.journal,
                       [this](const cAlarm& alarm) { return MessageOf(WithoutSpeechMark(alarm)); });
}

void AlarmOutputs::SendToComCall(const cAlarm& alarm) {
    if (!comCall_.IsConnected()) return;
    comCall_.Send(text_.BuildAlarmText({needs_.comCallSettings.Format, kIsoDate, kIsoTime}, alarm) + "\n");
}

void AlarmOutputs::SendToMessageQueue(const cAlarm& alarm) {
    // What the journal holds is sent from there.
    if (queue_.IsConfigured() && !(queueFeed_ && queueFeed_->IsInCharge())) queue_.Send(MessageOf(alarm));
}

// Messages are built of an alarm as it came; the record has been marked behind that.
cAlarm AlarmOutputs::WithoutSpeechMark(cAlarm alarm) const {
    const Text mark = needs_.language.GetLanguageText(kTextSpeechFollows);
    Text& status = alarm.m_SIAStatus;
    if (mark.empty() || !status.ends_with(mark)) return alarm;
    status.erase(status.size() - mark.size());
    if (status.ends_with(' ')) status.pop_back();
    return alarm;
}

QueueMessage AlarmOutputs::MessageOf(const cAlarm& alarm) const {
    const DispatchSettings& dates = needs_.dispatchSettings;
    const auto build = [&](const Text& format) {
        return text_.BuildAlarmText({format, dates.AlarmDateFormat, dates.AlarmTimeFormat}, alarm);
    };
    return {build(needs_.settings.MSMQLabel), build(needs_.settings.MSMQBody)};
}

void AlarmOutputs::PlaySound(SoundRequest request, long priority) {
    if (!needs_.isSilent) sound_.Request(request, priority);
}

AlarmSound AlarmOutputs::SoundOfSettings() const {
    const DeskSettings& desk = needs_.deskSettings;
    return {.file = desk.AlarmSoundFile,
            .device = needs_.settings.AlarmSoundDevice,
            .ofPriority = {desk.AlarmSoundFile1, desk.AlarmSoundFile2, desk.AlarmSoundFile3}};
}

void AlarmOutputs::PrintAlarm(const cAlarm& alarm) {
    const DeskSettings& desk = needs_.deskSettings;
    const Text text = text_.BuildAlarmText(
        {desk.ContinousPrinterFormat, desk.PrinterDateFormat, desk.PrinterTimeFormat}, alarm);
    printer_.SendPRN(desk.PrinterISO2DOS ? ToCodePage850(text) : text, alarm.m_AlarmCodeToStore);
}

std::vector<OutputState> AlarmOutputs::States() const {
    std::vector<OutputState> states;
    if (comCall_.IsConfigured()) states.push_back({.name = "comcall", .isUp = comCall_.IsConnected()});
    if (queue_.IsConfigured())
        states.push_back(
            {.name = "queue",
             .isUp = !queue_.HasFailed(),
             .waiting = std::max(queue_.WaitingCount(), queueFeed_ ? queueFeed_->WaitingCount() : 0)});
    if (relay_.IsConfigured()) states.push_back({.name = "relay", .isUp = !relay_.HasFailed()});
    if (printer_.IsConfigured())
        states.push_back(
            {.name = "printer", .isUp = !printer_.HasFailed(), .waiting = printer_.WaitingCount()});
    return states;
}

std::vector<Text> AlarmOutputs::LostPeers() const {
    std::vector<Text> lost;
    if (comCall_.IsPeerLost()) lost.push_back("ComCall " + needs_.comCallSettings.Address);
    if (queue_.HasFailed()) lost.push_back("MSMQ " + queue_.Peer());
    if (relay_.HasFailed()) lost.push_back("COM" + std::to_string(relay_.Port()));
    if (printer_.HasFailed()) lost.push_back("LPT" + std::to_string(needs_.deskSettings.PrinterPort));
    return lost;
}

void AlarmOutputs::TendPrinterAndQueue(int intervalMs) {
    printer_.Tick();
    queue_.Tick();
    if (queueFeed_) queueFeed_->Tick(intervalMs);
}

void AlarmOutputs::Close() {
    if (sound_.IsSounding()) sound_.Silence();
    relay_.Close();
    printer_.Close();
    comCall_.Close();
    const std::size_t left = queue_.Close();
    if (queueFeed_) return queueFeed_->Close();
    queue_.NoteLeftBehind(left);
}

}  // namespace nordkeep
