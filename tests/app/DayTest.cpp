#include "app/Centre.h"
#include "platform/amqp/AmqpQueues.h"
#include "platform/http/MicroHttpServer.h"
#include "platform/mqtt/MosquittoClients.h"
#include "platform/posix/AplaySound.h"
#include "platform/posix/DurableFiles.h"
#include "platform/posix/NotifySocket.h"
#include "platform/posix/PrinterDevice.h"
#include "platform/qt/QtDescriptorWatch.h"
#include "platform/sqlite/SqliteJournal.h"
#include "runtime/Fields.h"
#include "store/EventFile.h"
#include "tests/doubles/FakeDialogs.h"
#include "tests/doubles/FakeInet.h"
#include "tests/doubles/FakeMSComm.h"
#include "tests/doubles/FakeWinsock.h"
#include "tests/doubles/ManualTime.h"
#include "tests/doubles/TempFolder.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace nordkeep {
namespace {

/// The whole centre in this process, with time in the test's hand.
class DayTest : public ::testing::Test {
 protected:
    void PutEvent(int number, OleDate arrived) const {
        cAlarm alarm;
        alarm.m_ArrivedTime = alarm.m_TimeStamp = arrived;
        folder.Write("Data\\Events\\A" + Digits(number, 7) + ".eve", EventBytes(alarm, 0, 0));
    }
    bool HasEvent(int number) const { return folder.Exists("Data\\Events\\A" + Digits(number, 7) + ".eve"); }
    void PutOldLog() const {
        folder.Write("LogFiles\\old.LOG", "");
        std::filesystem::last_write_time(
            folder.Resolve("LogFiles\\old.LOG"),
            std::filesystem::file_time_type::clock::now() - std::chrono::hours(24 * 3650));
    }
    auto CyclicLines() const {
        const Text lines = folder.Read("AlarmLogFile.spl");
        return std::count(lines.begin(), lines.end(), '\n');
    }
    static OleDate On(int day, int hour, int minute) {
        return OleDate::FromCivil({2026, 3, day, hour, minute, 0});
    }

    CommandLine AsService() const {
        CommandLine switches;
        switches.path = folder.Path();
        switches.runAsService = true;
        return switches;
    }
    PlatformParts Parts() {
        return {.clock = time,
                .loop = time,
                .disk = disk,
                .journal = journal,
                .sockets = sockets,
                .serial = serial,
                .inet = inet,
                .queues = queues,
                .printer = printer,
                .sound = sound,
                .http = http,
                .mqtt = mqtt,
                .serviceManager = serviceManager,
                .dialogs = dialogs,
                .programFile = NORDKEEP_BIN_DIR "/nordkeep"};
    }

    TempFolder folder{};
    ManualTime time{On(28, 23, 0)};
    DurableFiles disk{};
    SqliteJournal journal{};
    FakeSockets sockets{};
    FakeSerial serial{};
    FakeInets inet{};
    AmqpQueues queues{};
    PrinterDevice printer{};
    AplaySound sound{};
    QtDescriptorWatches watches{};
    MicroHttpServer http{time, watches};
    MosquittoClients mqtt{time, watches};
    NotifySocket serviceManager{};
    FakeDialogs dialogs{};
};

TEST_F(DayTest, IsTakenFromTheClockAndEveryPeriodFromTheTicks) {
    folder.Write("Settings\\Nordkeep.INI",
                 "[General]\r\nLanguage=044\r\nMaxAlarmDays=1\r\nLogFileSavePeriod=5\r\n"
                 "AlarmLogFileCyclicWritePeriod=60000\r\nAlarmLogFileCyclicWriteString=alive\r\n"
                 "[NetWork]\r\n");
    PutEvent(1, On(27, 12, 0));
    PutEvent(2, On(28, 12, 0));
    Foundation foundation(Parts(), AsService());
    ASSERT_FALSE(foundation.Prepare());
    Centre centre(foundation);
    centre.Start();
    PutOldLog();
    constexpr int kMinute = 60'000;
    time.Advance(10 * kMinute);
    EXPECT_EQ(CyclicLines(), 10);
    time.Set(On(28, 22, 10));
    time.Advance(10 * kMinute);
    EXPECT_EQ(CyclicLines(), 20) << "a clock that is set back holds no period up";
    time.Set(On(28, 23, 55));
    time.Advance(4 * kMinute);
    EXPECT_TRUE(HasEvent(1) && folder.Exists("LogFiles\\old.LOG")) << "the day is not over";
    time.Advance(2 * kMinute);
    EXPECT_FALSE(HasEvent(1) || folder.Exists("LogFiles\\old.LOG"));
    EXPECT_TRUE(HasEvent(2));

    time.Set(On(29, 2, 0));
    time.Advance(kMinute);
    time.Set(On(29, 3, 1));  // summer time
    time.Advance(kMinute);
    time.Set(On(28, 23, 30));  // set back over midnight, which comes a second time
    PutOldLog();
    time.Advance(kMinute);
    EXPECT_TRUE(HasEvent(2));
    time.Advance(31 * kMinute);
    EXPECT_TRUE(HasEvent(2));
    EXPECT_FALSE(folder.Exists("LogFiles\\old.LOG"));
    EXPECT_EQ(CyclicLines(), 60) << "one for each minute that has passed";

    centre.CloseAndShutdownEverything();
    time.Advance(1000);
    EXPECT_TRUE(time.HasQuit());
}

// Each tick of a timer began another row of slices beside those that ran, so that a turn of the loop had more
// and more of them.
TEST_F(DayTest, OldAlarmsGoInOneRowOfSlices) {
    folder.Write("Settings\\Nordkeep.INI", "[General]\r\nLanguage=044\r\nMaxAlarmDays=1\r\n");
    constexpr int kOld = 1500;
    for (int i = 1; i <= kOld; ++i) PutEvent(i, On(27, 12, 0));
    Foundation foundation(Parts(), AsService());
    ASSERT_FALSE(foundation.Prepare());
    Centre centre(foundation);
    centre.Start();
    time.Advance(60'000);
    time.Set(On(29, 0, 0));
    const std::size_t usual = time.PlannedCount();
    std::size_t most = 0;
    int ticksMeanwhile = 0;
    const std::function<void()> look = [&] {
        most = std::max(most, time.PlannedCount());
        if (HasEvent(1) && !HasEvent(kOld)) ADD_FAILURE() << "the oldest go first";
        ticksMeanwhile += !HasEvent(1) && HasEvent(kOld);
        time.After(250, look);
    };
    look();
    time.passesWithEachLookMs = 1;
    time.Advance(120'000);
    time.passesWithEachLookMs = 0;
    EXPECT_FALSE(HasEvent(kOld));
    EXPECT_GT(ticksMeanwhile, 8) << "else nothing is seen here";
    EXPECT_LE(most, usual + 4);
}

}  // namespace
}  // namespace nordkeep
