#include "console/views/window/ConditionStrip.h"

#include "console/views/lists/Icons.h"
#include "console/views/lists/ViewParts.h"

#include <QtGui/QHelpEvent>
#include <QtGui/QKeyEvent>
#include <QtGui/QMouseEvent>
#include <QtGui/QPainter>
#include <QtWidgets/QMenu>
#include <QtWidgets/QToolTip>

#include <algorithm>

namespace nordkeep {
namespace {

constexpr int kCaptionMore = 5001;
constexpr int kCaptionStrip = 5023;
constexpr int kGap = 6;
constexpr int kPadding = 8;
constexpr int kSign = 16;
constexpr int kFlashMs = 500;

Glyph GlyphOf(ConditionWeight weight) {
    switch (weight) {
        case ConditionWeight::Fault:
            return Glyph::TreeFailed;
        case ConditionWeight::Warning:
            return Glyph::LogOddity;
        case ConditionWeight::Note:
            break;
    }
    return Glyph::LogInformation;
}

QColor InkOf(ConditionWeight weight, const QPalette& palette) {
    return weight == ConditionWeight::Note ? palette.color(QPalette::WindowText)
                                           : OwnColorOf(GlyphOf(weight), palette);
}

}  // namespace

ConditionStrip::ConditionStrip(const Captions& captions, QWidget* parent)
    : QWidget(parent), captions_(captions) {
    setMouseTracking(true);
    setFocusPolicy(Qt::TabFocus);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    flash_.setInterval(kFlashMs);
    connect(&flash_, &QTimer::timeout, this, [this] {
        isTurned_ = !isTurned_;
        update();
    });
}

QSize ConditionStrip::sizeHint() const {
    return {200, fontMetrics().height() + 12};
}

QSize ConditionStrip::minimumSizeHint() const {
    return {0, sizeHint().height()};
}

void ConditionStrip::Show(const Conditions& conditions) {
    if (rows_ == conditions.Rows() && !allWell_.isEmpty()) return;
    rows_ = conditions.Rows();
    allWell_ = ShownLine(conditions.AllWell());
    words_.clear();
    QString all;
    for (const Condition& row : rows_) {
        words_.push_back(ShownLine(conditions.WordOf(row.weight)));
        all += words_.back() + QStringLiteral(": ") + ShownLine(row.sentence) + u'\n';
    }
    setAccessibleName(CaptionText(captions_, kCaptionStrip));
    setAccessibleDescription(rows_.empty() ? allWell_ : all);
    Arrange();
    update();
}

void ConditionStrip::Flash(bool isOn) {
    if (isOn == flash_.isActive()) return;
    isTurned_ = isOn;
    isOn ? flash_.start() : flash_.stop();
    update();
}

// As many as fit, in their order; a sentence that is longer than the strip is cut.
void ConditionStrip::Arrange() {
    entries_.clear();
    more_ = {};
    const int height = sizeHint().height();
    const int forMore =
        fontMetrics().horizontalAdvance(ShownLine(captions_(kCaptionMore, {"99"}))) + 2 * kPadding;
    int left = 0;
    for (std::size_t row = 0; row < rows_.size(); ++row) {
        const int text = fontMetrics().horizontalAdvance(ShownLine(rows_[row].sentence));
        const bool isLast = row + 1 == rows_.size();
        const int room = width() - left - (isLast ? 0 : forMore + kGap);
        const int wanted = text + kSign + 3 * kPadding;
        if (wanted > room && row > 0) {
            more_ = QRect(left, 0, forMore, height);
            break;
        }
        const int taken = std::min(wanted, std::max(room, 0));
        entries_.push_back({QRect(left, 0, taken, height), row});
        left += taken + kGap;
    }
    current_ = std::clamp(current_, 0, std::max(Stops() - 1, 0));
}

void ConditionStrip::resizeEvent(QResizeEvent*) {
    Arrange();
}

void ConditionStrip::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange) Arrange();
}

// --- Acting

int ConditionStrip::EntryAt(QPoint place) const {
    for (std::size_t entry = 0; entry < entries_.size(); ++entry) {
        if (entries_[entry].box.contains(place)) return static_cast<int>(entry);
    }
    return more_.contains(place) ? static_cast<int>(entries_.size()) : -1;
}

void ConditionStrip::Open(int entry) {
    if (entry < 0) return;
    const auto place = static_cast<std::size_t>(entry);
    if (place >= entries_.size()) return more_.isValid() ? OpenMore() : void();
    onOpen(Condition(rows_[entries_[place].row]));
}

// The menu stays as it was opened; what ends meanwhile still leads to its page.
void ConditionStrip::OpenMore() {
    QMenu menu;
    const std::vector<Condition> rows = rows_;
    for (const Condition& row : rows) {
        QAction* action = menu.addAction(GlyphIcon(GlyphOf(row.weight), palette()),
                                         WithoutMnemonics(ShownLine(row.sentence)));
        connect(action, &QAction::triggered, this, [this, row] { onOpen(row); });
    }
    menu.exec(mapToGlobal(more_.bottomLeft()));
}

