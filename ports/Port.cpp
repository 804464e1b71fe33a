#include "ports/Port.h"

#include "runtime/Dates.h"

namespace nordkeep {
namespace {

constexpr int kTextSettingsChanged = 1146;
constexpr int kTextPurged = 1135;
constexpr int kTextBadSetting = 3605;

Text SettingsFile(const Text& portName) {
    return "Settings\\" + portName + ".ini";
}

}  // namespace

cPort::cPort(const PortParts& parts, Text portName)
    : parts_(parts),
      replies_([this](TextView reply) { SendBytes(reply); }, [this] { transport_->HangUpWhenSent(); }) {
    eventPort_.PortName = std::move(portName);
}

bool cPort::InitializePort() {
    const Text name = eventPort_.PortName;
    line_ = LoadLineSettings(parts_.settings, name);
    eventPort_ = LoadSettings(parts_.settings, EventPortRows(), name);
    eventPort_.PortName = eventPort_.binding.portName = name;
    eventPort_.m_PortDescription = line_.PortDescription;
    const auto format = ParseMessageFormat(line_.MessageFormat);
    const auto type = ParsePortType(line_.PortType);
    format_ = format.value_or(MessageFormat::Robofon);
    portLog_.emplace(parts_.language, parts_.log, eventPort_.PortName, line_, format_);
    if (type && format) {
        transport_ = NewTransport(*type);
        lineFormat_ = MakeLineFormat(format_, {.files = parts_.settings,
                                               .language = parts_.language,
                                               .portName = name,
                                               .findCaller = OwnCallerLookup(),
                                               .conversation = OwnConversation(),
                                               .exports = parts_.exports});
    }
    if (!transport_ || !lineFormat_) {
        transport_.reset();
        portLog_->Failure(kTextBadSetting, name + " (PortType=" + line_.PortType + ", MessageFormat=" +
                                               std::to_string(line_.MessageFormat) + ")");
        return false;
    }
    type_ = type;
    supervision_ = LoadSupervisionSettings(parts_.settings, name, format_);
    lastTrafficMs_ = parts_.clock.MonotonicMs();
    return true;
}

std::unique_ptr<Transport> cPort::NewTransport(PortType type) {
    const TransportParts transportParts{.sockets = parts_.sockets,
                                        .serial = parts_.serial,
                                        .settings = parts_.settings,
                                        .language = parts_.language,
                                        .clock = parts_.clock,
                                        .dataFolder = parts_.dataFolder,
                                        .loop = parts_.loop,
                                        .format = format_,
                                        .areAllEventsStored = parts_.areAllEventsStored,
                                        .inet = parts_.inet};
    const auto onStep = [this](TelegramStep step, EventCommit::Completion whenStored) {
        HandleStep(std::move(step), std::move(whenStored));
    };
    const auto onTraffic = [this](TextView bytes, TrafficDirection direction) {
        parts_.trafficLog.WriteTrafficLog(bytes, direction, line_.PortDescription);
    };
    return MakeTransport(type, transportParts, *portLog_,
                         {.dataWaiting = [this] { OnDataWaiting(); },
                          .newStream = [this] { OnNewStream(); },
                          .stepReady = onStep,
                          .traffic = onTraffic});
}

CallerLookup cPort::OwnCallerLookup() const {
    if (!parts_.findCaller) return {};
    return [this](TextView number) { return parts_.findCaller(eventPort_.binding, number); };
}

Conversation cPort::OwnConversation() {
    const auto act = [this](TelegramStep step, EventCommit::Completion whenStored) {
        HandleStep(std::move(step), std::move(whenStored));
    };
    return {.wait = parts_.wait,
            .send = [this](TextView text) { SendBytes(text); },
            .canSend = [this] { return transport_->CanSend(); },
            .act = act};
}

bool cPort::IsToBeOpen(int tickMs, const PortConditions& conditions) {
    const int patience = line_.ClosePortWhenNoNetworkClientsAreConnected;
    if (conditions.isServer && patience >= 0) {
        if (conditions.isAnyClientConnected) {
            noClientsCountdownMs_ = patience * 1000;
        } else {
            noClientsCountdownMs_ = std::max(noClientsCountdownMs_ - tickMs, 0);
            if (noClientsCountdownMs_ == 0) return false;
        }
    }
    return !line_.ClosePortIfTorvexIsLost || !conditions.isDispatchConfigured ||
           conditions.isDispatchConnected;
}

void cPort::Tick(int tickMs, const PortConditions& conditions) {
    if (!transport_ || portIndex_ == 0) return;
    isMuted_ = !conditions.mutedPort.empty() && conditions.mutedPort == eventPort_.PortName;
    if (!IsToBeOpen(tickMs, conditions)) return ClosePort(conditions.isShuttingDown);
    if (isInOpen_ || conditions.isShuttingDown || conditions.arePortsDisabled) return;
    ReadPortDisable();
    if (IsDisabledByDate()) {
        reopenCountdownMs_ = std::max(reopenCountdownMs_ - tickMs, 0);
        return ClosePort(false);
    }
    isInOpen_ = true;
    OpenPort(tickMs);
    ServicePort(tickMs);
    isInOpen_ = false;
}

void cPort::CyclicHTTPCleanup(int tickMs, const PortConditions& conditions) {
    if (!transport_ || portIndex_ == 0 || conditions.isShuttingDown) return;
    transport_->CyclicHTTPCleanup({tickMs, IsToBeOpen(0, conditions), isMuted_});
}

void cPort::ReadPortDisable() {
    const Text file = SettingsFile(eventPort_.PortName);
    const FileStamp stamp = StampOf(parts_.dataFolder.Resolve(file));
    if (stamp == settingsStamp_) return;
    settingsStamp_ = stamp;
    portDisable_ = parts_.settings.ReadPortIni("General", "PortDisable", "0", eventPort_.PortName);
    parts_.log.WriteSysLog(eventPort_.PortName + ": " + line_.PortDescription + " " +
                               parts_.language.GetLanguageText(kTextSettingsChanged) +
                               " (PortDisable=" + portDisable_ + ")",
                           LogKind::Information);
}

bool cPort::IsDisabledByDate() {
    if (!IsTrue(portDisable_)) return false;
    const auto until = ParseDateTime(portDisable_);
    return until && *until > parts_.clock.Now();
}

void cPort::OpenPort(int tickMs) {
    if (transport_->IsOpen()) return;
    // What a muted port took out of a file would be gone.
    if (isMuted_ && type_ == PortType::FILE) return;
    if (reopenCountdownMs_ > 0) {
        reopenCountdownMs_ -= tickMs;
        return;
    }
    reopenCountdownMs_ = line_.ReopenInterval * 1000;
    transport_->Open();
}

void cPort::ClosePort(bool isShuttingDown) {
    if (isShuttingDown) parts_.wait->EndAll();
    if (transport_) transport_->Close(isShuttingDown);
}

void cPort::SendBytes(TextView bytes) {
    if (bytes.empty() || !transport_) return;
    if (!transport_->Send(bytes)) return;
    parts_.trafficLog.WriteTrafficLog(bytes, TrafficDirection::Sent, line_.PortDescription);
}

void cPort::ServicePort(int tickMs) {
    PurgeHalfTelegram();
    HandleStep(lineFormat_->Service(TickOf(tickMs)));
    transport_->Service({.tickMs = tickMs, .mayBegin = true, .isMuted = isMuted_});
    SuperviseTestTelegrams();
    // The first tick, of no length, comes before the stored events have been read: nothing may wait in it.
    if (tickMs > 0) lineFormat_->Converse(TickOf(tickMs));
}

ServiceTick cPort::TickOf(int tickMs) const {
    return {.now = parts_.clock.Now(),
            .monotonicMs = parts_.clock.MonotonicMs(),
            .tickMs = tickMs,
            .canSend = transport_->CanSend(),
            .silentMs = parts_.clock.MonotonicMs() - lastTrafficMs_,
            .isTestTelegramMissing = isTestTelegramMissing_};
}

void cPort::Finish() {
    if (lineFormat_) HandleStep(lineFormat_->Finish(parts_.clock.Now()));
}

// Compares seconds of the day, so a half telegram from before midnight stays until the clock has passed its
// time again.
void cPort::PurgeHalfTelegram() {
    if (line_.AutoPurgeBufferTime <= 0 || lastReceiveSecond_ <= 0) return;
    const int second = parts_.clock.Now().SecondOfDay();
    if (second <= lastReceiveSecond_ || second - lastReceiveSecond_ <= line_.AutoPurgeBufferTime) return;
    if (!received_.IsEmpty() && !isContinuing_) {
        portLog_->Information(kTextPurged, " " + line_.PortDescription);
        received_.Clear();
    }
    lastReceiveSecond_ = second;
}

void cPort::SuperviseTestTelegrams() {
    if (supervision_.TestTelegramInterval <= 0 || isTestTelegramMissing_) return;
    const std::int64_t silentMs = parts_.clock.MonotonicMs() - lastTrafficMs_;
    if (silentMs <= supervision_.TestTelegramInterval * 1000LL) return;
    isTestTelegramMissing_ = true;
    RaiseTestTelegramEvent(supervision_.TestTelegramAlarmCode);
}

void cPort::NoteTraffic() {
    lastTrafficMs_ = parts_.clock.MonotonicMs();
    if (!isTestTelegramMissing_) return;
    isTestTelegramMissing_ = false;
    RaiseTestTelegramEvent(supervision_.TestTelegramRestoreCode);
}

void cPort::RaiseTestTelegramEvent(const Text& code) {
    parts_.intake.HandleIncomingEvent({.AlarmTime = parts_.clock.Now(),
                                       .ProtocolType = kOwnProtocol,
                                       .DefaultAlarmCode = code,
                                       .PortObject = &eventPort_});
}

}  // namespace nordkeep
