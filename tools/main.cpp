#include "platform/Text.h"
#include "tools/Peers.h"

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>

namespace {

using nordkeep::tools::SendOptions;

constexpr const char* kHelp =
    "Usage: nordkeep-send [options] TARGET...\n"
    "       nordkeep-send --demo FOLDER\n"
    "       nordkeep-send --replay FILE.DBG [--port NAME] [--fast] TARGET\n"
    "Sends telegrams to a port of Nordkeep and shows what it answers; the second form feeds every\n"
    "port of the demonstration centre in FOLDER with one alarm; the third plays what a port\n"
    "had received, as its traffic file tells it, with the pauses between.\n\n"
    "  TARGET             tcp:HOST:PORT, udp:HOST:PORT, serial:DEVICE[,BAUD], or listen:PORT\n"
    "                     for a port that calls out\n"
    "  --format NAME      robofon (default), text, googol, rsm02, sia, contactid, sosaccess,\n"
    "                     sosmini, aptus, dc09, dc09cid, dc09null; and with a target of its own:\n"
    "                     mail (smtp:HOST:PORT), file and confirmation (file:PATH),\n"
    "                     virtualreceiver (listen:PORT, answers a port that polls),\n"
    "                     mailbox (listen:PORT, is the server of a port that fetches mail),\n"
    "                     export (listen:PORT, takes what a port exports),\n"
    "                     gsm (pty or pty:LINK, is the modem at the device that it names)\n"
    "  --code CODE        ID code and type, default 10000103\n"
    "  --text TEXT        free text behind the code (text, googol, mail, gsm), the blocks (sia,\n"
    "                     dc09), the event (dc09cid), the event code (sosaccess), the additional\n"
    "                     text (the others)\n"
    "  --key HEX          encrypt (dc09: 32, 48 or 64 digits)\n"
    "  --extended TEXT    stands behind the data, as [X012W34.1][Y045N12.2] (dc09)\n"
    "  --clock SECONDS    the clock is ahead, or behind (dc09); --no-time: it has none\n"
    "  --sequence N       number of the first telegram (googol, dc09)\n"
    "  --binary-check     the check in two bytes (dc09)\n"
    "  --unwrapped        end a message with a line feed instead of STX and ETX (text)\n"
    "  --class C          class of the telegram, default 0 (robofon)\n"
    "  --short            a short telegram, kind T (robofon)\n"
    "  --receiver N --line N   0 to 7, default 1 (robofon, dc09)\n"
    "  --speech           a speech message follows (robofon)\n"
    "  --wrong-check      spoil the check byte (robofon, dc09); complain (virtualreceiver)\n"
    "  --call NUMBER      ring (gsm)\n"
    "  --no-echo --silent   do not repeat commands, do not answer them (gsm)\n"
    "  --raw HEX          send these bytes instead\n"
    "  --play FILE        send the telegrams of a file, one line of hexadecimal bytes each\n"
    "  --glue N           N telegrams in one write, lines in one file, events in one answer\n"
    "  --cut              only the first half of each telegram\n"
    "  --slow MS          pause between the bytes, in front of an answer, between lines of a file\n"
    "  --count N          telegrams in all, default 1\n"
    "  --number-codes     count up the ID code from telegram to telegram\n"
    "  --rate N           telegrams a second; default as fast as the replies come\n"
    "  --connections N    connections side by side, default one for each target\n"
    "  --timeout MS       wait for a reply, default 5000\n"
    "  --quiet            print the summary only\n";

/// Walks the arguments; an option that wants a value takes the next one.
class Arguments {
 public:
    Arguments(int count, char** words) : count_(count), words_(words) {}

    bool Read(SendOptions& options) {
        while (++at_ < count_) {
            if (!ReadFlag(options, words_[at_]) && !ReadValue(options, words_[at_])) return false;
        }
        const auto targets = static_cast<int>(options.targets.size());
        options.connections = std::max(options.connections, targets);
        return targets > 0;
    }

