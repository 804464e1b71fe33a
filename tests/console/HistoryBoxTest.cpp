#include "console/history/ReportBox.h"
#include "console/history/ShiftBox.h"
#include "tests/console/MainBoxWorld.h"
#include "tests/console/PlayedHistory.h"

#include <gtest/gtest.h>

namespace nordkeep {
namespace {

class HistoryTest : public ::testing::Test {
 protected:
    HistoryTest() { world.Start(); }
    HistoryBox::Needs Needs() {
        return {past, world.running->captions, world.time, world.printer, world.running->printerSettings};
    }

    MainBoxWorld world{};
    PlayedHistory past{world.time};
};

TEST_F(HistoryTest, ShowsTheLastDayAndWhoDidWhat) {
    past.Note("A0000001", "1", "anna");
    past.Note("A0000002", "2");
    HistoryBox box(Needs());
    box.Open();
    EXPECT_TRUE(box.IsBusy());
    world.time.Advance(100);
    ASSERT_EQ(box.Rows().RowCount(), 3);
    EXPECT_EQ(box.Rows().Cell(0, 2), "Shop 2 (2)");
    EXPECT_EQ(box.Rows().Cell(1, 1), "Ended");
    EXPECT_EQ(box.Rows().Cell(1, 6), "anna");
    EXPECT_EQ(box.Notice(), "3 entries. That is all.");
    box.OpenCase(box.Rows().KeyOf(1));
    world.time.Advance(100);
    EXPECT_EQ(box.Rows().RowCount(), 2);
    EXPECT_EQ(box.Title(), "Case A0000001");
    const PrintDocument paper = box.Document();
    ASSERT_EQ(paper.lines.size(), 2u);
    EXPECT_NE(paper.lines.at(1).find("anna"), Text::npos) << "paper is read from its begin";
}

TEST_F(HistoryTest, GoesOnPageByPageAndStops) {
    for (int i = 0; i < 250; ++i) past.Note("A" + std::to_string(1000000 + i), "1");
    HistoryBox box(Needs());
    box.Open();
    world.time.Advance(100);
    EXPECT_EQ(box.Rows().RowCount(), 100);
    EXPECT_TRUE(box.HasMore());
    box.More();
    world.time.Advance(100);
    EXPECT_EQ(box.Rows().RowCount(), 200);
    box.FetchAll();
    box.Stop();
    world.time.Advance(100);
    EXPECT_EQ(box.Rows().RowCount(), 200) << "what was stopped brings nothing any more";
    box.FetchAll();
    world.time.Advance(100);
    EXPECT_EQ(box.Rows().RowCount(), 250);
    EXPECT_FALSE(box.HasMore());
}

TEST_F(HistoryTest, SaysWhyThereIsNothing) {
    HistoryBox box(Needs());
    box.Search({.from = "yesterday"});
    EXPECT_NE(box.Notice().find("\"yesterday\""), Text::npos);
    past.state = HistorySource::State::NotAllowed;
    box.Search({});
    EXPECT_NE(box.Notice().find("Log in"), Text::npos);
    past.state = HistorySource::State::Ready;
    box.Search({});
    past.state = HistorySource::State::NoContact;
    box.Tick();
    EXPECT_FALSE(box.IsBusy());
    EXPECT_TRUE(box.IsTrouble());
    past.state = HistorySource::State::Ready;
    past.file.Close();
    box.Search({});
    world.time.Advance(100);
    EXPECT_NE(box.Notice().find("cannot be read"), Text::npos);
}

// Whoever sends an alarm must not write into the table program of who looks at it.
TEST_F(HistoryTest, NoCellOfAnExportIsAFormula) {
    past.journal.Note(
        {.kind = JournalKind::Comment, .event = "A0000001", .object = "=1+1", .station = "local"});
    past.journal.Commit();
    HistoryBox box(Needs());
    box.Open();
    world.time.Advance(100);
    EXPECT_NE(box.Csv().find(",'=1+1,"), std::string::npos);
    box.ExportTo(world.folder.Resolve("out.csv"));
    EXPECT_EQ(world.folder.Read("out.csv"), box.Csv());
}

TEST_F(HistoryTest, AReportIsTablesAndChartsOnScreenAndPaper) {
    for (int i = 0; i < 3; ++i) past.Note("A000000" + std::to_string(i), "7", "bo");
    ReportBox box(Needs());
    box.Make(box.SpanOf(ReportBox::Usual::Today));
    world.time.Advance(100);
    ASSERT_TRUE(box.HasFigures());
    EXPECT_EQ(box.Figures().alarms, 3);
    const std::vector<ReportTable> tables = box.Tables();
    ASSERT_EQ(tables.size(), 8u);
    EXPECT_EQ(tables.at(1).rows.at(0).at(8), "1:00") << "ended, median";
    EXPECT_EQ(tables.at(2).rows.at(0).at(0), "bo");
    EXPECT_EQ(tables.at(4).rows.at(0), (std::vector<Text>{"3", "Shop 7 (7)"}));
    const std::vector<Chart> charts = box.Charts();
    EXPECT_EQ(charts.at(0).bars.size(), 144u);
    EXPECT_EQ(charts.at(1).bars.size(), 24u);
    EXPECT_EQ(charts.at(1).bars.at(7).value, 3);
    EXPECT_EQ(box.Document().charts.size(), 2u);
    EXPECT_NE(box.Csv().find("Shop 7 (7)"), std::string::npos);
    box.Make({world.time.Now(), world.time.Now().PlusDays(-1)});
    EXPECT_TRUE(box.IsTrouble());
}

TEST_F(HistoryTest, AMonthHasAsManyBarsAsCanBeToldApart) {
    past.Note("A0000001", "7");
    ReportBox box(Needs());
    box.Make(box.SpanOf(ReportBox::Usual::LastMonth));
    world.time.Advance(200);
    const Chart chart = box.Charts().at(0);
    EXPECT_LE(chart.bars.size(), 144u);
    EXPECT_EQ(std::ranges::max_element(chart.bars, {}, &Chart::Bar::value)->value, 1);
}

TEST_F(HistoryTest, AShiftIsSignedOverOnceWithItsFiguresAndNote) {
    past.Note("A0000001", "7", "bo");
    const ShiftList list({world.running->store, world.running->translations, world.running->captions,
                          world.time, world.running->printerSettings});
    ShiftBox box({list, past, world.running->captions, world.time, world.printer});
    box.Open();
    world.time.Advance(100);
    ASSERT_EQ(box.Parts().size(), 4u);
    EXPECT_NE(box.Parts().at(0).lines.at(0).find("1 alarm,"), Text::npos);
    box.SetNote("Key 7 is\r\nat the gate");
    past.state = HistorySource::State::NoContact;
    box.SignOver();
    EXPECT_FALSE(box.IsSignedOver());
    past.state = HistorySource::State::Ready;
    past.signedOver.clear();
    box.SignOver();
    box.SignOver();
    ASSERT_EQ(past.signedOver.size(), 1u);
    EXPECT_NE(past.signedOver.at(0).find("at the gate"), Text::npos);
    EXPECT_NE(past.signedOver.at(0).find("Shop 7: 1 alarm"), Text::npos);
}

}  // namespace
}  // namespace nordkeep
