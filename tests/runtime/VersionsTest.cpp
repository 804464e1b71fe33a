#include "platform/Files.h"
#include "runtime/Versions.h"
#include "tests/doubles/TempFolder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace nordkeep {
namespace {

OleDate At(int second) {
    return OleDate::FromCivil(
        {.year = 2026, .month = 3, .day = 2, .hour = 10, .minute = 0, .second = second});
}

TEST(Versions, TheLastTenOfAFileAreKept) {
    TempFolder folder;
    folder.Write("Settings\\Town.IDCode.txt", "another");
    for (int second = 0; second < 15; ++second) {
        folder.Write("Settings\\Town.IDCode", std::to_string(second));
        EXPECT_TRUE(KeepVersion(folder.Tree(), "Settings\\Town.IDCode", At(second)));
    }
    const std::vector<Text> kept = ListFiles(folder.Resolve("Settings\\Backup"));
    ASSERT_EQ(kept.size(), kVersionsKept);
    EXPECT_EQ(kept.front(), "Town.IDCode.20260302100005");
    EXPECT_EQ(folder.Read("Settings\\Backup\\" + kept.back()), "14");
}

TEST(Versions, WhatOthersMayNotReadTheyMayNotReadInACopy) {
    TempFolder folder;
    folder.Write("Settings\\Users.INI", "[Users]\r\n");
    ::chmod(folder.Resolve("Settings\\Users.INI").c_str(), 0600);
    EXPECT_TRUE(KeepVersion(folder.Tree(), "Settings\\Users.INI", At(0)));
    struct stat status {};
    ::stat(folder.Resolve("Settings\\Backup\\Users.INI.20260302100000").c_str(), &status);
    EXPECT_EQ(status.st_mode & 0777, 0600u);
}

TEST(Versions, OnlyOfFilesInSettingsThatAreThere) {
    TempFolder folder;
    folder.Write("Comments\\a.TXT", "x");
    folder.Write("secret", "x");
    for (const char* path : {"Comments\\a.TXT", "Settings\\none.IDCode", "Settings\\..\\secret", "secret"})
        KeepVersion(folder.Tree(), path, At(0));
    EXPECT_TRUE(ListFiles(folder.Resolve("Settings\\Backup")).empty());
}

}  // namespace
}  // namespace nordkeep
