#include "ports/collectors/GsmModem.h"

#include "ports/PortSettings.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace nordkeep {
namespace {

constexpr int kTextLineTooLong = 1043;

constexpr std::size_t kLongestLine = 4096;
constexpr std::size_t kLongestAnswer = 64 << 10;
constexpr int kPauseOfInitMs = 500;
constexpr std::int64_t kLengthOfOneCallMs = 15'000;
// An answer that comes after its command was given up must not be taken for that of a later one: the wrong
// message would be deleted.
constexpr std::int64_t kRestMs = 10'000;

constexpr SettingScope kPort = SettingScope::Port;
constexpr const char* kGeneral = "General";

const std::array kGsm = {
    SettingRow<GsmSettings>{kGeneral, "CommandTimeout", "10", kPort, &GsmSettings::CommandTimeout, 1, 32767},
    SettingRow<GsmSettings>{kGeneral, "InitInterval", "600", kPort, &GsmSettings::InitInterval, -1,
                            2'000'000},
    SettingRow<GsmSettings>{kGeneral, "PollInterval", "10", kPort, &GsmSettings::PollInterval, -1, 2'000'000},
    SettingRow<GsmSettings>{kGeneral, "MinSIMIndex", "1", kPort, &GsmSettings::MinSIMIndex, 0, 100'000},
    SettingRow<GsmSettings>{kGeneral, "MaxSIMIndex", "10", kPort, &GsmSettings::MaxSIMIndex, 0, 100'000},
    SettingRow<GsmSettings>{kGeneral, "EmptyLocationsToPoll", "10", kPort,
                            &GsmSettings::EmptyLocationsToPoll},
    SettingRow<GsmSettings>{kGeneral, "PauseBetweenEachPoll", "500", kPort,
                            &GsmSettings::PauseBetweenEachPoll, 0, 60'000},
    SettingRow<GsmSettings>{kGeneral, "SMSCNumber", "", kPort, &GsmSettings::SMSCNumber},
    SettingRow<GsmSettings>{kGeneral, "PIN", "", kPort, &GsmSettings::PIN},
    SettingRow<GsmSettings>{kGeneral, "InitString", "", kPort, &GsmSettings::InitString},
    SettingRow<GsmSettings>{kGeneral, "FO", "17", kPort, &GsmSettings::FO},
    SettingRow<GsmSettings>{kGeneral, "VP", "169", kPort, &GsmSettings::VP},
    SettingRow<GsmSettings>{kGeneral, "PID", "0", kPort, &GsmSettings::PID},
    SettingRow<GsmSettings>{kGeneral, "DCS", "240", kPort, &GsmSettings::DCS},
    SettingRow<GsmSettings>{kGeneral, "CharSet", "8859-1", kPort, &GsmSettings::CharSet},
};

const std::array kSms = {
    SettingRow<SmsSettings>{kGeneral, "SMSCrLfReplaceCharacter", "9", kPort,
                            &SmsSettings::SMSCrLfReplaceCharacter},
    SettingRow<SmsSettings>{kGeneral, "ParseNumericIDCodeFieldUsingSpace", "1", kPort,
                            &SmsSettings::ParseNumericIDCodeFieldUsingSpace},
    SettingRow<SmsSettings>{kGeneral, "UseSenderAsIDCode", "0", kPort, &SmsSettings::UseSenderAsIDCode},
    SettingRow<SmsSettings>{kGeneral, "IA5toISOLatin1", "0", kPort, &SmsSettings::IA5toISOLatin1},
    SettingRow<SmsSettings>{kGeneral, "DefaultCountryCode", "046", kPort, &SmsSettings::DefaultCountryCode},
};

const std::array<Text, 4> kReadResponses = {"OK\r", "ERROR\r", "+CMS ERROR", ""};

Text Quoted(const Text& text) {
    return '"' + text + '"';
}

}  // namespace

std::span<const SettingRow<GsmSettings>> GsmSettingRows() {
    return kGsm;
}

std::span<const SettingRow<SmsSettings>> SmsSettingRows() {
    return kSms;
}

GsmSettings LoadGsmSettings(const Settings& files, const Text& portName) {
    constexpr int kTab = 9;
    GsmSettings settings = LoadSettings(files, GsmSettingRows(), portName);
    settings.TestTelegramInterval =
        LoadSupervisionSettings(files, portName, MessageFormat::GSM).TestTelegramInterval;
    settings.PortName = portName;
    settings.sms = LoadSettings(files, SmsSettingRows(), portName);
    settings.sms.SMSCrLfReplaceCharacter = CharacterOr(settings.sms.SMSCrLfReplaceCharacter, kTab);
    settings.sms.DefaultCountryCode = CountryCode(TrimBlanks(settings.sms.DefaultCountryCode));
    settings.sms.cleaning = LoadTextCleaning(files, portName);
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

GsmModem::GsmModem(GsmSettings settings, Conversation conversation)
    : settings_(std::move(settings)), conversation_(std::move(conversation)) {}

void GsmModem::BeginStream() {
    line_.clear();
    initCountdownMs_ = pollCountdownMs_ = 0;
}

TelegramStep GsmModem::Next(TextView received, OleDate now) {
    TelegramStep step;
    const std::size_t end = received.find(bytes::LF);
    const bool isWhole = end != TextView::npos;
    const TextView piece = received.substr(0, end);
    step.consumed = piece.size() + (isWhole ? 1 : 0);
    if (line_.size() + piece.size() > kLongestLine) {
        // Noise without an end writes one line.
        if (!std::exchange(isOverflowTold_, true))
            step.notes.push_back({kTextLineTooLong, " " + settings_.PortName});
        line_.clear();
    }
    if (piece.size() <= kLongestLine) line_ += piece;
    if (isWhole) TakeLine(std::exchange(line_, {}), step, now);
    return step;
}

void GsmModem::TakeLine(Text line, TelegramStep& step, OleDate now) {
    isOverflowTold_ = false;
    if (isReading_ && answer_.size() + line.size() < kLongestAnswer) answer_ += line + '\n';
    const Text upper = UpperCase(line);
    for (std::size_t i = 0; i < expected_.size(); ++i) {
        if (expected_[i].empty() || upper.find(expected_[i]) == Text::npos) continue;
        result_ |= 1 << i;
        break;
    }
    std::erase(line, bytes::CR);
    if (!line.empty()) HandleTextLine(line, step, now);
}

void GsmModem::HandleTextLine(const Text& line, TelegramStep& step, OleDate now) {
    if (line.starts_with("+CMTI:")) isMessageWaiting_ = true;
    if (line.starts_with("+CLIP:")) HandleCall(line, step, now);
}

// A phone that rings for minutes makes one event each quarter of a minute.
void GsmModem::HandleCall(const Text& line, TelegramStep& step, OleDate now) {
    const Text number = CallerNumber(line, settings_.sms);
    const std::int64_t elapsedMs = std::abs(now.Milliseconds() - lastCallAt_.Milliseconds());
    if (number == lastCaller_ && elapsedMs < kLengthOfOneCallMs) return;
    lastCaller_ = number;
    lastCallAt_ = now;
    step.events.push_back(CallEvent(number, now));
}

bool GsmModem::IsLineUp() const {
    return !conversation_.wait->HasEnded() && conversation_.canSend();
}

int GsmModem::CommResponse(const Text& command, const Responses& expected, Buffer buffer) {
    CommWait& wait = *conversation_.wait;
    result_ = 0;
    if (buffer == Buffer::Clear) line_.clear();
    expected_ = expected;
    conversation_.send(command + bytes::CR);
    wait.Begin(settings_.CommandTimeout * 1000LL);
    while (result_ == 0 && !wait.IsOver() && conversation_.canSend()) wait.Pump();
    expected_ = {};
    return result_;
}

void GsmModem::PauseWithEvents(int ms) {
    CommWait& wait = *conversation_.wait;
    wait.Begin(ms);
    while (!wait.IsOver()) wait.Pump();
}

TelegramStep GsmModem::Service(const ServiceTick& tick) {
    constexpr std::int64_t kAheadOfFaultMs = 10'000;
    const std::int64_t patienceMs = settings_.TestTelegramInterval * 1000LL - kAheadOfFaultMs;
    const bool isDue =
        settings_.TestTelegramInterval > 0 && !tick.isTestTelegramMissing && tick.silentMs > patienceMs;
    if (!isDue || tick.tickMs <= 0 || !conversation_.wait || !tick.canSend) return {};
    return {.isTraffic = CommResponse("AT", {"OK", "", "", ""}) != 0};
}

void GsmModem::Converse(const ServiceTick& tick) {
    if (!conversation_.wait || !tick.canSend) return;
    Initialise(tick.tickMs);
    if (IsLineUp()) PollWhenDue(tick.tickMs);
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
    if (restMs_ == 0 && (isDue || isMessageWaiting_)) return Poll();
    if (pollCountdownMs_ > 0) pollCountdownMs_ -= tickMs;
}

void GsmModem::Poll() {
    pollCountdownMs_ = settings_.PollInterval * 1000LL;
    const bool wasWoken = std::exchange(isMessageWaiting_, false);
    isReading_ = true;
    const bool isThrough = PollLocations(wasWoken);
    isReading_ = false;
    answer_.clear();
    if (isThrough) return;
    isMessageWaiting_ = isMessageWaiting_ || wasWoken;
    restMs_ = kRestMs;
}

/// False when the modem left a command unanswered.
bool GsmModem::PollLocations(bool wasWoken) {
    if (const int result = CommResponse("AT", kReadResponses); result != 1) return result != 0;
    conversation_.act({.isTraffic = true}, {});
    int empty = 0;
    for (int index = settings_.MinSIMIndex; index <= settings_.MaxSIMIndex && IsLineUp(); ++index) {
        const Location location = PollLocation(index);
        if (location == Location::Silent) return false;
        if (location == Location::Stuck) return true;
        PauseWithEvents(settings_.PauseBetweenEachPoll);
        if (location != Location::Empty) continue;
        const bool isWoken = wasWoken || isMessageWaiting_;
        if (++empty >= settings_.EmptyLocationsToPoll && !isWoken) return true;
    }
    return true;
}

GsmModem::Location GsmModem::PollLocation(int index) {
    const Text number = std::to_string(index);
    answer_.clear();
    const int read = CommResponse("AT+CMGR=" + number, kReadResponses);
    if (read == 0) return Location::Silent;
    if (read != 1 || !HoldsSms(answer_)) return Location::Empty;
    if (!AwaitMessage()) return Location::Silent;
    if (!TakeInMessage()) return Location::Stuck;
    const int deleted = CommResponse("AT+CMGD=" + number, {"OK\r", "ERROR", "", ""});
    if (deleted == 0) return Location::Silent;
    return deleted == 1 ? Location::Message : Location::Stuck;
}

/// A line of the message itself can look like the end of the answer.
bool GsmModem::AwaitMessage() {
    while (!IsSmsComplete(answer_) && !conversation_.wait->IsOver()) conversation_.wait->Pump();
    return IsSmsComplete(answer_);
}

/// False when the message is not known to be stored: then it stays in the modem.
bool GsmModem::TakeInMessage() {
    const auto isStored = std::make_shared<std::optional<bool>>();
    TelegramStep step{.isTraffic = true};
    if (auto event = DecodeSms(answer_, settings_.sms, conversation_.wait->Now())) {
        step.events.push_back(std::move(*event));
    }
    conversation_.act(std::move(step), [isStored](bool stored) { *isStored = stored; });
    conversation_.wait->Begin(settings_.CommandTimeout * 1000LL);
    while (!*isStored && !conversation_.wait->IsOver()) conversation_.wait->Pump();
    return isStored->value_or(false);
}

}  // namespace nordkeep
