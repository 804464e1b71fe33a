#include "console/views/print/PageLayout.h"

#include "console/views/lists/ViewParts.h"
#include "console/views/print/ChartPainter.h"
#include "platform/qt/QtText.h"

#include <QtCore/QLocale>
#include <QtGui/QFontDatabase>
#include <QtGui/QFontInfo>
#include <QtGui/QFontMetricsF>
#include <QtGui/QPainter>

namespace nordkeep {
namespace {

constexpr int kChartsOnPage = 2;
constexpr qreal kMmInInch = 25.4;
constexpr qreal kPointsInInch = 72;
constexpr qreal kLeastMargin = 10;  // mm; printers do not reach the edge
constexpr int kUsualSize = 9;       // points
constexpr int kCaptionPage = 3713;

qreal FromMm(qreal mm) {
    return mm / kMmInInch * PageLayout::kResolution;
}

QFont FontOf(const PrinterSettings& look) {
    QFont font = look.FontName.empty() ? QFontDatabase::systemFont(QFontDatabase::FixedFont)
                                       : QFont(ToQString(look.FontName));
    font.setBold(look.FontBold);
    font.setItalic(look.FontItalic);
    const int points = look.FontSize > 0 ? look.FontSize : kUsualSize;
    font.setPixelSize(static_cast<int>(points / kPointsInInch * PageLayout::kResolution));
    return font;
}

/// Measures lines. A document can have tens of thousands, so that with a font of fixed width, the usual one,
/// nothing is measured but one letter.
class LineMeasure {
 public:
    explicit LineMeasure(const QFont& font)
        : metrics_(font), isFixed_(QFontInfo(font).fixedPitch()), letter_(metrics_.horizontalAdvance(u'0')) {}

    /// How many characters from `start` fit into the width; at least one of those that are left.
    qsizetype Fitting(const QString& line, qsizetype start, qreal width) const {
        const qsizetype rest = line.size() - start;
        if (isFixed_) return qBound<qsizetype>(qMin<qsizetype>(1, rest), OfLetter(width, letter_), rest);
        if (metrics_.horizontalAdvance(line.mid(start, 2 * OfLetter(width, letter_))) <= width &&
            rest <= 2 * OfLetter(width, letter_)) {
            return rest;
        }
        return Search(line, start, width);
    }

 private:
    static qsizetype OfLetter(qreal width, qreal letter) {
        return static_cast<qsizetype>(width / qMax<qreal>(1, letter));
    }
    qsizetype Search(const QString& line, qsizetype start, qreal width) const {
        // Four times what fits on the average: enough for a line of the narrowest letters.
        const qsizetype most = 4 * OfLetter(width, metrics_.averageCharWidth()) + 2;
        qsizetype fits = 1;
        qsizetype tooLong = qMin(line.size() - start + 1, most);
        while (fits + 1 < tooLong) {
            const qsizetype middle = (fits + tooLong) / 2;
            (metrics_.horizontalAdvance(line.mid(start, middle)) <= width ? fits : tooLong) = middle;
        }
        return fits;
    }

    QFontMetricsF metrics_;
    bool isFixed_;
    qreal letter_;
};

}  // namespace

PageLayout::PageLayout(const PrintDocument& document, QSizeF paper, QString printedAt,
                       const Captions& captions)
    : captions_(captions),
      title_(ShownLine(document.title)),
      heading_(ShownLine(document.heading)),
      printedAt_(std::move(printedAt)),
      font_(FontOf(document.look)),
      bold_(font_),
      page_(0, 0, FromMm(paper.width()), FromMm(paper.height())) {
    bold_.setBold(true);
    lineHeight_ = QFontMetricsF(font_).lineSpacing();
    PlaceBody(document);
    BreakLines(document);
    const bool isTooWide = lines_.size() > static_cast<qsizetype>(document.lines.size());
    if (isTooWide && page_.height() > page_.width()) {
        page_.setSize(page_.size().transposed());
        PlaceBody(document);
        BreakLines(document);
    }
    textPages_ = qMax(1, static_cast<int>((lines_.size() + linesOnPage_ - 1) / linesOnPage_));
    charts_ = document.charts;
    pageCount_ = textPages_ + (static_cast<int>(charts_.size()) + kChartsOnPage - 1) / kChartsOnPage;
}

void PageLayout::PlaceBody(const PrintDocument& document) {
    const qreal left = FromMm(qMax<qreal>(kLeastMargin, document.look.LeftMargin));
    const qreal top = FromMm(qMax<qreal>(kLeastMargin, document.look.TopMargin));
    const qreal edge = FromMm(kLeastMargin);
    body_ = page_.adjusted(left, top + 2.5 * lineHeight_, -edge, -edge - 2 * lineHeight_);
    if (!heading_.isEmpty()) body_.setTop(body_.top() + 1.5 * lineHeight_);
    linesOnPage_ = qMax(1, static_cast<int>(body_.height() / lineHeight_));
}

void PageLayout::BreakLines(const PrintDocument& document) {
    const LineMeasure measure(font_);
    lines_.clear();
    for (const Text& text : document.lines) {
        const QString line = ShownLine(text);
        qsizetype start = 0;
        do {
            const qsizetype length = measure.Fitting(line, start, body_.width());
            lines_ << line.mid(start, length);
            start += length;
        } while (start < line.size());
    }
}

void PageLayout::PaintCharts(QPainter& painter, int first) const {
    // Paper is white, and a printer may know no colours.
    const ChartPainter charts(font_, {.text = Qt::black,
                                      .muted = QColor(0x55, 0x55, 0x55),
                                      .bar = QColor(0x77, 0x88, 0x99),
                                      .over = Qt::black});
    const qreal height = body_.height() / kChartsOnPage;
    for (int i = 0; i < kChartsOnPage && first + i < static_cast<int>(charts_.size()); ++i) {
        const int number = first + i;
        const QRectF place(body_.left(), body_.top() + i * height, body_.width(), height - 2 * lineHeight_);
        charts.Paint(painter, place, charts_[static_cast<std::size_t>(number)]);
    }
}

void PageLayout::Paint(QPainter& painter, int page) const {
    painter.setPen(Qt::black);
    painter.setFont(bold_);
    const qreal headingSpace = heading_.isEmpty() ? 0 : 1.5 * lineHeight_;
    const qreal top = body_.top() - headingSpace - 2.5 * lineHeight_;
    const QRectF line(body_.left(), top, body_.width(), lineHeight_);
    painter.drawText(line, Qt::AlignLeft | Qt::TextSingleLine, title_);
    painter.drawText(line.translated(0, 2.5 * lineHeight_), Qt::AlignLeft | Qt::TextSingleLine, heading_);
    painter.setFont(font_);
    if (page >= textPages_) PaintCharts(painter, (page - textPages_) * kChartsOnPage);
    const int first = page * linesOnPage_;
    for (int i = 0; i < linesOnPage_ && first + i < lines_.size(); ++i) {
        const QRectF place(body_.left(), body_.top() + i * lineHeight_, body_.width(), lineHeight_);
        painter.drawText(place, Qt::AlignLeft | Qt::TextSingleLine, lines_[first + i]);
    }
    const QRectF foot(body_.left(), body_.bottom() + lineHeight_, body_.width(), lineHeight_);
    const Text number = captions_(kCaptionPage, {std::to_string(page + 1), std::to_string(pageCount_)});
    painter.drawText(foot, Qt::AlignLeft | Qt::TextSingleLine, printedAt_);
    painter.drawText(foot, Qt::AlignRight | Qt::TextSingleLine, ShownLine(number));
}

}  // namespace nordkeep
