#include "console/views/lists/Icons.h"

#include "console/views/lists/Theme.h"
#include "console/views/lists/ViewParts.h"

#include <QtCore/QCache>
#include <QtCore/QFile>
#include <QtGui/QGuiApplication>
#include <QtGui/QPainter>
#include <QtGui/QPixmap>
#include <QtSvg/QSvgRenderer>

#include <array>
#include <functional>
#include <initializer_list>

namespace nordkeep {
namespace {

/// A colour of a picture's file, and the one that it stands for.
struct ColorChange {
    const char* drawn;
    QColor wanted;
};
using ColorChanges = std::initializer_list<ColorChange>;

/// The picture of a file in console/views/icons, in other colours. What was made before is kept, since rows
/// paint the same ones again and again.
QSvgRenderer& Picture(const char* name, ColorChanges colors) {
    constexpr qsizetype kKept = 256;
    static QCache<QByteArray, QSvgRenderer> kept(kKept);
    QByteArray key(name);
    for (const ColorChange& color : colors) key += color.wanted.name(QColor::HexArgb).toLatin1();
    if (QSvgRenderer* known = kept.object(key)) return *known;
    QFile file(QStringLiteral(":/icons/%1.svg").arg(QLatin1String(name)));
    QByteArray text = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    // All at once would be wrong: a wanted colour may be one that another part was drawn in.
    int number = 0;
    for (const ColorChange& color : colors)
        text.replace(color.drawn, "@" + QByteArray::number(++number) + "@");
    number = 0;
    for (const ColorChange& color : colors) {
        const QByteArray wanted = color.wanted.alpha() == 0 ? "none" : color.wanted.name().toLatin1();
        text.replace("@" + QByteArray::number(++number) + "@", wanted);
    }
    auto* const made = new QSvgRenderer(text);
    kept.insert(key, made);
    return *made;
}

const char* FileOf(Glyph glyph) {
    switch (glyph) {
        case Glyph::StatusNew:
        case Glyph::LogOddity:
            return "status-new";
        case Glyph::StatusCommented:
            return "status-commented";
        case Glyph::StatusNewWaiting:
            return "status-new-waiting";
        case Glyph::StatusCommentedWaiting:
            return "status-commented-waiting";
        case Glyph::StatusReset:
            return "status-reset";
        case Glyph::StatusEnded:
            return "status-ended";
        case Glyph::LogFailure:
            return "log-failure";
        case Glyph::LogInformation:
            return "log-information";
        case Glyph::LogAlarm:
            return "log-alarm";
        case Glyph::ObjectInService:
            return "wrench";
        case Glyph::ObjectServicePlanned:
        case Glyph::LineQuiet:
            return "clock";
        case Glyph::ObjectFailed:
        case Glyph::TreeFailed:
            return "failed";
        case Glyph::ObjectInUse:
        case Glyph::TreeAlive:
            return "alive";
        case Glyph::TreePlain:
            return "plain";
        case Glyph::LineUp:
            return "line-up";
        case Glyph::LineAwaits:
            return "line-awaits";
        case Glyph::LineFailed:
            return "line-failed";
        case Glyph::LineShut:
            return "line-shut";
        case Glyph::LineMuted:
            return "line-muted";
        case Glyph::Priority1:
            return "priority-1";
        case Glyph::Priority2:
            return "priority-2";
        case Glyph::Priority3:
            return "priority-3";
        case Glyph::PriorityLow:
            return "priority-low";
        case Glyph::None:
            break;
    }
    return nullptr;
}

/// Adds pixmaps for the scales of the screens, painted into a square of this size.
void AddDrawn(QIcon& icon, QIcon::Mode mode, int size, const std::function<void(QPainter&)>& paint) {
    for (const double scale : {1.0, 1.5, 2.0, 3.0}) {
        QPixmap pixmap(QSize(size, size) * scale);
        pixmap.setDevicePixelRatio(scale);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        painter.setRenderHint(QPainter::Antialiasing);
        paint(painter);
        painter.end();
        icon.addPixmap(pixmap, mode);
    }
}

QIcon PictureIcon(int size, const char* name) {
    QIcon icon;
    AddDrawn(icon, QIcon::Normal, size,
             [&](QPainter& painter) { Picture(name, {}).render(&painter, QRectF(0, 0, size, size)); });
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
    const char* const name = FileOf(glyph);
    if (!name) return;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    Picture(name, {{"#000000", ink.ink}, {"#ffffff", ink.paper}}).render(&painter, square);
    painter.restore();
}

QIcon GlyphIcon(Glyph glyph, const QPalette& palette) {
    constexpr int kSize = 16;
    const QColor own = OwnColorOf(glyph, palette);
    const GlyphInk ink{own.isValid() ? own : palette.color(QPalette::Text), palette.color(QPalette::Base)};
    QIcon icon;
    AddDrawn(icon, QIcon::Normal, kSize, [&](QPainter& painter) {
        PaintGlyph(painter, {0, 0, kSize, kSize}, glyph, ink);
    });
    return icon;
}

QIcon ProgramIcon() {
    return PictureIcon(64, "program");
}

namespace {

constexpr int kTraySize = 32;

void DrawCount(QPainter& painter, std::size_t count) {
    QFont font = QGuiApplication::font();
    font.setBold(true);
    font.setPixelSize(count > 9 ? 14 : 18);
    painter.setFont(font);
    painter.setPen(Qt::white);
    const QString text = count > 99 ? QStringLiteral("99+") : QString::number(count);
    painter.drawText(QRectF(0, 10, kTraySize, 21), Qt::AlignCenter, text);
}

}  // namespace

QIcon TrayIconOf(const Tray& tray) {
    if (tray.state == TrayState::Idle) return PictureIcon(kTraySize, "tray-idle");
    if (tray.state == TrayState::NoContact) return PictureIcon(kTraySize, "tray-no-contact");
    QIcon icon;
    AddDrawn(icon, QIcon::Normal, kTraySize, [&](QPainter& painter) {
        Picture("tray-alarms", {}).render(&painter, QRectF(0, 0, kTraySize, kTraySize));
        DrawCount(painter, tray.count);
    });
    return icon;
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
    if (const QColor text = palette.color(QPalette::WindowText); IsHighContrast(palette)) {
        return {text, text, Qt::transparent};
    }
    return isDark ? ToolInk{{0xD8, 0xDE, 0xE6}, {0x8A, 0xB4, 0xF8}, {0x3A, 0x46, 0x55}}
                  : ToolInk{{0x37, 0x47, 0x56}, {0x0B, 0x5C, 0xAD}, {0xDC, 0xE8, 0xF4}};
}

constexpr std::array<const char*, 12> kTools = {
    "tool-close-all", "tool-close-alarm", "tool-sound-stop",   "tool-show-last",
    "tool-print",     "tool-comments",    "tool-edit-objects", "tool-edit-types",
    "tool-service",   "tool-update",      "tool-map",          "tool-show-last-on",
};

}  // namespace

QIcon ToolBarIcon(int number, const QPalette& palette) {
    constexpr int kSize = 24;
    if (number < 1 || number > static_cast<int>(kTools.size())) return {};
    QIcon icon;
    for (const bool isEnabled : {true, false}) {
        const ToolInk ink = ToolInkOf(palette, isEnabled);
        AddDrawn(icon, isEnabled ? QIcon::Normal : QIcon::Disabled, kSize, [&](QPainter& painter) {
            Picture(kTools[static_cast<std::size_t>(number - 1)],
                    {{"#374756", ink.line}, {"#0b5cad", ink.accent}, {"#dce8f4", ink.fill}})
                .render(&painter, QRectF(0, 0, kSize, kSize));
        });
    }
    return icon;
}

}  // namespace nordkeep
