#include "network/FileDates.h"
#include "network/FileService.h"
#include "network/messages/Frames.h"
#include "network/messages/Payload.h"
#include "tests/doubles/TempFolder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

namespace nordkeep {
namespace {

namespace fs = std::filesystem;
using namespace std::string_literals;

/// A data folder, and beside it what no client may see.
class FileServiceTest : public ::testing::Test {
 protected:
    FileServiceTest() {
        data.Write("Settings\\Nordkeep.INI", "[General]\r\n");
        data.Write("Settings\\Users.INI", "[Users]\r\nanna=Anna,AA,secret,2\r\n");
        data.Write("Maps\\Plan.bmp", "BM\0x"s);
        data.Write("Comments\\1.txt", "one\ntwo");
        outside.Write("secret.txt", "secret");
        outside.Write("Shared\\map.bmp", "shared");
        fs::create_symlink(outside.Path() + "/secret.txt", data.Path() + "/Maps/link.bmp");
        fs::create_symlink(outside.Path(), data.Path() + "/Maps/out");
        fs::create_symlink(data.Path() + "/Maps", data.Path() + "/Comments/inside");
        fs::create_hard_link(data.Path() + "/Settings/Users.INI", data.Path() + "/Maps/hard.txt");
        ::mkfifo((data.Path() + "/Maps/fifo").c_str(), 0666);
    }

    /// Name, size and time of everything in both folders.
    std::vector<std::string> Everything() const {
        std::vector<std::string> all;
        for (const NativePath& root : {data.Path(), outside.Path()}) {
            for (const auto& entry : fs::recursive_directory_iterator(root)) {
                const FileStamp stamp = StampOf(entry.path().string());
                all.push_back(entry.path().string() + std::to_string(stamp.size) + "/" +
                              std::to_string(stamp.modifiedNs));
            }
        }
        std::sort(all.begin(), all.end());
        return all;
    }
    Text Outside(TextView path) const { return FromUtf8(outside.Path()) + Text(path); }

