#pragma once

#include "console/lists/Captions.h"
#include "console/lists/PortTree.h"

#include <QtCore/QAbstractItemModel>
#include <QtGui/QIcon>
#include <QtWidgets/QTreeView>

#include <functional>
#include <map>

namespace nordkeep {

/// Shows the tree of ports and sets to a tree widget: in the first column the names with the signs of the
/// alive tests, in the second how the lines do.
class TreeAdapter final : public QAbstractItemModel, private PortTree::Observer {
 public:
    TreeAdapter(PortTree& tree, const Captions& captions, QObject* parent = nullptr);
    ~TreeAdapter() override;

    PortTree& Tree() const { return tree_; }
    static int NodeOf(const QModelIndex& index);
    QModelIndex IndexOf(int node) const;

    QModelIndex index(int row, int column, const QModelIndex& parent) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    int rowCount(const QModelIndex& parent) const override;
    int columnCount(const QModelIndex&) const override { return 2; }
    QVariant data(const QModelIndex& index, int role) const override;
    /// The colours of the theme have changed.
    void RenewIcons();

 private:
    void BeforeRebuild() override { beginResetModel(); }
    void AfterRebuild() override { endResetModel(); }
    void GlyphsChanged() override;

    QVariant LineData(const PortTree::Node& node, int role) const;
    /// What the signs of a node say.
    QString WordsOf(const PortTree::Node& node) const;
    void MakeIcons();
    const std::vector<int>& ChildrenOf(const QModelIndex& parent) const;

    PortTree& tree_;
    const Captions& captions_;
    std::map<Glyph, QIcon> icons_{};
};

/// The tree on the screen.
class TreePane final : public QTreeView {
 public:
    TreePane(PortTree& tree, const Captions& captions, QWidget* parent = nullptr);

    /// A node has been chosen; PortTree::kNone for none.
    std::function<void(int node)> onSelect = [](int) {};
    std::function<void(QPoint)> onPopup = [](QPoint) {};

 protected:
    void contextMenuEvent(QContextMenuEvent* event) override;
    void changeEvent(QEvent* event) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;

 private:
    void Restore();

    TreeAdapter adapter_;
    bool isRestoring_ = false;
};

}  // namespace nordkeep
