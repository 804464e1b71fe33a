#include "tests/console/views/AllWindows.h"

#include <gtest/gtest.h>

namespace nordkeep {
namespace {

void Save(QWidget& window, const QString& name) {
    for (int i = 0; i < 5; ++i) QApplication::processEvents();
    window.grab().save(qEnvironmentVariable("NORDKEEP_SHOTS") + "/" + name + ".png");
}

QPalette DarkPalette() {
    QPalette dark(QColor(45, 45, 48));
    dark.setColor(QPalette::Base, QColor(30, 30, 32));
    dark.setColor(QPalette::AlternateBase, QColor(38, 38, 41));
    return dark;
}

TEST(SheetShots, AreTaken) {
    if (qEnvironmentVariableIsEmpty("NORDKEEP_SHOTS")) GTEST_SKIP() << "only on demand";
    const QPalette light = QApplication::palette();
    for (const bool isDark : {false, true}) {
        QApplication::setPalette(isDark ? DarkPalette() : light);
        for (const char* number : {"044", "046"}) {
            AllWindows w(number, FromUtf8("Bageriet på Storgatan"));
            int count = 0;
            for (QWidget* window : w.Open()) {
                Save(*window,
                     QStringLiteral("%1_%2_sheet%3").arg(isDark ? "dark" : "light", number).arg(count++));
            }
        }
    }
    QApplication::setPalette(light);
}

}  // namespace
}  // namespace nordkeep
