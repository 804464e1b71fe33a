#include "runtime/PlainLine.h"

#include <algorithm>

namespace nordkeep {

Text PlainLine(TextView text) {
    Text plain(text);
    std::ranges::replace_if(
        plain, [](char c) { return static_cast<unsigned char>(c) < 32 && c != '\t'; }, '?');
    return plain;
}

}  // namespace nordkeep
