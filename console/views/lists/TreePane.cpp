#include "console/views/lists/TreePane.h"

#include "console/lists/LineRows.h"
#include "console/views/lists/Icons.h"
#include "console/views/lists/ViewParts.h"

#include <QtGui/QContextMenuEvent>
#include <QtGui/QGuiApplication>
#include <QtWidgets/QHeaderView>

namespace nordkeep {
namespace {

constexpr int kCaptionFirstAlive = 5035;

}  // namespace

TreeAdapter::TreeAdapter(PortTree& tree, const Captions& captions, QObject* parent)
    : QAbstractItemModel(parent), tree_(tree), captions_(captions) {
    tree_.SetObserver(this);
    MakeIcons();
}

TreeAdapter::~TreeAdapter() {
    tree_.SetObserver(nullptr);
}

int TreeAdapter::NodeOf(const QModelIndex& index) {
    return index.isValid() ? static_cast<int>(index.internalId()) : PortTree::kNone;
}

QModelIndex TreeAdapter::IndexOf(int node) const {
    if (node < 0 || node >= tree_.Count()) return {};
    return createIndex(tree_.At(node).row, 0, static_cast<quintptr>(node));
}

const std::vector<int>& TreeAdapter::ChildrenOf(const QModelIndex& parent) const {
    return parent.isValid() ? tree_.At(NodeOf(parent)).children : tree_.Roots();
}

QModelIndex TreeAdapter::index(int row, int column, const QModelIndex& parent) const {
    const std::vector<int>& children = ChildrenOf(parent);
    if (row < 0 || row >= static_cast<int>(children.size()) || column < 0 || column > 1) return {};
    return createIndex(row, column, static_cast<quintptr>(children[static_cast<std::size_t>(row)]));
}

QModelIndex TreeAdapter::parent(const QModelIndex& child) const {
    return child.isValid() ? IndexOf(tree_.At(NodeOf(child)).parent) : QModelIndex();
}

int TreeAdapter::rowCount(const QModelIndex& parent) const {
    return parent.column() > 0 ? 0 : static_cast<int>(ChildrenOf(parent).size());
}

QVariant TreeAdapter::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {};
    const PortTree::Node& node = tree_.At(NodeOf(index));
    if (role == Qt::ToolTipRole) return ToolTipText(WordsOf(node));
    if (index.column() == 1) return LineData(node, role);
    if (role == Qt::DisplayRole) return ShownLine(node.text);
    if (role == Qt::AccessibleTextRole) return WordsOf(node);
    if (role != Qt::DecorationRole) return {};
    const auto icon = icons_.find(node.glyph);
    return icon != icons_.end() ? icon->second : QVariant();
}

QVariant TreeAdapter::LineData(const PortTree::Node& node, int role) const {
    if (!node.line) return {};
    // A line that does as it should needs no word; there is little room.
    if (role == Qt::DisplayRole && IsWorking(*node.line)) return {};
    if (role == Qt::DisplayRole) return ShownLine(LineStateWord(captions_, *node.line));
    if (role == Qt::AccessibleTextRole) return ShownLine(LineStateText(captions_, *node.line));
    const auto icon = icons_.find(GlyphOf(*node.line));
    return role == Qt::DecorationRole && icon != icons_.end() ? QVariant(icon->second) : QVariant();
}

QString TreeAdapter::WordsOf(const PortTree::Node& node) const {
    QString words = ShownLine(node.text);
    if (node.line) words += QStringLiteral("\n") + ShownLine(LineStateText(captions_, *node.line));
    return words + QStringLiteral("\n") +
           CaptionText(captions_, kCaptionFirstAlive + static_cast<int>(node.alive));
}

void TreeAdapter::MakeIcons() {
    for (const Glyph glyph :
         {Glyph::TreePlain, Glyph::TreeAlive, Glyph::TreeFailed, Glyph::LineUp, Glyph::LineAwaits,
          Glyph::LineFailed, Glyph::LineShut, Glyph::LineMuted, Glyph::LineQuiet}) {
        icons_[glyph] = GlyphIcon(glyph, QGuiApplication::palette());
    }
}

void TreeAdapter::RenewIcons() {
    MakeIcons();
    GlyphsChanged();
}

void TreeAdapter::GlyphsChanged() {
    for (int node = 0; node < tree_.Count(); ++node) {
        const QModelIndex at = IndexOf(node);
        Q_EMIT dataChanged(at, at.siblingAtColumn(1));
    }
}

TreePane::TreePane(PortTree& tree, const Captions& captions, QWidget* parent)
    : QTreeView(parent), adapter_(tree, captions) {
    setModel(&adapter_);
    setHeaderHidden(true);
    header()->setStretchLastSection(false);
    header()->setSectionResizeMode(0, QHeaderView::Stretch);
    header()->setSectionResizeMode(1, QHeaderView::ResizeToContents);
    setUniformRowHeights(true);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    connect(&adapter_, &QAbstractItemModel::modelAboutToBeReset, this, [this] { isRestoring_ = true; });
    connect(&adapter_, &QAbstractItemModel::modelReset, this, [this] { Restore(); });
    const auto note = [this](const QModelIndex& index, bool isExpanded) {
        if (!isRestoring_) adapter_.Tree().SetExpanded(TreeAdapter::NodeOf(index), isExpanded);
    };
    connect(this, &QTreeView::expanded, this, [note](const QModelIndex& index) { note(index, true); });
    connect(this, &QTreeView::collapsed, this, [note](const QModelIndex& index) { note(index, false); });
    Restore();
}

void TreePane::Restore() {
    isRestoring_ = true;
    for (int node = 0; node < adapter_.Tree().Count(); ++node) {
        setExpanded(adapter_.IndexOf(node), adapter_.Tree().IsExpanded(node));
    }
    setCurrentIndex(adapter_.IndexOf(adapter_.Tree().Selected()));
    isRestoring_ = false;
}

void TreePane::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
    QTreeView::currentChanged(current, previous);
    if (!isRestoring_) onSelect(TreeAdapter::NodeOf(current));
}

void TreePane::contextMenuEvent(QContextMenuEvent* event) {
    const QRect row = visualRect(currentIndex());
    const bool isByKey = event->reason() == QContextMenuEvent::Keyboard;
    if (currentIndex().isValid()) {
        onPopup(isByKey ? viewport()->mapToGlobal(row.bottomLeft()) : event->globalPos());
    }
}

void TreePane::changeEvent(QEvent* event) {
    QTreeView::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) adapter_.RenewIcons();
}

}  // namespace nordkeep
