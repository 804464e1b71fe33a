#include "ports/formats/CollectedFile.h"
#include "tests/ports/PortWorld.h"

#include <gtest/gtest.h>

#include <fstream>

namespace nordkeep {
namespace {

const OleDate kNow = OleDate::FromCivil({2024, 3, 5, 7, 8, 9});

TEST(FileLine, HasATimeAndNumbersOrDoesWithout) {
    struct Case {
        const char* line;
        OleDate time;
        int type;
        int prio;
    };
    const OleDate today = kNow.Midnight();
    const Case cases[] = {
        {"0|2023-12-24|15:30:01|100|x|7|3|Text|Me", OleDate::FromCivil({2023, 12, 24, 15, 30, 1}), 7, 3},
        {"0|2023-12-24||100|x|||Text|Me", OleDate::FromCivil({2023, 12, 24, 7, 8, 9}), -1, -1},
        {"0||15:30|100|x| |-5|Text|Me", today.PlusSeconds(15 * 3600 + 30 * 60), -1, -5},
        {"0|2023-13-45|25:99|100|x|99999999999|0|Text|Me", kNow, -1, 0},
        {"0|||100||||Text|Me", kNow, -1, -1},
    };
    for (const Case& c : cases) {
        const IncomingEvent event = DecodeFileLine(c.line, 1, kNow).event;
        EXPECT_EQ(event.AlarmTime, c.time) << c.line;
        EXPECT_EQ(event.DefaultType, c.type) << c.line;
        EXPECT_EQ(event.DefaultPrio, c.prio) << c.line;
        EXPECT_EQ(event.DefaultAlarmCode, "100");
        EXPECT_EQ(event.ExtraText, "Text");
        EXPECT_EQ(event.Originator, "Me");
        EXPECT_EQ(event.TranslationNumberToUse, Protocol::FILE);
        EXPECT_EQ(event.RawAlarmCode, c.line);
    }
}

TEST(FileLine, WithTooFewFieldsIsAnEventWithWhatThereIs) {
    const IncomingEvent none = DecodeFileLine("no fields at all", 1, kNow).event;
    EXPECT_EQ(none.AlarmTime, kNow);
    EXPECT_EQ(none.DefaultAlarmCode, "");
    EXPECT_EQ(none.ExtraText, "no fields at all");
    const IncomingEvent half = DecodeFileLine("0|2023-12-24|15:30:01", 1, kNow).event;
    EXPECT_EQ(half.AlarmTime, OleDate::FromCivil({2023, 12, 24, 15, 30, 1}));
    EXPECT_EQ(half.ExtraText, "0|2023-12-24|15:30:01");
    EXPECT_EQ(half.TranslationNumberToUse, Protocol::FILE);
}

TEST(FileLine, ThatIsTooLongKeepsItsAlarm) {
    const auto eventOf = [](const Text& line, MessageFormat format) {
        FileStep step = NextFileStep({.file = line + "\n"}, *FileFormOf(format), 1, kNow);
        EXPECT_EQ(step.step.events.size(), 1u);
        EXPECT_EQ(step.badLines.size(), 1u);
        return step.step.events.at(0).event;
    };
    const Text much(10'000, 'x');
    const IncomingEvent text = eventOf("0|||100||7|3|" + much + "|Me", MessageFormat::NordkeepFile);
    EXPECT_EQ(text.DefaultAlarmCode, "100");
    EXPECT_EQ(text.Originator, "Me") << "only the text is cut";
    EXPECT_EQ(text.RawAlarmCode.size(), 8192u);
    EXPECT_EQ(text.ExtraText, Text(8192 - 16, 'x'));
    const IncomingEvent other = eventOf("0|||100||7|3|Text|" + much, MessageFormat::NordkeepFile);
    EXPECT_EQ(other.ExtraText, "Text");
    EXPECT_EQ(other.RawAlarmCode.size(), 8192u);
    EXPECT_EQ(eventOf(much, MessageFormat::NordkeepFile).ExtraText, much.substr(0, 8192));
    EXPECT_EQ(eventOf("1|2|3|me|a|" + much, MessageFormat::TorvexConfirmationFile).Originator, "me");
}

TEST(ConfirmationLine, JoinsItsTextAndHasThePortsPriority) {
    const IncomingEvent event = DecodeConfirmationLine("1|2|3|0701234|a|b||d|e|f", 4, kNow).event;
    EXPECT_EQ(event.ExtraText, "a|b||d|e");
    EXPECT_EQ(event.Originator, "0701234");
    EXPECT_EQ(event.DefaultPrio, 4);
    EXPECT_TRUE(event.IsAConfirmationSMS);
    EXPECT_EQ(DecodeConfirmationLine("1|2|3|4|text", 4, kNow).event.ExtraText, "text");
    const IncomingEvent half = DecodeConfirmationLine("1|2|3|4", 4, kNow).event;
    EXPECT_EQ(half.ExtraText, "1 2 3 4") << "in one field of the record";
    EXPECT_EQ(half.Originator, "4");
}

/// A port that collects a file, without the rest of the system.
class FilePortTest : public PortWorld {
 protected:
    FilePortTest() {
        folder.MakeFolders("LogFiles");
        folder.MakeFolders("In");
        language.LoadFrom(
            "1041=Opened\n3605=Unknown\n3612=Trouble \n3613=Bad line \n3614=Bad lines \n3616=Open ");
    }

    void Begin(const Text& setting = "In\\drop.txt", int format = 12) {
        folder.Write("Settings\\Port1.ini",
                     "[General]\r\nPortType=FILE\r\nMessageFormat=" + std::to_string(format) +
                         "\r\nPortSetting=" + setting + "\r\n");
        ports.Discover(parts);
        Tick();
    }
    void Tick() {
        ports.Tick(1000, conditions);
        time.Advance(1000);
    }
    Text Codes() const {
        Text codes;
        for (const IncomingEvent& event : intake.events) codes += event.DefaultAlarmCode + " ";
        return codes;
    }
};

TEST_F(FilePortTest, TakesEachFileInAndDeletesItWhenAllIsSafe) {
    Begin();
    EXPECT_EQ(LinesWith("Opened: 'Port1' (PortSettings = In\\drop.txt, MessageFormat = Nordkeep File)"), 1u);
    folder.Write("In\\drop.txt", "0|||1\r\n\r\nrubbish\n0|||2\n");
    Tick();
    EXPECT_EQ(Codes(), "1  2 ") << "also of what is no line of such a file";
    EXPECT_EQ(LinesWith("Bad line Port1 Port1 (rubbish)"), 1u);
    EXPECT_FALSE(folder.Exists("In\\drop.txt"));
    EXPECT_TRUE(folder.Exists("In\\NordkeepFile.$$$")) << "nothing is safe yet";
    folder.Write("In\\drop.txt", "0|||3\n");
    Tick();
    EXPECT_EQ(Codes(), "1  2 ") << "the next file waits for its turn";
    commit.Commit();
    EXPECT_FALSE(folder.Exists("In\\NordkeepFile.$$$"));
    Tick();
    commit.Commit();
    EXPECT_EQ(Codes(), "1  2 3 ");
    Tick();
    EXPECT_EQ(Codes(), "1  2 3 ");
}

TEST_F(FilePortTest, TakesWhatACrashLeftFirst) {
    folder.Write("In\\NordkeepTorvex.$$$", "1|2|3|from|old\n");
    folder.Write("In\\drop.txt", "1|2|3|from|new\n");
    Begin("In\\drop.txt", 8);
    ASSERT_EQ(intake.events.size(), 1u);
    EXPECT_EQ(intake.events[0].ExtraText, "old");
    EXPECT_EQ(intake.events[0].DefaultPrio, 1);
    EXPECT_TRUE(folder.Exists("In\\drop.txt")) << "never renamed over the other";
    commit.Commit();
    Tick();
    ASSERT_EQ(intake.events.size(), 2u);
    EXPECT_EQ(intake.events[1].ExtraText, "new");
}

TEST_F(FilePortTest, KeepsTheFileUntilTheStoreHasRecovered) {
    intake.during = [this] {
        commit.NoteFailure();
        stored.areAllStored = false;
    };
    folder.Write("In\\drop.txt", "0|||1\n");
    Begin();
    for (int i = 0; i < 5; ++i) {
        commit.Commit();
        Tick();
    }
    EXPECT_EQ(Codes(), "1 ") << "an outage raises the events once";
    EXPECT_TRUE(folder.Exists("In\\NordkeepFile.$$$"));
    stored.areAllStored = true;
    Tick();
    EXPECT_TRUE(folder.Exists("In\\NordkeepFile.$$$"));
    commit.Commit();
    EXPECT_FALSE(folder.Exists("In\\NordkeepFile.$$$"));
}

TEST_F(FilePortTest, TakesALargeFileInTurnsAndWhatIsWrittenMeanwhile) {
    Text content;
    for (int i = 0; i < 1000; ++i) content += "0|||1\n";
    folder.Write("In\\drop.txt", content);
    Begin();
    EXPECT_EQ(intake.events.size(), 1000u);
    AppendToFile(folder.Resolve("In\\NordkeepFile.$$$"), "0|||2\n");
    commit.Commit();
    EXPECT_EQ(intake.events.size(), 1001u);
    EXPECT_EQ(intake.events.back().DefaultAlarmCode, "2");
    commit.Commit();
    EXPECT_FALSE(folder.Exists("In\\NordkeepFile.$$$"));
}

TEST_F(FilePortTest, WaitsForTheEndOfALine) {
    folder.Write("In\\drop.txt", "0|||1\n0|||2|x|");
    Begin();
    const NativePath work = folder.Resolve("In\\NordkeepFile.$$$");
    const auto pass = [this](int seconds) {
        for (int i = 0; i < seconds; ++i) {
            commit.Commit();
            Tick();
        }
    };
    pass(4);
    EXPECT_EQ(Codes(), "1 ");
    AppendToFile(work, "7|");
    pass(5);
    EXPECT_EQ(Codes(), "1 ") << "the file has grown since";
    AppendToFile(work, "3|Text|Me\n0|||3");
    pass(3);
    EXPECT_EQ(Codes(), "1 2 ");
    EXPECT_EQ(intake.events.back().ExtraText, "Text");
    pass(4);
    EXPECT_EQ(Codes(), "1 2 3 ") << "nothing more has come for five seconds";
    EXPECT_FALSE(StampOf(work).Exists());
}

TEST_F(FilePortTest, KeepsAFileThatItsWriterHasStillOpen) {
    const NativePath work = folder.Resolve("In\\NordkeepFile.$$$");
    std::ofstream writer(folder.Resolve("In\\drop.txt"), std::ios::app);
    writer << "0|||1\n" << std::flush;
    Begin();
    for (int i = 0; i < 70; ++i) {
        commit.Commit();
        Tick();
    }
    EXPECT_TRUE(StampOf(work).Exists());
    EXPECT_EQ(LinesWith("Open Port1"), 0u) << "nothing waits for it";
    folder.Write("In\\drop.txt", "0|||3\n");
    Tick();
    EXPECT_EQ(LinesWith("Open Port1 Port1 (In\\NordkeepFile.$$$)"), 1u);
    writer << "0|||2\n" << std::flush;
    Tick();
    EXPECT_EQ(Codes(), "1 2 ");
    writer.close();
    for (int i = 0; i < 3; ++i) {
        commit.Commit();
        Tick();
    }
    EXPECT_EQ(Codes(), "1 2 3 ");
    EXPECT_FALSE(StampOf(work).Exists());
}

TEST_F(FilePortTest, ReadsAFileAnewThatWasEmptied) {
    folder.Write("In\\drop.txt", "0|||1\n0|||2\n");
    Begin();
    folder.Write("In\\NordkeepFile.$$$", "0|||3\n");
    commit.Commit();
    EXPECT_EQ(Codes(), "1 2 3 ");
}

TEST_F(FilePortTest, StaysInTheDataFolderAndRefusesWhatIsNoFile) {
    folder.Write("drop.txt", "0|||1\n");
    Begin("..\\..\\drop.txt");
    commit.Commit();
    EXPECT_EQ(Codes(), "1 ") << "there is nothing above the data folder";
    folder.Write("Settings\\Port2.ini",
                 "[General]\r\nPortType=FILE\r\nMessageFormat=12\r\nPortSetting=a.b\\c\r\n");
    folder.Write("Settings\\Port3.ini",
                 "[General]\r\nPortType=FILE\r\nMessageFormat=0\r\nPortSetting=a.b\r\n");
    PortList more;
    more.Discover(parts);
    EXPECT_EQ(LinesWith("UnknownPort2"), 1u);
    EXPECT_EQ(LinesWith("UnknownPort3"), 1u);
}

TEST_F(FilePortTest, LeavesAFileThatIsTooLargeAndSaysSoOnce) {
    folder.Write("In\\drop.txt", Text((16 << 20) + 1, 'x'));
    Begin();
    for (int i = 0; i < 3; ++i) Tick();
    EXPECT_EQ(LinesWith("Trouble Port1 Port1 (In\\NordkeepFile.$$$)"), 1u);
    EXPECT_TRUE(folder.Exists("In\\NordkeepFile.$$$"));
    EXPECT_TRUE(intake.events.empty());
}

TEST_F(FilePortTest, LeavesTheFileWhileThePortIsMuted) {
    conditions.mutedPort = "Port1";
    folder.Write("In\\drop.txt", "0|||1\n");
    Begin();
    EXPECT_TRUE(folder.Exists("In\\drop.txt"));
}

}  // namespace
}  // namespace nordkeep
