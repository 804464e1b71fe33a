#include "tests/pipeline/PipelineTest.h"

namespace nordkeep {
namespace {

class AlarmHandlingTest : public PipelineTest {
 protected:
    AlarmHandlingTest() {
        WriteSettings("SmallCommentSize=10\r\n");
        WriteSet("FORMAT=1,4,0,0,5,2\r\n1001;Shop;\r\n", "01;1;Fire;02\r\n05;-1;Test;\r\n");
        Start();
        for (const char* code : {"100101", "100103", "100104", "100105"}) TakeIn(code);
        time.Set(time.Now().PlusMinutes(5));
    }

    AlarmHandling& Handling() { return running->handling; }
    void FinishBulk() {
        while (Handling().ContinueBulk()) continue;
    }
    std::vector<int> Statuses() {
        std::vector<int> statuses;
        for (const cAlarm* alarm : All()) statuses.push_back(alarm->m_Status);
        return statuses;
    }
    using Numbers = std::vector<int>;
    using FilePointers = std::vector<std::int32_t>;
};

TEST_F(AlarmHandlingTest, EndsAllAndSilencesTheSound) {
    const std::vector<cAlarm*> all = All();
    Handling().EndAll();
    running->commit.Commit();
    EXPECT_EQ(Statuses(), (Numbers{5, 5, 5, 5}));
    EXPECT_EQ(running->views.UnackedCount(), 0u);
    EXPECT_EQ(Stored(*all[0]).m_AckedTime, time.Now());
    EXPECT_LT(all[3]->m_AckedTime, time.Now()) << "what had ended before keeps its time";
    EXPECT_EQ(running->desk.ended,
              (FilePointers{all[0]->m_FilePointer, all[1]->m_FilePointer, all[2]->m_FilePointer}));
    Handling().EndAll();
    EXPECT_EQ(running->desk.timesAllEnded, 2) << "also with nothing to end";
}

TEST_F(AlarmHandlingTest, EndsAndArchivesSeveral) {
    const FilePointers chosen = {All()[0]->m_FilePointer, 99, All()[1]->m_FilePointer};
    Handling().EndSeveral(chosen);
    EXPECT_EQ(Statuses(), (Numbers{5, 5, 0, 5}));
    Handling().Archive(chosen);
    running->commit.Commit();
    EXPECT_EQ(Statuses(), (Numbers{0, 5}));
    EXPECT_EQ(running->views.AckedCount(), 1u);
    EXPECT_FALSE(folder.Exists("Data\\Events\\A" + Digits(chosen[0], 7) + ".eve"));
    const Text archive = folder.Read("Data\\Archive.TXT");
    EXPECT_EQ(std::ranges::count(archive, '\n'), 2);
    EXPECT_TRUE(archive.starts_with("5;0;2024-03-05 07:08:09;"));
}

// The end of 20,000 alarms once kept every caller waiting for twelve seconds.
TEST_F(AlarmHandlingTest, EndsManyInSlices) {
    for (int i = 0; i < 400; ++i) TakeIn("100101");
    std::vector<EndedAlarm> ended;
    int timesTold = 0;
    Handling().EndAll([&](std::vector<EndedAlarm> all) {
        ended = std::move(all);
        ++timesTold;
    });
    const auto countEnded = [this] { return std::ranges::count(Statuses(), 5); };
    EXPECT_LE(countEnded(), 60);
    EXPECT_EQ(running->desk.timesAllEnded, 1) << "the sound goes off at once";
    EXPECT_EQ(timesTold, 0);
    cAlarm& elsewhere = *All()[403];
    Handling().EndByReset(elsewhere, kStatusAcknowledged);
    const OleDate endedElsewhere = elsewhere.m_AckedTime;
    TakeIn("100104");
    time.Set(time.Now().PlusMinutes(1));
    int slices = 1;
    while (Handling().ContinueBulk()) ++slices;
    EXPECT_GE(slices, 4);
    EXPECT_EQ(timesTold, 1);
    EXPECT_EQ(countEnded(), 404);
    EXPECT_EQ(All().back()->m_Status, 0) << "it came behind the command";
    EXPECT_EQ(elsewhere.m_AckedTime, endedElsewhere);
    EXPECT_EQ(ended.size(), 402u) << "neither the test alarm nor the one that was ended by another";

    Handling().Reopen(ended);
    FinishBulk();
    EXPECT_EQ(countEnded(), 2);
    Handling().EndAll();
    Handling().Archive(std::vector{All()[0]->m_FilePointer});
    EXPECT_EQ(All()[0]->m_Status, 5) << "in the order in which it was asked for";
    FinishBulk();
    EXPECT_EQ(countEnded(), 404);
}

TEST_F(AlarmHandlingTest, ACommentMovesNoAlarmThatIsReset) {
    cAlarm& waiting = *All()[0];
    cAlarm& open = *All()[1];
    cAlarm& reset = *All()[2];
    Handling().EndByReset(reset, kStatusReset);
    for (cAlarm* alarm : {&waiting, &open, &reset}) Handling().Comment(*alarm, {});
    Handling().TakeSmallComment(open, "called");
    EXPECT_EQ(Statuses(), (Numbers{3, 1, 4, 5}));
    EXPECT_EQ(Stored(open).m_SmallComment.substr(0, 6), "called");
    EXPECT_EQ(Stored(open).m_Status, kStatusCommented);
    Handling().End(waiting, "done");
    EXPECT_EQ(Stored(waiting).m_SmallComment.substr(0, 4), "done");
    EXPECT_EQ(running->desk.ended, FilePointers{waiting.m_FilePointer}) << "a reset is no deed of this place";
}

}  // namespace
}  // namespace nordkeep
