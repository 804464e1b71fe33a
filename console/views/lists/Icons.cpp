#include "console/views/lists/Icons.h"

#include "console/views/lists/Theme.h"
#include "console/views/lists/ViewParts.h"

#include <QtGui/QGuiApplication>
#include <QtGui/QPainter>
#include <QtGui/QPainterPath>
#include <QtGui/QPixmap>

#include <array>
#include <functional>

namespace nordkeep {
namespace {

constexpr double kGrid = 16;  // glyphs are drawn on 16 by 16

QPen RoundPen(const QColor& color, double width) {
    return {color, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin};
}

void Exclamation(QPainter& painter, QPointF top, double height, const QColor& color) {
    painter.setPen(RoundPen(color, 1.7));
    painter.drawLine(top, top + QPointF(0, height * 0.6));
    painter.drawPoint(top + QPointF(0, height));
}

void Triangle(QPainter& painter, const QRectF& box, const GlyphInk& ink) {
    painter.setPen(RoundPen(ink.ink, 1.2));
    painter.setBrush(ink.ink);
    painter.drawPolygon(QPolygonF{QPointF(box.center().x(), box.top()), box.bottomRight(), box.bottomLeft()});
    Exclamation(painter, {box.center().x(), box.top() + box.height() * 0.38}, box.height() * 0.45, ink.paper);
}

void Bubble(QPainter& painter, const QRectF& box, const GlyphInk& ink) {
    QPainterPath path;
    path.addRoundedRect(box.adjusted(0, 0, 0, -3), 2.5, 2.5);
    QPainterPath tail;
    tail.addPolygon(QPolygonF{QPointF(box.left() + 2.5, box.bottom() - 4),
                              QPointF(box.left() + 2.5, box.bottom()),
                              QPointF(box.left() + 6.5, box.bottom() - 3.5)});
    painter.setPen(RoundPen(ink.ink, 1.3));
    painter.setBrush(Qt::NoBrush);
    painter.drawPath(path.united(tail));
    const double middle = box.top() + (box.height() - 3) / 2;
    painter.drawLine(QPointF(box.left() + 2.6, middle - 1.4), QPointF(box.right() - 2.6, middle - 1.4));
    painter.drawLine(QPointF(box.left() + 2.6, middle + 1.4), QPointF(box.right() - 4, middle + 1.4));
}

void Hourglass(QPainter& painter, const QRectF& box, const GlyphInk& ink) {
    painter.setPen(RoundPen(ink.ink, 1.3));
    painter.setBrush(Qt::NoBrush);
    painter.drawLine(box.topLeft(), box.topRight());
    painter.drawLine(box.bottomLeft(), box.bottomRight());
    painter.drawLine(box.topLeft(), box.bottomRight());
    painter.drawLine(box.topRight(), box.bottomLeft());
    painter.setBrush(ink.ink);
    painter.drawPolygon(QPolygonF{box.bottomLeft(), box.bottomRight(), box.center() + QPointF(0, 1)});
}

void Check(QPainter& painter, const QRectF& box, const QColor& color, double width) {
    painter.setPen(RoundPen(color, width));
    painter.setBrush(Qt::NoBrush);
    painter.drawPolyline(QPolygonF{QPointF(box.left(), box.center().y()),
                                   QPointF(box.left() + box.width() * 0.38, box.bottom()), box.topRight()});
}

/// An arrow around a circle, open at its upper right.
void CircleArrow(QPainter& painter, const QRectF& box, const QColor& color, double width) {
    painter.setPen(RoundPen(color, width));
    painter.setBrush(Qt::NoBrush);
    painter.drawArc(box, 60 * 16, -300 * 16 + 30 * 16);
    const QPointF tip(box.center().x() + box.width() * 0.02, box.top());
    painter.setBrush(color);
    painter.setPen(Qt::NoPen);
    const double head = box.width() * 0.3;
    painter.drawPolygon(
        QPolygonF{tip + QPointF(head * 1.5, 0), tip + QPointF(0, -head), tip + QPointF(0, head)});
}

void Disc(QPainter& painter, const QRectF& box, const QColor& color) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawEllipse(box);
}

void Cross(QPainter& painter, const QRectF& box, const QColor& color, double width) {
    painter.setPen(RoundPen(color, width));
    painter.drawLine(box.topLeft(), box.bottomRight());
    painter.drawLine(box.topRight(), box.bottomLeft());
}

void Wrench(QPainter& painter, const QRectF& box, const QColor& color, double width) {
    painter.setPen(RoundPen(color, width));
    painter.setBrush(Qt::NoBrush);
    const double size = box.width();
    painter.drawLine(box.bottomLeft() + QPointF(size * 0.08, -size * 0.08),
                     box.topLeft() + QPointF(size * 0.58, size * 0.42));
    const QRectF head(box.left() + size * 0.48, box.top(), size * 0.52, size * 0.52);
    painter.setPen(RoundPen(color, width * 0.8));
    painter.drawArc(head, 80 * 16, 290 * 16);
}

void Bell(QPainter& painter, const QRectF& box, const QColor& color) {
    QPainterPath path;
    path.moveTo(box.left(), box.bottom() - 3);
    path.quadTo(box.left() + 2, box.bottom() - 5, box.left() + 2, box.top() + 5);
    path.quadTo(box.left() + 2, box.top(), box.center().x(), box.top());
    path.quadTo(box.right() - 2, box.top(), box.right() - 2, box.top() + 5);
    path.quadTo(box.right() - 2, box.bottom() - 5, box.right(), box.bottom() - 3);
    path.closeSubpath();
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawPath(path);
    painter.drawEllipse(QPointF(box.center().x(), box.bottom() - 1.5), 1.8, 1.5);
}

void Clock(QPainter& painter, const QRectF& box, const QColor& color) {
    painter.setPen(RoundPen(color, 1.4));
    painter.setBrush(Qt::NoBrush);
    painter.drawEllipse(box);
    painter.drawLine(box.center(), box.center() - QPointF(0, box.height() * 0.32));
    painter.drawLine(box.center(), box.center() + QPointF(box.width() * 0.25, 0));
}

using Paint = void (*)(QPainter&, const GlyphInk&);

Paint PaintOf(Glyph glyph) {
    switch (glyph) {
        case Glyph::StatusNew:
            return [](QPainter& p, const GlyphInk& ink) { Triangle(p, {1.6, 2, 12.8, 11.6}, ink); };
        case Glyph::StatusCommented:
            return [](QPainter& p, const GlyphInk& ink) { Bubble(p, {1.5, 2.5, 13, 12}, ink); };
        case Glyph::StatusNewWaiting:
            return [](QPainter& p, const GlyphInk& ink) {
                Triangle(p, {0.8, 2, 9.2, 9.6}, ink);
                Hourglass(p, {10.6, 7.6, 4.6, 6.8}, ink);
            };
        case Glyph::StatusCommentedWaiting:
            return [](QPainter& p, const GlyphInk& ink) {
                Bubble(p, {0.8, 1.8, 10, 10}, ink);
                Hourglass(p, {11, 8, 4.4, 6.6}, ink);
            };
        case Glyph::StatusReset:
            return [](QPainter& p, const GlyphInk& ink) { CircleArrow(p, {3, 3.2, 10, 10}, ink.ink, 1.7); };
        case Glyph::StatusEnded:
            return [](QPainter& p, const GlyphInk& ink) { Check(p, {3, 3.5, 10, 8.5}, ink.ink, 2); };
        case Glyph::LogFailure:
            return [](QPainter& p, const GlyphInk& ink) {
                Disc(p, {1.5, 1.5, 13, 13}, ink.ink);
                Cross(p, {5.4, 5.4, 5.2, 5.2}, ink.paper, 1.8);
            };
        case Glyph::LogInformation:
            return [](QPainter& p, const GlyphInk& ink) {
                p.setPen(RoundPen(ink.ink, 1.3));
                p.setBrush(Qt::NoBrush);
                p.drawEllipse(QRectF(2, 2, 12, 12));
                p.setPen(RoundPen(ink.ink, 1.6));
                p.drawPoint(QPointF(8, 5.2));
                p.drawLine(QPointF(8, 7.8), QPointF(8, 11));
            };
        case Glyph::LogOddity:
            return [](QPainter& p, const GlyphInk& ink) { Triangle(p, {1.6, 2, 12.8, 11.6}, ink); };
        case Glyph::LogAlarm:
            return [](QPainter& p, const GlyphInk& ink) { Bell(p, {2, 1.5, 12, 13}, ink.ink); };
        case Glyph::ObjectInService:
            return [](QPainter& p, const GlyphInk& ink) { Wrench(p, {2, 2, 12, 12}, ink.ink, 2.4); };
        case Glyph::ObjectServicePlanned:
            return [](QPainter& p, const GlyphInk& ink) { Clock(p, {2, 2, 12, 12}, ink.ink); };
        case Glyph::ObjectFailed:
        case Glyph::TreeFailed:
            return [](QPainter& p, const GlyphInk& ink) {
                p.setPen(RoundPen(ink.ink, 1));
                p.setBrush(ink.ink);
                p.drawPolygon(QPolygonF{{8, 0.8}, {15.2, 8}, {8, 15.2}, {0.8, 8}});
                Exclamation(p, {8, 4.6}, 6.6, ink.paper);
            };
        case Glyph::ObjectInUse:
        case Glyph::TreeAlive:
            return [](QPainter& p, const GlyphInk& ink) {
                Disc(p, {2, 2, 12, 12}, ink.ink);
                Check(p, {5, 5.6, 6, 4.6}, ink.paper, 1.7);
            };
        case Glyph::TreePlain:
            return [](QPainter& p, const GlyphInk& ink) {
                p.setPen(RoundPen(ink.ink, 1.3));
                p.setBrush(Qt::NoBrush);
                p.drawEllipse(QRectF(3.4, 3.4, 9.2, 9.2));
            };
        case Glyph::LineUp:
            return [](QPainter& p, const GlyphInk& ink) {
                p.setPen(RoundPen(ink.ink, 2));
                p.drawLine(QPointF(4, 8), QPointF(12, 8));
                Disc(p, {1.2, 5, 6, 6}, ink.ink);
                Disc(p, {8.8, 5, 6, 6}, ink.ink);
            };
        case Glyph::LineAwaits:
            return [](QPainter& p, const GlyphInk& ink) {
                Disc(p, {1.2, 5, 6, 6}, ink.ink);
                p.setPen(RoundPen(ink.ink, 1.5));
                p.setBrush(Qt::NoBrush);
                p.drawEllipse(QRectF(9.4, 5.6, 4.8, 4.8));
            };
        case Glyph::LineFailed:
            return [](QPainter& p, const GlyphInk& ink) {
                p.setPen(Qt::NoPen);
                p.setBrush(ink.ink);
                p.drawRoundedRect(QRectF(1.5, 1.5, 13, 13), 2.5, 2.5);
                Cross(p, {5.2, 5.2, 5.6, 5.6}, ink.paper, 1.9);
            };
        case Glyph::LineShut:
            return [](QPainter& p, const GlyphInk& ink) {
                p.setPen(RoundPen(ink.ink, 1.5));
                p.setBrush(Qt::NoBrush);
                p.drawRoundedRect(QRectF(2.4, 2.4, 11.2, 11.2), 2.5, 2.5);
                p.drawLine(QPointF(5.4, 8), QPointF(10.6, 8));
            };
        case Glyph::LineMuted:
            return [](QPainter& p, const GlyphInk& ink) {
                Bell(p, {3, 2, 10, 12}, ink.ink);
                p.setPen(RoundPen(ink.paper, 3));
                p.drawLine(QPointF(2.5, 2.5), QPointF(13.5, 13.5));
                p.setPen(RoundPen(ink.ink, 1.5));
                p.drawLine(QPointF(2.5, 2.5), QPointF(13.5, 13.5));
            };
        case Glyph::LineQuiet:
            return [](QPainter& p, const GlyphInk& ink) { Clock(p, {2, 2, 12, 12}, ink.ink); };
        case Glyph::Priority1:
            return [](QPainter& p, const GlyphInk& ink) {
                p.setPen(RoundPen(ink.ink, 1));
                p.setBrush(ink.ink);
                p.drawPolygon(QPolygonF{{8, 0.6}, {15.4, 8}, {8, 15.4}, {0.6, 8}});
                Exclamation(p, {8, 4.4}, 6.8, ink.paper);
            };
        case Glyph::Priority2:
            return [](QPainter& p, const GlyphInk& ink) {
                p.setPen(RoundPen(ink.ink, 1.2));
                p.setBrush(ink.ink);
                p.drawPolygon(QPolygonF{{8, 2.4}, {14.4, 13.4}, {1.6, 13.4}});
            };
        case Glyph::Priority3:
            return [](QPainter& p, const GlyphInk& ink) { Disc(p, {3, 3, 10, 10}, ink.ink); };
        case Glyph::PriorityLow:
            return [](QPainter& p, const GlyphInk& ink) {
                p.setPen(RoundPen(ink.ink, 1.6));
                p.setBrush(Qt::NoBrush);
                p.drawEllipse(QRectF(3.6, 3.6, 8.8, 8.8));
            };
        case Glyph::None:
            break;
    }
    return nullptr;
}

using PaintIcon = std::function<void(QPainter&)>;

/// Adds pixmaps for the scales of the screens, painted on a grid.
void AddDrawn(QIcon& icon, QIcon::Mode mode, QSize extent, double grid, const PaintIcon& paint) {
    const int size = extent.width();
    for (const double scale : {1.0, 1.5, 2.0, 3.0}) {
        QPixmap pixmap(QSize(size, size) * scale);
        pixmap.setDevicePixelRatio(scale);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.scale(size / grid, size / grid);
        paint(painter);
        painter.end();
        icon.addPixmap(pixmap, mode);
    }
}

QIcon DrawnIcon(int size, double grid, const PaintIcon& paint) {
    QIcon icon;
    AddDrawn(icon, QIcon::Normal, QSize(size, size), grid, paint);
    return icon;
}

}  // namespace

