#include "tests/fuzz/Targets.h"

#include "platform/Files.h"

#include <cstdlib>

namespace nordkeep {
namespace {

/// The bytes of "receive 02 4A | .J".
Text BytesOf(TextView line) {
    Text bytes;
    line = line.substr(0, line.find('|'));
    for (std::size_t at = line.find(' '); at + 2 < line.size(); at += 3) {
        const Text pair(line.substr(at + 1, 2));
        if (pair == "  ") break;
        bytes += static_cast<char>(std::strtol(pair.c_str(), nullptr, 16));
    }
    return bytes;
}

}  // namespace

std::vector<Text> ExamplesOf(int messageFormat) {
    static const Text page = ReadFile(NORDKEEP_SOURCE_DIR "/docs/protocols.md").value_or("");
    const Text fence = "```telegram " + std::to_string(messageFormat) + "\n";
    std::vector<Text> examples;
    for (std::size_t at = page.find(fence); at != Text::npos; at = page.find(fence, at + 1)) {
        TextView rest = TextView(page).substr(at + fence.size());
        Text stream;
        while (!rest.starts_with("```") && !rest.empty()) {
            const std::size_t end = std::min(rest.find('\n'), rest.size() - 1);
            if (rest.starts_with("receive ")) stream += BytesOf(rest.substr(0, end));
            rest.remove_prefix(end + 1);
        }
        examples.push_back(stream);
    }
    return examples;
}

const std::vector<FuzzTarget>& FuzzTargets() {
    static const std::vector<FuzzTarget> targets = [] {
        std::vector<FuzzTarget> all = LineTargets();
        for (const auto& more : {FileTargets(), TalkTargets(), NetworkTargets()})
            all.insert(all.end(), more.begin(), more.end());
        return all;
    }();
    return targets;
}

}  // namespace nordkeep
