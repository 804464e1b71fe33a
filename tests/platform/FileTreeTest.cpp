#include "platform/FileTree.h"
#include "tests/doubles/NoDescriptors.h"
#include "tests/doubles/TempFolder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>

namespace nordkeep {
namespace {

class Look : public testing::Test {
 protected:
    NativePath At(const std::string& name) const { return folder.Path() + "/" + name; }
    TempFolder folder{};
};

TEST_F(Look, FindsEachComponentWithoutRegardToCase) {
    folder.Write("settings\\NORDKEEP.ini", "x");
    for (const TextView path :
         {"Settings\\Nordkeep.INI", "settings/NORDKEEP.ini", "\\SETTINGS\\.\\\\nordkeep.ini"}) {
        EXPECT_EQ(folder.Resolve(path), At("settings/NORDKEEP.ini")) << path;
    }
    EXPECT_EQ(folder.Resolve("Settings\\New.INI"), At("settings/New.INI"));
    EXPECT_EQ(folder.Resolve("Nothing\\Settings\\x"), At("Nothing/Settings/x"));
    EXPECT_EQ(folder.Resolve(""), folder.Path());
}

TEST_F(Look, PrefersTheExactSpellingThenTheFirst) {
    folder.MakeFolders("DIR");
    for (const char* name : {"abC", "aBc", "Abc", "DIR/abc", "DIR/ABC"}) ASSERT_TRUE(WriteFile(At(name), ""));
    EXPECT_EQ(folder.Resolve("abC"), At("abC"));
    EXPECT_EQ(folder.Resolve("ABC"), At("Abc"));
    EXPECT_EQ(folder.Resolve("dir\\abc"), At("DIR/abc"));
}

TEST_F(Look, NamesStandInTheCodePage) {
    folder.Write("\xC5\xC4\xD6\\\xE5\xE4\xF6.txt", "x");
    EXPECT_EQ(folder.Resolve("\xE5\xE4\xF6\\\xC5\xC4\xD6.TXT"),
              At("\xC3\x85\xC3\x84\xC3\x96/\xC3\xA5\xC3\xA4\xC3\xB6.txt"));
    EXPECT_EQ(folder.Resolve("\xE5\xE4\xF6"), At("\xC3\x85\xC3\x84\xC3\x96"));
}

TEST_F(Look, NeverLeavesTheFolder) {
    folder.Write("a\\b", "");
    EXPECT_EQ(folder.Resolve("..\\..\\etc\\passwd"), At("etc/passwd"));
    EXPECT_EQ(folder.Resolve("a\\..\\..\\x"), At("x"));
    EXPECT_EQ(folder.Resolve("a\\missing\\..\\B"), At("a/b"));
    EXPECT_EQ(folder.Resolve("C:\\x"), At("C:/x"));
    for (const TextView path : {TextView("a\0b", 3), TextView("a\\\0", 3), TextView("\0", 1)}) {
        const NativePath impossible = folder.Resolve(path);
        EXPECT_FALSE(WriteFile(impossible, "x"));
        EXPECT_FALSE(ReadFile(impossible));
        EXPECT_FALSE(MakeFolder(impossible));
        EXPECT_EQ(impossible.find('\0'), NativePath::npos);
    }
}

TEST_F(Look, ASettingCanBeAbsolute) {
    folder.Write("Sub\\File", "x");
    const NativePath expected = At("Sub/File");
    EXPECT_EQ(folder.Tree().ResolveSetting("sub\\file"), expected);
    EXPECT_EQ(folder.Tree().ResolveSetting(folder.Path() + "\\SUB\\FILE"), expected);
    EXPECT_EQ(folder.Tree().ResolveSetting("D:" + folder.Path() + "/sub/FILE"), expected);
    EXPECT_EQ(folder.Tree().ResolveSetting("\\"), "/");
}

TEST_F(Look, SeesWhatOthersChange) {
    // Each change follows a look-up that has just taken a listing, within one tick of the file times.
    folder.MakeFolders("d");
    EXPECT_EQ(folder.Resolve("d\\NAME"), At("d/NAME"));
    for (int round = 0; round < 50; ++round) {
        ASSERT_TRUE(WriteFile(At("d/name"), ""));
        ASSERT_EQ(folder.Resolve("d\\NAME"), At("d/name"));
        ASSERT_TRUE(RenameFile(At("d/name"), At("d/Name")));
        ASSERT_EQ(folder.Resolve("d\\NAME"), At("d/Name"));
        ASSERT_TRUE(RemoveFile(At("d/Name")));
        ASSERT_EQ(folder.Resolve("d\\NAME"), At("d/NAME"));
    }
}

TEST_F(Look, SeesAFolderThatTookAnothersPlace) {
    folder.Write("d\\old", "");
    folder.Write("e\\new", "");
    EXPECT_EQ(folder.Resolve("d\\OLD"), At("d/old"));
    EXPECT_EQ(folder.Resolve("e\\NEW"), At("e/new"));
    ASSERT_TRUE(RenameFile(At("d"), At("f")));
    ASSERT_TRUE(RenameFile(At("e"), At("d")));
    EXPECT_EQ(folder.Resolve("d\\OLD"), At("d/OLD"));
    EXPECT_EQ(folder.Resolve("d\\NEW"), At("d/new"));
    EXPECT_EQ(folder.Resolve("f\\OLD"), At("f/old"));
}

TEST_F(Look, SeesChangesUnderTwoPathsOfOneFolder) {
    folder.Write("d\\one", "");
    ASSERT_EQ(::symlink("d", At("link").c_str()), 0);
    EXPECT_EQ(folder.Resolve("d\\ONE"), At("d/one"));
    EXPECT_EQ(folder.Resolve("link\\ONE"), At("link/one"));
    ASSERT_TRUE(RenameFile(At("d/one"), At("d/One")));
    EXPECT_EQ(folder.Resolve("link\\ONE"), At("link/One"));
    EXPECT_EQ(folder.Resolve("d\\ONE"), At("d/One"));
}

TEST_F(Look, ManyFoldersDoNotPileUp) {
    for (int i = 0; i < 200; ++i) folder.Write("d" + std::to_string(i) + "\\file", "");
    for (int round = 0; round < 2; ++round) {
        for (int i = 0; i < 200; ++i) {
            const Text name = "d" + std::to_string(i);
            ASSERT_EQ(folder.Resolve(name + "\\FILE"), At(name + "/file"));
        }
    }
}

// What is remembered of a path hangs on every folder above it.
TEST_F(Look, SeesEveryKindOfChangeAboveAFile) {
    folder.Write("a\\b\\file", "x");
    const auto expect = [&](const std::string& path) { EXPECT_EQ(folder.Resolve("a\\b\\FILE"), At(path)); };
    const auto rename = [&](const char* from, const char* to) { ASSERT_TRUE(RenameFile(At(from), At(to))); };
    expect("a/b/file");
    rename("a", "A");
    expect("A/b/file");
    rename("A/b", "A/B");
    expect("A/B/file");
    folder.MakeFolders("a\\b");  // finds A/B
    ASSERT_TRUE(MakeFolder(At("a")) && MakeFolder(At("a/b")));
    expect("a/b/FILE");
    ASSERT_TRUE(WriteFile(At("a/b/File"), ""));
    expect("a/b/File");
    ASSERT_TRUE(WriteFile(At("a/b/FILE"), ""));
    expect("a/b/FILE");
    rename("a", "away");
    expect("A/B/file");
    ASSERT_EQ(::symlink("away", At("a").c_str()), 0);
    expect("a/b/FILE");
    ASSERT_TRUE(RemoveFile(At("a")));
    expect("A/B/file");
}

// Above the root nothing is told; the folders are looked at now and then.
TEST_F(Look, NoticesThatTheWholeTreeWasMovedAway) {
    folder.MakeFolders("centre\\data");
    const FileTree tree(At("centre/data"));
    ASSERT_TRUE(WriteFile(tree.Resolve("File"), "x"));
    EXPECT_EQ(tree.Resolve("FILE"), At("centre/data/File"));
    ASSERT_TRUE(RenameFile(At("centre"), At("old")));
    folder.MakeFolders("centre\\data");
    for (int i = 0; i < 300 && tree.Resolve("FILE") != At("centre/data/FILE"); ++i) ::usleep(50'000);
    EXPECT_EQ(tree.Resolve("FILE"), At("centre/data/FILE"));
}

TEST_F(Look, StaysWithinAMomentAndEndsWithIt) {
    folder.Write("d\\one", "");
    {
        const FileTree::Moment moment(folder.Tree());
        EXPECT_EQ(folder.Tree().Find("d\\new"), std::nullopt);
        const NativePath made = folder.Resolve("d\\New");
        ASSERT_TRUE(WriteFile(made, ""));
        EXPECT_EQ(folder.Resolve("d\\New"), made) << "what was made under the name that was asked for";
        ASSERT_TRUE(RenameFile(At("d/one"), At("d/ONE")));
    }
    EXPECT_EQ(folder.Resolve("d\\one"), At("d/ONE"));
    EXPECT_EQ(folder.Tree().Find("d\\new"), At("d/New"));
    const FileTree::Moment endless(folder.Tree());
    EXPECT_EQ(folder.Resolve("d\\one"), At("d/ONE"));
    ASSERT_TRUE(RenameFile(At("d/ONE"), At("d/One")));
    for (int i = 0; i < 300 && folder.Resolve("d\\one") != At("d/One"); ++i) ::usleep(10'000);
    EXPECT_EQ(folder.Resolve("d\\one"), At("d/One")) << "in a wait in its midst";
}

TEST_F(Look, ManagesWithoutDescriptors) {
    folder.Write("d\\one", "");
    {
        const NoDescriptors none;
        EXPECT_EQ(folder.Resolve("d\\one"), At("d/one"));
        EXPECT_EQ(folder.Tree().Find("d\\none"), std::nullopt);
    }
    for (int i = 0; i < 300 && folder.Resolve("d\\ONE") != At("d/one"); ++i) ::usleep(10'000);
    EXPECT_EQ(folder.Resolve("d\\ONE"), At("d/one"));
}

TEST_F(Look, NewFilesInALargeFolder) {
    folder.MakeFolders("big");
    for (int i = 0; i < 20000; ++i) ASSERT_TRUE(WriteFile(At("big/file" + std::to_string(i)), ""));
    folder.Resolve("big\\missing");
    for (int i = 0; i < 1000; ++i) {
        const NativePath path = folder.Resolve("big\\new" + std::to_string(i));
        ASSERT_EQ(path, At("big/new" + std::to_string(i)));
        ASSERT_TRUE(WriteFile(path, ""));
    }
}

TEST(SafeNames, FromData) {
    for (const TextView bad :
         {TextView(""), TextView("."), TextView(".."), TextView("a\\b"), TextView("/"), TextView("a\0", 2)}) {
        EXPECT_FALSE(IsSafeComponent(bad)) << bad;
    }
    EXPECT_TRUE(IsSafeComponent("..."));
    EXPECT_EQ(FileSafeName("a/b:c*?\"<>|\\\x01"), "a_b_c________");
    EXPECT_EQ(FileSafeName("\xC5 . ."), "\xC5");
    EXPECT_EQ(FileSafeName(". ."), "_");
}

}  // namespace
}  // namespace nordkeep
