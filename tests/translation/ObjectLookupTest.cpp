#include "translation/ObjectLookup.h"
#include "translation/ServicePeriods.h"

#include <gtest/gtest.h>

#include <algorithm>
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

TextView CodeOf(const std::unique_ptr<cIDCode>& object) {
    return object->m_IdCode;
}

/// The rules as a walk through all objects, one after the other.
ObjectMatch Walk(const cTranslate& set, const ObjectQuery& query, const LookupRules& rules) {
    ObjectMatch match;
    const auto trim = [&set](TextView text) { return Text(ZeroTrimCode(text, set.IsZeroTrimmed())); };
    const Text code = trim(UpperCase(query.idCode));
    for (const auto& object : set.m_IdCodes) {
        const bool hasCaller = !object->m_Originator.empty();
        bool isMatch = trim(object->m_IdCode) == code;
        if (rules.matchCallers && query.originator == rules.hiddenNumber) {
            isMatch = isMatch && !hasCaller;
        } else if (rules.matchCallers && hasCaller && object->m_MatchCLIDToAcceptMessage) {
            isMatch = isMatch && object->m_Originator == query.originator;
        }
        const bool hasResetCode = rules.parksResets && !object->m_ResetIdCode.empty();
        const bool isReset = hasResetCode && trim(object->m_ResetIdCode) == code;
        match.isParked = match.isParked || isReset;
        match.isInService = match.isInService || (isReset && IsInService(*object, query.now));
        if (!isMatch) continue;
        match.object = object.get();
        break;
    }
    return match;
}

TEST(ObjectLookup, FindsWhatAWalkFinds) {
    std::mt19937 random(20260310);
    const auto number = [&random](int most) { return std::uniform_int_distribution(0, most)(random); };
    const auto pick = [&number](std::vector<const char*> choices) {
        return choices[static_cast<std::size_t>(number(static_cast<int>(choices.size()) - 1))];
    };
    const auto code = [&] {
        return pick({"", "0", "00", "1", "01", "001", "2", "02", "A", "a", "0A", "10", "3"});
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
        const LookupRules rules{number(1) == 1, kHidden, number(3) > 0};
        for (int i = 0; i < 10; ++i) {
            for (auto& object : set.m_IdCodes) {
                if (number(2) > 0) continue;
                const ServicePeriod period{number(3), kNow.PlusMinutes(-number(1)),
                                           kNow.PlusMinutes(number(2) - 1)};
                ASSERT_TRUE(StoreServicePeriod(set, *object, period));
            }
            const ObjectQuery query{code(), caller(), kNow};
            const ObjectMatch expected = Walk(set, query, rules);
            const ObjectMatch found = MatchObject(set, query, rules);
            ASSERT_EQ(found.object, expected.object)
                << round << " " << query.idCode << " " << query.originator;
            ASSERT_EQ(found.isParked, expected.isParked) << round << " " << query.idCode;
            ASSERT_EQ(found.isInService, expected.isInService) << round << " " << query.idCode;
            const auto exact = std::ranges::find(set.m_IdCodes, query.idCode, &CodeOf);
            ASSERT_EQ(FindExactObject(set, query.idCode),
                      exact == set.m_IdCodes.end() ? nullptr : exact->get());
        }
    }
}

TEST(ObjectLookup, FindsTheFirstExactType) {
    cTranslate set;
    set.m_TypeCodes = {{.m_TypeCode = "AB", .m_Prio = 1}, {.m_TypeCode = "AB", .m_Prio = 2}};
    set.index.Rebuild(set);
    EXPECT_EQ(FindTypeCode(set, "ab"), nullptr);
    EXPECT_EQ(FindTypeCode(set, "AB"), &set.m_TypeCodes[0]);
}

TEST(ObjectLookup, FindsTheCallerAtTheOwnPortFirst) {
    cTranslate mute;
    cTranslate first;
    cTranslate second;
    AddObject(mute, "M", "070");
    AddObject(first, "F", "070").m_MatchCLIDForAliveTest = true;
    AddObject(second, "S", "070").m_MatchCLIDForAliveTest = true;
    AddObject(second, "T", "071").m_MatchCLIDForAliveTest = true;
    for (cTranslate* set : {&mute, &first, &second}) set->index.Rebuild(*set);
    PortBinding own;
    PortBinding other;
    own.sets[12] = {&mute, &second};
    other.sets[0] = {&first};
    PortBinding* ports[] = {&other, &own};
    EXPECT_FALSE(FindCaller(own, ports, "999"));
    EXPECT_FALSE(FindCaller(own, ports, ""));
    EXPECT_EQ(FindCaller(own, ports, "070")->object->m_IdCode, "S");
    EXPECT_EQ(FindCaller(own, ports, "070")->protocol, Protocol::ContactID);
    EXPECT_EQ(FindCaller(other, ports, "070")->set, &first);
    EXPECT_EQ(FindCaller(other, ports, "071")->object->m_IdCode, "T");
}

TEST(ZeroTrimCode, KeepsOneZero) {
    EXPECT_EQ(ZeroTrimCode("", true), "");
    EXPECT_EQ(ZeroTrimCode("0000", true), "0");
    EXPECT_EQ(ZeroTrimCode("000120", true), "120");
    EXPECT_EQ(ZeroTrimCode("0012", false), "0012");
}

TEST(SyntheticTelegram, IsFoundAgainByTheSetItIsMadeFor) {
    struct Case {
        TelegramFormat format;  // ID code, then type
        int zeroTrim;
        const char* idCode;
        const char* type;
        const char* telegram;
    };
    const Case cases[] = {
        {{}, 0, "1234", "5", ""},
        {{81, 4, 1, 2}, 0, "1234", "99", "99"},
        {{1, 2, 79, 4},
         0,
         "",
         "99",
         "00000000000000000000000000000000000000000000000000000000000000000000000000000099"},
        {{5, 4, 1, 2}, 0, "1234", "5", "50001234"},
        {{1, 8, 9, 2}, 0, "123", "99", "1230000099"},
        {{1, 8, 9, 2}, -1, "123", "99", "0000012399"},
        {{1, 2, 3, 1}, -1, "1234", "99", "129"},
        {{1, 4, 3, 2}, 0, "1234", "99", "1299"},
    };
    for (const Case& c : cases) {
        cTranslate set;
        static_cast<TelegramFormat&>(set) = c.format;
        set.m_ZeroTrim = c.zeroTrim;
        EXPECT_EQ(SyntheticTelegram(set, c.idCode, c.type), c.telegram);
    }
}

}  // namespace
}  // namespace nordkeep
