#include "platform/posix/DurableFiles.h"
#include "tests/doubles/TempFolder.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <csignal>

namespace nordkeep {
namespace {

using Opening = DurableFiles::Opening;

class Durable : public testing::Test {
 protected:
    NativePath At(const std::string& name) const { return folder.Path() + "/" + name; }
    TempFolder folder{};
    DurableFiles writes{};
};

TEST_F(Durable, OldTailBytesStay) {
    folder.Write("a", "0123456789");
    EXPECT_TRUE(writes.Write(At("a"), "abc", Opening::Existing));
    EXPECT_FALSE((writes.WaitingCount() == 0));
    EXPECT_TRUE(writes.Synchronise(SIZE_MAX));
    EXPECT_TRUE((writes.WaitingCount() == 0));
    EXPECT_EQ(folder.Read("a"), "abc3456789");
}

TEST_F(Durable, CreateNewTakesNoExistingFile) {
    folder.Write("a", "old");
    EXPECT_FALSE(writes.Write(At("a"), "new", Opening::CreateNew));
    EXPECT_EQ(writes.LastError(), "open " + At("a") + ": File exists");
    EXPECT_EQ(folder.Read("a"), "old");
    EXPECT_TRUE(writes.Write(At("b"), "new", Opening::CreateNew));
    EXPECT_TRUE(writes.Write(At("c"), "made", Opening::Existing));
    EXPECT_TRUE(writes.Synchronise(SIZE_MAX));
    EXPECT_EQ(folder.Read("b") + folder.Read("c"), "newmade");
}

TEST_F(Durable, AFolderInTheFilesPlaceFailsWithAText) {
    folder.MakeFolders("a");
    EXPECT_FALSE(writes.Write(At("a"), "x", Opening::Existing));
    EXPECT_EQ(writes.LastError(), "open " + At("a") + ": Is a directory");
    EXPECT_FALSE(writes.Write(At("missing/a"), "x", Opening::CreateNew));
    EXPECT_EQ(writes.LastError(), "open " + At("missing/a") + ": No such file or directory");
    EXPECT_TRUE(writes.Synchronise(SIZE_MAX));
}

TEST_F(Durable, AHalfWrittenNewFileIsRemoved) {
    const auto old = std::signal(SIGXFSZ, SIG_IGN);
    rlimit limit{};
    ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &limit), 0);
    const rlimit small{.rlim_cur = 8192, .rlim_max = limit.rlim_max};
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &small), 0);
    const bool isWritten = writes.Write(At("a"), Text(20000, 'x'), Opening::CreateNew);
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &limit), 0);
    std::signal(SIGXFSZ, old);
    EXPECT_FALSE(isWritten);
    EXPECT_EQ(writes.LastError(), "write " + At("a") + ": File too large");
    EXPECT_FALSE(StampOf(At("a")).Exists());
}

TEST_F(Durable, ManyFilesNeedFewDescriptors) {
    rlimit limit{};
    ASSERT_EQ(::getrlimit(RLIMIT_NOFILE, &limit), 0);
    const rlimit few{.rlim_cur = 400, .rlim_max = limit.rlim_max};
    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &few), 0);
    bool isWritten = true;
    for (int i = 0; i < 600; ++i) isWritten &= writes.Write(At(std::to_string(i)), "x", Opening::CreateNew);
    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &limit), 0);
    EXPECT_TRUE(isWritten);
    EXPECT_TRUE(writes.Synchronise(SIZE_MAX));
    EXPECT_EQ(ListFiles(folder.Path()).size(), 600u);
}

TEST_F(Durable, AFolderThatHasGoneIsReportedOnce) {
    folder.MakeFolders("d");
    ASSERT_TRUE(writes.Write(At("d/a"), "x", Opening::CreateNew));
    ASSERT_TRUE(RemoveFile(At("d/a")) && RemoveFolder(At("d")));
    EXPECT_FALSE(writes.Synchronise(SIZE_MAX));
    EXPECT_EQ(writes.LastError(), "synchronise " + At("d/") + ": No such file or directory");
    EXPECT_TRUE(writes.Synchronise(SIZE_MAX));
}

}  // namespace
}  // namespace nordkeep
