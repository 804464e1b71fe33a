#include "runtime/Dates.h"
#include "translation/Translate.h"

#include <gtest/gtest.h>

namespace nordkeep {
namespace {

OleDate On(int day, int hour, int minute = 0, int second = 0) {
    return OleDate::FromCivil({2026, 3, day, hour, minute, second});
}

TEST(AliveTestSchedule, GivesTheNextDeadline) {
    struct Case {
        const char* schedule;
        OleDate heard;
        OleDate deadline;
    };
    const char* const two = "17:00:00, 08:00:00";  // in any order
    const char* const window = "06:00:00-09:00:00";
    const char* const windows = "06:00:00-09:00:00,16:00:00-18:00:00";
    const Case cases[] = {
        {",08:00:00", On(10, 7), OleDate()},
        {"99999999:00:00", On(10, 7), OleDate()},
        {"08:00:00", On(10, 7), On(11, 8)},
        {"08:00:00", On(10, 8), On(11, 8)},
        {"08:00:00", On(10, 8, 0, 1), On(12, 8)},
        {"8:", On(10, 7), On(11, 8)},
        {"x,08:00:00,,09:00:00", On(10, 9), On(12, 8)},
        {"07:75:00", On(10, 9), On(12, 8, 15)},
        {two, On(10, 7), On(10, 17)},
        {two, On(10, 12), On(11, 8)},
        {two, On(10, 18), On(11, 17)},
        {window, On(10, 5), On(10, 9)},
        {window, On(10, 6), On(11, 9)},
        {window, On(10, 9, 0, 1), On(12, 9)},
        {windows, On(10, 12), On(10, 18)},
        {windows, On(10, 17), On(11, 9)},
        {windows, On(10, 19), On(11, 18)},
        {"22:00:00-02:00:00", On(10, 23), On(12, 2)},  // no window over midnight
        {"22:00:00-02:00:00", On(10, 1), On(10, 2)},
        {"60", On(10, 10), On(10, 11)},
        {" +90 min", On(10, 10), On(10, 11, 30)},
        {"-5", On(10, 10), On(10, 9, 55)},
        {"60", On(29, 1, 30), On(29, 2, 30)},  // the wall clock, also on the day that has no such time
        {"99999999999", On(10, 10), On(10, 10).PlusMinutes(2147483647)},
    };
    for (const Case& c : cases) {
        const OleDate deadline = NextDeadline(c.schedule, c.heard, AliveTestPace::Minutes);
        EXPECT_EQ(deadline, c.deadline)
            << c.schedule << " at " << CompactTime(c.heard) << ": " << CompactTime(deadline);
    }
    EXPECT_EQ(NextDeadline("60", On(10, 10), AliveTestPace::Seconds), On(10, 10, 1));
}

TEST(AliveTestSchedule, SaysWhetherItIsInUseAndReadsWell) {
    struct Case {
        const char* schedule;
        bool isInUse;
        const char* readable;
    };
    const Case cases[] = {
        {"", false, "0/00:00 ( T)"},    {"0", false, "0/00:00 (0 T)"},      {"abc", false, "0/00:00 (abc T)"},
        {"00:30:00", true, "00:30:00"}, {"1530", true, "1/01:30 (1530 T)"}, {"-5", true, "0/00:-05 (-5 T)"},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(IsScheduleInUse(c.schedule), c.isInUse) << c.schedule;
        EXPECT_EQ(ReadableSchedule(c.schedule, "T"), c.readable);
    }
}

TEST(AliveTest, KnowsTwoTestsAndNoOthers) {
    cIDCode object;
    for (const int test : {0, 1, 2, 3}) object.SetNextAliveTestExpirationTime(test, On(10 + test, 0));
    EXPECT_FALSE(object.AliveTestHasExpired(1, On(11, 0))) << "only what lies before has expired";
    EXPECT_TRUE(object.AliveTestHasExpired(1, On(11, 0, 0, 1)));
    EXPECT_FALSE(object.AliveTestHasExpired(2, On(11, 0, 0, 1)));
    EXPECT_FALSE(object.AliveTestHasExpired(0, On(20, 0)) || object.AliveTestHasExpired(3, On(20, 0)));
    object.SetNextAliveTestExpirationTime(1, {});
    EXPECT_FALSE(object.AliveTestHasExpired(1, On(20, 0))) << "a test that is not scheduled never expires";
}

}  // namespace
}  // namespace nordkeep
