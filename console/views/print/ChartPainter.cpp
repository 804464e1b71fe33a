#include "console/views/print/ChartPainter.h"

#include "console/views/lists/ViewParts.h"

#include <QtGui/QFontMetricsF>
#include <QtGui/QPainter>

#include <algorithm>

namespace nordkeep {
namespace {

/// The next of 1, 2, 5, 10, 20 ... that is not below.
int RoundUp(int value) {
    for (int ten = 1;; ten *= 10) {
        for (const int step : {1, 2, 5}) {
            if (ten * step >= value || ten > 100'000'000) return ten * step;
        }
    }
}

}  // namespace

void ChartPainter::Paint(QPainter& painter, const QRectF& place, const Chart& chart) const {
    painter.save();
    QFont bold = font_;
    bold.setBold(true);
    painter.setFont(bold);
    painter.setPen(colors_.text);
    const qreal line = QFontMetricsF(font_).lineSpacing();
    painter.drawText(QRectF(place.topLeft(), QSizeF(place.width(), line)), Qt::AlignLeft | Qt::TextSingleLine,
                     ShownLine(chart.title));
    painter.setFont(font_);
    Scale scale;
    for (const Chart::Bar& bar : chart.bars) scale.highest = std::max(scale.highest, bar.value);
    scale.highest = RoundUp(std::max(scale.highest, chart.limit));
    const qreal left = QFontMetricsF(font_).horizontalAdvance(QString::number(scale.highest)) + line / 2;
    scale.field = place.adjusted(left, line * 1.8, -line / 4, -line * 1.4);
    PaintAxis(painter, scale);
    PaintBars(painter, scale, chart);
    PaintLimit(painter, scale, chart);
    painter.restore();
}

void ChartPainter::PaintAxis(QPainter& painter, const Scale& scale) const {
    constexpr int kSteps = 4;
    const QFontMetricsF metrics(font_);
    for (int step = 0; step <= kSteps; ++step) {
        const qreal value = static_cast<qreal>(scale.highest) * step / kSteps;
        const qreal y = scale.Y(value);
        QColor faint = colors_.muted;
        if (step > 0) faint.setAlpha(70);
        painter.setPen(QPen(faint, metrics.lineWidth()));
        painter.drawLine(QPointF(scale.field.left(), y), QPointF(scale.field.right(), y));
        if (value != static_cast<int>(value)) continue;
        painter.setPen(colors_.muted);
        const QRectF label(0, y - metrics.height() / 2, scale.field.left() - metrics.height() / 4,
                           metrics.height());
        painter.drawText(label, Qt::AlignRight | Qt::AlignVCenter | Qt::TextSingleLine,
                         QString::number(static_cast<int>(value)));
    }
}

void ChartPainter::PaintBars(QPainter& painter, const Scale& scale, const Chart& chart) const {
    const qreal width = scale.field.width() / std::max<qreal>(1, static_cast<qreal>(chart.bars.size()));
    const QFontMetricsF metrics(font_);
    qreal x = scale.field.left();
    for (const Chart::Bar& bar : chart.bars) {
        const QRectF body(x + width * 0.1, scale.Y(bar.value), width * 0.8,
                          scale.field.bottom() - scale.Y(bar.value));
        const bool isOver = chart.limit > 0 && bar.value > chart.limit;
        if (bar.value > 0) painter.fillRect(body, isOver ? colors_.over : colors_.bar);
        if (!bar.label.empty()) {
            const QString label = ShownLine(bar.label);
            const qreal room = metrics.horizontalAdvance(label);
            const qreal at = std::clamp(x + width / 2 - room / 2, scale.field.left(),
                                        std::max(scale.field.left(), scale.field.right() - room));
            painter.setPen(colors_.muted);
            painter.drawText(QPointF(at, scale.field.bottom() + metrics.height()), label);
        }
        x += width;
    }
}

void ChartPainter::PaintLimit(QPainter& painter, const Scale& scale, const Chart& chart) const {
    if (chart.limit <= 0) return;
    const QFontMetricsF metrics(font_);
    const qreal y = scale.Y(chart.limit);
    painter.setPen(QPen(colors_.over, metrics.lineWidth() * 1.5, Qt::DashLine));
    painter.drawLine(QPointF(scale.field.left(), y), QPointF(scale.field.right(), y));
    const QString text = ShownLine(chart.limitText);
    painter.setPen(colors_.over);
    painter.drawText(QPointF(scale.field.left() + metrics.descent(), y - metrics.descent()), text);
}

}  // namespace nordkeep
