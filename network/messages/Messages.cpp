#include "network/messages/Messages.h"

#include <algorithm>

namespace nordkeep {
namespace {

constexpr int kDeepest = 2;
/// Far more than any centre has; a payload of empty texts must not become a tree that fills the memory.
constexpr std::size_t kMostNodes = 100'000;

}  // namespace

Text PortTreePayload(const std::vector<PortTreeNode>& nodes) {
    PayloadWriter wire;
    for (const PortTreeNode& node : nodes) {
        // A text of its own with a backslash in front would be taken for a deeper level.
        const std::size_t start = std::min(node.text.find_first_not_of('\\'), node.text.size());
        const auto level = static_cast<std::size_t>(std::clamp(node.level, 0, kDeepest));
        wire.ShortString(Text(level, '\\') + node.text.substr(start));
    }
    return wire.Take();
}

std::vector<PortTreeNode> ReadPortTree(TextView payload) {
    std::vector<PortTreeNode> nodes;
    PayloadReader wire(payload);
    while (!wire.IsAtEnd() && nodes.size() < kMostNodes) {
        PortTreeNode node;
        wire.ShortString(node.text);
        while (node.level < kDeepest && node.text.substr(static_cast<std::size_t>(node.level), 1) == "\\")
            ++node.level;
        node.text.erase(0, static_cast<std::size_t>(node.level));
        nodes.push_back(std::move(node));
    }
    return nodes;
}

}  // namespace nordkeep
