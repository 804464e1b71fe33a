#include "console/window/OpenWindows.h"
#include "tests/console/SheetWorld.h"

#include <gtest/gtest.h>

namespace nordkeep {
namespace {

struct WindowsWorld : SheetWorld {
    OwnMaps maps{dataFiles};
    MapBox map{{.pictures = maps, .captions = captions, .loop = time, .store = *store}};
    PictureSettings pictures{};
    PictureBox picture{pictures, folder.Tree(), time};
    OpenWindows windows{{.sheet = sheet, .map = map, .picture = picture, .store = *store, .state = *this}};
};

TEST(OpenWindows, SheetThatComesByItselfPushesNothingAside) {
    const struct {
        bool isSheetOpen;
        bool isQuestionUp;
        bool isFlood;
        bool opens;
    } rows[] = {{false, false, false, true},
                {true, false, false, false},
                {false, true, false, false},
                {false, false, true, false}};
    for (const auto& row : rows) {
        WindowsWorld w;
        const std::int32_t first = w.Raise("1").m_FilePointer;
        const std::int32_t second = w.Raise("2").m_FilePointer;
        if (row.isSheetOpen) w.windows.OpenAlarmSheet(first, OpenedBy::Operator);
        w.isQuestionUp = row.isQuestionUp;
        w.isFlood = row.isFlood;
        w.view.calls.clear();
        w.windows.OpenAlarmSheet(second, OpenedBy::Itself);
        w.windows.OpenMap("a/1/2", second, OpenedBy::Itself);
        EXPECT_EQ(w.view.calls, row.opens ? "appear " : "");
        EXPECT_EQ(w.map.IsOpen(), !row.isQuestionUp && !row.isFlood);
    }
}

TEST(OpenWindows, TypedTextBringsItsSheetBackInsteadOfAnother) {
    WindowsWorld w;
    const std::int32_t first = w.Raise("1").m_FilePointer;
    const std::int32_t second = w.Raise("2").m_FilePointer;
    w.windows.OpenAlarmSheet(first, OpenedBy::Operator);
    w.Type("half a");
    w.windows.OpenAlarmSheet(second, OpenedBy::Operator);
    w.windows.OpenObjectSheet("A/B", "2");
    EXPECT_EQ(w.sheet.NewComments(), "half a");
    EXPECT_EQ(w.view.calls, "show show show ");
    w.Type("");
    w.windows.OpenAlarmSheet(second, OpenedBy::Operator);
    EXPECT_EQ(w.sheet.Texts().object, "Shop   2");
}

TEST(OpenWindows, MapFollowsNewAlarmsOnlyWhenItsOwnIsOver) {
    WindowsWorld w;
    cAlarm& first = w.Raise("1");
    const std::int32_t second = w.Raise("2").m_FilePointer;
    w.windows.OpenMap("a/1/2", first.m_FilePointer, OpenedBy::Itself);
    w.windows.OpenMap("b/1/2", second, OpenedBy::Itself);
    EXPECT_EQ(w.map.Title(), "a - Nordkeep");
    first.m_Status = kStatusAcknowledged;
    w.windows.OpenMap("b/1/2", second, OpenedBy::Itself);
    EXPECT_EQ(w.map.Title(), "b - Nordkeep");
    w.windows.OpenMap("c", 0, OpenedBy::Operator);
    w.windows.OpenMap("b/1/2", second, OpenedBy::Itself);
    EXPECT_EQ(w.map.Title(), "c - Nordkeep") << "an operator looks at it";
    w.windows.OpenMap("", second, OpenedBy::Operator);
    EXPECT_EQ(w.map.Title(), "c - Nordkeep");
}

TEST(OpenWindows, WaitsForTheAnswerThatAnotherRequestAwaits) {
    WindowsWorld w;
    const std::int32_t key = w.Raise("1").m_FilePointer;
    w.folder.Write(SheetWorld::kComments, "old\r\n");
    w.isRequestPending = true;
    w.windows.OpenAlarmSheet(key, OpenedBy::Operator);
    w.windows.Tick();
    EXPECT_FALSE(w.sheet.IsOpen());
    w.isRequestPending = false;
    w.windows.Tick();
    EXPECT_TRUE(w.sheet.IsOpen());
    EXPECT_EQ(w.sheet.OldComments(), "old");
    w.isRequestPending = true;
    w.windows.OpenObjectSheet("A/B", "2");
    w.windows.CloseAll();
    w.isRequestPending = false;
    w.windows.Tick();
    EXPECT_EQ(w.sheet.IsOpen(), false) << "what waited has gone with the rest";
}

}  // namespace
}  // namespace nordkeep
