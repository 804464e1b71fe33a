#include "console/window/AlarmCommands.h"
#include "tests/doubles/FakeDialogs.h"
#include "tests/pipeline/PipelineTest.h"

namespace nordkeep {
namespace {

class AlarmCommandsTest : public PipelineTest {
 protected:
    AlarmCommandsTest() {
        WriteSet("FORMAT=1,4,0,0,5,2\r\n1001;Shop;\r\n", "01;1;Fire;02\r\n05;-1;Test;\r\n");
        Start();
        for (const char* code : {"100101", "100103", "100104", "100105"}) TakeIn(code);
    }

    AlarmCommands Commands() {
        return AlarmCommands({.store = running->store,
                              .views = running->lists,
                              .dialogs = dialogs,
                              .language = running->language,
                              .clock = time,
                              .silenceSound = [this] { ++silenced; }});
    }
    std::vector<int> Statuses() {
        std::vector<int> statuses;
        for (const cAlarm* alarm : All()) statuses.push_back(alarm->m_Status);
        return statuses;
    }
    using Numbers = std::vector<int>;

    FakeDialogs dialogs{};
    int silenced = 0;
};

TEST_F(AlarmCommandsTest, NothingHappensOnANo) {
    const Numbers before = Statuses();
    const Text key = RowKey(*All()[0]);
    Commands().AckAll();
    Commands().CloseSelected(std::span(&key, 1));
    Commands().ArchiveSelected(std::span(&key, 1));
    EXPECT_EQ(Statuses(), before);
    EXPECT_EQ(dialogs.questions.size(), 3u);
    EXPECT_EQ(silenced, 0);
}

TEST_F(AlarmCommandsTest, EndsAllAndSilencesTheSound) {
    dialogs.answers = {true, true};
    time.Set(time.Now().PlusMinutes(5));
    Commands().AckAll();
    running->commit.Commit();
    EXPECT_EQ(Statuses(), (Numbers{5, 5, 5, 5}));
    EXPECT_EQ(running->lists.UnackedCount(), 0u);
    EXPECT_EQ(Stored(*All()[0]).m_AckedTime, time.Now());
    EXPECT_LT(All()[3]->m_AckedTime, time.Now()) << "what had ended before keeps its time";
    Commands().AckAll();
    EXPECT_EQ(silenced, 2) << "also with nothing to end";
}

TEST_F(AlarmCommandsTest, EndsAndArchivesWhatIsSelected) {
    dialogs.answers = {true, true};
    const std::vector<Text> keys = {RowKey(*All()[0]), "99K", RowKey(*All()[1])};
    Commands().CloseSelected(keys);
    EXPECT_EQ(Statuses(), (Numbers{5, 5, 0, 5}));
    const std::int32_t first = All()[0]->m_FilePointer;
    Commands().ArchiveSelected(keys);
    running->commit.Commit();
    EXPECT_EQ(Statuses(), (Numbers{0, 5}));
    EXPECT_EQ(running->lists.AckedCount(), 1u);
    EXPECT_FALSE(folder.Exists("Data\\Events\\A" + Digits(first, 7) + ".eve"));
    const Text archive = folder.Read("Data\\Archive.TXT");
    EXPECT_EQ(std::ranges::count(archive, '\n'), 2);
    EXPECT_TRUE(archive.starts_with("5;0;2024-03-05 07:08:09;"));
}

}  // namespace
}  // namespace nordkeep
