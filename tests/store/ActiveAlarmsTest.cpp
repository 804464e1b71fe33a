#include "store/EventList.h"

#include <gtest/gtest.h>

#include <random>

namespace nordkeep {
namespace {

/// The same answers, found by walking all records in list order.
struct LiteralWalk {
    std::optional<EventSequence> partner{};
    std::vector<EventSequence> hits{};
    std::optional<EventSequence> lastByIdCode{};
};

LiteralWalk Walk(const EventList& events, const cAlarm& n) {
    LiteralWalk found;
    for (EventSequence at = events.Next(0); at != 0; at = events.Next(at)) {
        const cAlarm& a = *events.Find(at);
        if (!found.partner && IsRepeatOf(a, n)) found.partner = at;
        const ResetMatch match = MatchReset(a, n);
        if (match != ResetMatch::None) found.hits.push_back(at);
        if (match == ResetMatch::ByIdCode) found.lastByIdCode = at;
    }
    return found;
}

/// Few values for each field, so that records meet often; some are each other's tails or zero-padded forms.
class RandomAlarms {
 public:
    cAlarm Next() {
        cAlarm alarm;
        Change(alarm);
        alarm.m_TranslationFile = One({"", "Set"});
        alarm.m_ProtocolType = One({"A", "B"});
        alarm.m_TranslationNumberToUse = OneNumber({0, 8, 12});
        alarm.m_ZeroTrim = OneNumber({0, 1});
        return alarm;
    }
    void Change(cAlarm& alarm) {
        alarm.m_Status = OneNumber({-1, 0, 1, 2, 3, 2, 3, 4, 5, 7});
        alarm.m_IdCode = One({"", "0", "00", "12", "0012", "7"});
        alarm.m_ResetIdCode = One({"", "", "12", "012", "7"});
        alarm.m_TypeCode = One({"", "1", "*"});
        alarm.m_ResetTypeCode = One({"", "1", "*"});
        alarm.m_SIADataCode = One({"", "1"});
        alarm.m_SIAAddress = One({"", "Z1"});
        alarm.m_Prio = One({"3", "1"});
    }
    std::uint32_t Below(std::size_t count) { return static_cast<std::uint32_t>(random_() % count); }

 private:
    Text One(std::initializer_list<const char*> values) { return values.begin()[Below(values.size())]; }
    int OneNumber(std::initializer_list<int> values) { return values.begin()[Below(values.size())]; }

    std::mt19937 random_{4711};
};

TEST(ActiveAlarms, AnswersAreThoseOfALiteralWalk) {
    RandomAlarms random;
    EventList events;
    std::vector<EventSequence> sequences;
    std::size_t partners = 0, hits = 0, byIdCode = 0;
    for (int step = 0; step < 4000; ++step) {
        const cAlarm n = random.Next();
        const LiteralWalk walk = Walk(events, n);
        EXPECT_EQ(events.Active().FirstRepeatPartner(n), walk.partner);
        EXPECT_EQ(events.Active().ResetHits(n), walk.hits);
        EXPECT_EQ(events.Active().HasResetHit(n), !walk.hits.empty());
        EXPECT_EQ(events.Active().LastHitByIdCode(n), walk.lastByIdCode);
        partners += walk.partner.has_value();
        hits += walk.hits.size();
        byIdCode += walk.lastByIdCode.has_value();

        sequences.push_back(events.Append(std::make_unique<cAlarm>(n), false));
        const EventSequence changed = sequences[random.Below(sequences.size())];
        random.Change(*events.Find(changed));
        events.Reindex(changed, false);
        if (sequences.size() > 60) {
            const auto gone = sequences.begin() + random.Below(sequences.size());
            EXPECT_TRUE(events.TakeOut(*gone));
            sequences.erase(gone);
        }
    }
    // The walk itself must have met every case often.
    EXPECT_GT(partners, 500u);
    EXPECT_GT(hits, 500u);
    EXPECT_GT(byIdCode, 100u);
}

TEST(ActiveAlarms, CodesRepeatThroughZeroTrimButResetExactly) {
    cAlarm a;
    a.m_Status = kStatusNewWaiting;
    a.m_IdCode = "000123";
    a.m_ZeroTrim = 1;
    a.m_TypeCode = a.m_ResetTypeCode = "9";
    cAlarm n;
    n.m_IdCode = "123";
    n.m_TypeCode = "9";
    EXPECT_TRUE(IsRepeatOf(a, n));
    EXPECT_EQ(MatchReset(a, n), ResetMatch::None);
    n.m_IdCode = "000123";
    EXPECT_FALSE(IsRepeatOf(a, n)) << "each code is trimmed by its own record";
    EXPECT_EQ(MatchReset(a, n), ResetMatch::ByType);
    a.m_ResetIdCode = "000123";
    EXPECT_EQ(MatchReset(a, n), ResetMatch::ByIdCode) << "the other object's code comes first";
    n.m_TranslationNumberToUse = 8;
    EXPECT_EQ(MatchReset(a, n), ResetMatch::None) << "on SIA lines it does not reset by itself";
    n.m_TranslationNumberToUse = 12;
    EXPECT_EQ(MatchReset(a, n), ResetMatch::None);
    n.m_Prio = "3";
    EXPECT_EQ(MatchReset(a, n), ResetMatch::ByType) << "the restore qualifier resets whatever the mark";
    a.m_Status = kStatusNew;
    EXPECT_EQ(MatchReset(a, n), ResetMatch::None) << "an alarm that waits for nothing";
}

TEST(EventList, FindsTheFirstRecordOfAFileNumberAlsoAfterAChange) {
    EventList events;
    std::vector<EventSequence> s;
    for (int i = 0; i < 3; ++i) {
        s.push_back(events.Append(std::make_unique<cAlarm>(cAlarm{.m_FilePointer = 7}), i == 1));
    }
    EXPECT_EQ(events.FindFilePointer(7), s[0]);
    events.Find(s[0])->m_FilePointer = 8;
    events.Reindex(s[0], false);
    EXPECT_EQ(events.FindFilePointer(7), s[1]);
    EXPECT_EQ(events.FindFilePointer(8), s[0]);
    EXPECT_EQ(events.FindFilePointer(9), 0u);
    events.TakeOut(s[1]);
    EXPECT_EQ(events.FindFilePointer(7), s[2]);
    EXPECT_EQ(events.Next(s[0]), s[2]);
    EXPECT_TRUE(events.TestAlarms().empty());
}

}  // namespace
}  // namespace nordkeep
