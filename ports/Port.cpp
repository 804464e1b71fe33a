#include "ports/Port.h"

#include "ports/LineFormats.h"
#include "ports/collectors/GsmModem.h"
#include "runtime/Dates.h"

namespace nordkeep {
namespace {

constexpr int kTextSettingsChanged = 1146;
constexpr int kTextBadSetting = 3605;

Text SettingsFile(const Text& portName) {
    return "Settings\\" + portName + ".ini";
}

EventPort LoadEventPort(const Settings& files, const Text& name, const Text& description) {
    EventPort port = LoadSettings(files, EventPortRows(), name);
    port.PortName = port.binding.portName = name;
    port.m_PortDescription = description;
    return port;
}

}  // namespace

cPort::cPort(const PortParts& parts, const PortList& allPorts, Text portName)
    : parts_(parts),
      lineSettings_(LoadLineSettings(parts.settings, portName)),
      settings_(LoadSettings(parts.settings, PortSettingRows(), portName)),
      eventPort_(LoadEventPort(parts.settings, portName, lineSettings_.PortDescription)),
      settingsText_(LoadFile(parts.dataFolder.Resolve(SettingsFile(portName))).bytes),
      type_(ParsePortType(settings_.PortType)),
      format_(ParseMessageFormat(settings_.MessageFormat)),
      log_(parts.language, parts.log, eventPort_.PortName, lineSettings_,
           format_.value_or(MessageFormat::Robofon)),
      tests_(LoadSupervisionSettings(parts.settings, portName, format_.value_or(MessageFormat::Robofon)),
             parts.intake, parts.clock, eventPort_),
      tally_(parts.clock, {.name = eventPort_.PortName,
                           .description = lineSettings_.PortDescription,
                           .kind = LineKindText(settings_.PortType, lineSettings_.PortNumber, format_)}),
      steps_({.language = parts.language,
              .trafficLog = parts.trafficLog,
              .intake = parts.intake,
              .commit = parts.commit,
              .log = log_,
              .port = eventPort_,
              .tests = tests_,
              .tally = tally_}),
      callers_(allPorts, eventPort_.binding) {}

bool cPort::InitializePort() {
    if (type_ && format_ && GoTogether(*type_, *format_)) MakeCollectorOf(*type_, *format_);
    if (collector_) return true;
    log_.Failure(kTextBadSetting, PortName() + " (PortType=" + settings_.PortType +
                                      ", MessageFormat=" + std::to_string(settings_.MessageFormat) + ")");
    return false;
}

void cPort::MakeCollectorOf(PortType type, MessageFormat format) {
    if (IsLineType(type)) {
        return format == MessageFormat::GSM ? MakeModem(type) : MakeReception(type, format);
    }
    collector_ = MakeCollector(type, format,
                               {.sockets = parts_.sockets,
                                .inet = parts_.inet,
                                .settings = parts_.settings,
                                .language = parts_.language,
                                .clock = parts_.clock,
                                .dataFolder = parts_.dataFolder,
                                .loop = parts_.loop,
                                .stored = parts_.stored,
                                .log = log_,
                                .taker = steps_});
}

LineParts cPort::PartsOfLine() {
    return {.sockets = parts_.sockets,
            .serial = parts_.serial,
            .settings = parts_.settings,
            .clock = parts_.clock,
            .log = log_};
}

void cPort::MakeModem(PortType type) {
    auto modem =
        std::make_unique<GsmModem>(GsmModem::Parts{.type = type,
                                                   .line = PartsOfLine(),
                                                   .loop = parts_.loop,
                                                   .wait = parts_.wait,
                                                   .taker = steps_,
                                                   .settings = LoadGsmSettings(parts_.settings, PortName())});
    line_ = &modem->TheLine();
    collector_ = std::move(modem);
}

void cPort::MakeReception(PortType type, MessageFormat format) {
    auto lineFormat = MakeLineFormat(format, {.files = parts_.settings,
                                              .language = parts_.language,
                                              .portName = PortName(),
                                              .callers = callers_,
                                              .exports = parts_.exports});
    if (!lineFormat) return;
    const Reception::Parts parts{.type = type,
                                 .line = PartsOfLine(),
                                 .loop = parts_.loop,
                                 .stalls = parts_.stalls,
                                 .taker = steps_,
                                 .purgeSeconds = settings_.AutoPurgeBufferTime};
    const auto callers = static_cast<std::size_t>(MostCallers(type, format));
    auto reception = callers > 1 ? MakeCallersReception(parts, std::move(lineFormat), callers)
                                 : MakeLineReception(parts, std::move(lineFormat));
    reception_ = reception.get();
    line_ = reception->TheLine();
    collector_ = std::move(reception);
}

// Network senders stay connected, so that many of them is what their format expects.
int cPort::MostCallers(PortType type, MessageFormat format) const {
    if (type != PortType::TCPS) return 1;
    return format == MessageFormat::SiaDc09
               ? LoadSettings(parts_.settings, Dc09CallerRows(), PortName()).MaxCallers
               : settings_.MaxCallers;
}

bool cPort::IsToBeOpen(int tickMs, const PortConditions& conditions) {
    const int patience = settings_.ClosePortWhenNoNetworkClientsAreConnected;
    if (conditions.isServer && patience >= 0) {
        if (conditions.isAnyClientConnected) {
            noClientsCountdownMs_ = patience * 1000;
        } else {
            noClientsCountdownMs_ = std::max(noClientsCountdownMs_ - tickMs, 0);
            if (noClientsCountdownMs_ == 0) return false;
        }
    }
    return !settings_.ClosePortIfTorvexIsLost || !conditions.isDispatchConfigured ||
           conditions.isDispatchConnected;
}

void cPort::Tick(int tickMs, const PortConditions& conditions) {
    if (!collector_ || portIndex_ == 0) return;
    steps_.SetMuted(!conditions.mutedPort.empty() && conditions.mutedPort == eventPort_.PortName);
    if (!IsToBeOpen(tickMs, conditions)) return StayClosed(LineState::Waiting, conditions.isShuttingDown);
    if (isHeld_) return StayClosed(LineState::Held, conditions.isShuttingDown);
    if (conditions.arePortsDisabled) tally_.NoteState(LineState::Disabled);
    if (isInOpen_ || conditions.isShuttingDown || conditions.arePortsDisabled) return;
    ReadPortDisable();
    if (IsDisabledByDate()) {
        reopenCountdownMs_ = std::max(reopenCountdownMs_ - tickMs, 0);
        return StayClosed(LineState::Disabled, false);
    }
    isInOpen_ = true;
    OpenPort(tickMs);
    ServicePort(tickMs);
    isInOpen_ = false;
    const FarEnd end = collector_->End();
    tally_.NoteState(StateNow(end));
    tally_.NoteCaller(end.who);
}

LineState cPort::StateNow(const FarEnd& end) const {
    const bool isUp = collector_->IsOpen() || end.isVisited;
    if (!isUp || end.isMissed) return LineState::Failed;
    if (steps_.IsMuted()) return LineState::Muted;
    if (tests_.IsMissing()) return LineState::Quiet;
    if (end.isConnected) return LineState::Connected;
    return end.isAwaited ? LineState::WaitsForCaller : LineState::Open;
}

void cPort::StayClosed(LineState state, bool isShuttingDown) {
    tally_.NoteState(state);
    ClosePort(isShuttingDown);
}

void cPort::CyclicHTTPCleanup(int tickMs, const PortConditions& conditions) {
    if (!collector_ || portIndex_ == 0 || conditions.isShuttingDown) return;
    if (type_ != PortType::HTTP) return;
    collector_->Tick({.tickMs = tickMs, .mayBegin = IsToBeOpen(0, conditions)});
}

void cPort::ReadPortDisable() {
    const Text file = SettingsFile(eventPort_.PortName);
    const FileStamp stamp = StampOf(parts_.dataFolder.Resolve(file));
    if (stamp == settingsStamp_) return;
    settingsStamp_ = stamp;
    portDisable_ = parts_.settings.ReadPortIni("General", "PortDisable", "0", eventPort_.PortName);
    parts_.log.WriteSysLog(eventPort_.PortName + ": " + lineSettings_.PortDescription + " " +
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
    if (collector_->IsOpen()) return;
    // What a muted port took out of a file would be gone.
    if (steps_.IsMuted() && type_ == PortType::FILE) return;
    if (reopenCountdownMs_ > 0) {
        reopenCountdownMs_ -= tickMs;
        return;
    }
    reopenCountdownMs_ = lineSettings_.ReopenInterval * 1000;
    collector_->Open();
}

void cPort::ClosePort(bool isShuttingDown) {
    if (isShuttingDown) parts_.wait.EndAll();
    if (collector_) collector_->Close(isShuttingDown);
}

void cPort::SendBytes(TextView bytes) {
    if (line_ && line_->Send(bytes, Behind::StayUp)) steps_.NoteTraffic(bytes, TrafficDirection::Sent);
}

void cPort::RequestClock() {
    if (HasClock()) reception_->RequestClock();
}

void cPort::ServicePort(int tickMs) {
    // The web service is polled at a timer of its own.
    if (type_ != PortType::HTTP) collector_->Tick({.tickMs = tickMs, .mayBegin = true});
    tests_.Supervise();
}

bool cPort::HasOtherSettingsNow() const {
    const FileContent file = LoadFile(parts_.dataFolder.Resolve(SettingsFile(PortName())));
    return file.state != FileContent::State::Unreadable && file.bytes != settingsText_;
}

void cPort::TakeUp(const KeptTelegram& kept) {
    steps_.TakeUp(kept, reception_ ? reception_->LookAgain(kept.telegram, kept.arrived) : TelegramStep{});
}

void cPort::Finish() {
    if (reception_) reception_->Finish();
}

}  // namespace nordkeep
