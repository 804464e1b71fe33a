#pragma once

#include "console/lists/RowModel.h"

#include <QtWidgets/QStyledItemDelegate>

namespace nordkeep {

/// Paints the cells of a list. A selected row keeps its colours, which tell its state, and gets a frame and
/// bold letters.
class RowDelegate final : public QStyledItemDelegate {
 public:
    RowDelegate(const RowModel& rows, QObject* parent) : QStyledItemDelegate(parent), rows_(rows) {}

    /// Of a selected row only the first cell is marked.
    void MarkFirstCellOnly(bool isOn) { marksFirstCellOnly_ = isOn; }

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

 private:
    struct Colors {
        QColor paper{};
        QColor ink{};
        bool isTheme = true;
    };
    Colors ColorsOf(const QStyleOptionViewItem& option, const QModelIndex& index, bool isSelected) const;
    void PaintIconCell(QPainter& painter, const QStyleOptionViewItem& option, const QModelIndex& index,
                       const Colors& colors) const;
    void PaintSign(QPainter& painter, const QStyleOptionViewItem& option, Glyph sign,
                   const Colors& colors) const;
    void PaintFrame(QPainter& painter, const QStyleOptionViewItem& option, const QModelIndex& index,
                    const Colors& colors) const;

    const RowModel& rows_;
    bool marksFirstCellOnly_ = false;
};

}  // namespace nordkeep