 private:
    static bool ReadFlag(SendOptions& options, const std::string& word) {
        if (word == "--short") return options.telegram.kind = 'T', true;
        if (word == "--speech") return options.telegram.isFollowedBySpeech = true;
        if (word == "--wrong-check") return options.telegram.hasWrongCheck = true;
        if (word == "--no-time") return options.telegram.hasNoTime = true;
        if (word == "--binary-check") return options.telegram.hasBinaryCheck = true;
        if (word == "--unwrapped") return options.telegram.isUnwrapped = true;
        if (word == "--number-codes") return options.numbersCodes = true;
        if (word == "--cut") return options.isCut = true;
        if (word == "--fast") return options.isFast = true;
        if (word == "--quiet") return options.isQuiet = true;
        if (word == "--silent") return options.isSilent = true;
        if (word == "--no-echo") return options.hasNoEcho = true;
        if (word.starts_with("-")) return false;
        options.targets.push_back(word);
        return true;
    }

    static bool ReadPlay(SendOptions& options, const std::string& path) {
        std::ifstream file(path);
        for (std::string line; std::getline(file, line);) {
            const std::string bytes = line.starts_with("#") ? "" : nordkeep::tools::FromHex(line);
            if (!bytes.empty()) options.play.push_back(bytes);
        }
        options.count = static_cast<long>(options.play.size());
        return !options.play.empty();
    }

    bool ReadValue(SendOptions& options, const std::string& word) {
        if (at_ + 1 >= count_) return false;
        const std::string value = words_[++at_];
        const int number = std::atoi(value.c_str());
        if (word == "--format") return options.telegram.format = value, true;
        if (word == "--code") return options.telegram.code = nordkeep::FromUtf8(value), true;
        if (word == "--text") return options.telegram.text = nordkeep::FromUtf8(value), true;
        if (word == "--replay") return options.replay = value, true;
        if (word == "--port") return options.port = value, true;
        if (word == "--key") return options.telegram.key = nordkeep::tools::FromHex(value), true;
        if (word == "--extended") return options.telegram.extended = nordkeep::FromUtf8(value), true;
        if (word == "--clock") return options.telegram.clockSeconds = number, true;
        if (word == "--sequence") return options.telegram.sequence = number, true;
        if (word == "--call") return options.caller = value, true;
        if (word == "--class") return options.telegram.classCode = value.empty() ? '0' : value[0], true;
        if (word == "--receiver") return options.telegram.receiver = number, true;
        if (word == "--line") return options.telegram.line = number, true;
        if (word == "--raw") return options.raw = nordkeep::tools::FromHex(value), true;
        if (word == "--play") return ReadPlay(options, value);
        if (word == "--glue") return options.glue = number < 1 ? 1 : number, true;
        if (word == "--slow") return options.slowMs = number, true;
        if (word == "--count") return options.count = number, true;
        if (word == "--rate") return options.rate = std::atof(value.c_str()), true;
        if (word == "--connections") return options.connections = number < 1 ? 1 : number, true;
        if (word == "--timeout") return options.timeoutMs = number, true;
        return false;
    }

    int count_;
    char** words_;
    int at_ = 0;
};

}  // namespace

int main(int argc, char** argv) {
    std::signal(SIGPIPE, SIG_IGN);
    SendOptions options;
    if (argc == 2 && std::strcmp(argv[1], "--help") == 0) {
        std::fputs(kHelp, stdout);
        return 0;
    }
    if (argc == 3 && std::strcmp(argv[1], "--demo") == 0) return nordkeep::tools::FeedDemo(argv[2]);
    if (!Arguments(argc, argv).Read(options)) {
        std::fputs(kHelp, stderr);
        return 2;
    }
    if (!options.replay.empty()) return nordkeep::tools::Replay(options);
    if (const auto play = nordkeep::tools::FindPlay(options.telegram.format)) return play(options);
    if (options.raw.empty() &&
        nordkeep::tools::MakeTelegram(options.telegram, options.telegram.code).empty()) {
        std::fprintf(stderr, "nordkeep-send: unknown format \"%s\"\n", options.telegram.format.c_str());
        return 2;
    }
    return nordkeep::tools::Send(options);
}
