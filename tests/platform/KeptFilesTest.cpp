#include "platform/KeptFiles.h"
#include "tests/doubles/NoDescriptors.h"
#include "tests/doubles/TempFolder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <functional>

namespace nordkeep {
namespace {

class KeptLog : public testing::Test {
 protected:
    NativePath At(const std::string& name) const { return folder.Path() + "/" + name; }
    bool Line(const char* line) { return log.Append("Logs\\day.LOG", line); }

    TempFolder folder{};
    AppendingFile log{folder.Tree()};
};

TEST_F(KeptLog, GoesByItsNameWhateverBecomesOfTheFile) {
    folder.Write("Logs\\day.LOG", "0");
    const std::function<void()> deeds[] = {
        [&] { RemoveFile(At("Logs/day.LOG")); },
        [&] { RenameFile(At("Logs/day.LOG"), At("Logs/old")); },
        [&] { ReplaceFile(At("Logs/day.LOG"), "by an editor"); },
        [&] { RenameFile(At("Logs"), At("Logs.old")), MakeFolder(At("Logs")); },
        [&] {
            RenameFile(At("Logs/day.LOG"), At("Logs/other")),
                (void)!::symlink("other", At("Logs/day.LOG").c_str());
        },
    };
    for (const auto& deed : deeds) {
        ASSERT_TRUE(Line("1"));
        EXPECT_TRUE(log.IsOpen());
        deed();
        ASSERT_TRUE(Line("2"));
        const Text content = folder.Read("Logs\\day.LOG");
        EXPECT_TRUE(content.ends_with('2')) << content;
    }
    EXPECT_EQ(folder.Read("Logs.old\\old"), "21") << "nothing more behind the rename";
}

TEST_F(KeptLog, TakesTheSpellingThatStandsForTheNameFromNowOn) {
    folder.Write("logs\\DAY.log", "");
    ASSERT_TRUE(Line("1"));
    ASSERT_TRUE(WriteFile(At("logs/day.LOG"), ""));
    ASSERT_TRUE(Line("2"));
    ASSERT_TRUE(MakeFolder(At("Logs")));
    ASSERT_TRUE(Line("3"));
    EXPECT_EQ(ReadFile(At("logs/DAY.log")), "1");
    EXPECT_EQ(ReadFile(At("logs/day.LOG")), "2");
    EXPECT_EQ(ReadFile(At("Logs/day.LOG")), "3");
}

TEST_F(KeptLog, BeginsAtTheFrontOfAFileThatWasEmptied) {
    folder.MakeFolders("Logs");
    ASSERT_TRUE(Line("many lines"));
    ASSERT_EQ(::truncate(At("Logs/day.LOG").c_str(), 0), 0);
    ASSERT_TRUE(Line("2"));
    EXPECT_EQ(folder.Read("Logs\\day.LOG"), "2");
}

TEST_F(KeptLog, WritesWhereItCanWithoutDescriptorsAndAgainBehindThat) {
    folder.MakeFolders("Logs");
    ASSERT_TRUE(Line("1"));
    {
        const NoDescriptors none;
        EXPECT_TRUE(Line("2")) << "the file is open";
        RemoveFile(At("Logs/day.LOG"));
        EXPECT_FALSE(Line("lost"));
    }
    EXPECT_TRUE(Line("3"));
    EXPECT_EQ(folder.Read("Logs\\day.LOG"), "3");
}

TEST_F(KeptLog, IsNotWrittenBehindTheBackOfWhoTakesItAway) {
    folder.MakeFolders("Logs");
    const FileTree::Moment moment(folder.Tree());
    ASSERT_TRUE(Line("1"));
    ASSERT_TRUE(RenameFile(At("Logs/day.LOG"), At("Logs/taken")));
    ASSERT_TRUE(log.AppendUnlessTaken("Logs\\day.LOG", "2"));
    EXPECT_EQ(folder.Read("Logs\\taken"), "1");
    EXPECT_EQ(ReadFile(At("Logs/day.LOG")), "2");
}

TEST(KeptNumber, IsWrittenOnlyIntoTheFileThatWasLookedAt) {
    const TempFolder folder;
    folder.Write("file", "n=1\r\n");
    const NativePath path = folder.Resolve("file");
    OverwritingFile kept;
    EXPECT_TRUE(kept.Overwrite(path, StampOf(path), 2, "2"));
    const FileStamp before = StampOf(path);
    ASSERT_TRUE(ReplaceFile(path, "other=7\r\n"));
    EXPECT_TRUE(kept.Overwrite(path, StampOf(path), 6, "8"));
    EXPECT_EQ(folder.Read("file"), "other=8\r\n");
    EXPECT_FALSE(OverwritingFile().Overwrite(path, before, 2, "3"));
    EXPECT_FALSE(kept.Overwrite(path, StampOf(path), 9, "x")) << "the file never grows";
    EXPECT_EQ(folder.Read("file"), "other=8\r\n");
}

}  // namespace
}  // namespace nordkeep
