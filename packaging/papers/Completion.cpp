#include "packaging/papers/Completion.h"

namespace nordkeep {
namespace {

std::string Joined(const std::vector<std::string>& parts, const char* between) {
    std::string all;
    for (const std::string& part : parts) all += (all.empty() ? "" : between) + part;
    return all;
}

bool IsFile(const Word& word) {
    return word.value.starts_with("FILE");
}
bool IsFolder(const Word& word) {
    return word.value == "FOLDER";
}
/// Its value stands in the same word, behind a colon.
bool IsGlued(const Word& word) {
    return word.names.front().ends_with(":");
}

std::string AllNames(const Program& program) {
    std::string names;
    for (const Word& word : program.words) names += (names.empty() ? "" : " ") + Joined(word.names, " ");
    return names;
}

/// What stands behind an option that wants a value.
std::string BashValues(const Program& program) {
    std::string cases;
    for (const Word& word : program.words) {
        if (word.value.empty() || IsGlued(word)) continue;
        std::string what = "COMPREPLY=()";
        if (!word.choices.empty())
            what = "mapfile -t COMPREPLY < <(compgen -W '" + Joined(word.choices, " ") + "' -- \"$cur\")";
        if (IsFile(word)) what = "mapfile -t COMPREPLY < <(compgen -f -- \"$cur\")";
        if (IsFolder(word)) what = "mapfile -t COMPREPLY < <(compgen -d -- \"$cur\")";
        cases += "        " + Joined(word.names, "|") + ") " + what + "; return ;;\n";
    }
    return cases.empty() ? "" : "    case $prev in\n" + cases + "    esac\n";
}

/// Folders behind "/PATH:". The shell takes a colon for the end of a word, unless it was told otherwise.
std::string BashGlued(const Program& program) {
    std::string cases;
    for (const Word& word : program.words) {
        if (!IsGlued(word) || !IsFolder(word)) continue;
        const std::string& name = word.names.front();
        cases += "        " + name + "*)\n            mapfile -t COMPREPLY < <(compgen -d -- \"${cur#" +
                 name + "}\")\n            [[ $COMP_WORDBREAKS == *:* ]] || COMPREPLY=(\"${COMPREPLY[@]/#/" +
                 "\\" + name + "}\")\n            compopt -o filenames; return ;;\n";
    }
    return cases;
}

/// Brackets, colons and backslashes would end a field of what zsh's _arguments takes.
std::string ZshText(const std::string& text) {
    std::string escaped;
    for (const char c : text) {
        if (c == '[' || c == ']' || c == ':' || c == '\\') escaped += '\\';
        escaped += c == '\'' ? "'\\''" : std::string(1, c);
    }
    return escaped;
}

std::string ZshValue(const Word& word) {
    if (word.value.empty()) return "";
    std::string action = " ";
    if (!word.choices.empty()) action = "(" + Joined(word.choices, " ") + ")";
    if (IsFile(word)) action = "_files";
    if (IsFolder(word)) action = "_files -/";
    return ":" + ZshText(word.value) + ":" + action;
}

std::string ZshOptions(const Program& program) {
    std::string text = "_arguments -s \\\n";
    for (const Word& word : program.words) {
        for (const std::string& name : word.names)
            text += "  '" + name + "[" + ZshText(word.help) + "]" + ZshValue(word) + "' \\\n";
    }
    return text + "  '*:word:_files'\n";
}

std::string ZshSwitches(const Program& program) {
    std::string text = "compset -P '/PATH:' && { _files -/; return }\nlocal -a switches=(\n";
    for (const Word& word : program.words) {
        for (const std::string& name : word.names)
            text += "  '" + ZshText(name) + ":" + ZshText(word.help) + "'\n";
    }
    return text + ")\n_describe switch switches\n";
}

}  // namespace

std::string BashCompletion(const Program& program) {
    std::string function = "_" + program.name;
    for (char& c : function) c = c == '-' ? '_' : c;
    return "# Made from the option table of " + program.name + ".\n" + function +
           "() {\n    local cur=${COMP_LINE:0:COMP_POINT} prev=${COMP_WORDS[COMP_CWORD-1]}\n"
           "    cur=${cur##*[[:space:]]}\n    COMPREPLY=()\n" +
           BashValues(program) + "    case $cur in\n" + BashGlued(program) +
           "        -* | /* | '')\n            mapfile -t COMPREPLY < <(compgen -W '" + AllNames(program) +
           "' -- \"$cur\")\n            [[ ${COMPREPLY[0]-} != *: ]] || compopt -o nospace ;;\n"
           "        *) mapfile -t COMPREPLY < <(compgen -f -- \"$cur\") ;;\n    esac\n}\ncomplete -F " +
           function + " " + program.name + "\n";
}

std::string ZshCompletion(const Program& program) {
    const bool hasSwitches = program.words.front().names.front().starts_with("/");
    return "#compdef " + program.name + "\n# Made from the option table of " + program.name + ".\n" +
           (hasSwitches ? ZshSwitches(program) : ZshOptions(program));
}

}  // namespace nordkeep
