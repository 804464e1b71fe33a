#pragma once

#include "console/lists/Captions.h"
#include "console/print/PrintDocument.h"

#include <QtCore/QRectF>
#include <QtCore/QStringList>
#include <QtGui/QFont>

#include <vector>

class QPainter;

namespace nordkeep {

/// A document broken into pages. It is laid out in units of its own, so that a screen and a printer show the
/// same pages.
class PageLayout {
 public:
    /// Units of an inch.
    static constexpr int kResolution = 600;

    /// `paper` is the size of a page in mm, which is turned when lines are too long for it; `printedAt`
    /// stands at the foot of each.
    PageLayout(const PrintDocument& document, QSizeF paper, QString printedAt, const Captions& captions);

    int PageCount() const { return pageCount_; }
    /// The lines as they stand on the pages.
    const QStringList& Lines() const { return lines_; }
    QSizeF PageSize() const { return page_.size(); }
    /// Paints one page, from 0, in the layout's units.
    void Paint(QPainter& painter, int page) const;

 private:
    void PlaceBody(const PrintDocument& document);
    void BreakLines(const PrintDocument& document);
    void PaintCharts(QPainter& painter, int first) const;

    const Captions& captions_;
    QString title_;
    QString heading_;
    QString printedAt_;
    QFont font_;
    QFont bold_;
    QRectF page_{};
    QRectF body_{};
    qreal lineHeight_ = 0;
    int linesOnPage_ = 1;
    int pageCount_ = 1;
    int textPages_ = 1;
    std::vector<Chart> charts_{};
    QStringList lines_{};
};

}  // namespace nordkeep
