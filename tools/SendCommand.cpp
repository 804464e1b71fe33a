#include "tools/SendCommand.h"

#include "platform/Text.h"
#include "tools/Peers.h"

#include <algorithm>
#include <fstream>
#include <functional>
#include <sstream>

namespace nordkeep::tools {
namespace {

constexpr const char* kWhat =
    "Sends telegrams to a port of Nordkeep and shows what it answers; with --demo feeds every port of a "
    "demonstration centre with one alarm; with --replay plays what a port had received in a night.";

constexpr const char* kTargets =
    "tcp:HOST:PORT, udp:HOST:PORT, serial:DEVICE[,BAUD], or listen:PORT for a port that calls out; "
    "smtp:HOST:PORT (mail), file:PATH (file, confirmation), listen:PORT (virtualreceiver, mailbox, export), "
    "pty or pty:LINK (gsm)";

std::vector<std::string> AllFormats() {
    std::istringstream names(FormatNames());
    std::vector<std::string> formats{std::istream_iterator<std::string>(names), {}};
    for (const std::string& name : PlayNames()) formats.push_back(name);
    return formats;
}

void ReadPlay(SendOptions& options, const std::string& path) {
    std::ifstream file(path);
    for (std::string line; std::getline(file, line);) {
        const std::string bytes = line.starts_with("#") ? "" : FromHex(line);
        if (!bytes.empty()) options.play.push_back(bytes);
    }
    if (options.play.empty()) throw CLI::ValidationError("--play", path + " holds no telegram");
    options.count = static_cast<long>(options.play.size());
}

/// An option whose text fills in a field in another form than it is written.
void AddConverted(CLI::App& app, const char* name, std::string& field, const char* type, const char* help,
                  std::string (*convert)(const std::string&)) {
    app.add_option_function<std::string>(
           name, [&field, convert](const std::string& text) { field = convert(text); }, help)
        ->type_name(type);
}

std::string OfLine(const std::string& text) {
    return FromUtf8(text);
}

void DeclareTelegram(CLI::App& app, TelegramOptions& telegram) {
    app.add_option("--format", telegram.format, "what is sent, or what the tool plays")
        ->check(CLI::IsMember(AllFormats()))
        ->type_name("NAME");
    AddConverted(app, "--code", telegram.code, "CODE", "ID code and type [10000103]", &OfLine);
    AddConverted(
        app, "--text", telegram.text, "TEXT",
        "free text behind the code (text, googol, mail, gsm), the blocks (sia, dc09), the event (dc09cid), "
        "the event code (sosaccess), the additional text (the others)",
        &OfLine);
    AddConverted(app, "--key", telegram.key, "HEX", "encrypt (dc09: 32, 48 or 64 digits)", &FromHex);
    AddConverted(app, "--extended", telegram.extended, "TEXT",
                 "stands behind the data, as [X012W34.1][Y045N12.2] (dc09)", &OfLine);
    app.add_option("--clock", telegram.clockSeconds, "the clock is ahead, or behind (dc09)")
        ->type_name("SECONDS");
    app.add_flag("--no-time", telegram.hasNoTime, "there is no clock (dc09)");
    app.add_option("--sequence", telegram.sequence, "number of the first telegram (googol, dc09)")
        ->type_name("N");
    app.add_flag("--binary-check", telegram.hasBinaryCheck, "the check in two bytes (dc09)");
    app.add_flag("--unwrapped", telegram.isUnwrapped,
                 "end a message with a line feed instead of STX and ETX (text)");
    app.add_option("--class", telegram.classCode, "class of the telegram (robofon)")->type_name("C");
    app.add_flag_callback(
        "--short", [&telegram] { telegram.kind = 'T'; }, "a short telegram, kind T (robofon)");
    app.add_option("--receiver", telegram.receiver, "0 to 7 (robofon, dc09)")->type_name("N");
    app.add_option("--line", telegram.line, "0 to 7 (robofon, dc09)")->type_name("N");
    app.add_flag("--speech", telegram.isFollowedBySpeech, "a speech message follows (robofon)");
    app.add_flag("--wrong-check", telegram.hasWrongCheck,
                 "spoil the check byte (robofon, dc09); complain (virtualreceiver)");
}

void DeclareWay(CLI::App& app, SendOptions& options) {
    AddConverted(app, "--raw", options.raw, "HEX", "send these bytes instead", &FromHex);
    app.add_option_function<std::string>(
           "--play", [&options](const std::string& path) { ReadPlay(options, path); },
           "send the telegrams of a file, one line of hexadecimal bytes each")
        ->type_name("FILE");
    app.add_option("--glue", options.glue,
                   "N telegrams in one write, lines in one file, events in one answer")
        ->check(CLI::PositiveNumber)
        ->type_name("N");
    app.add_flag("--cut", options.isCut, "only the first half of each telegram");
    app.add_option("--slow", options.slowMs,
                   "pause between the bytes, in front of an answer, between lines of a file")
        ->check(CLI::NonNegativeNumber)
        ->type_name("MS");
    app.add_option("--count", options.count, "telegrams in all")
        ->check(CLI::NonNegativeNumber)
        ->type_name("N");
    app.add_flag("--number-codes", options.numbersCodes, "count up the ID code from telegram to telegram");
    app.add_option("--rate", options.rate, "telegrams a second; 0: as fast as the replies come")
        ->check(CLI::NonNegativeNumber)
        ->type_name("N");
    app.add_option("--connections", options.connections,
                   "connections side by side, at least one for each target")
        ->check(CLI::PositiveNumber)
        ->type_name("N");
    app.add_option("--timeout", options.timeoutMs, "wait for a reply")
        ->check(CLI::NonNegativeNumber)
        ->type_name("MS");
    app.add_flag("--quiet", options.isQuiet, "print the summary only");
}

void DeclarePlays(CLI::App& app, SendCommand& command) {
    SendOptions& options = command.options;
    app.add_option("--call", options.caller, "ring (gsm)")->type_name("NUMBER");
    app.add_flag("--no-echo", options.hasNoEcho, "do not repeat commands (gsm)");
    app.add_flag("--silent", options.isSilent, "do not answer commands (gsm)");
    app.add_option("--replay", options.replay, "play what a traffic file says that a port received")
        ->type_name("FILE.DBG");
    app.add_option("--port", options.port, "that port, by its description (--replay)")->type_name("NAME");
    app.add_flag("--fast", options.isFast, "without the pauses of the night (--replay)");
    app.add_option("--demo", command.demo, "feed the demonstration centre in this folder")
        ->type_name("FOLDER");
    app.add_option("TARGET", options.targets, kTargets)
        ->type_name("")
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
}

}  // namespace

void DeclareSend(CLI::App& app, SendCommand& command) {
    app.description(kWhat);
    DeclareTelegram(app, command.options.telegram);
    DeclareWay(app, command.options);
    DeclarePlays(app, command);
    app.callback([&command] {
        SendOptions& options = command.options;
        if (command.demo.empty() && options.targets.empty()) throw CLI::RequiredError("TARGET");
        options.connections = std::max(options.connections, static_cast<int>(options.targets.size()));
    });
}

}  // namespace nordkeep::tools
