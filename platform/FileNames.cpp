#include "platform/FileTree.h"

namespace nordkeep {
namespace {

constexpr TextView kNotInNames = "\\/:*?\"<>|";

/// One pass, whatever the mask: when a character does not fit, the last star takes one more, and no earlier
/// star ever has to be looked at again.
bool MatchesStars(TextView name, TextView mask) {
    constexpr std::size_t kNone = TextView::npos;
    std::size_t star = kNone;  // the last one passed, and what it has taken so far ends at `taken`
    std::size_t taken = 0;
    std::size_t at = 0;
    std::size_t in = 0;
    while (at < name.size()) {
        if (in < mask.size() && mask[in] == '*') {
            star = in++;
            taken = at;
        } else if (in < mask.size() && (mask[in] == '?' || UpperCase(mask[in]) == UpperCase(name[at]))) {
            ++in;
            ++at;
        } else if (star != kNone) {
            in = star + 1;
            at = ++taken;
        } else {
            return false;
        }
    }
    return mask.find_first_not_of('*', in) == TextView::npos;
}

}  // namespace

bool MatchesMask(TextView name, TextView mask) {
    return mask == "*.*" || MatchesStars(name, mask);
}

bool IsSafeComponent(TextView name) {
    const bool hasSeparator = name.find_first_of(TextView("\\/\0", 3)) != TextView::npos;
    return !name.empty() && name != "." && name != ".." && !hasSeparator;
}

Text FileSafeName(TextView name) {
    Text safe(name);
    for (char& c : safe) {
        const bool isControl = static_cast<unsigned char>(c) < 32;
        if (isControl || kNotInNames.find(c) != TextView::npos) c = '_';
    }
    safe.resize(safe.find_last_not_of(" .") + 1);
    return safe.empty() ? "_" : safe;
}

}  // namespace nordkeep
