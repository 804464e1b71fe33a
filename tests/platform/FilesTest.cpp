#include "platform/KeptFiles.h"
#include "tests/doubles/NoDescriptors.h"
#include "tests/doubles/TempFolder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>

namespace nordkeep {
namespace {

unsigned ModeOf(const NativePath& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 ? status.st_mode & 07777 : 0;
}

class Files : public testing::Test {
 protected:
    NativePath At(const std::string& name) const { return folder.Path() + "/" + name; }
    TempFolder folder{};
};

TEST_F(Files, ReadsWhatWasWrittenByteForByte) {
    for (const std::size_t size : {0u, 1u, 4096u, 70001u}) {
        Text bytes;
        for (std::size_t i = 0; i < size; ++i) bytes += static_cast<char>(i * 7);
        ASSERT_TRUE(WriteFile(At("a"), bytes));
        EXPECT_EQ(ReadFile(At("a")), bytes);
    }
}

TEST_F(Files, TakesOnlyRegularFiles) {
    ASSERT_EQ(::mkfifo(At("pipe").c_str(), 0600), 0);
    ASSERT_TRUE(MakeFolder(At("folder")));
    for (const NativePath& path : {At("pipe"), At("folder"), At("missing"), NativePath("/dev/zero")}) {
        EXPECT_FALSE(ReadFile(path)) << path;
        EXPECT_FALSE(StampOf(path).Exists()) << path;
        EXPECT_TRUE(FileTime(path).IsNever()) << path;
    }
    for (const NativePath& path : {At("pipe"), At("folder"), At("missing/file")}) {
        EXPECT_FALSE(WriteFile(path, "x")) << path;
        EXPECT_FALSE(ReplaceFile(path, "x")) << path;
        EXPECT_FALSE(AppendToFile(path, "x")) << path;
    }
}

TEST_F(Files, ReplacingKeepsTheModeAndLeavesNothingBehind) {
    ASSERT_TRUE(WriteFile(At("a.ini"), "a much longer content than the new one"));
    ASSERT_EQ(::chmod(At("a.ini").c_str(), 0640), 0);
    EXPECT_TRUE(ReplaceFile(At("a.ini"), "new"));
    EXPECT_EQ(folder.Read("a.ini"), "new");
    EXPECT_EQ(ModeOf(At("a.ini")), 0640u);
    EXPECT_EQ(ListEntries(folder.Path()), (std::vector<Text>{"a.ini"}));
}

TEST_F(Files, APrivateFileIsMadeForItsOwnerAloneAndKeepsTheRightsItHas) {
    EXPECT_TRUE(ReplacePrivateFile(At("Users.INI"), "a"));
    EXPECT_EQ(ModeOf(At("Users.INI")), 0600u);
    ASSERT_EQ(::chmod(At("Users.INI").c_str(), 0660), 0);
    EXPECT_TRUE(ReplacePrivateFile(At("Users.INI"), "b"));
    EXPECT_EQ(ModeOf(At("Users.INI")), 0660u) << "somebody has decided so";
    EXPECT_EQ(folder.Read("Users.INI"), "b");
}

TEST_F(Files, ReplacingALinkedFileKeepsTheLink) {
    ASSERT_TRUE(WriteFile(At("real"), "old"));
    ASSERT_EQ(::symlink("real", At("link").c_str()), 0);
    EXPECT_TRUE(ReplaceFile(At("link"), "new"));
    EXPECT_EQ(folder.Read("real"), "new");
    EXPECT_EQ(ListEntries(folder.Path()).size(), 2u);
}

TEST_F(Files, AppendingHonoursAReadOnlyMarkAfterwards) {
    ASSERT_TRUE(AppendToFile(At("log"), "one\r\n"));
    ASSERT_EQ(::chmod(At("log").c_str(), 0444), 0);
    EXPECT_TRUE(AppendToFile(At("log"), "two\r\n"));
    EXPECT_EQ(folder.Read("log"), "one\r\ntwo\r\n");
    EXPECT_EQ(ModeOf(At("log")), 0444u);
}

TEST_F(Files, RenamingNeverOverwrites) {
    ASSERT_TRUE(WriteFile(At("a"), "a"));
    ASSERT_TRUE(WriteFile(At("b"), "b"));
    EXPECT_FALSE(RenameFile(At("a"), At("b")));
    EXPECT_FALSE(RenameFile(At("missing"), At("c")));
    EXPECT_TRUE(RenameFile(At("a"), At("c")));
    EXPECT_EQ(folder.Read("b"), "b");
    EXPECT_EQ(folder.Read("c"), "a");
}

TEST_F(Files, MakesOneFolderLevelOnly) {
    EXPECT_FALSE(MakeFolder(At("a/b")));
    EXPECT_TRUE(MakeFolder(At("a")));
    EXPECT_TRUE(MakeFolder(At("a")));
    ASSERT_TRUE(WriteFile(At("file"), ""));
    EXPECT_FALSE(MakeFolder(At("file")));
    EXPECT_FALSE(RemoveFile(At("a")));
    EXPECT_TRUE(RemoveFolder(At("a")));
}

TEST_F(Files, ListsPlainFilesSortedByUpperCase) {
    for (const char* name : {"b", "A", "a", "_", "\xC3\xA5", "\xCE\xB1 has no form", "B2"}) {
        ASSERT_TRUE(WriteFile(At(name), ""));
    }
    ASSERT_TRUE(MakeFolder(At("C")));
    ASSERT_EQ(::symlink("b", At("link").c_str()), 0);
    ASSERT_EQ(::symlink("nowhere", At("dangling").c_str()), 0);
    EXPECT_EQ(ListFiles(folder.Path()), (std::vector<Text>{"A", "a", "b", "B2", "link", "_", "\xE5"}));
    EXPECT_EQ(ListEntries(folder.Path()).size(), 9u);
    EXPECT_TRUE(ListFiles(At("missing")).empty());
}

TEST_F(Files, AStampTellsARewriteAndAReplacement) {
    ASSERT_TRUE(WriteFile(At("a"), "1"));
    const FileStamp first = StampOf(At("a"));
    ASSERT_TRUE(ReplaceFile(At("a"), "2"));
    EXPECT_NE(StampOf(At("a")), first);
    EXPECT_NE(StampOf(At("a")).inode, first.inode);
}

TEST(LoadFile, TellsMissingFromUnreadable) {
    const TempFolder folder;
    folder.Write("there.txt", "x");
    using State = FileContent::State;
    EXPECT_EQ(LoadFile(folder.Resolve("there.txt")).bytes, "x");
    EXPECT_EQ(LoadFile(folder.Resolve("none.txt")).state, State::Missing);
    EXPECT_EQ(LoadFile(folder.Resolve("there.txt") + "/below").state, State::Missing);
    EXPECT_EQ(LoadFile(folder.Path()).state, State::Unreadable);
    const NoDescriptors none;
    EXPECT_EQ(LoadFile(folder.Resolve("there.txt")).state, State::Unreadable);
}

// A rename goes over a file whatever its mode, so a comment history of another account was lost.
TEST(ReplaceFile, LeavesAFileAloneThatThisProgramMayNotReadAndWrite) {
    const TempFolder folder;
    folder.Write("theirs.txt", "history");
    const NativePath path = folder.Resolve("theirs.txt");
    ::chmod(folder.Path().c_str(), 0777);
    constexpr uid_t kNobody = 65'534;
    for (const mode_t mode : {0444u, 0222u, 0u}) {
        ::chmod(path.c_str(), mode);
        ASSERT_EQ(::seteuid(kNobody), 0);
        const bool isReplaced = ReplaceFile(path, "new");
        const bool isMade = ReplaceFile(folder.Path() + "/mine.txt", "new");
        ASSERT_EQ(::seteuid(0), 0);
        EXPECT_FALSE(isReplaced) << mode;
        EXPECT_TRUE(isMade);
    }
    EXPECT_EQ(folder.Read("theirs.txt"), "history");
    EXPECT_EQ(ListEntries(folder.Path()).size(), 2u);
}

TEST(MatchesMask, KnowsQuestionMarkAndStar) {
    struct Case {
        TextView name;
        TextView mask;
        bool fits;
    };
    const Case cases[] = {
        {"A1234567.eve", "A???????.EVE", true},
        {"A123456.eve", "A???????.EVE", false},
        {"Port1.ini", "port*.INI", true},
        {"Port.ini", "Port*.ini", true},
        {"Port1.ini.bak", "Port*.ini", false},
        {"anything", "*.*", true},
        {"", "*", true},
        {"", "?", false},
        {"aaab", "*ab", true},
        {"\xE5.txt", "\xC5.*", true},
        {"a.b.c", "*.c", true},
        {"abc", "a*?c", true},
        {"ac", "a*?c", false},
        {"abcd", "a*bc*bc*d", false},
        {"abcbcxd", "a*bc*bc*d", true},
        {"a", "a**", true},
    };
    for (const Case& c : cases) EXPECT_EQ(MatchesMask(c.name, c.mask), c.fits) << c.name << " " << c.mask;
    // Eight stars once did not end in a minute.
    const Text longName(200, 'a');
    EXPECT_FALSE(MatchesMask(longName, "*a*a*a*a*a*a*a*a*a*a*b"));
}

TEST(OpenFile, IsKnownAsLongAsSomebodyMayWriteIt) {
    const TempFolder folder;
    const NativePath path = folder.Resolve("a.txt");
    EXPECT_EQ(IsOpenForWriting(path), std::nullopt);
    AppendingFile writer(folder.Tree());
    ASSERT_TRUE(writer.Append("a.txt", ""));
    EXPECT_EQ(IsOpenForWriting(path), true);
    writer.Close();
    EXPECT_EQ(IsOpenForWriting(path), false);
}

}  // namespace
}  // namespace nordkeep
