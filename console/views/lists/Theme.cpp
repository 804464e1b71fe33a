#include "console/views/lists/Theme.h"

#include "console/views/lists/ViewParts.h"

#include <QtGui/QPainter>
#include <QtWidgets/QApplication>
#include <QtWidgets/QProxyStyle>
#include <QtWidgets/QStyleOption>

namespace nordkeep {
namespace {

struct SchemeColors {
    QRgb ground;
    QRgb panel;
    QRgb text;
    QRgb muted;
    QRgb accent;
    QRgb onAccent;
    QRgb button;
};
constexpr SchemeColors kLight = {0xF6F7F9, 0xFFFFFF, 0x1B1F24, 0x57606A, 0x0B5CAD, 0xFFFFFF, 0xECEEF1};
constexpr SchemeColors kDark = {0x15181C, 0x1D2126, 0xE6E8EB, 0xA3ADB8, 0x7CBBF8, 0x15181C, 0x2A2F36};
constexpr SchemeColors kBlackOnWhite = {0xFFFFFF, 0xFFFFFF, 0x000000, 0x000000, 0x000000, 0xFFFFFF, 0xFFFFFF};
constexpr SchemeColors kWhiteOnBlack = {0x000000, 0x000000, 0xFFFFFF, 0xFFFFFF, 0xFFFFFF, 0x000000, 0x000000};

QPalette PaletteOf(const SchemeColors& colors) {
    QPalette palette(QColor(colors.button), QColor(colors.ground));
    using enum QPalette::ColorRole;
    for (const auto& [role, color] : {std::pair{Window, colors.ground},
                                      {WindowText, colors.text},
                                      {Base, colors.panel},
                                      {AlternateBase, colors.ground},
                                      {Text, colors.text},
                                      {Button, colors.button},
                                      {ButtonText, colors.text},
                                      {ToolTipBase, colors.panel},
                                      {ToolTipText, colors.text},
                                      {PlaceholderText, colors.muted},
                                      {Highlight, colors.accent},
                                      {HighlightedText, colors.onAccent},
                                      {Link, colors.accent},
                                      {BrightText, colors.text}}) {
        palette.setColor(role, QColor(color));
    }
    // What cannot be used now can still be read.
    QColor faint(colors.muted);
    faint.setAlpha(150);
    for (const auto role : {WindowText, Text, ButtonText}) palette.setColor(QPalette::Disabled, role, faint);
    return palette;
}

/// The delivered style draws its outlines a little darker than the window: on a dark one nobody would see
/// where a field, a menu or a box to tick is, on a light one the boxes are too faint, and black and white
/// alone need all.
class OutlinedStyle final : public QProxyStyle {
 public:
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override {
        QProxyStyle::drawPrimitive(element, option, painter, widget);
        switch (element) {
            case PE_IndicatorCheckBox:
            case PE_IndicatorItemViewItemCheck:
                return Outline(*painter, option->rect, MutedColor(option->palette));
            case PE_FrameLineEdit:
                return FrameField(*painter, option->rect, *option);
            case PE_Frame:
            case PE_PanelMenu:
                return Frame(*painter, option->rect, option->palette);
            case PE_PanelButtonCommand:
                if (!IsHighContrast(option->palette)) return;
                return Outline(*painter, option->rect.adjusted(0, 1, 0, 0), MutedColor(option->palette));
            default:
                return;
        }
    }

    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override {
        QProxyStyle::drawControl(element, option, painter, widget);
        const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
        if (element != CE_MenuItem || !item || item->menuItemType != QStyleOptionMenuItem::Separator) return;
        if (!IsDark(option->palette) && !IsHighContrast(option->palette)) return;
        const QRect& place = option->rect;
        painter->fillRect(QRect(place.left() + 8, place.center().y(), place.width() - 16, 1),
                          FrameInk(option->palette));
    }

    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                            const QWidget* widget) const override {
        QProxyStyle::drawComplexControl(control, option, painter, widget);
        if (control == CC_SpinBox)
            FrameField(*painter, subControlRect(control, option, SC_SpinBoxFrame, widget), *option);
    }

    /// A second text behind the one of what cannot be used now would make it harder to read.
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* data) const override {
        return hint == SH_EtchDisabledText ? 0 : QProxyStyle::styleHint(hint, option, widget, data);
    }

 private:
    static QColor FrameInk(const QPalette& palette) {
        constexpr int kAlpha = 130;
        QColor ink = MutedColor(palette);
        if (!IsHighContrast(palette)) ink.setAlpha(kAlpha);
        return ink;
    }

    static void Outline(QPainter& painter, const QRect& place, const QColor& ink) {
        painter.save();
        painter.setPen(ink);
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(QRectF(place).adjusted(0.5, 0.5, -0.5, -0.5), 2, 2);
        painter.restore();
    }

    static void Frame(QPainter& painter, const QRect& place, const QPalette& palette) {
        if (IsDark(palette) || IsHighContrast(palette)) Outline(painter, place, FrameInk(palette));
    }

    /// What has the focus is framed by the delivered style, in the accent.
    static void FrameField(QPainter& painter, const QRect& place, const QStyleOption& option) {
        if (!(option.state & State_HasFocus)) Frame(painter, place, option.palette);
    }
};

void UseOutlinedStyle() {
    static bool isInUse = false;
    if (!isInUse) QApplication::setStyle(new OutlinedStyle);
    isInUse = true;
}

}  // namespace

void ApplyColorScheme(int number) {
    if (static_cast<ColorScheme>(number) != ColorScheme::Desktop) UseOutlinedStyle();
    switch (static_cast<ColorScheme>(number)) {
        case ColorScheme::Light:
            return QApplication::setPalette(PaletteOf(kLight));
        case ColorScheme::Dark:
            return QApplication::setPalette(PaletteOf(kDark));
        case ColorScheme::BlackOnWhite:
            return QApplication::setPalette(PaletteOf(kBlackOnWhite));
        case ColorScheme::WhiteOnBlack:
            return QApplication::setPalette(PaletteOf(kWhiteOnBlack));
        case ColorScheme::Desktop:
            break;
    }
    QApplication::setPalette(QPalette());
}

bool IsHighContrast(const QPalette& palette) {
    const QRgb ground = palette.color(QPalette::Base).rgb();
    const QRgb text = palette.color(QPalette::Text).rgb();
    const QRgb window = palette.color(QPalette::Window).rgb();
    constexpr QRgb kBlack = 0xFF000000;
    constexpr QRgb kWhite = 0xFFFFFFFF;
    return window == ground && ((ground == kBlack && text == kWhite) || (ground == kWhite && text == kBlack));
}

QColor GroundColor(RowGround ground, const QPalette& palette) {
    if (IsHighContrast(palette)) return {};
    const bool isDark = IsDark(palette);
    switch (ground) {
        case RowGround::Waits:
            return isDark ? QColor(0x3A, 0x30, 0x18) : QColor(0xFF, 0xF6, 0xE0);
        case RowGround::Commented:
            return isDark ? QColor(0x1E, 0x2E, 0x40) : QColor(0xE8, 0xF1, 0xFB);
        case RowGround::Reset:
            return isDark ? QColor(0x1C, 0x33, 0x25) : QColor(0xE6, 0xF4, 0xEA);
        case RowGround::Plain:
        case RowGround::Ended:
            break;
    }
    return {};
}

QColor MutedColor(const QPalette& palette) {
    if (IsHighContrast(palette)) return palette.color(QPalette::Text);
    return IsDark(palette) ? QColor(0xA3, 0xAD, 0xB8) : QColor(0x57, 0x60, 0x6A);
}

}  // namespace nordkeep
