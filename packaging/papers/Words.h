#pragma once

#include <string>
#include <vector>

namespace nordkeep {

/// A word that a program understands.
struct Word {
    std::vector<std::string> names{};    // "--version" and "-V", or "/I"
    std::string value{};                 // what it wants behind it; empty for nothing
    std::vector<std::string> choices{};  // all that it may want
    std::string help{};
};

/// What a program is told, for its manual and its completion.
struct Program {
    std::string name{};
    std::vector<Word> words{};
    std::vector<Word> places{};  // words without a name in front, by their place
};

/// The programs of this house, by their option tables.
std::vector<Program> AllPrograms();

}  // namespace nordkeep
