#include "store/EventFile.h"
#include "tests/app/ground/RunningCopy.h"

#include <gtest/gtest.h>

namespace nordkeep {
namespace {

class DroppedFileTest : public ::testing::Test {
 protected:
    DroppedFileTest() {
        copy.WriteMainSettings();
        copy.AddPort("Port1", "PortType=FILE\r\nMessageFormat=12\r\nPortSetting=In\\events.txt\r\n",
                     "FILE=Town");
        copy.Data().Write("Settings\\Town.IDCode", "FORMAT=1,6,0,0,7,2\r\n100001;Harbour;;;;;Quay\r\n");
        copy.Data().Write("Settings\\Town.TypeCode", "01;1;Fire;02\r\n");
        copy.Data().MakeFolders("In");
    }
    bool IsEmpty() const { return ListFiles(copy.Data().Resolve("In")).empty(); }

    RunningCopy copy{};
};

TEST_F(DroppedFileTest, BecomesStoredEventsAndGoes) {
    copy.Start();
    copy.Data().Write("In\\events.txt",
                      "0|2024-05-17|13:45:00|10000101||||Text|Me\r\nrubbish\r\n0|||10000101\r\n");
    EXPECT_TRUE(WaitFor([&] { return IsEmpty(); }));
    ASSERT_EQ(copy.EventFiles().size(), 3u) << "they are there when the file has gone";
    EXPECT_TRUE(copy.WaitForOutput(
        "A line of a collected file is damaged, its event has what there is, port Port1 Port1 (rubbish)"));
    bool isFound = false;
    for (const Text& file : copy.EventFiles()) {
        cAlarm alarm;
        ASSERT_TRUE(ReadFromDisk(copy.Data().Read(file), 1, alarm));
        EXPECT_TRUE(alarm.m_RawAlarmCode == "rubbish" || alarm.m_TranslatedIDCode == "Harbour");
        isFound = isFound || alarm.m_Originator == "Me";
    }
    EXPECT_TRUE(isFound);
    EXPECT_EQ(copy.Stop(), 0);
}

TEST_F(DroppedFileTest, IsTakenInAfterARestartWhenACrashLeftIt) {
    copy.Data().Write("In\\NordkeepFile.$$$", "0|||10000101\r\n");
    copy.Start();
    EXPECT_TRUE(WaitFor([&] { return IsEmpty(); }));
    EXPECT_EQ(copy.EventFiles().size(), 1u) << copy.Output();
}

}  // namespace
}  // namespace nordkeep
