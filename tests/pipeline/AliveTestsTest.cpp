#include "tests/pipeline/PipelineTest.h"

namespace nordkeep {
namespace {

constexpr const char* kTown = "FORMAT=1,4,0,0,5,2\r\n1001;Bakery;60;;;;;;;;30\r\n0012;Padded;60;\r\n";
constexpr const char* kTypes =
    "01;1;Fire;\r\n20;5;Test;\r\n77;2;Silent;\r\n76;3;Second silent;\r\n75;3;Second heard;\r\n98;3;Heard "
    "again;\r\n";

class AliveTestsTest : public PipelineTest {
 protected:
    void StartWith(const Text& more = {}) {
        WriteSettings(
            "AliveTestType=77\r\nAliveTest2Type=76\r\nAliveTest2TypeReset=75\r\n"
            "AliveTest2ResetTimerPrio=5\r\n" +
            more);
        WriteSet(kTown, kTypes);
        Start();
    }
    void Scan() {
        running->aliveScan.Tick(60'000, time.Now());
        while (running->aliveScan.IsRunning()) running->aliveScan.Continue();
        running->commit.Commit();
    }
    void AdvanceMinutes(int minutes) { time.Set(time.Now().PlusMinutes(minutes)); }
    std::vector<Text> Types() {
        std::vector<Text> types;
        for (const cAlarm* alarm : All())
            types.push_back(alarm->m_TranslatedIDCode + ":" + alarm->m_TranslatedTypeCode);
        return types;
    }
    using Expected = std::vector<Text>;
};

TEST_F(AliveTestsTest, SilenceRaisesAnAlarmAndASignOfLifeTheRestoreBeforeItself) {
    StartWith("AliveTestBehaviour=1\r\nAliveTest2Behaviour=1\r\n");
    TakeIn("100101");
    AdvanceMinutes(61);
    Scan();
    Scan();
    EXPECT_EQ(Types(), (Expected{"Bakery:Fire", "Bakery:Silent", "Bakery:Second silent", "Padded:Silent"}));
    EXPECT_EQ(All()[1]->m_ProtocolType, "Nordkeep");
    EXPECT_EQ(All()[1]->m_TimeStamp, time.Now());
    TakeIn("100101");
    EXPECT_EQ(Types().size(), 6u);
    EXPECT_EQ(Types()[4], "Bakery:Heard again");
    EXPECT_EQ(Types()[5], "Bakery:Fire");
    EXPECT_GT(All()[4]->m_AlarmId, All()[5]->m_AlarmId) << "the outer event took its number first";
}

TEST_F(AliveTestsTest, OwnAlarmIsNoSignOfLife) {
    StartWith();
    TakeIn("100101");
    for (int i = 0; i < 3; ++i) {
        AdvanceMinutes(61);
        Scan();
    }
    const auto silent = std::ranges::count(Types(), Text("Bakery:Silent"));
    EXPECT_EQ(silent, 3) << "one for each expiry";
    EXPECT_EQ(std::ranges::count(Types(), Text("Bakery:Heard again")), 0);
}

TEST_F(AliveTestsTest, RoutineTestFeedsTheSecondTestAndIsNoAlarm) {
    StartWith("AliveTestBehaviour=1\r\nAliveTest2Behaviour=1\r\n");
    const cAlarm& routine = TakeIn("100120");
    EXPECT_EQ(routine.m_Status, kStatusAcknowledged);
    AdvanceMinutes(31);
    Scan();
    EXPECT_EQ(Types().back(), "Bakery:Second silent");
    const cAlarm& late = TakeIn("100120");
    EXPECT_EQ(late.m_Status, kStatusNew) << "the one that ends a failure is shown";
    EXPECT_EQ(*(Types().end() - 2), "Bakery:Second heard");
    EXPECT_TRUE(running->translations.Find("Town")->m_IdCodes[0]->m_AliveTest2IntervalHasExceeded == false);
}

TEST_F(AliveTestsTest, ASignOfLifeIsNoAlarmButFeedsAndEndsAFailure) {
    StartWith("AliveTestBehaviour=1\r\nAliveTest2Behaviour=1\r\n");
    IncomingEvent sender{.AlarmTime = time.Now(), .ProtocolType = "Robofon", .DefaultAlarmCode = "100101"};
    sender.PortObject = &port;
    sender.TranslationNumberToUse = Protocol::Robofon;
    TakeIn(sender);
    AdvanceMinutes(59);
    running->intake.HandleSignOfLife(sender);
    AdvanceMinutes(59);
    Scan();
    EXPECT_EQ(std::ranges::count(Types(), Text("Bakery:Silent")), 0);
    AdvanceMinutes(2);
    Scan();
    EXPECT_EQ(std::ranges::count(Types(), Text("Bakery:Silent")), 1);
    sender.IsSignOfLife = false;
    TakeIn(sender);
    EXPECT_EQ(std::ranges::count(Types(), Text("Bakery:Heard again")), 0) << "that was said about it";
    sender.IsSignOfLife = true;
    running->intake.HandleSignOfLife(sender);
    EXPECT_EQ(Types().back(), "Bakery:Heard again");
}

TEST_F(AliveTestsTest, ServiceObjectIsSupervisedQuietly) {
    StartWith();
    cTranslate& set = *running->translations.Find("Town");
    StoreServicePeriod(set, *set.m_IdCodes[0], LogOnly());
    AdvanceMinutes(61);
    Scan();
    ASSERT_FALSE(All().empty());
    EXPECT_EQ(All()[0]->m_Status, kStatusAcknowledged);
}

}  // namespace
}  // namespace nordkeep