    TempFolder data{};
    TempFolder outside{};
    FileService service{data.Tree(), ""};
};

TEST_F(FileServiceTest, RefusedPathsLookLikeMissingFilesAndChangeNothing) {
    const Text up = "..\\..\\..\\..\\..\\..\\..";
    const std::vector<Text> refused = {
        "",
        ".",
        "..",
        "\\",
        "Settings",
        "Settings\\",
        "Settings\\..",
        up + Outside("/secret.txt"),
        "../.." + Outside("/secret.txt"),
        "Maps\\..\\../..\\" + Outside("/secret.txt").substr(1),
        "Maps\\out\\secret.txt",
        "Maps/OUT/SECRET.TXT",
        "Maps\\out\\..\\" + Outside("/secret.txt").substr(Outside("").rfind('/') + 1),
        "Maps\\link.bmp",
        "Maps\\fifo",
        "Maps\\hard.txt",
        "C:" + Outside("/secret.txt"),
        Outside("/sec:ret.txt"),
        "C:\\dev\\zero",
        "c:\\etc\\passwd",
        "Z:..\\etc\\passwd",
        "\\etc\\passwd",
        "/etc/passwd",
        "Settings\\Users.INI",
        "settings/USERS.ini",
        "\\Settings\\\\Users.INI",
        "Maps\\..\\Settings\\.\\Users.INI",
        "Comments\\inside\\..\\Settings\\Users.INI",
        "C:" + FromUtf8(data.Path()) + "\\Settings\\users.INI",
        "Settings\\Users.INI\0.txt"s,
        "Maps\\Plan.bmp\0"s,
        "\0"s,
        "Settings\\Nordkeep.INI\\x",
        "Maps\\Plan.bmp\\..\\Plan.bmp",
        Text(300, 'x'),
        "Maps\\" + Text(30000, 'x'),
        Text(10000, '\\') + "..\\x",
    };
    const auto before = Everything();
    for (const Text& path : refused) {
        EXPECT_EQ(service.ReadTextFile(path), "") << path;
        EXPECT_EQ(service.ReadBinaryFile(path), "") << path;
        EXPECT_EQ(service.FileTimeStamp(path), 0) << path;
    }
    for (const Text& path : refused) {
        // With a ":" these are names below the data folder for a write.
        if (path.find(':') != Text::npos || path.size() == 300) continue;
        EXPECT_FALSE(service.WriteTextFile(path, "changed")) << path;
        service.MakeDataFolder(path);
    }
    EXPECT_EQ(service.ScanForFiles("..\\*.*"), "");
    EXPECT_EQ(service.ScanForFiles("Maps\\out\\*"), "");
    EXPECT_EQ(service.ScanForFiles("C:\\etc\\*.*"), "");
    EXPECT_EQ(Everything(), before);
}

TEST_F(FileServiceTest, RightsGoByThePlaceAndNotByTheSpelling) {
    data.Write("Settings\\Port1.ini", "[General]\r\n");
    data.Write("Information\\A\\1.TXT", "");
    struct Case {
        Text path;
        bool anybodyWrites;
        bool editorWrites;
        bool anybodyReads;
    };
    for (const Case& c :
         {Case{"comments\\new.txt", true, true, true},
          Case{"Maps\\..\\Information/A\\2.txt", true, true, true},
          Case{"Comments\\inside\\new.txt", false, false, true},  // a link into Maps
          Case{"Maps\\new.txt", false, false, true}, Case{"new.txt", false, false, true},
          Case{"SETTINGS\\new.idcode", false, true, true},
          Case{"Comments\\..\\Settings\\new.DATACODE", false, true, true},
          Case{"Settings\\Nordkeep.desc", false, true, true},
          Case{"Settings\\nordkeep.ini", false, true, true}, Case{"settings/PORT1.INI", false, true, false},
          Case{"C:" + FromUtf8(data.Path()) + "\\Settings\\port1.ini", false, false, false},
          Case{"Settings\\Port1.ini.old", false, false, false},
          Case{"Settings\\other.txt", false, false, true}, Case{"Comments", false, false, true}}) {
        EXPECT_EQ(service.MayWrite(c.path, 0), c.anybodyWrites) << c.path;
        EXPECT_EQ(service.MayWrite(c.path, 1), c.anybodyWrites) << c.path;
        EXPECT_EQ(service.MayWrite(c.path, 2), c.editorWrites) << c.path;
        EXPECT_EQ(service.MayRead(c.path, 1), c.anybodyReads) << c.path;
        EXPECT_TRUE(service.MayRead(c.path, 2)) << c.path;
    }
    EXPECT_FALSE(service.MayRead("Settings\\Users.INI.1", 2));
}

TEST_F(FileServiceTest, PathsInsideAreFoundInAnySpelling) {
    const std::vector<Text> allowed = {
        "Maps\\Plan.bmp",
        "MAPS/plan.BMP",
        "\\Maps\\.\\Plan.bmp",
        "Comments\\..\\Maps\\Plan.bmp",
        "Maps\\out\\..\\..\\..\\..\\..\\..\\" + FromUtf8(data.Path()) + "\\Maps\\Plan.bmp",
        "Comments\\inside\\Plan.bmp",
        "C:" + FromUtf8(data.Path()) + "\\maps\\plan.bmp",
    };
    for (const Text& path : allowed) EXPECT_EQ(service.ReadBinaryFile(path), "BM\0x"s) << path;
}

TEST_F(FileServiceTest, ReadsByFullPathReachTheFoldersThatTheServerNames) {
    const FileService open(data.Tree(), " ;" + Outside("/Shared") + ";/nowhere");
    EXPECT_EQ(open.ReadBinaryFile("C:" + Outside("/shared/MAP.bmp")), "shared");
    EXPECT_EQ(open.ReadBinaryFile("C:" + Outside("/Shared/../secret.txt")), "");
    EXPECT_EQ(open.ReadBinaryFile("../.." + Outside("/Shared/map.bmp")), "");
    EXPECT_EQ(open.FileTimeStamp("C:" + Outside("/Shared/map.bmp")), 0);
}

TEST_F(FileServiceTest, TextsGetTheirLineEnds) {
    EXPECT_EQ(service.ReadTextFile("Comments\\1.txt"), "one\r\ntwo\r\n");
    EXPECT_TRUE(service.WriteTextFile("Comments\\new.txt", "a\r\n"));
    EXPECT_EQ(data.Read("Comments\\new.txt"), "a\r\n\r\n");
    // A write knows no full paths: the ":" is a character of the name.
    EXPECT_TRUE(service.WriteTextFile("a:b.txt", ""));
    EXPECT_EQ(data.Read("a:b.txt"), "\r\n");
    EXPECT_FALSE(service.WriteTextFile("Missing\\x.txt", ""));
    data.Write("Maps\\huge", Text(kLongestPayload - 3, 'x'));
    EXPECT_EQ(service.ReadBinaryFile("Maps\\huge"), "");
    EXPECT_FALSE(service.WriteTextFile("Maps\\huge", "x"))
        << "who reads it gets an empty text, and writes that back";
}

TEST_F(FileServiceTest, StampsAndScansShowPlainFilesOnly) {
    const OleDate stamp = LongToFileDate(service.FileTimeStamp("Comments\\1.TXT"));
    const OleDate real = FileTime(data.Resolve("Comments\\1.txt"));
    EXPECT_EQ(stamp.Milliseconds(), real.Milliseconds() / 1000 * 1000 - 3'600'000);
    EXPECT_EQ(service.FileTimeStamp("Comments"), 0);

    data.Write("Maps\\.hidden", "");
    data.Write("Maps\\a", "");
    data.MakeFolders("Maps\\Folder");
    EXPECT_EQ(service.ScanForFiles("Maps\\*.*"), "a|Plan.bmp|");
    EXPECT_EQ(service.ScanForFiles("maps\\"), "a|Plan.bmp|");
    EXPECT_EQ(service.ScanForFiles("Maps\\p?an.BMP"), "Plan.bmp|");
    EXPECT_EQ(service.ScanForFiles("Settings\\*"), "Nordkeep.INI|");
    EXPECT_EQ(service.ScanForFiles("Nowhere\\*"), "");
}

TEST_F(FileServiceTest, AScanEndsAtAWholeName) {
    for (int i = 0; i < 200; ++i) data.Write("Many\\" + std::to_string(i) + Text(200, 'n'), "");
    const Text names = service.ScanForFiles("Many\\*.*");
    EXPECT_LE(names.size(), kLongestShortString);
    EXPECT_GT(names.size(), kLongestShortString - 210);
    EXPECT_TRUE(names.ends_with("n|"));
}

TEST_F(FileServiceTest, MakesOneLevelOfFolders) {
    service.MakeDataFolder("Comments\\New\\");
    service.MakeDataFolder("Comments\\Two\\Levels");
    EXPECT_TRUE(FolderExists(data.Resolve("Comments\\New")));
    EXPECT_FALSE(FolderExists(data.Resolve("Comments\\Two")));
}

TEST(TranslationFiles, AreThoseOfTheSettingsFolder) {
    EXPECT_TRUE(IsTranslationFile("Settings\\Kunder.IDCode"));
    EXPECT_TRUE(IsTranslationFile("\\settings/kunder.typecode"));
    EXPECT_FALSE(IsTranslationFile("Comments\\Kunder.IDCode"));
    EXPECT_FALSE(IsTranslationFile("Settings\\Nordkeep.INI"));
    EXPECT_FALSE(IsTranslationFile("Settings\\IDCode"));
}

TEST(LocalDataFiles, WorkOnTheDataFolder) {
    TempFolder data;
    LocalDataFiles files(data.Tree());
    files.MakeDataFolder("Information");
    files.WriteTextFile("information\\1.txt", "text");
    EXPECT_EQ(files.ReadTextFile("Information\\1.TXT"), "text\r\n");
    EXPECT_EQ(files.ReadTextFile("C:" + FromUtf8(data.Path()) + "\\Information\\1.txt"), "text\r\n");
    EXPECT_EQ(files.FileTimeStamp("Information\\1.txt"), FileTime(data.Resolve("Information\\1.txt")));
    EXPECT_EQ(files.ScanForFiles("Information\\*.*"), std::vector<Text>{"1.txt"});
    EXPECT_EQ(files.ReadTextFile("missing"), "");
}

}  // namespace
}  // namespace nordkeep
