#include "platform/FileTree.h"

namespace nordkeep {
namespace {

constexpr TextView kNotInNames = "\\/:*?\"<>|";

bool MatchesFrom(TextView name, TextView mask) {
    while (!mask.empty()) {
        if (mask.front() == '*') {
            while (!mask.empty() && mask.front() == '*') mask.remove_prefix(1);
            if (mask.empty()) return true;
            for (; !name.empty(); name.remove_prefix(1)) {
                if (MatchesFrom(name, mask)) return true;
            }
            return false;
        }
        if (name.empty()) return false;
        if (mask.front() != '?' && UpperCase(mask.front()) != UpperCase(name.front())) return false;
        mask.remove_prefix(1);
        name.remove_prefix(1);
    }
    return name.empty();
}

}  // namespace

bool MatchesMask(TextView name, TextView mask) {
    return mask == "*.*" || MatchesFrom(name, mask);
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
