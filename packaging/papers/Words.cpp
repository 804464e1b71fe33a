#include "packaging/papers/Words.h"

#include "app/start/CommandLine.h"
#include "tools/SendCommand.h"
#include "tools/cli/Terminal.h"
#include "tools/copy/CopyCommand.h"
#include "tools/export/ExportCommand.h"

#include <sstream>

namespace nordkeep {
namespace {

/// "a,b,c" or "a, b, c".
std::vector<std::string> Split(const std::string& text) {
    std::vector<std::string> parts;
    std::istringstream stream(text);
    for (std::string part; std::getline(stream, part, ',');) {
        part.erase(0, part.find_first_not_of(' '));
        if (!part.empty()) parts.push_back(part);
    }
    return parts;
}

/// The name of a type is followed by the validators of the value: "NAME:{a,b}", "N:POSITIVE".
Word WordOf(const CLI::Option& option) {
    Word word{.names = Split(option.get_name(false, true)), .help = option.get_description()};
    if (option.get_items_expected_max() == 0) return word;
    if (!option.get_default_str().empty()) word.help += " [" + option.get_default_str() + "]";
    const std::string type = option.get_type_name();
    word.value = type.substr(0, type.find(':'));
    const std::size_t open = type.find('{');
    if (open != std::string::npos) word.choices = Split(type.substr(open + 1, type.find('}') - open - 1));
    return word;
}

Program ProgramOf(const CLI::App& app) {
    Program program{.name = app.get_name()};
    for (const CLI::Option* option : app.get_options()) {
        (option->get_positional() ? program.places : program.words).push_back(WordOf(*option));
    }
    return program;
}

template <class Command, class Declare>
Program ToolOf(const char* name, Declare declare) {
    CLI::App app;
    Command command{};
    tools::PrepareTool(app, name);
    declare(app, command);
    return ProgramOf(app);
}

Program Centre(const char* name) {
    Program program{.name = name};
    for (const CommandLineWord& row : CommandLineWords()) {
        Word word{.names = Split(row.names), .help = row.help};
        const std::size_t colon = row.names.find(':');
        if (colon != std::string::npos) {
            word.names = {row.names.substr(0, colon + 1)};
            word.value = row.names.substr(colon + 1);
        }
        program.words.push_back(std::move(word));
    }
    return program;
}

}  // namespace

std::vector<Program> AllPrograms() {
    return {Centre("nordkeep"), Centre("nordkeepd"),
            ToolOf<tools::SendCommand>("nordkeep-send", &tools::DeclareSend),
            ToolOf<ExportCommand>("nordkeep-export", &DeclareExport),
            ToolOf<std::string>("NKCopy", &DeclareCopy)};
}

}  // namespace nordkeep
