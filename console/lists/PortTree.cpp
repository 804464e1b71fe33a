#include "console/lists/PortTree.h"

#include <algorithm>
#include <array>
#include <unordered_map>

namespace nordkeep {
namespace {

constexpr int kLevels = 3;

Glyph GlyphOf(AliveState state) {
    return state == AliveState::Failed  ? Glyph::TreeFailed
           : state == AliveState::Alive ? Glyph::TreeAlive
                                        : Glyph::TreePlain;
}

}  // namespace

int PortTree::AddNode(const PortTreeNode& node, int parent) {
    const int number = Count();
    Text path = parent == kNone ? Text() : At(parent).path;
    path.append(node.text).append(1, '\n');
    nodes_.push_back({.text = node.text, .path = std::move(path), .parent = parent, .level = node.level});
    (parent == kNone ? roots_ : nodes_[static_cast<std::size_t>(parent)].children).push_back(number);
    return number;
}

void PortTree::SortChildren(std::vector<int>& children) {
    std::ranges::stable_sort(children, {}, [this](int node) { return CollationKey(At(node).text); });
    for (std::size_t row = 0; row < children.size(); ++row) {
        nodes_[static_cast<std::size_t>(children[row])].row = static_cast<int>(row);
    }
}

void PortTree::Show(const std::vector<PortTreeNode>& nodes) {
    if (observer_) observer_->BeforeRebuild();
    nodes_.clear();
    roots_.clear();
    std::array<int, kLevels> last{kNone, kNone, kNone};
    for (const PortTreeNode& node : nodes) {
        if (node.level < 0 || node.level >= kLevels) continue;
        const auto level = static_cast<std::size_t>(node.level);
        const int parent = level == 0 ? kNone : last[level - 1];
        if (level > 0 && parent == kNone) continue;
        last[level] = AddNode(node, parent);
        for (std::size_t below = level + 1; below < last.size(); ++below) last[below] = kNone;
    }
    SortChildren(roots_);
    for (Node& node : nodes_) SortChildren(node.children);
    ApplyLines();
    if (observer_) observer_->AfterRebuild();
}

int PortTree::NodeOf(const Text& path) const {
    const auto at = path.empty() ? nodes_.end() : std::ranges::find(nodes_, path, &Node::path);
    return at == nodes_.end() ? kNone : static_cast<int>(at - nodes_.begin());
}

void PortTree::Select(int node) {
    selectedPath_ = node >= 0 && node < Count() ? At(node).path : Text();
}

Text PortTree::SelectedSet() const {
    const int node = Selected();
    return node != kNone && At(node).IsSet() ? At(node).text : Text();
}

void PortTree::SetExpanded(int node, bool isExpanded) {
    if (node < 0 || node >= Count()) return;
    if (isExpanded) collapsed_.erase(At(node).path);
    if (!isExpanded) collapsed_.insert(At(node).path);
}

bool PortTree::IsExpanded(int node) const {
    return node >= 0 && node < Count() && !collapsed_.contains(At(node).path);
}

AliveState PortTree::WorstOf(int node, const std::function<AliveState(const Text&)>& stateOf) {
    AliveState worst = At(node).IsSet() ? stateOf(At(node).text) : AliveState::NotSupervised;
    for (const int child : At(node).children) worst = std::max(worst, WorstOf(child, stateOf));
    nodes_[static_cast<std::size_t>(node)].alive = worst;
    nodes_[static_cast<std::size_t>(node)].glyph = GlyphOf(worst);
    return worst;
}

void PortTree::ApplyLines() {
    for (const int root : roots_) {
        Node& node = nodes_[static_cast<std::size_t>(root)];
        node.line.reset();
        for (const LineFigures& line : lines_) {
            if (line.description != node.text) continue;
            if (!node.line || IsWorking(*node.line)) node.line = line.state;
        }
    }
}

void PortTree::ShowLines(const std::vector<LineFigures>& lines) {
    const auto isAlike = [](const LineFigures& a, const LineFigures& b) {
        return a.description == b.description && a.state == b.state;
    };
    if (std::ranges::equal(lines_, lines, isAlike)) return;
    lines_ = lines;
    ApplyLines();
    if (observer_) observer_->GlyphsChanged();
}

void PortTree::RecalcGlyphs(const std::function<AliveState(const Text&)>& stateOf) {
    std::unordered_map<Text, AliveState> known;
    const auto once = [&](const Text& set) {
        const auto found = known.find(set);
        return found != known.end() ? found->second : known.emplace(set, stateOf(set)).first->second;
    };
    for (const int root : roots_) WorstOf(root, once);
    if (observer_) observer_->GlyphsChanged();
}

}  // namespace nordkeep
