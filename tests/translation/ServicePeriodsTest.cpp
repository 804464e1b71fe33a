#include "tests/translation/TranslationFixture.h"

namespace nordkeep {
namespace {

using ServicePeriodsTest = TranslationFixture;

TEST_F(ServicePeriodsTest, AnObjectIsInServiceStrictlyInsideItsPeriod) {
    struct Case {
        ServicePeriod period;
        const char* atNineToTwelve;
    };
    const Case cases[] = {
        {InUse(), "no no no no"},
        {LogOnly(), "yes yes yes yes"},
        {LogUntil(At(10), At(12)), "yes yes yes no"},
        {LogBetween(At(10), At(12)), "no no yes no"},
        {LogBetween(At(12), At(10)), "no no no no"},
    };
    cTranslate& set = LoadSet("1");
    for (const Case& c : cases) {
        ASSERT_TRUE(periods.Set(set, Object("1"), c.period));
        Text seen;
        for (int hour = 9; hour <= 12; ++hour) seen += IsInService(Object("1"), At(hour)) ? "yes " : "no ";
        EXPECT_EQ(TrimBlanks(seen), c.atNineToTwelve) << c.period.mode;
    }
}

TEST_F(ServicePeriodsTest, ASettingIsToldToAllAndClearsTheFailures) {
    cTranslate& set = LoadSet("1");
    Object("1").m_AliveTestIntervalHasExceeded = true;
    Object("1").m_AliveTest2IntervalHasExceeded = true;
    witness.seen.clear();
    for (const int unknown : {-1, 4}) EXPECT_FALSE(periods.Set(set, Object("1"), {.mode = unknown}));
    EXPECT_TRUE(witness.seen.empty() && Object("1").m_AliveTestIntervalHasExceeded);
    ASSERT_TRUE(periods.Set(set, Object("1"), LogOnly()));
    EXPECT_EQ(witness.seen, (Texts{"row 1", "tree states", "mode 1"}));
    EXPECT_FALSE(Object("1").m_AliveTestIntervalHasExceeded || Object("1").m_AliveTest2IntervalHasExceeded);
    EXPECT_FALSE(folder.Exists("Data\\A.ServiceOut")) << "exchange is off";
    settings.AutoExchangeServiceInfo = true;
    settings.ServiceIntervals = "30,60";
    periods.Set(set, Object("1"), LogForInterval(settings, 2, At(10)));
    EXPECT_FALSE(periods.EndWhenOver(set, Object("1"), At(10, 59)));
    EXPECT_TRUE(periods.EndWhenOver(set, Object("1"), At(11)));
    EXPECT_FALSE(periods.EndWhenOver(set, Object("1"), At(12)));
    periods.Set(set, Object("1"), LogOnly());
    EXPECT_FALSE(periods.EndWhenOver(set, Object("1"), At(12)));
    EXPECT_EQ(folder.Read("Data\\A.ServiceOut"),
              "1;1;20260310100000;20260310110000\r\n"
              "1;0;20260310100000;20260310110000\r\n"
              "1;3;18991230000000;18991230000000\r\n");
}

TEST_F(ServicePeriodsTest, TakesInWhatAnotherSystemLeaves) {
    struct Case {
        const char* line;
        int mode;
        OleDate end;
    };
    const Case cases[] = {
        {"", 3, OleDate()},
        {"9;0", 3, OleDate()},
        {"1;4;20260310100000;20260310110000", 3, OleDate()},
        {"1;-1", 3, OleDate()},
        {"1", 0, OleDate()},
        {" 1 ;2;20260310100000;20260310110000\n9;1", 2, At(11)},
        {"1;1;x;20260310110000\r\n1;2;;20260310120000", 2, At(12)},
    };
    cTranslate& set = LoadSet("1");
    settings.AutoExchangeServiceInfo = true;
    for (const Case& c : cases) {
        StoreServicePeriod(set, Object("1"), LogOnly());
        folder.Write("Data\\a.servicein", c.line);
        folder.Write("Data\\A.ServiceIn$$$", "1;0");  // left over from a crash
        periods.TakeIn(set);
        EXPECT_EQ(Object("1").m_ServiceMode, c.mode) << c.line;
        EXPECT_EQ(Object("1").m_ServicePeriodEnd, c.end) << c.line;
        EXPECT_TRUE(ListFiles(folder.Resolve("Data")).empty()) << "taken once, and no answer: " << c.line;
    }
    periods.TakeIn(set);
    EXPECT_EQ(Object("1").m_ServiceMode, 2) << "no file, no change";
}

}  // namespace
}  // namespace nordkeep
