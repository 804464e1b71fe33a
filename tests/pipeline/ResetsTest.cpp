#include "tests/pipeline/PipelineTest.h"

namespace nordkeep {
namespace {

constexpr const char* kTown =
    "FORMAT=1,4,0,0,5,2\r\n1001;Bakery;\r\n1002;Pump;;;;;Owner;;;1001\r\n1003;Shop;\r\n";
constexpr const char* kTypes = "01;1;Fire;02\r\n02;3;Fire restored;\r\n03;2;Fault;\r\n";

class ResetsTest : public PipelineTest {
 protected:
    void StartWith(const Text& general) {
        WriteSettings(general);
        WriteSet(kTown, kTypes);
        Start();
    }
    void AdvanceSeconds(int seconds) { time.Set(time.Now().PlusSeconds(seconds)); }
};

TEST_F(ResetsTest, ResetEndsItsAlarmAsTheSettingsSay) {
    struct Case {
        const char* settings;
        int alarm;
        int reset;
    };
    for (const Case& c : {Case{"AutoAckResetEvents=0\r\n", kStatusNewWaiting, kStatusReset},
                          Case{"AutoAckResetEvents=1\r\n", kStatusAcknowledged, kStatusReset},
                          Case{"AutoAckResetEvents=2\r\n", kStatusReset, kStatusReset},
                          Case{"AutoAckResetEvents=7\r\n", kStatusNewWaiting, kStatusReset},
                          Case{"AutoAckResetEvents=1\r\nAutoCloseResetEvents=1\r\n", kStatusAcknowledged,
                               kStatusAcknowledged}}) {
        StartWith(c.settings);
        const cAlarm& alarm = TakeIn("100101");
        const cAlarm& other = TakeIn("100301");
        const cAlarm& reset = TakeIn("100102");
        EXPECT_EQ(Stored(alarm).m_Status, c.alarm) << c.settings;
        EXPECT_EQ(Stored(reset).m_Status, c.reset) << c.settings;
        EXPECT_FALSE(reset.m_AckedTime.IsNever()) << c.settings;
        EXPECT_EQ(other.m_Status, kStatusNewWaiting) << "another object's alarm stays";
        running.reset();
        for (const Text& file : ListFiles(folder.Resolve("Data\\Events"))) {
            RemoveFile(folder.Resolve("Data\\Events\\" + file));
        }
    }
}

TEST_F(ResetsTest, OneResetEndsAllAlarmsThatWaitForIt) {
    StartWith("AutoAckResetEvents=1\r\n");
    TakeIn("100101");
    TakeIn("100101");
    TakeIn("100102");
    EXPECT_EQ(running->views.AckedCount(), 2u);
    EXPECT_EQ(running->views.UnackedCount(), 1u);
}

TEST_F(ResetsTest, DelayedAcknowledgeWaitsItsMinutes) {
    StartWith("AutoAckResetEvents=2\r\nAutoAckResetEventsTimeout=0\r\n");
    const cAlarm& alarm = TakeIn("100101");
    TakeIn("100102");
    AdvanceSeconds(60);
    running->resets.AcknowledgeDelayed(time.Now());
    EXPECT_EQ(alarm.m_Status, kStatusReset) << "a delay of 0 counts as one minute, and it must have passed";
    AdvanceSeconds(1);
    running->resets.AcknowledgeDelayed(time.Now());
    running->commit.Commit();
    EXPECT_EQ(Stored(alarm).m_Status, kStatusAcknowledged);
    EXPECT_EQ(running->views.UnackedCount(), 0u) << "the resetting record waits for the same delay";
}

TEST_F(ResetsTest, CloseRepeatsAreAcknowledgedAndAPauseOpensANewWindow) {
    StartWith("AutoAckRepeatedEvents=60\r\n");
    TakeIn("100103");
    const auto repeatAfter = [&](int seconds) -> cAlarm& {
        AdvanceSeconds(seconds);
        return TakeIn("100103");
    };
    const cAlarm& first = repeatAfter(50);
    EXPECT_EQ(first.m_Repeated, -1);
    EXPECT_EQ(first.m_Status, kStatusAcknowledged);
    EXPECT_EQ(repeatAfter(50).m_Status, kStatusAcknowledged);
    const cAlarm& late = repeatAfter(70);
    EXPECT_EQ(late.m_Repeated, -1);
    EXPECT_EQ(late.m_Status, kStatusNew);
    EXPECT_EQ(repeatAfter(59).m_Status, kStatusAcknowledged);
    EXPECT_EQ(All().front()->m_Repeated, 0) << "the mark is the newer record's";
}

TEST_F(ResetsTest, ResetOfAnotherCodeTakesOverTheObjectsTexts) {
    StartWith("AutoAckResetEvents=1\r\n");
    const cAlarm& alarm = TakeIn("100203");
    EXPECT_EQ(alarm.m_Status, kStatusNewWaiting) << "its object names a code that resets it";
    const cAlarm& reset = TakeIn("100103");
    EXPECT_EQ(alarm.m_Status, kStatusAcknowledged);
    EXPECT_EQ(reset.m_TranslatedIDCode, "Pump");
    EXPECT_EQ(reset.m_Customer, "Owner");
    EXPECT_EQ(reset.m_IdCode, "1001");
}

TEST_F(ResetsTest, EarlyResetIsParkedUntilItsAlarmComes) {
    StartWith("AutoAckResetEvents=1\r\nUnAssociatedResetEventsTimeout=10\r\n");
    // Object 1001 stands first, so the walk ends there: only an unknown type of 1002's reset code parks.
    folder.Write("Settings\\Town.IDCode", "FORMAT=1,4,0,0,5,2\r\n1002;Pump;;;;;;;;1001\r\n");
    Start();
    running->intake.HandleIncomingEvent({.AlarmTime = time.Now(),
                                         .DefaultAlarmCode = "100103",
                                         .PortObject = &port,
                                         .TranslationNumberToUse = Protocol::Robofon});
    EXPECT_TRUE(All().empty());
    EXPECT_FALSE(running->parked.IsEmpty());
    const OleDate arrived = time.Now();
    AdvanceSeconds(5);
    TakeIn("100203");
    ASSERT_EQ(All().size(), 2u);
    EXPECT_TRUE(running->parked.IsEmpty());
    EXPECT_EQ(All()[0]->m_Status, kStatusAcknowledged);
    EXPECT_EQ(All()[1]->m_Status, kStatusReset);
    EXPECT_EQ(All()[1]->m_ArrivedTime, arrived);
}

TEST_F(ResetsTest, ParkedResetAppearsWhenItsTimeIsOut) {
    StartWith("UnAssociatedResetEventsTimeout=10\r\n");
    folder.Write("Settings\\Town.IDCode", "FORMAT=1,4,0,0,5,2\r\n1002;Pump;;;;;;;;1001\r\n");
    Start();
    running->intake.HandleIncomingEvent(
        {.DefaultAlarmCode = "100103", .PortObject = &port, .TranslationNumberToUse = Protocol::Robofon});
    AdvanceSeconds(10);
    running->parked.Tick(time.Now());
    EXPECT_TRUE(All().empty());
    AdvanceSeconds(1);
    running->parked.Tick(time.Now());
    EXPECT_EQ(All().size(), 1u);
    running->intake.HandleIncomingEvent(
        {.DefaultAlarmCode = "100103", .PortObject = &port, .TranslationNumberToUse = Protocol::Robofon});
    running->parked.DispatchAll();
    EXPECT_EQ(All().size(), 2u) << "a clean stop loses none";
}

}  // namespace
}  // namespace nordkeep
