#include "console/views/history/ChartPane.h"

#include "console/views/lists/Theme.h"
#include "console/views/lists/ViewParts.h"
#include "console/views/print/ChartPainter.h"

#include <QtGui/QPainter>

namespace nordkeep {

ChartPane::ChartPane(QWidget* parent) : QWidget(parent) {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    setMinimumHeight(fontMetrics().lineSpacing() * 8);
}

void ChartPane::Show(const Chart& chart) {
    chart_ = chart;
    setAccessibleName(ShownLine(chart.title));
    update();
}

QSize ChartPane::sizeHint() const {
    return {480, fontMetrics().lineSpacing() * 10};
}

void ChartPane::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::TextAntialiasing);
    const ChartPainter charts(font(), {.text = palette().color(QPalette::WindowText),
                                       .muted = MutedColor(palette()),
                                       .bar = palette().color(QPalette::Highlight),
                                       .over = WarningColor(palette())});
    charts.Paint(painter, QRectF(rect()).adjusted(4, 4, -4, -4), chart_);
}

}  // namespace nordkeep
