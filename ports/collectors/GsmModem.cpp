#include "ports/collectors/GsmModem.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace nordkeep {
namespace {

// Of one line in one turn of the loop; the others wait their turn behind the other lines.
constexpr int kChunksInOneTurn = 16;
constexpr int kPauseOfInitMs = 500;
// An answer that comes after its command was given up must not be taken for that of a later one: the wrong
// message would be deleted.
constexpr std::int64_t kRestMs = 10'000;

constexpr SettingScope kPort = SettingScope::Port;
constexpr const char* kGeneral = "General";

const std::array kGsm = {
    SettingRow<GsmSettings>{kGeneral, "CommandTimeout", kPort, &GsmSettings::CommandTimeout, 1, 32767},
    SettingRow<GsmSettings>{kGeneral, "InitInterval", kPort, &GsmSettings::InitInterval, -1, 2'000'000},
    SettingRow<GsmSettings>{kGeneral, "PollInterval", kPort, &GsmSettings::PollInterval, -1, 2'000'000},
    SettingRow<GsmSettings>{kGeneral, "MinSIMIndex", kPort, &GsmSettings::MinSIMIndex, 0, 100'000},
    SettingRow<GsmSettings>{kGeneral, "MaxSIMIndex", kPort, &GsmSettings::MaxSIMIndex, 0, 100'000},
    SettingRow<GsmSettings>{kGeneral, "EmptyLocationsToPoll", kPort, &GsmSettings::EmptyLocationsToPoll},
    SettingRow<GsmSettings>{kGeneral, "PauseBetweenEachPoll", kPort, &GsmSettings::PauseBetweenEachPoll, 0,
                            60'000},
    SettingRow<GsmSettings>{kGeneral, "SMSCNumber", kPort, &GsmSettings::SMSCNumber},
    SettingRow<GsmSettings>{kGeneral, "PIN", kPort, &GsmSettings::PIN},
    SettingRow<GsmSettings>{kGeneral, "InitString", kPort, &GsmSettings::InitString},
    SettingRow<GsmSettings>{kGeneral, "FO", kPort, &GsmSettings::FO},
    SettingRow<GsmSettings>{kGeneral, "VP", kPort, &GsmSettings::VP},
    SettingRow<GsmSettings>{kGeneral, "PID", kPort, &GsmSettings::PID},
    SettingRow<GsmSettings>{kGeneral, "DCS", kPort, &GsmSettings::DCS},
    SettingRow<GsmSettings>{kGeneral, "CharSet", kPort, &GsmSettings::CharSet},
};

const std::array<Text, 4> kReadResponses = {"OK\r", "ERROR\r", "+CMS ERROR", ""};

Text Quoted(const Text& text) {
    return '"' + text + '"';
}

}  // namespace

std::span<const SettingRow<GsmSettings>> GsmSettingRows() {
    return kGsm;
}

GsmSettings LoadGsmSettings(const Settings& files, const Text& portName) {
    GsmSettings settings = LoadSettings(files, GsmSettingRows(), portName);
    settings.sms = LoadSettings(files, SmsSettingRows(), portName);
    settings.sms.cleaning = LoadSettings(files, TextCleaningRows(), portName);
    return settings;
}

std::vector<Text> InitCommands(const GsmSettings& settings) {
    std::vector<Text> commands;
    if (!settings.PIN.empty()) commands.push_back("AT+CPIN=" + Quoted(settings.PIN));
    if (!settings.InitString.empty()) commands.push_back(settings.InitString);
    if (!settings.SMSCNumber.empty()) commands.push_back("AT+CSCA=" + Quoted(settings.SMSCNumber));
    commands.emplace_back("AT+CMGF=1");
    if (!settings.CharSet.empty()) commands.push_back("AT+CSCS=" + Quoted(settings.CharSet));
    commands.push_back("AT+CSMP=" + settings.FO + "," + settings.VP + "," + settings.PID + "," +
                       settings.DCS);
    return commands;
}

GsmModem::GsmModem(const Parts& parts)
    : loop_(parts.loop),
      clock_(parts.line.clock),
      wait_(parts.wait),
      taker_(parts.taker),
      settings_(parts.settings),
      lines_(parts.line.log.Name(), settings_.sms),
      line_(MakeLine(parts.type, parts.line, *this)) {}

void GsmModem::OnNewStream(Text rest) {
    if (!rest.empty()) TakeIn(rest);
    lines_.Clear();
    initCountdownMs_ = pollCountdownMs_ = 0;
}

void GsmModem::TakeIn(TextView chunk) {
    taker_.NoteTraffic(chunk, TrafficDirection::Received);
    if (!taker_.IsMuted()) taker_.TakeStep(lines_.Take(chunk, clock_.Now()), {});
}

void GsmModem::OnDataWaiting() {
    for (int i = 0; i < kChunksInOneTurn; ++i) {
        const Text chunk = line_->Take();
        if (chunk.empty()) return;
        TakeIn(chunk);
    }
    loop_.Post([this] { OnDataWaiting(); });
}

void GsmModem::Say(TextView bytes) {
    if (line_->Send(bytes, Behind::StayUp)) taker_.NoteTraffic(bytes, TrafficDirection::Sent);
}

bool GsmModem::IsLineUp() const {
    return !wait_.HasEnded() && line_->CanSend();
}

int GsmModem::CommResponse(const Text& command, const Responses& expected, Buffer buffer) {
    if (buffer == Buffer::Clear) lines_.Clear();
    lines_.Expect(expected);
    Say(command + bytes::CR);
    wait_.Begin(settings_.CommandTimeout * 1000LL);
    while (lines_.Result() == 0 && !wait_.IsOver() && line_->CanSend()) wait_.Pump();
    lines_.ExpectNothing();
    return lines_.Result();
}

void GsmModem::PauseWithEvents(int ms) {
    wait_.Begin(ms);
    while (!wait_.IsOver()) wait_.Pump();
}

void GsmModem::Tick(const CollectorTick& tick) {
    // The first tick, of no length, comes before the stored events have been read: nothing may wait in it.
    if (tick.tickMs <= 0 || !line_->CanSend()) return;
    Initialise(tick.tickMs);
    if (IsLineUp()) PollWhenDue(tick.tickMs);
    if (IsLineUp() && taker_.IsProofDue()) ProveLine();
}

void GsmModem::ProveLine() {
    if (CommResponse("AT", {"OK", "", "", ""}) != 0) taker_.TakeStep({.isTraffic = true}, {});
}

void GsmModem::Initialise(int tickMs) {
    if (settings_.InitInterval <= 0) return;
    if (initCountdownMs_ > 0) {
        initCountdownMs_ -= tickMs;
        return;
    }
    for (const Text& command : InitCommands(settings_)) {
        if (!IsLineUp() || CommResponse(command, {"OK", "ERROR", "", ""}, Buffer::Clear) != 1) break;
        PauseWithEvents(kPauseOfInitMs);
    }
    // Also after a failure: a wrong PIN sent at each tick would lock the card.
    initCountdownMs_ = settings_.InitInterval * 1000LL;
}

void GsmModem::PollWhenDue(int tickMs) {
    restMs_ = std::max<std::int64_t>(restMs_ - tickMs, 0);
    const bool isDue = settings_.PollInterval > 0 && pollCountdownMs_ <= 0;
    if (restMs_ == 0 && (isDue || lines_.IsMessageWaiting())) return Poll();
    if (pollCountdownMs_ > 0) pollCountdownMs_ -= tickMs;
}

void GsmModem::Poll() {
    pollCountdownMs_ = settings_.PollInterval * 1000LL;
    const bool wasWoken = lines_.TakeMessageMark();
    lines_.BeginReading();
    const bool isThrough = PollLocations(wasWoken);
    lines_.EndReading();
    if (isThrough) return;
    if (wasWoken) lines_.MarkMessage();
    restMs_ = kRestMs;
}

/// False when the modem left a command unanswered.
bool GsmModem::PollLocations(bool wasWoken) {
    if (const int result = CommResponse("AT", kReadResponses); result != 1) return result != 0;
    taker_.TakeStep({.isTraffic = true}, {});
    int empty = 0;
    for (int index = settings_.MinSIMIndex; index <= settings_.MaxSIMIndex && IsLineUp(); ++index) {
        const Location location = PollLocation(index);
        if (location == Location::Silent) return false;
        if (location == Location::Stuck) return true;
        PauseWithEvents(settings_.PauseBetweenEachPoll);
        if (location != Location::Empty) continue;
        const bool isWoken = wasWoken || lines_.IsMessageWaiting();
        if (++empty >= settings_.EmptyLocationsToPoll && !isWoken) return true;
    }
    return true;
}

GsmModem::Location GsmModem::PollLocation(int index) {
    const Text number = std::to_string(index);
    lines_.ClearAnswer();
    const int read = CommResponse("AT+CMGR=" + number, kReadResponses);
    if (read == 0) return Location::Silent;
    if (read != 1 || !HoldsSms(lines_.Answer())) return Location::Empty;
    if (!AwaitMessage()) return Location::Silent;
    if (!TakeInMessage()) return Location::Stuck;
    const int deleted = CommResponse("AT+CMGD=" + number, {"OK\r", "ERROR", "", ""});
    if (deleted == 0) return Location::Silent;
    return deleted == 1 ? Location::Message : Location::Stuck;
}

/// A line of the message itself can look like the end of the answer.
bool GsmModem::AwaitMessage() {
    while (!IsSmsComplete(lines_.Answer()) && !wait_.IsOver()) wait_.Pump();
    return IsSmsComplete(lines_.Answer());
}

/// False when the message is not known to be stored: then it stays in the modem.
bool GsmModem::TakeInMessage() {
    const auto isStored = std::make_shared<std::optional<bool>>();
    TelegramStep step{.isTraffic = true};
    if (auto event = DecodeSms(lines_.Answer(), settings_.sms, clock_.Now())) {
        step.events.push_back(std::move(*event));
    }
    taker_.TakeStep(std::move(step), [isStored](bool stored) { *isStored = stored; });
    wait_.Begin(settings_.CommandTimeout * 1000LL);
    while (!*isStored && !wait_.IsOver()) wait_.Pump();
    return isStored->value_or(false);
}

}  // namespace nordkeep
