#include "runtime/Dates.h"

#include <gtest/gtest.h>

namespace nordkeep {
namespace {

OleDate At(int year, int month, int day, int hour = 0, int minute = 0, int second = 0, int ms = 0) {
    return OleDate::FromCivil({year, month, day, hour, minute, second}, ms);
}

TEST(FormatDate, FollowsThePicture) {
    const OleDate date = At(2020, 3, 5, 7, 8, 9, 700);
    struct Case {
        const char* picture;
        const char* expected;
    };
    for (const Case& c :
         {Case{"YYYY-MM-DD", "2020-03-05"}, Case{"YY-M-D", "20-3-5"}, Case{"HH:NN:SS", "07:08:09"},
          Case{"hh:mm:ss", "07:08:09"}, Case{"h.m", "7.8"}, Case{"MM/DD HH:MM MM", "03-05 07:08 03"},
          Case{"short date", "2020-03-05"}, Case{"Long Time", "07:08:09"}, Case{"Medium Time", "07:08"},
          Case{"", "2020-03-05 07:08:09"}, Case{"General Date", "2020-03-05 07:08:09"},
          Case{"\"Day \"D", "Day 5"}, Case{"\\D\\D=DD", "DD=05"}, Case{"YYYYMMDDHHNNSS", "20200305070809"},
          Case{"\"open", "open"}, Case{"\\", ""}}) {
        EXPECT_EQ(FormatDate(date, c.picture), c.expected) << c.picture;
    }
}

TEST(FormatDate, LeavesAwayWhatADateDoesNotHave) {
    EXPECT_EQ(GeneralDate(At(2020, 3, 5)), "2020-03-05");
    EXPECT_EQ(GeneralDate(OleDate()), "00:00:00");
    EXPECT_EQ(GeneralDate(OleDate::FromDays(0.5)), "12:00:00");
    EXPECT_EQ(FormatDate(OleDate(), "YYYY-MM-DD"), "1899-12-30");
}

TEST(CompactTime, IsReadLeniently) {
    EXPECT_EQ(CompactTime(OleDate()), "18991230000000");
    EXPECT_EQ(ParseCompactTime("20240510070809"), At(2024, 5, 10, 7, 8, 9));
    EXPECT_EQ(ParseCompactTime("20240510"), At(2024, 5, 10));
    EXPECT_TRUE(ParseCompactTime("18991230000000").IsNever());
    EXPECT_TRUE(ParseCompactTime("").IsNever());
    EXPECT_TRUE(ParseCompactTime("rubbish").IsNever());
    // Months and days beyond their range carry over and never stop a load.
    EXPECT_EQ(ParseCompactTime("20241340256199"), At(2025, 2, 10, 2, 2, 39));
}

TEST(ParseDateTime, RefusesWhatIsNoDate) {
    EXPECT_EQ(ParseDateTime("2024-05-10 07:08:09"), At(2024, 5, 10, 7, 8, 9));
    EXPECT_EQ(ParseDateTime("2024-05-10T07:08:09.123"), At(2024, 5, 10, 7, 8, 9));
    EXPECT_EQ(ParseDateTime("2024-05-10"), At(2024, 5, 10));
    for (const char* text :
         {"", "1", "2024-13-01", "2024-02-30", "2024-05-10 25:00:00", "2024-05-10 7:8:9"}) {
        EXPECT_EQ(ParseDateTime(text), std::nullopt) << text;
    }
}

}  // namespace
}  // namespace nordkeep
