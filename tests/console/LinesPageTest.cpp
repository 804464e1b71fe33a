#include "console/window/LinesPage.h"
#include "tests/console/ConsoleDoubles.h"
#include "tests/doubles/ManualTime.h"

#include <gtest/gtest.h>

namespace nordkeep {
namespace {

TEST(LinesPage, ShowsTheSendersOfALineBelowItTheSilentOnesFirst) {
    ManualTime time;
    Language language;
    language.LoadFrom("5250=account\n5053=silent\n");
    const Captions captions(language);
    RecordingLines control;
    control.lines = {{.name = "Port1", .description = "Panels", .state = LineState::Open},
                     {.name = "Port2", .description = "GSM", .state = LineState::Failed}};
    control.lineWithAccounts = "Port1";
    control.accounts = {{.name = "B2", .isSilent = true}, {.name = "A1", .lastMessage = time.Now()}};
    LinesPage page(control, captions, time);
    ASSERT_TRUE(page.Tick(1000));
    LineRows& rows = page.Rows();
    ASSERT_EQ(rows.RowCount(), 4);
    EXPECT_EQ(rows.Cell(1, 0), "    B2");
    EXPECT_EQ(rows.Cell(1, 1), "account");
    EXPECT_EQ(rows.IconWord(1), "silent");
    EXPECT_EQ(rows.Cell(2, 0), "    A1");
    EXPECT_EQ(page.Lines().size(), 2u) << "conditions are of lines";

    page.Select({.current = "Port1/B2"});
    page.ToggleHeld();
    EXPECT_EQ(control.calls, "") << "a sender is not closed";
    page.Select({.current = "Port1"});
    page.ToggleHeld();
    EXPECT_EQ(control.calls, "hold Port1;");
}

}  // namespace
}  // namespace nordkeep
