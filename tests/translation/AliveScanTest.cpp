#include "tests/translation/TranslationFixture.h"
#include "translation/AliveTestReset.h"

namespace nordkeep {
namespace {

using AliveScanTest = TranslationFixture;

constexpr int kRound = 60'000;

TEST_F(AliveScanTest, RunsOncePerRoundOfTicks) {
    LoadSet("1;;60");
    time.Set(At(12));
    for (int i = 1; i < 60; ++i) EXPECT_FALSE(scan.Tick(1000, time.Now()));
    EXPECT_TRUE(witness.alarms.empty());
    EXPECT_TRUE(scan.Tick(1000, time.Now()));
    EXPECT_EQ(witness.alarms.size(), 1u);
    EXPECT_FALSE(scan.Tick(1000, time.Now()));
    AliveTestTimers fastTimers(settings, AliveTestPace::Seconds, log);
    AliveScan fast({translations, periods, witness, witness, witness, witness, time, settings, fastTimers});
    EXPECT_TRUE(fast.Tick(1000, At(14)));
    EXPECT_EQ(Expiration("1"), At(14, 1));
}

TEST_F(AliveScanTest, GoesThroughSetsAndObjectsInOrder) {
    WriteSet("B", "9;;60\n8;;60;;;;;;;;60\n7\n6;;0\n5;;abc");
    WriteSet("A", "1;;;;;;;;;;60\n2;;60");
    BindPort("Robofon=B,A\r\nSIA=A");
    Reload();
    for (const auto& object : translations.Sets()[0]->m_IdCodes)
        object->SetNextAliveTestExpirationTime(1, At(9));
    scan.Tick(kRound, At(12));
    EXPECT_EQ(witness.alarms, (Texts{"B 9 1", "B 8 1", "B 8 2", "A 1 2", "A 2 1"}));
    scan.Tick(kRound, At(12));
    EXPECT_EQ(witness.alarms.size(), 5u) << "each test starts anew from the time of its scan";
}

TEST_F(AliveScanTest, RepeatsAnAlarmUnlessToldOtherwise) {
    LoadSet("1;;60;;;;;;;;60");
    settings.AliveTestBehaviour = kOneAlarmForEachFailure;
    settings.AliveTest2Behaviour = 7;
    for (const int hour : {11, 12, 13}) scan.Tick(kRound, At(hour, 1));
    EXPECT_EQ(witness.alarms, (Texts{"A 1 1", "A 1 2", "A 1 2"})) << "12:01 is not behind 12:01";
    EXPECT_EQ(Expiration("1", 1), At(12, 1)) << "a silenced test is not even rescheduled";
}

TEST_F(AliveScanTest, AFailureIsShownExportedAndLogged) {
    LoadSet("1;;08:00:00;;ALARM;PROTO\n2;;60;;ALARM;");
    settings.AliveTestDebug = true;
    Object("1").SetNextAliveTestExpirationTime(1, At(8));
    witness.seen.clear();
    scan.Tick(kRound, At(8, 0, 30));
    EXPECT_EQ(witness.seen, (Texts{"export ALARM PROTO", "row 1", "update 1", "tree states"}));
    EXPECT_EQ(logged, (Texts{"Changing AliveTest '1' from 2026-03-10 08:00:00",
                             "Changed AliveTest '1' to 2026-03-12 08:00:00"}));
    EXPECT_TRUE(Object("1").m_AliveTestIntervalHasExceeded);
    witness.seen.clear();
    scan.Tick(kRound, At(23));
    EXPECT_EQ(witness.seen, (Texts{"row 2", "update 2", "tree states"})) << "nothing to export";
}

TEST_F(AliveScanTest, EndsServicePeriodsFirst) {
    cTranslate& set = LoadSet("1;;60");
    settings.AliveTestBehaviour = kOneAlarmForEachFailure;
    StoreServicePeriod(set, Object("1"), LogUntil(At(10), At(11)));
    Object("1").m_AliveTestIntervalHasExceeded = true;
    witness.onAlarm = [this] { EXPECT_EQ(Object("1").m_ServiceMode, 0); };
    scan.Tick(kRound, At(11, 1));
    EXPECT_EQ(witness.alarms, Texts{"A 1 1"}) << "the end of the period has cleared the failure";
}

TEST_F(AliveScanTest, AResetStartsBothTestsAnew) {
    cTranslate& set = LoadSet("1;;60;;;;;;;;08:00:00");
    settings.AliveTestDebug = true;
    Object("1").m_AliveTestIntervalHasExceeded = true;
    Object("1").m_AliveTest2IntervalHasExceeded = true;
    witness.seen.clear();
    AliveTestReset({timers, witness, witness}).Reset(set, Object("1"), At(12));
    EXPECT_EQ(Expiration("1", 1), At(13));
    EXPECT_EQ(Expiration("1", 2), At(8).PlusDays(2));
    EXPECT_FALSE(Object("1").m_AliveTestIntervalHasExceeded || Object("1").m_AliveTest2IntervalHasExceeded);
    EXPECT_EQ(witness.seen, (Texts{"row 1", "tree states", "reset 1"}));
    EXPECT_EQ(logged, (Texts{"AliveTest was reset by client '1' to 2026-03-10 13:00:00",
                             "AliveTest2 was reset by client '1' to 2026-03-12 08:00:00"}));
}

TEST_F(AliveScanTest, LosesNoDeadlineWhenTheClockIsSet) {
    LoadSet("1;;60\n2;;02:30:00");
    Object("2").SetNextAliveTestExpirationTime(1, At(2, 30));
    scan.Tick(kRound, At(1, 59));
    EXPECT_TRUE(witness.alarms.empty());
    scan.Tick(kRound, At(3));  // the clock has been put forward over 2:30
    EXPECT_EQ(witness.alarms, Texts{"A 2 1"});
    scan.Tick(kRound, At(10, 59));
    scan.Tick(kRound, At(10));  // set back by an hour
    EXPECT_EQ(witness.alarms.size(), 1u);
    scan.Tick(kRound, At(11, 0, 1));
    EXPECT_EQ(witness.alarms, (Texts{"A 2 1", "A 1 1"}));
}

TEST_F(AliveScanTest, ReceivesBetweenTheSlicesOfAFlood) {
    Text objects;
    for (int i = 0; i < 100; ++i) objects += std::to_string(i) + ";;60\n";
    LoadSet(objects);
    witness.onAlarm = [this] {
        time.Advance(7);
        scan.Continue();  // nested in an effect: does nothing
    };
    scan.Tick(kRound, At(12));
    EXPECT_EQ(witness.alarms.size(), 3u) << "a slice ends when its time is over";
    ASSERT_TRUE(scan.IsRunning());
    Object("50").CalculateNextAliveTestTime(1, At(12), AliveTestPace::Minutes);  // heard from meanwhile
    int slices = 1;
    for (; scan.IsRunning(); ++slices) scan.Tick(kRound, At(12, 0, slices));  // the next round is due already
    EXPECT_GT(slices, 30);
    ASSERT_EQ(witness.alarms.size(), 99u);
    EXPECT_EQ(witness.alarms[49] + ", " + witness.alarms[50], "A 49 1, A 51 1")
        << "in file order over all slices";
    EXPECT_EQ(Expiration("99"), At(13)) << "one scan, one time";
}

TEST_F(AliveScanTest, StartsOverAfterAReloadInTheMiddle) {
    LoadSet("1;;60\n2;;60\n3;;60");
    witness.onAlarm = [this] {
        if (witness.alarms.size() == 2) {
            WriteSet("A", "0;;60\n3;;60");
            Reload();  // takes the object away that is being looked at
        }
    };
    scan.Tick(kRound, At(12));
    for (int i = 0; scan.IsRunning() && i < 10; ++i) scan.Continue();
    EXPECT_FALSE(scan.IsRunning());
    EXPECT_EQ(witness.alarms, (Texts{"A 1 1", "A 2 1", "A 0 1", "A 3 1"}));
}

}  // namespace
}  // namespace nordkeep
