#include "platform/Files.h"
#include "store/EventFile.h"

#include <gtest/gtest.h>

namespace nordkeep {
namespace {

constexpr int kCommentWidth = 16;

Text Golden() {
    return ReadFile(NORDKEEP_SOURCE_DIR "/tests/data/event.eve").value_or(Text());
}

TEST(EventFile, EveryCutPointIsAFailureAndNoMore) {
    const Text golden = Golden();
    for (std::size_t length = 0; length < golden.size(); ++length) {
        cAlarm alarm;
        EXPECT_FALSE(ReadFromDisk(TextView(golden).substr(0, length), 1, alarm)) << length;
    }
    for (const std::int64_t place : {std::int64_t{0}, std::int64_t{-1}, std::int64_t{1} << 40, INT64_MIN}) {
        cAlarm alarm;
        EXPECT_FALSE(ReadFromDisk(golden, place, alarm)) << place;
    }
    EXPECT_TRUE(IsBlankFile(""));
    EXPECT_TRUE(IsBlankFile(Text(300, '\0')));
    EXPECT_FALSE(IsBlankFile(golden));
}

TEST(EventFile, SurvivesARewriteByteForByte) {
    const Text golden = Golden();
    cAlarm alarm;
    EXPECT_EQ(ReadFromDisk(golden, 1, alarm), static_cast<std::int32_t>(golden.size()) + 1);
    EXPECT_EQ(EventBytes(alarm, 0, kCommentWidth), golden);

    EXPECT_EQ(alarm.m_Status, 3);
    EXPECT_EQ(alarm.m_Repeated, -1);
    EXPECT_EQ(alarm.m_SentToTorvex, -1);
    EXPECT_EQ(alarm.m_AlarmId, 42);
    EXPECT_EQ(alarm.m_AlarmCodeToStore, "4711 Inbrott lagerport \xE5");
    EXPECT_EQ(alarm.m_ProtocolType, "ROBOFON");
    EXPECT_EQ(alarm.m_User, "AB ");
    EXPECT_EQ(alarm.m_SmallComment, "ring v\xE4ktare") << "the file's padding stays in the file";
    EXPECT_EQ(alarm.m_ResetIdCode, "4712");
    EXPECT_EQ(alarm.m_RawAlarmCode, Text("\x02"
                                         "47110031\x00\xFF\x03",
                                         12));
    EXPECT_EQ(alarm.m_URL, "http://10.0.0.5/bild");
    EXPECT_FALSE(alarm.m_IsStored);
}

TEST(EventFile, SizesAreThoseOfTheFormat) {
    cAlarm alarm;
    alarm.m_User = "";
    const Text empty = EventBytes(alarm, 0, 0);
    EXPECT_EQ(empty.size(), 90u);
    EXPECT_EQ(empty.substr(0, 4), Text("\x5B\0\0\0", 4));
    EXPECT_EQ(EventBytes(cAlarm(), 0, 0).size(), 93u) << "a new record's user is three blanks";
    EXPECT_EQ(EventBytes(alarm, 0, 500).size(), 90u + 128u);
    EXPECT_EQ(EventBytes(alarm, 1, 0)[0], 90) << "less the place that is passed in";

    alarm.m_SmallComment = "longer than five";
    EXPECT_EQ(EventBytes(alarm, 0, 5).size(), 95u);
    alarm.m_ExtraText = Text(70000, 'x');
    cAlarm back;
    ASSERT_TRUE(ReadFromDisk(EventBytes(alarm, 0, 5), 1, back));
    EXPECT_EQ(back.m_ExtraText.size(), 65535u);
    EXPECT_EQ(back.m_SmallComment, "longe");
    EXPECT_EQ(alarm.m_SmallComment, "longer than five");
}

}  // namespace
}  // namespace nordkeep
