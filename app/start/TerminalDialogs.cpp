#include "app/start/TerminalDialogs.h"

#include <cstdio>

namespace nordkeep {

void TerminalDialogs::ShowMessage(const Text& text) {
    std::fprintf(stderr, "nordkeep: %s\n", ToUtf8(text).c_str());
}

}  // namespace nordkeep