QColor OwnColorOf(Glyph glyph, const QPalette& palette) {
    if (IsHighContrast(palette)) return {};
    const bool isDark = IsDark(palette);
    switch (glyph) {
        case Glyph::Priority1:
        case Glyph::LogFailure:
        case Glyph::LogAlarm:
        case Glyph::ObjectFailed:
        case Glyph::TreeFailed:
        case Glyph::LineFailed:
            return isDark ? QColor(0xFF, 0x8A, 0x80) : QColor(0xB4, 0x23, 0x18);
        case Glyph::Priority2:
        case Glyph::LogOddity:
        case Glyph::ObjectInService:
        case Glyph::ObjectServicePlanned:
        case Glyph::LineShut:
        case Glyph::LineMuted:
        case Glyph::LineQuiet:
            return isDark ? QColor(0xF5, 0xA6, 0x5B) : QColor(0xB3, 0x47, 0x00);
        case Glyph::Priority3:
            return isDark ? QColor(0xE3, 0xC0, 0x4F) : QColor(0x7A, 0x5F, 0x00);
        case Glyph::PriorityLow:
            return isDark ? QColor(0xA3, 0xAD, 0xB8) : QColor(0x57, 0x60, 0x6A);
        case Glyph::ObjectInUse:
        case Glyph::TreeAlive:
        case Glyph::LineUp:
        case Glyph::LineAwaits:
            return isDark ? QColor(0x6F, 0xCF, 0x86) : QColor(0x1A, 0x7F, 0x37);
        case Glyph::LogInformation:
            return isDark ? QColor(0x7C, 0xBB, 0xF8) : QColor(0x0B, 0x5C, 0xAD);
        default:
            return {};
    }
}

