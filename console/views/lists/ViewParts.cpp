#include "console/views/lists/ViewParts.h"

#include "console/views/lists/Theme.h"
#include "platform/qt/QtText.h"

#include <QtGui/QGuiApplication>
#include <QtGui/QPainter>
#include <QtGui/QScreen>

namespace nordkeep {
namespace {

const QColor kNoticeBackground(0xFF, 0xE0, 0x8A);
const QColor kGoodBackground(0xC9, 0xE7, 0xC9);
constexpr int kNoticeSign = 22;  // px
constexpr int kEdge = 36;        // px, between a window and the edge of the screen

bool IsControl(QChar character) {
    const char16_t code = character.unicode();
    return code < 32 || (code >= 127 && code < 160) || (code >= 0x2028 && code <= 0x202E);
}

}  // namespace

QString ShownText(TextView text) {
    QString shown = ToQString(text);
    shown.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    shown.replace(u'\r', u'\n');
    for (QChar& character : shown) {
        if (character != u'\n' && character != u'\t' && IsControl(character)) character = u' ';
    }
    while (shown.endsWith(u'\n')) shown.chop(1);
    return shown;
}

QString ShownLine(TextView text) {
    QString shown = ToQString(text);
    for (QChar& character : shown) {
        if (IsControl(character)) character = u' ';
    }
    return shown;
}

Text TypedText(const QString& text) {
    QString typed = text;
    typed.replace(QChar(0x2029), u'\n');
    typed.replace(QChar(0x2028), u'\n');
    typed.replace(u'\n', QLatin1String("\r\n"));
    return FromQString(typed);
}

QString WithoutMnemonics(QString text) {
    return text.replace(u'&', QLatin1String("&&"));
}

QString ToolTipText(const QString& text) {
    return QStringLiteral("<qt>") + text.toHtmlEscaped().replace(u'\n', QLatin1String("<br>")) +
           QStringLiteral("</qt>");
}

QString CaptionText(const Captions& captions, int number) {
    return ShownLine(captions(number));
}

QString PlainCaption(const Captions& captions, int number) {
    QString text = CaptionText(captions, number);
    text.remove(u'&');
    while (text.endsWith(u'.')) text.chop(1);
    return text;
}

QLabel* NewLabel(const QString& text) {
    auto* label = new QLabel;
    label->setTextFormat(Qt::PlainText);
    label->setText(text);
    return label;
}

QLabel* NewDataLabel(const QString& text) {
    QLabel* label = NewLabel(text);
    label->setWordWrap(true);
    label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    return label;
}

QLabel* NewHeading(const QString& text, QWidget* buddy) {
    QLabel* label = NewLabel(text);
    QFont font = label->font();
    font.setBold(true);
    label->setFont(font);
    label->setBuddy(buddy);
    if (buddy) buddy->setAccessibleName(text);
    return label;
}

QPushButton* NewButton(const Captions& captions, int number) {
    auto* button = new QPushButton(CaptionText(captions, number));
    button->setAutoDefault(false);
    return button;
}

QPlainTextEdit* NewReadOnlyBox() {
    auto* box = new QPlainTextEdit;
    box->setReadOnly(true);
    box->setTabChangesFocus(true);
    // What can only be read looks different from what is written in.
    box->viewport()->setBackgroundRole(QPalette::Window);
    box->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    return box;
}

void SetBoxText(QPlainTextEdit& box, const QString& text) {
    if (box.toPlainText() != text) box.setPlainText(text);
}

bool IsDark(const QPalette& palette) {
    return palette.color(QPalette::Window).lightness() < 128;
}

QColor WarningColor(const QPalette& palette) {
    if (IsHighContrast(palette)) return palette.color(QPalette::Text);
    return IsDark(palette) ? QColor(0xFF, 0x8A, 0x80) : QColor(0xB0, 0x00, 0x20);
}

NoticeBar::NoticeBar(QWidget* parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
    setWordWrap(true);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    setContentsMargins(kNoticeSign + 12, 6, 8, 6);
    hide();
}

void NoticeBar::SetNotice(const QString& text, bool isGood) {
    isGood_ = isGood;
    setText(text);
    setVisible(!text.isEmpty());
    QPalette colors = palette();
    colors.setColor(QPalette::WindowText, Qt::black);
    setPalette(colors);
}

void NoticeBar::PaintSign(QPainter& painter, const QRectF& place) const {
    if (isGood_) {
        painter.setPen(QPen(Qt::black, 3, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        const QPointF mark[] = {place.topLeft() + QPointF(3, 12), place.topLeft() + QPointF(9, 18),
                                place.topLeft() + QPointF(19, 5)};
        painter.drawPolyline(mark, 3);
        return;
    }
    const QPointF corners[] = {
        {place.center().x(), place.top() + 1}, place.bottomRight(), place.bottomLeft()};
    painter.setBrush(Qt::black);
    painter.drawPolygon(corners, 3);
    painter.setPen(kNoticeBackground);
    QFont bold = font();
    bold.setBold(true);
    painter.setFont(bold);
    painter.drawText(place.adjusted(0, 4, 0, 0), Qt::AlignCenter, QStringLiteral("!"));
}

void NoticeBar::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(isGood_ ? kGoodBackground : kNoticeBackground);
    painter.drawRoundedRect(rect(), 4, 4);
    PaintSign(painter, QRectF(8, (height() - kNoticeSign) / 2.0, kNoticeSign, kNoticeSign));
    painter.end();
    QLabel::paintEvent(event);
}

Chip::Chip(QWidget* parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
    setContentsMargins(12, 3, 12, 3);
}

void Chip::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(palette().color(QPalette::WindowText), 1.2));
    painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), height() / 2.0 - 1, height() / 2.0 - 1);
    painter.end();
    QLabel::paintEvent(event);
}

void BringToFront(QWidget& window, bool takesFocus) {
    window.setAttribute(Qt::WA_ShowWithoutActivating, !takesFocus);
    KeepOnScreen(window);
    if (window.isMinimized() && takesFocus) window.showNormal();
    window.show();
    window.raise();
    if (takesFocus) window.activateWindow();
}

void PutRight(QWidget& window, Qt::Edge edge) {
    const QScreen* screen = window.parentWidget() ? window.parentWidget()->screen() : window.screen();
    if (!screen || window.testAttribute(Qt::WA_Moved)) return;
    const QRect room = screen->availableGeometry().adjusted(0, kEdge, -kEdge, -kEdge);
    // A window that has not been shown may still have to grow.
    const QSize size = window.size().expandedTo(window.minimumSizeHint());
    const int top = edge == Qt::TopEdge ? room.top() : room.bottom() - size.height();
    window.move(room.right() - size.width(), top);
}

void KeepOnScreen(QWidget& window) {
    const QRect frame = window.frameGeometry();
    const QScreen* screen = QGuiApplication::screenAt(frame.center());
    if (!screen) screen = QGuiApplication::primaryScreen();
    if (!screen) return;
    const QRect room = screen->availableGeometry();
    const QSize size = window.size().boundedTo(room.size());
    if (size != window.size()) window.resize(size);
    const int left = qBound(room.left(), frame.left(), qMax(room.left(), room.right() - size.width()));
    const int top = qBound(room.top(), frame.top(), qMax(room.top(), room.bottom() - size.height()));
    const bool isPlaced = window.isVisible() || window.testAttribute(Qt::WA_Moved);
    if (isPlaced && QPoint(left, top) != frame.topLeft()) window.move(left, top);
}

}  // namespace nordkeep
