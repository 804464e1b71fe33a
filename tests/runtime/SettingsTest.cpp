#include "runtime/DataFiles.h"
#include "runtime/DefaultFiles.h"
#include "runtime/Settings.h"
#include "tests/doubles/NoDescriptors.h"
#include "tests/doubles/TempFolder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

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

/// Counts what a settings file tells of itself.
class RecordingListener final : public SettingsListener {
 public:
    void CannotBeRead(const NativePath&, const Text& reason) override {
        ++failures;
        lastReason = reason;
    }
    void CanBeReadAgain(const NativePath&) override { ++returns; }
    int failures = 0;
    int returns = 0;
    Text lastReason{};
};

// Tests run as root, whom no mode keeps out: another kind of file in its place cannot be read by anybody.
TEST(Settings, KeepWhatTheyKnowOfAFileThatCannotBeReadAndLeaveItAlone) {
    const TempFolder folder;
    RecordingListener listener;
    folder.Write("Settings\\Nordkeep.INI", "[General]\r\nNextAlarmId=7\r\nLanguage=046\r\n");
    Settings settings(folder.Tree());
    settings.SetListener(&listener);
    EXPECT_EQ(settings.ReadIni("General", "Language", "?"), "046");
    const NativePath file = folder.Resolve("Settings\\Nordkeep.INI");
    const NativePath aside = file + ".aside";
    ASSERT_TRUE(RenameFile(file, aside) && MakeFolder(file));
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(settings.ReadIni("General", "Language", "?"), "046");
        EXPECT_FALSE(settings.WriteIni("General", "NextAlarmId", "8"));
    }
    EXPECT_EQ(listener.failures, 1);
    EXPECT_NE(listener.lastReason, "");
    ASSERT_TRUE(RemoveFolder(file) && RenameFile(aside, file));
    EXPECT_EQ(settings.ReadIni("General", "NextAlarmId", "?"), "7");
    EXPECT_TRUE(settings.WriteIni("General", "NextAlarmId", "8"));
    EXPECT_EQ(listener.returns, 1);
    EXPECT_EQ(folder.Read("Settings\\Nordkeep.INI"), "[General]\r\nNextAlarmId=8\r\nLanguage=046\r\n");
}

// Seen when descriptors ran out for three telegrams: the write in place failed, what was known went with it,
// and the file became two lines.
TEST(Settings, SurviveAMomentWithoutDescriptors) {
    const TempFolder folder;
    const Text content = "[General]\r\nNextAlarmId=7\r\nLanguage=046\r\n";
    folder.Write("Settings\\Nordkeep.INI", content);
    Settings settings(folder.Tree());
    EXPECT_EQ(settings.ReadIni("General", "NextAlarmId", "?"), "7");
    {
        const NoDescriptors none;
        for (int i = 0; i < 3; ++i) {
            EXPECT_FALSE(settings.WriteIni("General", "NextAlarmId", "8"));
            EXPECT_EQ(settings.ReadIni("General", "Language", "?"), "046");
        }
    }
    EXPECT_EQ(folder.Read("Settings\\Nordkeep.INI"), content);
    EXPECT_TRUE(settings.WriteIni("General", "NextAlarmId", "8"));
    EXPECT_EQ(settings.ReadIni("General", "Language", "?"), "046");
}

// The number of the next alarm is written into a file that stays open.
TEST(Settings, WriteInPlaceOnlyIntoTheFileThatIsThereNow) {
    const TempFolder folder;
    const TextView path = "Settings\\Nordkeep.INI";
    folder.Write(path, "[General]\r\nNextAlarmId=7\r\n");
    Settings settings(folder.Tree());
    ASSERT_TRUE(settings.WriteIni("General", "NextAlarmId", "8"));
    ASSERT_TRUE(ReplaceFile(folder.Resolve(path), "[General]\r\nKey=new\r\nNextAlarmId=1\r\n"));
    for (const char* number : {"2", "3"}) {
        const FileTree::Moment moment(folder.Tree());
        EXPECT_EQ(settings.ReadIni("General", "Key", ""), "new");
        ASSERT_TRUE(settings.WriteIni("General", "NextAlarmId", number));
        EXPECT_EQ(settings.ReadIni("General", "NextAlarmId", ""), number);
    }
    EXPECT_EQ(folder.Read(path), "[General]\r\nKey=new\r\nNextAlarmId=3\r\n");
    folder.Write(path, "[General]\r\nKey=by hand in place\r\nNextAlarmId=5\r\n");
    ASSERT_TRUE(settings.WriteIni("General", "NextAlarmId", "6"));
    EXPECT_EQ(folder.Read(path), "[General]\r\nKey=by hand in place\r\nNextAlarmId=6\r\n");
}

TEST(Settings, FailsQuietlyWithoutItsFolder) {
    const TempFolder folder;
    Settings settings(folder.Tree());
    EXPECT_FALSE(settings.WriteIni("General", "Key", "x"));
    EXPECT_EQ(settings.ReadPortIni("General", "PortType", "NONE", "Port1"), "NONE");
}

// Whoever makes a settings file, by a key, an editor or a template, makes it for the program's account alone.
TEST(SettingsFiles, AreMadeForTheirOwnerSinceTheyKeepPasswords) {
    const TempFolder folder;
    const TempFolder program;
    const auto mode = [&](TextView name) {
        struct stat status {};
        return ::stat(folder.Resolve(name).c_str(), &status) == 0 ? status.st_mode & 0777 : 0;
    };
    folder.MakeFolders("Settings");
    Settings settings(folder.Tree());
    settings.WriteIni("General", "POP3Password", "secret", "Settings\\Port1.ini");
    LocalDataFiles files(folder.Tree());
    files.WriteTextFile("Settings\\Users.INI", "[Users]");
    files.WriteTextFile("Settings\\Town.IDCode", "FORMAT=1,6");
    program.Write("Nordkeep.Default_INI", "[General]\r\n");
    CopyDefaultFiles(program.Tree(), "Default_INI", folder.Tree(), "INI");
    for (const char* name : {"Settings\\Port1.ini", "Settings\\Users.INI", "Settings\\Nordkeep.INI"})
        EXPECT_EQ(mode(name), 0600u) << name;
    EXPECT_NE(mode("Settings\\Town.IDCode"), 0600u) << "a set keeps none";
}

}  // namespace
}  // namespace nordkeep