void ConditionStrip::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) Open(EntryAt(event->pos()));
}

void ConditionStrip::mouseMoveEvent(QMouseEvent* event) {
    const int entry = EntryAt(event->pos());
    const auto place = static_cast<std::size_t>(std::max(entry, 0));
    const bool opens =
        entry >= 0 && (place >= entries_.size() || rows_[entries_[place].row].opens != ConditionPage::None);
    setCursor(opens ? Qt::PointingHandCursor : Qt::ArrowCursor);
}

void ConditionStrip::leaveEvent(QEvent*) {
    unsetCursor();
}

void ConditionStrip::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
        case Qt::Key_Space:
            return Open(Stops() > 0 ? current_ : -1);
        case Qt::Key_Left:
        case Qt::Key_Right:
            current_ =
                std::clamp(current_ + (event->key() == Qt::Key_Right ? 1 : -1), 0, std::max(Stops() - 1, 0));
            return update();
        default:
            return QWidget::keyPressEvent(event);
    }
}

void ConditionStrip::focusInEvent(QFocusEvent* event) {
    QWidget::focusInEvent(event);
    update();
}

bool ConditionStrip::event(QEvent* event) {
    if (event->type() == QEvent::ToolTip) {
        const int entry = EntryAt(static_cast<QHelpEvent*>(event)->pos());
        QString tip;
        for (std::size_t row = 0; row < rows_.size() && entry >= 0; ++row) {
            const bool isMore = static_cast<std::size_t>(entry) >= entries_.size();
            if (isMore ? row < entries_.size() : entries_[static_cast<std::size_t>(entry)].row != row)
                continue;
            tip += (tip.isEmpty() ? QString() : QStringLiteral("\n")) + words_[row] + QStringLiteral(": ") +
                   ShownLine(rows_[row].sentence);
        }
        QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), ToolTipText(tip), this);
        return true;
    }
    return QWidget::event(event);
}

// --- Painting

void ConditionStrip::PaintEntry(QPainter& painter, const Entry& entry, bool isCurrent) const {
    const Condition& row = rows_[entry.row];
    const bool isSolid = isTurned_ && row.weight == ConditionWeight::Fault;
    const QColor own = InkOf(row.weight, palette());
    const QColor paper = isSolid ? own : palette().color(QPalette::Base);
    const QColor ink = isSolid ? palette().color(QPalette::Base) : palette().color(QPalette::Text);
    QColor edge = own;
    if (row.weight == ConditionWeight::Note) edge.setAlpha(90);
    painter.setPen(QPen(isCurrent ? palette().color(QPalette::Highlight) : edge, isCurrent ? 2.0 : 1.2));
    painter.setBrush(paper);
    painter.drawRoundedRect(QRectF(entry.box).adjusted(1, 1, -1, -1), 4, 4);
    const QRectF sign(entry.box.left() + kPadding, entry.box.top() + (entry.box.height() - kSign) / 2.0,
                      kSign, kSign);
    PaintGlyph(painter, sign, GlyphOf(row.weight), {isSolid ? ink : own, paper});
    painter.setPen(ink);
    const QRect box = entry.box.adjusted(2 * kPadding + kSign, 0, -kPadding / 2, 0);
    painter.drawText(box, Qt::AlignVCenter | Qt::TextSingleLine,
                     fontMetrics().elidedText(ShownLine(row.sentence), Qt::ElideRight, box.width()));
}

void ConditionStrip::PaintWord(QPainter& painter, const QRect& box, const QString& text) const {
    painter.setPen(palette().color(QPalette::PlaceholderText));
    painter.drawText(box, Qt::AlignVCenter | Qt::TextSingleLine, text);
}

void ConditionStrip::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (rows_.empty()) {
        const QRect box = rect().adjusted(kPadding, 0, -kPadding, 0);
        const QRectF sign(box.left(), (height() - kSign) / 2.0, kSign, kSign);
        PaintGlyph(painter, sign, Glyph::TreeAlive,
                   {OwnColorOf(Glyph::TreeAlive, palette()), palette().color(QPalette::Window)});
        return PaintWord(painter, box.adjusted(kSign + kPadding, 0, 0, 0), allWell_);
    }
    for (std::size_t entry = 0; entry < entries_.size(); ++entry) {
        PaintEntry(painter, entries_[entry], hasFocus() && current_ == static_cast<int>(entry));
    }
    if (!more_.isValid()) return;
    const Text count = std::to_string(rows_.size() - entries_.size());
    const bool isCurrent = hasFocus() && current_ == static_cast<int>(entries_.size());
    painter.setPen(isCurrent ? palette().color(QPalette::Highlight) : palette().color(QPalette::WindowText));
    painter.drawText(more_, Qt::AlignCenter, ShownLine(captions_(kCaptionMore, {count})));
}

}  // namespace nordkeep
