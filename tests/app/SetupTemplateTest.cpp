#include "app/settings/KnownSettings.h"
#include "app/settings/LiveSettings.h"
#include "console/setup/FieldCheck.h"
#include "runtime/Language.h"
#include "tests/doubles/TempFolder.h"

#include <gtest/gtest.h>

#include <fstream>
#include <set>

namespace nordkeep {
namespace {

Text ReadSource(const char* name) {
    std::ifstream file(NORDKEEP_SOURCE_DIR + std::string(name), std::ios::binary);
    return Text{std::istreambuf_iterator<char>(file), {}};
}

/// The template of the descriptor file, read once.
struct Delivered {
    SetupDescriptor descriptor = ParseDescriptor(ReadSource("/templates/Nordkeep.Default_desc"));

    template <class Act>
    void ForEachKey(Act act) const {
        for (const DescribedPage& page : descriptor.pages) {
            for (const DescribedGroup& group : page.groups) {
                for (const DescribedKey& key : group.keys) act(key);
            }
        }
    }
};

// What the program itself writes is no setting: the number of the next alarm, and how a list was left.
bool IsDescribed(const KnownSetting& known) {
    return !known.isFamily && known.key != "NextAlarmId" && known.key != "SortedBy";
}

void ExpectLimits(const DescribedKey& key, const KnownSetting& known) {
    if (known.kind != SettingKind::Number) return;
    for (const DescribedChoice& choice : key.choices) {
        EXPECT_GE(LeadingInt32(choice.value), known.low) << key.key;
        EXPECT_LE(LeadingInt32(choice.value), known.high) << key.key;
    }
    if (key.control != ControlKind::Number) return;
    // Where the reader takes any number, the dialog may know better.
    EXPECT_TRUE(known.low == INT_MIN || key.low == known.low) << key.key;
    EXPECT_TRUE(known.high == INT_MAX || key.high == known.high) << key.key;
}

TEST(SetupTemplate, DescribesEveryKnownKeyAsItIs) {
    const Delivered delivered;
    ASSERT_FALSE(delivered.descriptor.fault) << delivered.descriptor.fault->line;
    for (const KnownSetting& known : KnownSettings().All()) {
        if (!IsDescribed(known)) continue;
        const bool isOfPort = known.scope == SettingScope::Port;
        const DescribedKey* key = FindKey(delivered.descriptor, {known.section, known.key, isOfPort});
        EXPECT_TRUE(key) << known.section << " " << known.key;
        if (!key) continue;
        EXPECT_EQ(key->byDefault, known.byDefault) << known.key;
        EXPECT_EQ(key->scope, known.scope) << known.key;
        ExpectLimits(*key, known);
    }
    delivered.ForEachKey([](const DescribedKey& key) {
        const bool isOfPort = key.scope == SettingScope::Port;
        EXPECT_TRUE(KnownSettings().Find(isOfPort, key.section, key.key)) << key.key << " is read by nobody";
        if (!isOfPort) {
            EXPECT_EQ(key.when == AppliesWhen::Restart, CountsAtNextStart(key.section, key.key)) << key.key;
        }
    });
}

TEST(SetupTemplate, HasItsWordsInBothLanguagesAndDefaultsWithoutFaults) {
    const Delivered delivered;
    const TempFolder folder;
    for (const char* number : {"044", "046"}) {
        Language language;
        language.LoadFrom(ReadSource((std::string("/languages/NK_Lang.") + number).c_str()));
        std::set<Text> captions;
        const auto expectWords = [&](const Wording& words) {
            EXPECT_TRUE(language.Has(words.number)) << words.number;
        };
        for (const DescribedPage& page : delivered.descriptor.pages) {
            expectWords(page.caption);
            for (const DescribedGroup& group : page.groups) expectWords(group.caption);
        }
        const Captions words(language);
        delivered.ForEachKey([&](const DescribedKey& key) {
            expectWords(key.caption);
            expectWords(key.help);
            for (const DescribedChoice& choice : key.choices) expectWords(choice.caption);
            if (key.control == ControlKind::Language || key.byDefault.empty()) return;
            EXPECT_EQ(FaultOf(key, key.byDefault, {.captions = words, .dataFolder = folder.Tree()}), "")
                << key.key;
        });
    }
}

// A value that is renewed is read where it is used; one that is not stays as it was built.
TEST(LiveSettings, TakeWhatCountsAtOnceAndLeaveTheRest) {
    const TempFolder folder;
    Settings files(folder.Tree());
    CentreSettings settings(files);
    LiveSettings live(files, settings);
    folder.Write("Settings\\Nordkeep.INI",
                 "[General]\r\nMaxAlarms=7\r\nAlarmSound=3\r\nAutoAckResetEvents=9\r\nSmallCommentSize=5\r\n"
                 "AliveTest2ResetTimerPrio=4\r\n[Torvex]\r\nPort=99\r\nFormat=[A]\r\n");
    live.Renew();
    EXPECT_EQ(settings.store.MaxAlarms, 7);
    EXPECT_EQ(settings.desk.AlarmSound, 3);
    EXPECT_EQ(settings.resets.AutoAckResetEvents, 0) << "as it is read at the start";
    EXPECT_EQ(settings.torvex.Format, "[A]");
    EXPECT_EQ(settings.torvex.Port, -1);
    EXPECT_EQ(settings.store.SmallCommentSize, 0);
    EXPECT_EQ(settings.store.AliveTest2ResetTimerPrio, 9999);
}

}  // namespace
}  // namespace nordkeep
