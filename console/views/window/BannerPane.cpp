#include "console/views/window/BannerPane.h"

#include "console/views/lists/Icons.h"
#include "console/views/lists/ViewParts.h"

#include <QtGui/QKeyEvent>
#include <QtGui/QMouseEvent>
#include <QtGui/QPainter>

#include <algorithm>
#include <utility>

namespace nordkeep {
namespace {

struct Look {
    QColor paper{};
    QColor ink{};
    Glyph glyph = Glyph::LogOddity;
};

Look LookOf(Banner::Weight weight) {
    switch (weight) {
        case Banner::Weight::Alarm:
            return {{0x9B, 0x11, 0x1E}, Qt::white, Glyph::LogOddity};
        case Banner::Weight::Warning:
            return {{0xFF, 0xE0, 0x8A}, Qt::black, Glyph::LogOddity};
        case Banner::Weight::Notice:
            break;
    }
    return {{0xD6, 0xE6, 0xF5}, Qt::black, Glyph::LogInformation};
}

constexpr int kGap = 3;

}  // namespace

int BannerPane::BannerHeight() const {
    return fontMetrics().height() + 12;
}

QSize BannerPane::sizeHint() const {
    return {200, static_cast<int>(banners_.size()) * (BannerHeight() + kGap)};
}

void BannerPane::Show(std::vector<Banner> banners) {
    if (banners == banners_) return;
    const bool isSameHeight = banners.size() == banners_.size();
    banners_ = std::move(banners);
    QString all;
    for (const Banner& banner : banners_) all += ShownLine(banner.text) + u'\n';
    setAccessibleName(all);
    setVisible(!banners_.empty());
    setFocusPolicy(HasFindings() ? Qt::TabFocus : Qt::NoFocus);
    setMouseTracking(HasFindings());
    if (!isSameHeight) updateGeometry();
    update();
}

bool BannerPane::OpensFindings(int y) const {
    const auto place = static_cast<std::size_t>(std::max(y, 0) / (BannerHeight() + kGap));
    return place < banners_.size() && banners_[place].opensFindings;
}

bool BannerPane::HasFindings() const {
    return std::ranges::any_of(banners_, &Banner::opensFindings);
}

void BannerPane::mouseReleaseEvent(QMouseEvent* event) {
    if (openFindings_ && OpensFindings(event->pos().y())) openFindings_();
}

void BannerPane::mouseMoveEvent(QMouseEvent* event) {
    setCursor(OpensFindings(event->pos().y()) ? Qt::PointingHandCursor : Qt::ArrowCursor);
}

void BannerPane::keyPressEvent(QKeyEvent* event) {
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isEnter && openFindings_ && HasFindings()) return openFindings_();
    QWidget::keyPressEvent(event);
}

void BannerPane::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QFont bold = font();
    bold.setBold(true);
    painter.setFont(bold);
    QRect box(0, 0, width(), BannerHeight());
    for (const Banner& banner : banners_) {
        const Look look = LookOf(banner.weight);
        painter.setPen(Qt::NoPen);
        painter.setBrush(look.paper);
        painter.drawRoundedRect(box, 4, 4);
        const double side = 18;
        PaintGlyph(painter, {9, box.top() + (box.height() - side) / 2, side, side}, look.glyph,
                   {look.ink, look.paper});
        painter.setPen(look.ink);
        const QRect text = box.adjusted(36, 0, -8, 0);
        painter.drawText(
            text, Qt::AlignVCenter | Qt::TextSingleLine,
            painter.fontMetrics().elidedText(ShownLine(banner.text), Qt::ElideRight, text.width()));
        box.translate(0, BannerHeight() + kGap);
    }
}

}  // namespace nordkeep
