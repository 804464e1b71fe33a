#include "tests/pipeline/PipelineTest.h"

namespace nordkeep {
namespace {

class DispatchTest : public PipelineTest {};

TEST_F(DispatchTest, WritesTypeAndObjectLogsUnderSafeNames) {
    WriteSettings("CreateTypeLogFiles=1\r\nCreateObjectLogFiles=1\r\n");
    WriteSet("FORMAT=1,4,0,0,5,4\r\n1001;Shop: \"A/B\" .;\r\n", "../x;1;Odd;\r\n");
    Start();
    TakeIn("1001../x");
    EXPECT_EQ(folder.Read("LogFiles\\Town\\.._x\\20240305_070809.LOG"),
              "24-03-05;07:08:09;Robofon;1;Shop: \"A/B\" .;Odd;1001../x\r\n");
    EXPECT_EQ(folder.Read("LogFiles\\Objects\\Shop_ _A_B_.LOG"),
              "2024-03-05|07:08:09|1001../x|Robofon|1|Odd|Shop: \"A/B\" .\r\n");
}

TEST_F(DispatchTest, UnknownObjectsGoToTheOldAlarmsWhenTheyShall) {
    WriteSettings("SendNotTranslatedToOldAlarms=1\r\n");
    WriteSet("FORMAT=1,4,0,0,5,2\r\n1001;Shop;\r\n");
    Start();
    EXPECT_EQ(TakeIn("999901").m_Status, kStatusAcknowledged);
    EXPECT_EQ(TakeIn("100101").m_Status, kStatusNew);
}

TEST_F(DispatchTest, TorvexStateFollowsDelayAndRetries) {
    WriteSet("FORMAT=1,4,0,0,5,2\r\n1001;Shop;\r\n", "05;-1;Quiet;\r\n");
    struct Case {
        const char* torvex;
        const char* code;
        int sent;
    };
    for (const Case& c : {Case{"", "100101", -1}, Case{"RetryFailedTransmissions=1\r\n", "100101", 0},
                          Case{"RetryFailedTransmissions=1\r\n", "100105", -1},
                          Case{"DelayAndWaitForAck=5\r\n", "100101", 0}}) {
        WriteSettings("\r\n[Torvex]\r\n" + Text(c.torvex));
        Start();
        EXPECT_EQ(TakeIn(c.code).m_SentToTorvex, c.sent) << c.torvex << c.code;
    }
}

// The clock of a sender can be days behind or in front.
TEST_F(DispatchTest, ADelayedLineIsDueByItsArrival) {
    WriteSet("FORMAT=1,4,0,0,5,2\r\n1001;Shop;\r\n");
    WriteSettings("\r\n[Torvex]\r\nDelayAndWaitForAck=60\r\n");
    Start();
    std::vector<cAlarm*> alarms;
    for (const int days : {-3, 3}) {
        alarms.push_back(&TakeIn({.AlarmTime = time.Now().PlusDays(days),
                                  .ProtocolType = "Robofon",
                                  .DefaultAlarmCode = "100101",
                                  .PortObject = &port,
                                  .TranslationNumberToUse = Protocol::Robofon}));
    }
    for (const int sent : {0, -1}) {
        time.Advance(40'000);
        running->dispatcher.SendWaitingToTorvex(time.Now());
        for (const cAlarm* alarm : alarms) EXPECT_EQ(alarm->m_SentToTorvex, sent);
    }
}

TEST_F(DispatchTest, StepsRunOnWhenOneCannotWrite) {
    WriteSettings("CreateObjectLogFiles=1\r\n");
    folder.Write("LogFiles\\Objects", "a file where the folder belongs");
    folder.MakeFolders("AlarmLogFile.spl");
    WriteSet("FORMAT=1,4,0,0,5,2\r\n1001;Shop;\r\n");
    Start();
    const cAlarm& alarm = TakeIn("100101");
    EXPECT_EQ(Stored(alarm).m_TranslatedIDCode, "Shop");
    EXPECT_EQ(running->views.UnackedCount(), 1u);
}

TEST_F(DispatchTest, AClientsDeskDoesWhatTheServersDoes) {
    WriteSettings(
        "AlarmPopup=1\r\nAutoViewComment=1\r\nAutoViewMap=1\r\nAlarmSound=1\r\nAlarmPictureTime=0\r\n");
    WriteSet("FORMAT=1,6,0,0,7,2\r\n100001;Bakery;;Town.png/1/2\r\n", "01;1;Fire;\r\n");
    Start();
    cAlarm& alarm = TakeIn("10000101");
    using Calls = std::vector<Text>;
    const Calls shown = {"latest", "popup", "comment", "map", "picture Bakery Fire", "beep"};
    Calls atServer = {"selection"};
    atServer.insert(atServer.end(), shown.begin(), shown.end());
    atServer.push_back("page");
    EXPECT_EQ(running->desk.calls, atServer);

    running->desk.calls.clear();
    running->dispatcher.PresentAtDesk(alarm);
    Calls atClient = shown;
    atClient.insert(atClient.end(), {"page", "selection"});
    EXPECT_EQ(running->desk.calls, atClient);

    running->desk.calls.clear();
    alarm.m_Status = kStatusAcknowledged;
    running->dispatcher.PresentAtDesk(alarm);
    EXPECT_EQ(running->desk.calls, Calls{"page"}) << "whose settings name the statuses";
}

TEST(PriorityRange, ReadsBothEnds) {
    struct Case {
        const char* text;
        long priority;
        bool holds;
    };
    for (const Case& c :
         {Case{"-1", 7, true}, Case{"3-5", 2, false}, Case{"3-5", 3, true}, Case{"3-5", 5, true},
          Case{"4", 4, true}, Case{"4", 5, false}, Case{"", 0, true}, Case{"", 1, false}}) {
        EXPECT_EQ(ParsePriorityRange(c.text).Holds(c.priority), c.holds) << c.text << " " << c.priority;
    }
}

}  // namespace
}  // namespace nordkeep
