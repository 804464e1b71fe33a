#include "console/window/LinesPage.h"
#include "tests/console/ConsoleDoubles.h"
#include "tests/doubles/ManualTime.h"

#include <gtest/gtest.h>

namespace nordkeep {
namespace {

TEST(LinesPage, ShowsTheSendersOfALineBelowItAndTheWaysOutBehindAll) {
    ManualTime time;
    Language language;
    language.LoadFrom("5250=account\n5053=silent\n4545=failed\n5253=queue\n5258=output\n5259=%1 wait\n");
    const Captions captions(language);
    RecordingLines control;
    control.lines = {{.name = "Port1", .description = "Panels", .state = LineState::Open},
                     {.name = "Port2", .description = "GSM", .state = LineState::Failed}};
    control.lineWithAccounts = "Port1";
    control.accounts = {{.name = "B2", .isSilent = true}, {.name = "A1", .lastMessage = time.Now()}};
    control.outputs = {{.name = "queue", .waiting = 12}, {.name = "mqtt", .isUp = true}};
    LinesPage page(control, captions, time);
    ASSERT_TRUE(page.Tick(1000));
    LineRows& rows = page.Rows();
    ASSERT_EQ(rows.RowCount(), 6);
    EXPECT_EQ(rows.Cell(1, 0), "    B2");
    EXPECT_EQ(rows.Cell(1, 1), "account");
    EXPECT_EQ(rows.IconWord(1), "silent");
    EXPECT_EQ(rows.Cell(2, 0), "    A1");
    EXPECT_EQ(rows.Cell(4, 0) + "," + rows.Cell(4, 1) + "," + rows.Cell(4, 8), "queue,output,12 wait");
    EXPECT_EQ(rows.IconWord(4), "failed");
    EXPECT_EQ(rows.Cell(5, 0), "MQTT");
    EXPECT_NE(rows.IconWord(5), "failed");
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
