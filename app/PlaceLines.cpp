#include "app/PlaceLines.h"

#include "platform/MachineFacts.h"
#include "runtime/Dates.h"

#include <algorithm>

namespace nordkeep {
namespace {

constexpr int kMutedMs = 10 * 60 * 1000;
constexpr int kTextMutingBegins = 3660;
constexpr int kTextMutingEnds = 3661;

/// What a format's test telegram is called; empty where a transmitter cannot be played.
std::string TelegramOf(MessageFormat format) {
    switch (format) {
        case MessageFormat::Robofon:
            return "robofon";
        case MessageFormat::GoogolT1:
            return "googol";
        case MessageFormat::PlainText:
            return "text";
        case MessageFormat::RSM02:
            return "rsm02";
        case MessageFormat::SOSAccessMini:
            return "sosmini";
        case MessageFormat::AptusMini:
            return "aptus";
        case MessageFormat::SOSAccessV4:
            return "sosaccess";
        case MessageFormat::Mail:
            return "mail";
        case MessageFormat::SurGardMLR2:
            return "contactid";
        case MessageFormat::SiaDc09:
            return "dc09null";
        default:
            return {};
    }
}

/// Where a transmitter would call; empty for a line that nobody calls.
std::string TargetOf(PortType type, int number) {
    const std::string address = "127.0.0.1:" + std::to_string(number);
    if (type == PortType::TCPS) return "tcp:" + address;
    if (type == PortType::UDP) return "udp:" + address;
    return type == PortType::SMTP ? "smtp:" + address : std::string();
}

}  // namespace

LocalLines::LocalLines(Needs needs)
    : needs_(std::move(needs)),
      captions_(needs_.language),
      untilHeard_(needs_.loop.NewTimer([this] { EndMuting(); })) {}

std::vector<LineFigures> LocalLines::Lines() const {
    std::vector<LineFigures> lines;
    for (const auto& port : needs_.ports.Ports()) lines.push_back(port->Figures());
    return lines;
}

std::vector<LineAccount> LocalLines::Accounts(const Text& name) const {
    return needs_.ports.AccountsOf(name);
}

void LocalLines::FilesChanged(const Text& what) {
    needs_.host.NoteSaved(what);
    needs_.reload.AskForPorts();
}

void LocalLines::Hold(const Text& name, bool isHeld) {
    for (const auto& port : needs_.ports.Ports()) {
        if (EqualsNoCase(port->PortName(), name)) port->Hold(isHeld);
    }
}

void LocalLines::Mute(const Text& name, bool isMuted) {
    EndMuting();
    if (!isMuted) return;
    muted_ = name;
    untilHeard_->Start(kMutedMs);
    LogMuting(kTextMutingBegins);
}

void LocalLines::EndMuting() {
    untilHeard_->Stop();
    if (!muted_.empty()) LogMuting(kTextMutingEnds);
    muted_.clear();
}

void LocalLines::LogMuting(int caption) const {
    const Text description(
        TrimBlanks(needs_.files.ReadPortIni("General", "PortDescription", muted_, muted_)));
    needs_.log.WriteSysLog(captions_(caption, {muted_, description}), LogKind::Oddity);
}

std::vector<Text> LocalLines::SerialDevices() const {
    std::vector<Text> devices;
    for (const Text& name : ListEntries("/dev/serial/by-id")) devices.push_back("/dev/serial/by-id/" + name);
    for (const Text& name : ListEntries("/dev")) {
        if (name.starts_with("ttyUSB") || name.starts_with("ttyACM")) devices.push_back("/dev/" + name);
    }
    return devices;
}

std::vector<Text> LocalLines::Addresses() const {
    return InterfaceAddresses();
}

bool LocalLines::RemoveFile(const Text& name) {
    const NativePath file = needs_.dataFolder.Resolve("Settings\\" + name + ".ini");
    const Text stamp = FormatDate(needs_.clock.Now(), "YYYYMMDDHHNNSS");
    MakeFolder(needs_.dataFolder.Resolve("Settings\\Backup"));
    return RenameFile(file, needs_.dataFolder.Resolve("Settings\\Backup\\" + name + "." + stamp + ".ini"));
}

bool LocalLines::StartTest(const Text& name) {
    const auto read = [&](const char* key) { return needs_.files.ReadPortIni("General", key, "0", name); };
    const auto type = ParsePortType(TrimBlanks(read("PortType")));
    const auto format = ParseMessageFormat(LeadingInt32(read("MessageFormat")));
    if (!type || !format) return false;
    const std::string target = TargetOf(*type, LeadingInt32(read("PortNumber")));
    const std::string telegram = TelegramOf(*format);
    if (target.empty() || telegram.empty()) return false;
    isTesting_ = test_.Start(needs_.sendTool, {"--quiet", "--format", telegram, target});
    return isTesting_;
}

std::optional<bool> LocalLines::TakeTestOutcome() {
    if (!isTesting_ || test_.IsRunning()) return std::nullopt;
    isTesting_ = false;
    return test_.HasSucceeded();
}

}  // namespace nordkeep