void PaintGlyph(QPainter& painter, const QRectF& square, Glyph glyph, const GlyphInk& ink) {
    const Paint paint = PaintOf(glyph);
    if (!paint) return;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(square.topLeft());
    painter.scale(square.width() / kGrid, square.height() / kGrid);
    paint(painter, ink);
    painter.restore();
}

QIcon GlyphIcon(Glyph glyph, const QPalette& palette) {
    const QColor own = OwnColorOf(glyph, palette);
    const GlyphInk ink{own.isValid() ? own : palette.color(QPalette::Text), palette.color(QPalette::Base)};
    return DrawnIcon(16, kGrid, [&](QPainter& painter) { PaintGlyph(painter, {0, 0, 16, 16}, glyph, ink); });
}

QIcon ProgramIcon() {
    return DrawnIcon(64, 16, [](QPainter& p) {
        p.setPen(Qt::NoPen);
        p.setBrush(QColor(0x0B, 0x3C, 0x6F));
        p.drawRoundedRect(QRectF(0.5, 0.5, 15, 15), 3.5, 3.5);
        Bell(p, {3.4, 2.6, 9.2, 10.6}, Qt::white);
        Disc(p, {10, 2, 4, 4}, QColor(0xFF, 0xB0, 0x00));
    });
}

QIcon TrayIconOf(const Tray& tray) {
    return DrawnIcon(32, 16, [&tray](QPainter& p) {
        p.setPen(Qt::NoPen);
        switch (tray.state) {
            case TrayState::Idle:
                p.setBrush(QColor(0x0B, 0x3C, 0x6F));
                p.drawRoundedRect(QRectF(0.5, 0.5, 15, 15), 3.5, 3.5);
                Bell(p, {3.4, 2.6, 9.2, 10.6}, Qt::white);
                break;
            case TrayState::NewAlarms: {
                p.setBrush(QColor(0x8C, 0x1D, 0x00));
                p.drawPolygon(QPolygonF{{8, 0}, {16, 15.5}, {0, 15.5}});
                QFont font = QGuiApplication::font();
                font.setBold(true);
                font.setPixelSize(tray.count > 9 ? 7 : 9);
                p.setFont(font);
                p.setPen(Qt::white);
                const QString count = tray.count > 99 ? QStringLiteral("99+") : QString::number(tray.count);
                p.drawText(QRectF(0, 5, 16, 10.5), Qt::AlignCenter, count);
                break;
            }
            case TrayState::NoContact:
                p.setBrush(QColor(0x60, 0x60, 0x60));
                p.drawRoundedRect(QRectF(0.5, 0.5, 15, 15), 3.5, 3.5);
                Cross(p, {4.5, 4.5, 7, 7}, Qt::white, 2.2);
                break;
        }
    });
}

