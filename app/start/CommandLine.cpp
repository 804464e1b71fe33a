#include "app/start/CommandLine.h"

#include "runtime/Fields.h"

#include <array>
#include <string_view>

namespace nordkeep {
namespace {

struct SwitchRow {
    std::string_view word;  // upper case, but for the exact one
    bool CommandLine::*flag;
    const char* help;
};

constexpr std::string_view kPath = "/PATH:";
constexpr std::string_view kDelay = "/DELAY:";
constexpr std::string_view kExact = "/RunAsService";

constexpr std::array<SwitchRow, 11> kSwitches = {{
    {kExact, &CommandLine::runAsService, "run as a service: in the foreground, without a screen"},
    {"/I", &CommandLine::install, "install the service and end"},
    {"/U", &CommandLine::uninstall, "uninstall the service and end"},
    {"/TOPMOST", &CommandLine::topMost, "keep the main window on top"},
    {"/MAXIMIZE", &CommandLine::maximize, "start maximised"},
    {"/MINIMIZE", &CommandLine::minimize, "start minimised"},
    {"/SIMULATE", &CommandLine::simulate, "show the simulation functions"},
    {"/NOBCOL", &CommandLine::noBackgroundColor, "no background colour for alarm rows"},
    {"/SPEEDUPALIVETEST", &CommandLine::speedUpAliveTest, "alive tests count seconds instead of minutes"},
    {"/FORCEDISABLEPORTS", &CommandLine::forceDisablePorts, "open no port"},
    {"/ASKFORDISABLEPORTS", &CommandLine::askForDisablePorts, "ask whether ports are to be opened"},
}};

struct OptionRow {
    std::string_view word;    // in any case
    std::string_view letter;  // exact; empty for none
    bool CommandLine::*flag;
    const char* help;
};

constexpr std::array<OptionRow, 3> kOptions = {{
    {"--check", "", &CommandLine::check, "print what is wrong with the files of the data folder and end"},
    {"--help", "-h", &CommandLine::help, "print this and end"},
    {"--version", "-V", &CommandLine::version, "print the version and end"},
}};

bool IsOption(std::string_view word) {
    return word.size() > 1 && word.front() == '-';
}

void TakeOption(std::string_view word, CommandLine& result) {
    for (const OptionRow& row : kOptions) {
        if (!EqualsNoCase(word, row.word) && word != row.letter) continue;
        result.*row.flag = true;
        return;
    }
    if (!result.unknownOption) result.unknownOption = word;
}

bool StartsWith(std::string_view text, std::string_view word) {
    if (word == kExact) return text.starts_with(word);
    return EqualsNoCase(text.substr(0, word.size()), word);
}

bool IsEnd(std::string_view rest) {
    return rest.empty() || rest.front() == ' ' || rest.front() == '/';
}

const SwitchRow* SwitchAt(std::string_view text) {
    for (const SwitchRow& row : kSwitches) {
        if (StartsWith(text, row.word) && IsEnd(text.substr(row.word.size()))) return &row;
    }
    return nullptr;
}

bool IsCompleteSwitch(std::string_view text) {
    return SwitchAt(text) || StartsWith(text, kPath) || StartsWith(text, kDelay);
}

class Reader {
 public:
    explicit Reader(std::string_view line) : rest_(line) {}

    CommandLine Read() {
        for (rest_ = TrimBlanksLeft(rest_); !rest_.empty(); rest_ = TrimBlanksLeft(rest_)) Next();
        return std::move(result_);
    }

 private:
    void Next() {
        if (StartsWith(rest_, kPath)) {
            rest_.remove_prefix(kPath.size());
            result_.path = std::string(TrimBlanks(Take(ValueLength())));
        } else if (StartsWith(rest_, kDelay)) {
            rest_.remove_prefix(kDelay.size());
            result_.delaySeconds = LeadingInt32(Take(rest_.find_first_of(" /")));
        } else if (const SwitchRow* row = SwitchAt(rest_)) {
            result_.*row->flag = true;
            rest_.remove_prefix(row->word.size());
        } else {
            result_.unknown.emplace_back(Take(rest_.find(' ')));
        }
    }

    /// Up to the next blank with a complete switch behind it.
    std::size_t ValueLength() const {
        for (std::size_t at = rest_.find(' '); at != std::string_view::npos; at = rest_.find(' ', at + 1)) {
            if (IsCompleteSwitch(rest_.substr(at + 1))) return at;
        }
        return rest_.size();
    }

    std::string_view Take(std::size_t length) {
        const std::string_view taken = rest_.substr(0, length);
        rest_.remove_prefix(taken.size());
        return taken;
    }

    std::string_view rest_;
    CommandLine result_{};
};

}  // namespace

CommandLine ParseCommandLine(const std::vector<std::string>& words) {
    std::string line;
    for (const std::string& word : words) {
        if (!IsOption(word)) line += (line.empty() ? "" : " ") + word;
    }
    CommandLine result = Reader(line).Read();
    for (const std::string& word : words) {
        if (IsOption(word)) TakeOption(word, result);
    }
    return result;
}

std::vector<CommandLineWord> CommandLineWords() {
    std::vector<CommandLineWord> words = {
        {"/PATH:FOLDER", "work in this data folder; it is made when its parent exists"},
        {"/DELAY:N", "wait N seconds before anything else"}};
    for (const SwitchRow& row : kSwitches) words.push_back({std::string(row.word), row.help});
    for (const OptionRow& row : kOptions) {
        std::string names(row.word);
        if (!row.letter.empty()) names.append(", ").append(row.letter);
        words.push_back({names, row.help});
    }
    return words;
}

std::string CommandLineHelp(const char* program) {
    std::string help = std::string("Usage: ") + program + " [switches]\n\n";
    for (const CommandLineWord& word : CommandLineWords())
        help += "  " + FitWidth(word.names, 22) + word.help + "\n";
    return help +
           "\nWith --check a line is FILE:LINE: error: TEXT or warning: TEXT, the line 0 for the file as a "
           "whole, and\n"
           "the last line counts them. The exit status is 0 without errors, 1 with, 2 when nothing could be "
           "checked.\n";
}

}  // namespace nordkeep
