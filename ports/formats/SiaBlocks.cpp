#include "ports/formats/SiaBlocks.h"

namespace nordkeep {
namespace {

/// Cuts the block that starts at the front of `rest` behind its one-byte length.
SiaBlock TakeLengthBlock(TextView& rest) {
    const auto length = static_cast<unsigned char>(rest.front());
    SiaBlock block;
    if (rest.size() > 1) block.type = rest[1];
    const TextView behindType = rest.substr(rest.size() > 1 ? 2 : 1);
    block.data = behindType.substr(0, length);
    const TextView check = behindType.substr(block.data.size());
    rest = check.substr(check.empty() ? 0 : 1);
    if (rest.starts_with('\\')) {
        block.hasBackslashBehind = true;
        rest.remove_prefix(1);
    }
    return block;
}

/// Cuts everything up to the first of `ends`.
Text TakeUpTo(TextView& rest, TextView ends) {
    Text taken(rest.substr(0, rest.find_first_of(ends)));
    rest.remove_prefix(taken.size());
    return taken;
}

std::vector<SiaBlock> SplitBrackets(TextView rest) {
    std::vector<SiaBlock> blocks;
    while (!rest.empty()) {
        const char first = rest.front();
        rest.remove_prefix(1);
        if (first == '#') blocks.push_back({.type = '#', .data = TakeUpTo(rest, "|]")});
        const bool opens = first == '|' || first == '\\';
        const bool isEmpty = rest.empty() || TextView("|\\]").find(rest.front()) != TextView::npos;
        if (!opens || isEmpty) continue;
        const char type = rest.front();
        rest.remove_prefix(1);
        blocks.push_back({.type = type, .data = TakeUpTo(rest, "\\|]")});
    }
    return blocks;
}

}  // namespace

std::vector<SiaBlock> SplitSiaBlocks(TextView text, SiaForm form) {
    if (form == SiaForm::Brackets) return SplitBrackets(text);
    std::vector<SiaBlock> blocks;
    while (!text.empty()) blocks.push_back(TakeLengthBlock(text));
    return blocks;
}

}  // namespace nordkeep
