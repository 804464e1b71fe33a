#pragma once

#include "console/print/Chart.h"

#include <QtCore/QRectF>
#include <QtGui/QColor>
#include <QtGui/QFont>

class QPainter;

namespace nordkeep {

/// Paints charts of bars, on screens and on paper alike.
class ChartPainter {
 public:
    struct Colors {
        QColor text{};
        QColor muted{};  // axes
        QColor bar{};
        QColor over{};  // of bars above the limit, and of the limit
    };
    ChartPainter(QFont font, const Colors& colors) : font_(std::move(font)), colors_(colors) {}

    void Paint(QPainter& painter, const QRectF& place, const Chart& chart) const;

 private:
    struct Scale {
        QRectF field{};   // of the bars
        int highest = 1;  // value at its top
        qreal Y(qreal value) const { return field.bottom() - field.height() * value / highest; }
    };

    void PaintAxis(QPainter& painter, const Scale& scale) const;
    void PaintBars(QPainter& painter, const Scale& scale, const Chart& chart) const;
    void PaintLimit(QPainter& painter, const Scale& scale, const Chart& chart) const;

    QFont font_;
    Colors colors_;
};

}  // namespace nordkeep
