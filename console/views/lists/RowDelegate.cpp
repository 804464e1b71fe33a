#include "console/views/lists/RowDelegate.h"

#include "console/views/lists/Icons.h"
#include "console/views/lists/Theme.h"

#include <QtGui/QPainter>

namespace nordkeep {
namespace {

constexpr int kMargin = 4;
constexpr int kIcon = 16;
constexpr int kFrame = 2;

QColor Blend(const QColor& a, const QColor& b, int percentOfB) {
    const auto mix = [&](int from, int to) { return from + (to - from) * percentOfB / 100; };
    return {mix(a.red(), b.red()), mix(a.green(), b.green()), mix(a.blue(), b.blue())};
}

}  // namespace

RowDelegate::Colors RowDelegate::ColorsOf(const QStyleOptionViewItem& option, const QModelIndex& index,
                                          bool isSelected) const {
    const QPalette& palette = option.palette;
    const CellColors cell = rows_.Colors(index.row(), index.column() - 1);
    Colors colors{palette.color(QPalette::Base), palette.color(QPalette::Text), !cell.background};
    const RowGround ground = cell.background ? RowGround::Plain : rows_.Ground(index.row());
    if (const QColor paper = GroundColor(ground, palette); paper.isValid()) colors.paper = paper;
    if (ground == RowGround::Ended) colors.ink = MutedColor(palette);
    if (cell.background) colors.paper = ToQColor(*cell.background);
    if (cell.text) colors.ink = ToQColor(*cell.text);
    if (isSelected && colors.isTheme) {
        colors.paper = Blend(colors.paper, palette.color(QPalette::Highlight), 22);
    }
    return colors;
}

void RowDelegate::PaintIconCell(QPainter& painter, const QStyleOptionViewItem& option,
                                const QModelIndex& index, const Colors& colors) const {
    const QRect& box = option.rect;
    const Glyph glyph = rows_.Icon(index.row());
    const QColor own = colors.isTheme ? OwnColorOf(glyph, option.palette) : QColor();
    const double top = box.top() + (box.height() - kIcon) / 2.0;
    PaintGlyph(painter, {box.left() + 2.0, top, kIcon, kIcon}, glyph,
               {own.isValid() ? own : colors.ink, colors.paper});
}

void RowDelegate::PaintSign(QPainter& painter, const QStyleOptionViewItem& option, Glyph sign,
                            const Colors& colors) const {
    const QRect& box = option.rect;
    const QColor own = colors.isTheme ? OwnColorOf(sign, option.palette) : QColor();
    PaintGlyph(painter, QRectF(box.left() + kMargin, box.top() + (box.height() - kIcon) / 2.0, kIcon, kIcon),
               sign, {own.isValid() ? own : colors.ink, colors.paper});
}

void RowDelegate::PaintFrame(QPainter& painter, const QStyleOptionViewItem& option, const QModelIndex& index,
                             const Colors& colors) const {
    const QRect& box = option.rect;
    const QColor color = option.palette.color(QPalette::Highlight);
    // The thin line inside tells the frame from a row of nearly its colour.
    QColor thin = colors.ink;
    thin.setAlpha(150);
    painter.fillRect(QRect(box.left(), box.top() + kFrame, box.width(), 1), thin);
    painter.fillRect(QRect(box.left(), box.bottom() - kFrame, box.width(), 1), thin);
    const bool isLast = marksFirstCellOnly_ || index.column() == index.model()->columnCount() - 1;
    painter.fillRect(QRect(box.left(), box.top(), box.width(), kFrame), color);
    painter.fillRect(QRect(box.left(), box.bottom() - kFrame + 1, box.width(), kFrame), color);
    if (index.column() == 0) painter.fillRect(QRect(box.left(), box.top(), kFrame, box.height()), color);
    if (isLast) {
        painter.fillRect(QRect(box.right() - kFrame + 1, box.top(), kFrame, box.height()), color);
    }
}

void RowDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                        const QModelIndex& index) const {
    const bool isSelected =
        option.state.testFlag(QStyle::State_Selected) && (!marksFirstCellOnly_ || index.column() == 0);
    const Colors colors = ColorsOf(option, index, isSelected);
    painter->fillRect(option.rect, colors.paper);
    // A hair line keeps rows of one colour apart.
    const QRect line(option.rect.left(), option.rect.bottom(), option.rect.width(), 1);
    painter->fillRect(line, Blend(colors.paper, colors.ink, colors.isTheme ? 10 : 18));
    if (index.column() == 0) PaintIconCell(*painter, option, index, colors);
    const QString text = index.data(Qt::DisplayRole).toString();
    if (!text.isEmpty()) {
        int left = index.column() == 0 ? kIcon + 5 : kMargin;
        const Glyph sign = rows_.CellSign(index.row(), index.column() - 1);
        if (sign != Glyph::None) {
            PaintSign(*painter, option, sign, colors);
            left = kIcon + 2 * kMargin;
        }
        const QRect box = option.rect.adjusted(left, 0, index.column() == 0 ? 0 : -kMargin, 0);
        QFont font = option.font;
        font.setBold(index.column() == 0 || rows_.IsUnread(index.row()));
        painter->setFont(font);
        painter->setPen(colors.ink);
        const QFontMetrics metrics(font);
        painter->drawText(box, Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine | Qt::TextDontClip,
                          metrics.elidedText(text, Qt::ElideRight, box.width()));
    }
    if (isSelected) PaintFrame(*painter, option, index, colors);
}

QSize RowDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex&) const {
    return {40, option.fontMetrics.height() + 6};
}

}  // namespace nordkeep
