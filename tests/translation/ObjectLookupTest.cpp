#include "translation/ObjectLookup.h"
#include "translation/ServicePeriods.h"

#include <gtest/gtest.h>

#include <random>

namespace nordkeep {
namespace {

const OleDate kNow = OleDate::FromCivil({2026, 3, 10, 10, 0, 0});
constexpr const char* kHidden = "Hidden";

cIDCode& AddObject(cTranslate& set, TextView code, TextView caller = {}, bool mustAgree = false) {
    auto object = std::make_unique<cIDCode>();
    object->m_IdCode = code;
    object->m_Originator = caller;
    object->m_MatchCLIDToAcceptMessage = mustAgree;
    return *set.m_IdCodes.emplace_back(std::move(object));
}

int PlaceOf(const cTranslate& set, const cIDCode* object) {
    for (std::size_t i = 0; i < set.m_IdCodes.size(); ++i) {
        if (set.m_IdCodes[i].get() == object) return static_cast<int>(i);
    }
    return -1;
}

TEST(ObjectLookup, LetsTheCallerDecideOnlyWhenAsked) {
    cTranslate set;
    AddObject(set, "1", "070", true);
    AddObject(set, "1", "071", false);
    AddObject(set, "1");
    AddObject(set, "2", "070", true);
    AddObject(set, "2", "072", true);
    set.index.Rebuild(set);
    struct Case {
        const char* code;
        const char* caller;
        int withoutMatching;
        int withMatching;
    };
    const Case cases[] = {
        {"3", "", -1, -1},   {"3", "070", -1, -1}, {"2", "", 3, -1},   {"2", kHidden, 3, -1},
        {"2", "999", 3, -1}, {"2", "072", 3, 4},   {"2", "070", 3, 3}, {"1", "070", 0, 0},
        {"1", "071", 0, 1},  {"1", "999", 0, 1},   {"1", "", 0, 1},    {"1", kHidden, 0, 2},
        {"", "", -1, -1},
    };
    for (const Case& c : cases) {
        for (const bool matchCallers : {false, true}) {
            const LookupRules rules{.matchCallers = matchCallers, .hiddenNumber = kHidden};
            const ObjectMatch match = FindObject(set, {c.code, c.caller, kNow}, rules);
            EXPECT_EQ(PlaceOf(set, match.object), matchCallers ? c.withMatching : c.withoutMatching)
                << c.code << " from " << c.caller;
        }
    }
}

TEST(ObjectLookup, ParksResetsOfTheObjectsUpToTheMatch) {
    cTranslate set;
    AddObject(set, "1").m_ResetIdCode = "R";
    AddObject(set, "2").m_ResetIdCode = "2";
    AddObject(set, "3");
    AddObject(set, "4").m_ResetIdCode = "3";
    AddObject(set, "5").m_ResetIdCode = "r";  // the event's code is put in upper case, this one is not
    set.index.Rebuild(set);
    struct Case {
        const char* code;
        bool isParked;
        bool isInService;
    };
    ASSERT_TRUE(StoreServicePeriod(set, *set.m_IdCodes[1], LogOnly()));
    ASSERT_TRUE(StoreServicePeriod(set, *set.m_IdCodes[3], LogOnly()));
    const LookupRules rules{.parksResets = true};
    const Case cases[] = {{"9", false, false}, {"3", false, false}, {"r", true, false}, {"2", true, true}};
    for (const Case& c : cases) {
        const ObjectMatch match = FindObject(set, {c.code, {}, kNow}, rules);
        EXPECT_EQ(match.isParked, c.isParked) << c.code;
        EXPECT_EQ(match.isInService, c.isInService) << c.code;
    }
    EXPECT_FALSE(FindObject(set, {"2", {}, kNow}, {}).isParked) << "nothing is parked without a timeout";
    ASSERT_TRUE(StoreServicePeriod(set, *set.m_IdCodes[1], InUse()));
    EXPECT_FALSE(FindObject(set, {"2", {}, kNow}, rules).isInService);
}

/// The rules as a walk through all objects, one after the other.
ObjectMatch Walk(const cTranslate& set, const ObjectQuery& query, const LookupRules& rules) {
    ObjectMatch match;
    const Text code = UpperCase(query.idCode);
    const auto trim = [&set](TextView text) { return Text(ZeroTrimCode(text, set.IsZeroTrimmed())); };
    for (const auto& object : set.m_IdCodes) {
        const bool isEqual = trim(object->m_IdCode) == trim(code);
        const bool hasCaller = !object->m_Originator.empty();
        bool isMatch = isEqual;
        if (rules.matchCallers && query.originator == rules.hiddenNumber) {
            isMatch = isEqual && !hasCaller;
        } else if (rules.matchCallers && hasCaller && object->m_MatchCLIDToAcceptMessage) {
            isMatch = isEqual && !query.originator.empty() && object->m_Originator == query.originator;
        }
        const bool isReset =
            !object->m_ResetIdCode.empty() && rules.parksResets && trim(object->m_ResetIdCode) == trim(code);
        match.isParked = match.isParked || isReset;
        match.isInService = match.isInService || (isReset && IsInService(*object, query.now));
        if (isMatch) {
            match.object = object.get();
            break;
        }
    }
    return match;
}

TEST(ObjectLookup, FindsWhatAWalkFinds) {
    std::mt19937 random(20260310);
    const auto pick = [&random](std::initializer_list<const char*> choices) {
        return *(choices.begin() + std::uniform_int_distribution<std::size_t>(0, choices.size() - 1)(random));
    };
    const auto number = [&random](int most) { return std::uniform_int_distribution(0, most)(random); };
    const auto code = [&] {
        return pick({"", "0", "00", "1", "01", "001", "2", "02", "A", "0A", "10", "3", "4"});
    };
    const auto caller = [&] { return pick({"", "", "070", "071", kHidden}); };
    for (int round = 0; round < 3000; ++round) {
        cTranslate set;
        set.m_ZeroTrim = -number(1);
        for (int i = number(14); i > 0; --i) {
            cIDCode& object = AddObject(set, code(), caller(), number(1) == 1);
            if (number(2) == 0) object.m_ResetIdCode = code();
        }
        set.index.Rebuild(set);
        for (auto& object : set.m_IdCodes) {
            const OleDate end = kNow.PlusMinutes(number(2) - 1);
            StoreServicePeriod(set, *object,
                               {.mode = number(3), .begin = kNow.PlusMinutes(-number(1)), .end = end});
        }
        const LookupRules rules{number(1) == 1, kHidden, number(3) > 0};
        for (int i = 0; i < 10; ++i) {
            const Text idCode = number(3) == 0 ? "a" : code();
            const ObjectQuery query{idCode, caller(), kNow};
            const ObjectMatch expected = Walk(set, query, rules);
            const ObjectMatch found = FindObject(set, query, rules);
            ASSERT_EQ(found.object, expected.object)
                << round << " " << idCode << " from " << query.originator;
            ASSERT_EQ(found.isParked, expected.isParked) << round << " " << idCode;
            ASSERT_EQ(found.isInService, expected.isInService) << round << " " << idCode;
        }
    }
}

TEST(ObjectLookup, FindsTheFirstExactTypeAndObject) {
    cTranslate set;
    set.m_ZeroTrim = -1;
    set.m_TypeCodes = {
        {.m_TypeCode = "AB", .m_Prio = 1}, {.m_TypeCode = "AB", .m_Prio = 2}, {.m_TypeCode = ""}};
    AddObject(set, "012");
    AddObject(set, "12");
    set.index.Rebuild(set);
    EXPECT_EQ(FindTypeCode(set, "ab"), nullptr);
    ASSERT_NE(FindTypeCode(set, "AB"), nullptr);
    EXPECT_EQ(FindTypeCode(set, "AB")->m_Prio, 1);
    EXPECT_EQ(FindTypeCode(set, ""), &set.m_TypeCodes[2]);
    EXPECT_EQ(FindExactObject(set, "12"), set.m_IdCodes[1].get());
    EXPECT_EQ(FindExactObject(set, "0012"), nullptr);
}

TEST(ObjectLookup, FindsTheCallerAtTheOwnPortFirst) {
    const auto fill = [](cTranslate& set, TextView code, TextView caller, bool feeds) {
        AddObject(set, code, caller).m_MatchCLIDForAliveTest = feeds;
        set.index.Rebuild(set);
    };
    cTranslate mute;
    cTranslate first;
    cTranslate second;
    fill(mute, "M", "070", false);
    fill(first, "F", "070", true);
    fill(second, "S", "070", true);
    fill(second, "T", "071", true);
    PortBinding own;
    PortBinding other;
    own.sets[12] = {&mute, &second};
    other.sets[0] = {&first};
    PortBinding* ports[] = {&other, &own};
    const auto found = FindCaller(own, ports, "070");
    ASSERT_TRUE(found);
    EXPECT_EQ(found->object->m_IdCode, "S");
    EXPECT_EQ(found->translationNumber, 12);
    EXPECT_EQ(FindCaller(other, ports, "070")->set, &first);
    EXPECT_EQ(FindCaller(other, ports, "071")->object->m_IdCode, "T");
    EXPECT_FALSE(FindCaller(own, ports, "999"));
    EXPECT_FALSE(FindCaller(own, ports, ""));
}

TEST(ZeroTrimCode, KeepsOneZero) {
    EXPECT_EQ(ZeroTrimCode("", true), "");
    EXPECT_EQ(ZeroTrimCode("0000", true), "0");
    EXPECT_EQ(ZeroTrimCode("000120", true), "120");
    EXPECT_EQ(ZeroTrimCode("0012", false), "0012");
}

TEST(SyntheticTelegram, IsFoundAgainByTheSetItIsMadeFor) {
    struct Case {
        TelegramFormat format;
        int zeroTrim;
        const char* idCode;
        const char* type;
        const char* telegram;
    };
    const auto format = [](int idStart, int idLength, int typeStart, int typeLength) {
        return TelegramFormat{.m_IdCode_Format_StartPos = idStart,
                              .m_IdCode_Format_Length = idLength,
                              .m_TypeCode_Format_StartPos = typeStart,
                              .m_TypeCode_Format_Length = typeLength};
    };
    const Case cases[] = {
        {{}, 0, "1234", "5", ""},
        {format(81, 4, 1, 2), 0, "1234", "99", "99"},
        {format(79, 4, 1, 1), 0, "1234", "9", nullptr},
        {format(1, 4, 5, 2), 0, "1234", "99", "123499"},
        {format(5, 4, 1, 2), 0, "1234", "5", "50001234"},
        {format(1, 8, 9, 2), 0, "123", "99", "1230000099"},
        {format(1, 8, 9, 2), -1, "123", "99", "0000012399"},
        {format(1, 2, 3, 1), -1, "1234", "99", "129"},
        {format(1, 4, 3, 2), 0, "1234", "99", "1299"},
    };
    for (const Case& c : cases) {
        cTranslate set;
        static_cast<TelegramFormat&>(set) = c.format;
        set.m_ZeroTrim = c.zeroTrim;
        const Text telegram = SyntheticTelegram(set, c.idCode, c.type);
        EXPECT_LE(telegram.size(), 80u);
        if (c.telegram) {
            EXPECT_EQ(telegram, c.telegram);
        }
    }
}

}  // namespace
}  // namespace nordkeep
