#pragma once

#include "console/lists/RowModel.h"
#include "network/messages/Messages.h"
#include "runtime/CentreState.h"

#include <functional>
#include <optional>
#include <set>
#include <vector>

namespace nordkeep {

/// How the objects of a set stand with their alive tests.
enum class AliveState { NotSupervised, Alive, Failed };

/// The tree of ports, their protocols, and the sets of these. What is selected and what is expanded is kept
/// by path when the tree is built again.
class PortTree {
 public:
    static constexpr int kNone = -1;

    struct Node {
        Text text{};
        Text path{};  // the texts from the port on, each with a line feed behind it
        int parent = kNone;
        int row = 0;  // among its parent's children
        std::vector<int> children{};
        Glyph glyph = Glyph::TreePlain;
        AliveState alive = AliveState::NotSupervised;  // the worst of what is below
        std::optional<LineState> line{};               // of a line that is known
        bool IsSet() const { return level == 2; }
        int level = 0;
    };

    /// Who shows the tree.
    class Observer {
     public:
        virtual ~Observer() = default;
        virtual void BeforeRebuild() = 0;
        virtual void AfterRebuild() = 0;
        virtual void GlyphsChanged() = 0;
    };
    void SetObserver(Observer* observer) { observer_ = observer; }

    /// Builds the tree anew, every level sorted by its texts. A node without its parent is left out.
    void Show(const std::vector<PortTreeNode>& nodes);
    void Clear() { Show({}); }

    const std::vector<int>& Roots() const { return roots_; }
    /// `node` is one of the tree.
    const Node& At(int node) const { return nodes_[static_cast<std::size_t>(node)]; }
    int Count() const { return static_cast<int>(nodes_.size()); }

    /// Selects a node; kNone selects nothing.
    void Select(int node);
    /// The node of the selected path; kNone when it is not there at present.
    int Selected() const { return NodeOf(selectedPath_); }
    /// The set of the selected node; empty when it stands for none.
    Text SelectedSet() const;
    void SetExpanded(int node, bool isExpanded);
    bool IsExpanded(int node) const;

    /// Asks for the state of every set and shows the worst below each node.
    void RecalcGlyphs(const std::function<AliveState(const Text& set)>& stateOf);
    /// How the lines do, by their descriptions; of two with the same one the worse counts.
    void ShowLines(const std::vector<LineFigures>& lines);

 private:
    int NodeOf(const Text& path) const;
    int AddNode(const PortTreeNode& node, int parent);
    void SortChildren(std::vector<int>& children);
    AliveState WorstOf(int node, const std::function<AliveState(const Text&)>& stateOf);

    void ApplyLines();

    std::vector<LineFigures> lines_{};
    std::vector<Node> nodes_{};
    std::vector<int> roots_{};
    Text selectedPath_{};
    std::set<Text> collapsed_{};  // ports and protocols are open until somebody closes them
    Observer* observer_ = nullptr;
};

}  // namespace nordkeep
