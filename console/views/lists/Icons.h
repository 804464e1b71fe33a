#pragma once

#include "console/lists/RowModel.h"
#include "console/window/StatusTexts.h"

#include <QtGui/QColor>
#include <QtGui/QIcon>
#include <QtGui/QPalette>

class QPainter;
class QRectF;

namespace nordkeep {

// The pictures are files of console/views/icons, in the colours of a light theme; they are sharp at every
// scale, and take the colours of the present theme when they are painted.

inline QColor ToQColor(Rgb color) {
    return {color.red, color.green, color.blue};
}

/// The two colours of what lies below a glyph: the text and the background there.
struct GlyphInk {
    QColor ink{};
    QColor paper{};
};
/// The colour that a glyph has of its own on an uncoloured row; invalid for one that takes the text's.
QColor OwnColorOf(Glyph glyph, const QPalette& palette);
/// Paints a glyph into a square.
void PaintGlyph(QPainter& painter, const QRectF& square, Glyph glyph, const GlyphInk& ink);
QIcon GlyphIcon(Glyph glyph, const QPalette& palette);

/// Picture 1 to 12 of the toolbar.
QIcon ToolBarIcon(int number, const QPalette& palette);
/// The icon of the program.
QIcon ProgramIcon();
QIcon TrayIconOf(const Tray& tray);

}  // namespace nordkeep
