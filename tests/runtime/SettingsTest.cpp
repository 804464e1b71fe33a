#include "runtime/Settings.h"
#include "tests/doubles/TempFolder.h"

#include <gtest/gtest.h>

namespace nordkeep {
namespace {

TEST(Settings, SeesEveryChangeFromOutside) {
    const TempFolder folder;
    folder.Write("SETTINGS\\nordkeep.ini", "[General]\r\nNextAlarmId=9\r\nKey=a\r\n");
    Settings settings(folder.Tree());
    EXPECT_EQ(settings.ReadMainIni("General", "Key", ""), "a") << "under any spelling of the name";
    EXPECT_TRUE(settings.WriteIni("General", "NextAlarmId", "8"));
    EXPECT_TRUE(settings.WriteIni("General", "NextAlarmId", "10"));
    EXPECT_EQ(folder.Read("Settings\\Nordkeep.INI"), "[General]\r\nNextAlarmId=10\r\nKey=a\r\n");
    EXPECT_EQ(ListEntries(folder.Resolve("Settings")).size(), 1u) << "no second spelling, nothing left over";
    folder.Write("Settings\\Nordkeep.INI", "[General]\r\nKey=longer\r\n");
    EXPECT_EQ(settings.ReadMainIni("General", "Key", ""), "longer");
    EXPECT_EQ(settings.ReadMainIni("General", "NextAlarmId", "0"), "0");
    RemoveFile(folder.Resolve("Settings\\Nordkeep.INI"));
    EXPECT_EQ(settings.ReadMainIni("General", "Key", " default "), " default ");
}

TEST(Settings, WritesLocallyButReadsTheServersSharedKeys) {
    const TempFolder folder;
    folder.Write("Settings\\Nordkeep.INI", "[General]\r\nKey=own\r\n");
    Settings settings(folder.Tree());
    settings.UseServerText("[General]\r\nKey=server=cut\r\n");
    EXPECT_EQ(settings.ReadMainIni("General", "Key", ""), "server");
    EXPECT_EQ(settings.ReadIni("General", "Key", ""), "own");
    settings.WriteIni("General", "Key", "new");
    EXPECT_EQ(settings.ReadMainIni("General", "Key", ""), "server");
    EXPECT_EQ(settings.ReadIni("General", "Key", ""), "new");
}

TEST(Settings, FailsQuietlyWithoutItsFolder) {
    const TempFolder folder;
    Settings settings(folder.Tree());
    EXPECT_FALSE(settings.WriteIni("General", "Key", "x"));
    EXPECT_EQ(settings.ReadPortIni("General", "PortType", "NONE", "Port1"), "NONE");
}

}  // namespace
}  // namespace nordkeep
