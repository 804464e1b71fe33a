#include "console/views/window/SheetDock.h"
#include "tests/console/SheetWorld.h"
#include "tests/console/views/WindowWorld.h"

#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QPlainTextEdit>

#include <gtest/gtest.h>

namespace nordkeep {
namespace {

/// The main window with a sheet that can stand beside its lists.
struct DockWorld {
    explicit DockWorld(const Text& place = {}) {
        world.Start();
        settings.CommentSheetPlace = place;
        window = std::make_unique<MainWindow>(WindowOf(world, store));
        sheet = std::make_unique<CommentWindow>(ofSheet.sheet, ofSheet.captions, window.get());
        ofSheet.sheet.SetView(*sheet);
        dock = new SheetDock(
            {.window = *window,
             .sheet = *sheet,
             .settings = settings,
             .store = store,
             .keep = [this](bool isBeside) { settings.CommentSheetPlace = isBeside ? "1" : "0"; }});
        window->resize(1280, 900);
        window->show();
        alarm = ofSheet.Raise().m_FilePointer;
    }
    ~DockWorld() {
        sheet.reset();
        window->AllowClose();
    }
    void Open(OpenedBy by = OpenedBy::Operator) {
        ofSheet.sheet.OpenAlarm(alarm, by);
        QApplication::processEvents();
    }
    bool IsBeside() const { return dock->isVisible() && !sheet->isWindow() && sheet->isVisible(); }

    MainBoxWorld world{};
    SheetWorld ofSheet{};
    FakeUserStore store{};
    ConsoleSettings settings{};
    std::unique_ptr<MainWindow> window{};
    std::unique_ptr<CommentWindow> sheet{};
    SheetDock* dock = nullptr;
    std::int32_t alarm = 0;
};

TEST(SheetDock, CoversNothingWhereItStandsBesideTheList) {
    DockWorld w("1");
    w.Open();
    ASSERT_TRUE(w.IsBeside());
    EXPECT_LE(w.window->width(), 1280) << "the lists give way";
    const QRect lists(w.window->centralWidget()->mapToGlobal(QPoint()), w.window->centralWidget()->size());
    const QRect sheet(w.sheet->mapToGlobal(QPoint()), w.sheet->size());
    EXPECT_FALSE(lists.intersects(sheet));
    EXPECT_GE(sheet.width(), 300);
    w.ofSheet.sheet.Close();
    EXPECT_FALSE(w.dock->isVisible());
}

TEST(SheetDock, StandsWhereTheSettingOrTheRoomSays) {
    DockWorld w;
    w.Open();
    EXPECT_TRUE(w.sheet->isWindow()) << "1280 pixels are not many";
    w.ofSheet.sheet.Close();
    w.window->resize(1500, 900);
    w.Open();
    EXPECT_TRUE(w.IsBeside());
}

TEST(SheetDock, MovesWithWhatHasBeenTypedAndRemembersIt) {
    DockWorld w("0");
    w.Open();
    ASSERT_TRUE(w.sheet->isWindow());
    w.ofSheet.sheet.TypeNewComments("half a");
    w.sheet->onMove();
    QApplication::processEvents();
    EXPECT_TRUE(w.IsBeside());
    EXPECT_EQ(w.settings.CommentSheetPlace, "1");
    EXPECT_EQ(w.ofSheet.sheet.NewComments(), "half a");
    w.sheet->onMove();
    EXPECT_TRUE(w.sheet->isWindow());
    EXPECT_TRUE(w.sheet->isVisible());
    EXPECT_FALSE(w.dock->isVisible());
}

}  // namespace
}  // namespace nordkeep