// --- The toolbar

namespace {

struct ToolInk {
    QColor line{};    // outlines
    QColor accent{};  // what the button does
    QColor fill{};    // a light fill
};

ToolInk ToolInkOf(const QPalette& palette, bool isEnabled) {
    const bool isDark = IsDark(palette);
    if (!isEnabled) {
        const QColor grey = isDark ? QColor(0x6B, 0x72, 0x7C) : QColor(0xB4, 0xB8, 0xBD);
        return {grey, grey, Qt::transparent};
    }
    return isDark ? ToolInk{{0xD8, 0xDE, 0xE6}, {0x8A, 0xB4, 0xF8}, {0x3A, 0x46, 0x55}}
                  : ToolInk{{0x37, 0x47, 0x56}, {0x0B, 0x5C, 0xAD}, {0xDC, 0xE8, 0xF4}};
}

void Pencil(QPainter& p, const ToolInk& ink) {
    p.setPen(RoundPen(ink.accent, 3));
    p.drawLine(QPointF(13.5, 20), QPointF(20, 13.5));
    p.setPen(RoundPen(ink.accent, 1.4));
    p.drawLine(QPointF(11, 22.5), QPointF(13.5, 20));
}

void DrawCloseAll(QPainter& p, const ToolInk& ink) {
    Check(p, {2.5, 7, 12, 9.5}, ink.accent, 2.6);
    Check(p, {9.5, 7, 12, 9.5}, ink.accent, 2.6);
}
void DrawCloseAlarm(QPainter& p, const ToolInk& ink) {
    p.setPen(RoundPen(ink.line, 1.7));
    p.setBrush(ink.fill);
    p.drawEllipse(QRectF(2.5, 2.5, 19, 19));
    Check(p, {7, 8, 10, 8}, ink.accent, 2.6);
}
void DrawSoundStop(QPainter& p, const ToolInk& ink) {
    p.setPen(RoundPen(ink.line, 1.7));
    p.setBrush(ink.fill);
    p.drawPolygon(QPolygonF{{2.5, 9}, {6.5, 9}, {12, 4}, {12, 20}, {6.5, 15}, {2.5, 15}});
    Cross(p, {15.5, 8.8, 6.2, 6.2}, ink.accent, 2.4);
}
void DrawShowLast(QPainter& p, const ToolInk& ink) {
    p.setPen(RoundPen(ink.line, 1.7));
    for (const double y : {4.5, 8.5, 12.5}) p.drawLine(QPointF(3, y), QPointF(14, y));
    p.setPen(RoundPen(ink.accent, 3));
    p.drawLine(QPointF(3.5, 19), QPointF(13.5, 19));
    p.setPen(RoundPen(ink.accent, 2));
    p.drawLine(QPointF(19, 5), QPointF(19, 18));
    p.drawPolyline(QPolygonF{{16, 15.5}, {19, 19}, {22, 15.5}});
}
void DrawShowLastOn(QPainter& p, const ToolInk& ink) {
    p.setPen(Qt::NoPen);
    p.setBrush(ink.fill);
    p.drawRoundedRect(QRectF(0.5, 0.5, 23, 23), 4, 4);
    DrawShowLast(p, ink);
}
void DrawPrint(QPainter& p, const ToolInk& ink) {
    p.setPen(RoundPen(ink.line, 1.7));
    p.setBrush(ink.fill);
    p.drawRect(QRectF(7, 2.5, 10, 6));
    p.drawRoundedRect(QRectF(2.5, 8.5, 19, 9), 2, 2);
    p.setBrush(Qt::NoBrush);
    p.setPen(RoundPen(ink.accent, 1.8));
    p.drawRect(QRectF(7, 14, 10, 7.5));
}
void DrawComments(QPainter& p, const ToolInk& ink) {
    p.setPen(RoundPen(ink.line, 1.7));
    p.setBrush(ink.fill);
    QPainterPath path;
    path.addRoundedRect(QRectF(2.5, 3, 19, 13.5), 3, 3);
    QPainterPath tail;
    tail.addPolygon(QPolygonF{{6, 15.5}, {6, 21.5}, {12, 15.5}});
    p.drawPath(path.united(tail));
    p.setPen(RoundPen(ink.accent, 1.8));
    p.drawLine(QPointF(6.5, 7.8), QPointF(17.5, 7.8));
    p.drawLine(QPointF(6.5, 11.8), QPointF(14, 11.8));
}
void DrawEditIdCodes(QPainter& p, const ToolInk& ink) {
    p.setPen(RoundPen(ink.line, 1.7));
    p.setBrush(ink.fill);
    p.drawPolygon(QPolygonF{{2.5, 10}, {10, 3}, {17.5, 10}, {15.5, 10}, {15.5, 18}, {4.5, 18}, {4.5, 10}});
    Pencil(p, ink);
}
void DrawEditTypes(QPainter& p, const ToolInk& ink) {
    p.setPen(RoundPen(ink.line, 1.7));
    p.setBrush(ink.fill);
    p.drawPolygon(QPolygonF{{3, 3}, {11.5, 3}, {19, 10.5}, {11, 18.5}, {3, 10.5}});
    p.drawEllipse(QPointF(7, 7), 1.4, 1.4);
    Pencil(p, ink);
}
void DrawService(QPainter& p, const ToolInk& ink) {
    Wrench(p, {3, 3, 18, 18}, ink.accent, 3.4);
}
void DrawUpdate(QPainter& p, const ToolInk& ink) {
    p.setPen(RoundPen(ink.accent, 2.2));
    p.setBrush(Qt::NoBrush);
    const QRectF ring(4, 4, 16, 16);
    p.drawArc(ring, 20 * 16, 130 * 16);
    p.drawArc(ring, 200 * 16, 130 * 16);
    p.setPen(Qt::NoPen);
    p.setBrush(ink.accent);
    p.drawPolygon(QPolygonF{{22.6, 9.2}, {16, 10.2}, {20.6, 4.2}});
    p.drawPolygon(QPolygonF{{1.4, 14.8}, {8, 13.8}, {3.4, 19.8}});
}
void DrawMap(QPainter& p, const ToolInk& ink) {
    p.setPen(RoundPen(ink.line, 1.7));
    p.setBrush(ink.fill);
    p.drawPolygon(QPolygonF{
        {2.5, 5.5}, {9, 3.5}, {15, 5.5}, {21.5, 3.5}, {21.5, 18.5}, {15, 20.5}, {9, 18.5}, {2.5, 20.5}});
    p.drawLine(QPointF(9, 3.5), QPointF(9, 18.5));
    p.drawLine(QPointF(15, 5.5), QPointF(15, 20.5));
    Cross(p, {9.8, 9.8, 4.4, 4.4}, ink.accent, 2.2);
}

using DrawTool = void (*)(QPainter&, const ToolInk&);
constexpr std::array<DrawTool, 12> kTools = {
    &DrawCloseAll,    &DrawCloseAlarm, &DrawSoundStop, &DrawShowLast, &DrawPrint, &DrawComments,
    &DrawEditIdCodes, &DrawEditTypes,  &DrawService,   &DrawUpdate,   &DrawMap,   &DrawShowLastOn,
};

}  // namespace

QIcon ToolBarIcon(int number, const QPalette& palette) {
    if (number < 1 || number > static_cast<int>(kTools.size())) return {};
    const DrawTool draw = kTools[static_cast<std::size_t>(number - 1)];
    QIcon icon;
    for (const bool isEnabled : {true, false}) {
        AddDrawn(icon, isEnabled ? QIcon::Normal : QIcon::Disabled, QSize(24, 24), 24,
                 [&](QPainter& painter) { draw(painter, ToolInkOf(palette, isEnabled)); });
    }
    return icon;
}

}  // namespace nordkeep
