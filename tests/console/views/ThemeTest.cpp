#include "console/setup/FieldCheck.h"
#include "console/views/lists/Icons.h"
#include "console/views/lists/Theme.h"
#include "console/views/lists/ViewParts.h"

#include <QtGui/QImage>
#include <QtGui/QPixmap>
#include <QtWidgets/QApplication>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMenu>
#include <QtWidgets/QSpinBox>

#include <gtest/gtest.h>

#include <algorithm>
#include <initializer_list>

namespace nordkeep {
namespace {

constexpr double kLeastOfSigns = 3.0;
constexpr double kLeastOfFrames = 1.8;

Rgb RgbOf(const QColor& color) {
    return {static_cast<std::uint8_t>(color.red()), static_cast<std::uint8_t>(color.green()),
            static_cast<std::uint8_t>(color.blue())};
}

/// How far what is drawn at the left edge, half way down, stands out from the ground behind it.
double EdgeContrast(QWidget& widget) {
    widget.resize(widget.sizeHint());
    const QImage image = widget.grab().toImage();
    const QColor ground = widget.palette().color(QPalette::Window);
    double best = 1;
    for (int x = 0; x < 4; ++x) {
        best = std::max(best, Contrast(RgbOf(image.pixelColor(x, image.height() / 2)), RgbOf(ground)));
    }
    return best;
}

struct ThemeTest : testing::TestWithParam<ColorScheme> {
    ThemeTest() { ApplyColorScheme(static_cast<int>(GetParam())); }
    ~ThemeTest() override { ApplyColorScheme(static_cast<int>(ColorScheme::Desktop)); }
    bool IsLight() const { return GetParam() == ColorScheme::Light; }
};

TEST_P(ThemeTest, WhatIsTickedAndTypedIntoStandsOutFromItsGround) {
    QCheckBox box;
    EXPECT_GE(EdgeContrast(box), kLeastOfSigns);
    if (IsLight()) return;  // there a field is whiter than the window
    QSpinBox number;
    QLineEdit field;
    QMenu menu;
    menu.addAction("One");
    for (QWidget* widget : std::initializer_list<QWidget*>{&number, &field, &menu}) {
        EXPECT_GE(EdgeContrast(*widget), kLeastOfFrames) << widget->metaObject()->className();
    }
}

TEST_P(ThemeTest, BlackAndWhiteAloneHasNoColour) {
    const QPalette palette = QApplication::palette();
    if (!IsHighContrast(palette)) return;
    EXPECT_EQ(WarningColor(palette), palette.color(QPalette::Text));
    const QImage icon = ToolBarIcon(1, palette).pixmap(24).toImage();
    for (int x = 0; x < icon.width(); ++x) {
        for (int y = 0; y < icon.height(); ++y) {
            EXPECT_EQ(icon.pixelColor(x, y).hsvSaturation(), 0) << x << ", " << y;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Schemes, ThemeTest,
                         testing::Values(ColorScheme::Light, ColorScheme::Dark, ColorScheme::BlackOnWhite,
                                         ColorScheme::WhiteOnBlack));

}  // namespace
}  // namespace nordkeep
