#include "console/views/editors/CutsPane.h"

#include "console/views/lists/ViewParts.h"

#include <QtGui/QFontDatabase>
#include <QtGui/QPainter>

#include <array>

namespace nordkeep {
namespace {

constexpr int kPadding = 4;  // px
constexpr int kLevels = 2;   // of captions, so that neighbours do not run into each other

struct Shade {
    QRgb light;
    QRgb dark;
};
constexpr std::array<Shade, 5> kShades = {{{0xFFCFE3F7, 0xFF274566},
                                           {0xFFFFE3C2, 0xFF5A4220},
                                           {0xFFD5EFD9, 0xFF254A30},
                                           {0xFFE7DAF5, 0xFF44305E},
                                           {0xFFF6D5D5, 0xFF5C2B2B}}};

}  // namespace

CutsPane::CutsPane(const SetsBox& sets) : sets_(sets) {
    setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    setFixedHeight((kLevels + 1) * fontMetrics().height() + 4 * kPadding);
}

void CutsPane::Renew() {
    QString text;
    for (const SetsBox::Cut& cut : sets_.Cuts()) {
        const Text part = sets_.FilledSample().substr(cut.start, cut.length);
        text += ShownLine(cut.caption) + QStringLiteral(": ") + ShownLine(part) + QStringLiteral(". ");
    }
    setAccessibleName(text);
    update();
}

void CutsPane::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QFontMetrics metrics = fontMetrics();
    const int letter = metrics.horizontalAdvance(QLatin1Char('0')) + 2;
    const int row = metrics.height() + 2 * kPadding;
    const QString telegram = ShownLine(sets_.FilledSample());
    std::size_t number = 0;
    for (const SetsBox::Cut& cut : sets_.Cuts()) {
        const int left = kPadding + static_cast<int>(cut.start) * letter;
        const QRect place(left, 0, static_cast<int>(cut.length) * letter, row);
        const Shade& shade = kShades[number % kShades.size()];
        painter.fillRect(place, QColor::fromRgb(IsDark(palette()) ? shade.dark : shade.light));
        const int level = static_cast<int>(number++) % kLevels;
        painter.setPen(palette().color(QPalette::WindowText));
        painter.drawLine(left, row, left, row + level * metrics.height() + metrics.ascent());
        painter.drawText(left + 2, row + level * metrics.height() + metrics.ascent(), ShownLine(cut.caption));
    }
    painter.setPen(palette().color(QPalette::WindowText));
    for (int at = 0; at < telegram.size(); ++at)
        painter.drawText(kPadding + at * letter + 1, kPadding + metrics.ascent(), telegram.mid(at, 1));
}

}  // namespace nordkeep
