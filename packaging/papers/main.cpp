#include "packaging/papers/Completion.h"
#include "packaging/papers/Words.h"

#include <cstdio>
#include <fstream>

// Writes what is made from the option tables into a folder: for each program its completion, NAME.bash and
// _NAME, and the words of its manual, NAME.options.
namespace {

using namespace nordkeep;

/// Rows of a table in the form that the manual's pages are written in.
std::string OptionRows(const Program& program) {
    std::string rows = "| Word | Effect |\n|---|---|\n";
    for (const auto* words : {&program.words, &program.places}) {
        for (const Word& word : *words) {
            std::string names;
            for (const std::string& name : word.names) names += (names.empty() ? "`" : ", `") + name + "`";
            const bool isGlued = names.ends_with(":`");
            if (!word.value.empty()) names += (isGlued ? "*" : " *") + word.value + "*";
            std::string choices;
            for (const std::string& choice : word.choices)
                choices += (choices.empty() ? ": " : ", ") + choice;
            rows += "| " + names + " | " + word.help + choices + " |\n";
        }
    }
    return rows;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) return std::fputs("Usage: nordkeep-papers FOLDER\n", stderr), 2;
    const std::string folder = std::string(argv[1]) + "/";
    bool isWritten = true;
    const auto write = [&](const std::string& name, const std::string& text) {
        isWritten = (std::ofstream(folder + name) << text).flush().good() && isWritten;
    };
    for (const Program& program : AllPrograms()) {
        write(program.name + ".bash", BashCompletion(program));
        write("_" + program.name, ZshCompletion(program));
        write(program.name + ".options", OptionRows(program));
    }
    return isWritten ? 0 : 1;
}
