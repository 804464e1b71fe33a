#include "runtime/Dates.h"
#include "tests/translation/TranslationFixture.h"
#include "translation/LastEvents.h"

#include <chrono>

namespace nordkeep {
namespace {

using TranslationsTest = TranslationFixture;

Texts NamesOf(const std::vector<cTranslate*>& sets) {
    Texts names;
    for (const cTranslate* set : sets) names.push_back(set->m_FileName);
    return names;
}

TEST_F(TranslationsTest, BindsThePortsSets) {
    struct Case {
        const char* value;
        Texts sets;
    };
    language.LoadFrom("1094=Not loaded\r\n");
    const Case cases[] = {
        {"", {}},
        {",A", {}},
        {" A , b,a,B,,C", {"A", "b"}},
        {"..\\A,A\\..\\B,A", {"A"}},
        {"missing,North\\A", {"missing", "North\\A"}},
    };
    for (const Case& c : cases) {
        BindPort(Text("SIA=") + c.value);
        Reload();
        EXPECT_EQ(NamesOf(port.sets[8]), c.sets) << c.value;
        EXPECT_EQ(translations.Sets().size(), c.sets.size())
            << "sets that no port names are gone: " << c.value;
        EXPECT_EQ(port.protocolNames[8], Text(c.value).empty() ? "" : "SIA");
    }
    EXPECT_EQ(logged, (Texts{"Not loaded", "Not loaded"}));
}

TEST_F(TranslationsTest, WalksThePortsSetsInOrder) {
    BindPort("SIA=A,B\r\nRobofon=b");
    Reload();
    cTranslate* a = translations.Find("a");
    cTranslate* b = translations.Find("B");
    ASSERT_TRUE(a && b);
    EXPECT_EQ(port.sets[1].at(0), b) << "two lists share one set";
    EXPECT_EQ(translations.GetNextTranslation(&port, Protocol::SIA, nullptr), a);
    EXPECT_EQ(translations.GetNextTranslation(&port, Protocol::SIA, a), b);
    EXPECT_EQ(translations.GetNextTranslation(&port, Protocol::SIA, b), nullptr);
    EXPECT_EQ(translations.GetNextTranslation(&port, Protocol::Robofon, a), nullptr);
    for (const int unbound : {-1, 0, 41}) {
        EXPECT_EQ(translations.GetNextTranslation(&port, ProtocolOf(unbound), nullptr), nullptr);
    }
    EXPECT_EQ(translations.GetNextTranslation(nullptr, Protocol::SIA, nullptr),
              &translations.NullTranslation());
    EXPECT_EQ(translations.GetNextTranslation(nullptr, Protocol::SIA, &translations.NullTranslation()),
              nullptr);
}

TEST_F(TranslationsTest, ReloadsInPlaceAndInFileOrder) {
    LoadSet("FORMAT=1,4\nPADDING=8,48\n1;one;60\n2;two;;;;;;;;R\n3/070;three;60\n4;four");
    Object("1").m_LastIncomingEvent = At(9);
    Object("2").m_LastIncomingEvent = At(8);
    Object("3").m_LastIncomingEvent = At(7);
    const cIDCode* one = &Object("1");
    const auto generation = translations.Generation();
    time.Advance(600'000);
    WriteSet("a", "4;four\n3/070;three;60\n5;five\n1;uno;60\n5;cinco", "AB;1;x;");
    Reload();
    EXPECT_EQ(Codes(), (Texts{"4", "3", "5", "1"})) << "as a restart would have them";
    EXPECT_EQ(&Object("1"), one);
    EXPECT_EQ(Object("1").m_ObjectName, "uno");
    EXPECT_EQ(Object("1").m_LastIncomingEvent, At(9));
    EXPECT_EQ(Expiration("1"), At(11)) << "an unchanged schedule runs on";
    EXPECT_TRUE(Object("3").m_LastIncomingEvent.IsNever()) << "an object with a caller is a new record";
    EXPECT_EQ(Expiration("3"), At(11, 10));
    EXPECT_EQ(Object("5").m_ObjectName, "cinco") << "two rows of one code are one object";
    EXPECT_EQ(FindExactObject(*translations.Sets()[0], "2"), nullptr);
    EXPECT_FALSE(MatchObject(*translations.Sets()[0], {"R", {}, At(11)}, {.parksResets = true}).isParked);
    EXPECT_EQ(translations.Sets()[0]->m_IdCode_Format_Length, 0) << "a directive that left the file is over";
    EXPECT_EQ(translations.Sets()[0]->m_Padding_Count, 0);
    EXPECT_NE(FindTypeCode(*translations.Sets()[0], "AB"), nullptr);
    EXPECT_NE(translations.Generation(), generation);
}

TEST_F(TranslationsTest, KeepsPlainRowsAndCallersApart) {
    LoadSet("7/070;caller\n7;plain\n7/070;again\n");
    EXPECT_EQ(Codes(), (Texts{"7", "7", "7"}));
    EXPECT_EQ(Object("7").m_ObjectName, "caller") << "the row that stands first answers";
    translations.Sets()[0]->m_IdCodes[1]->m_LastIncomingEvent = At(9);
    Reload();
    ASSERT_EQ(Codes().size(), 3u);
    EXPECT_EQ(translations.Sets()[0]->m_IdCodes[1]->m_LastIncomingEvent, At(9));
    EXPECT_EQ(translations.Sets()[0]->m_IdCodes[1]->m_ObjectName, "plain");
}

TEST_F(TranslationsTest, KeepsTheObjectsOfAFileThatCannotBeRead) {
    settings.ZeroTrimObjectId = true;
    LoadSet("ZEROTRIM=0\n1;one");
    folder.Write("Data\\A.LastEvents", "1;20260310080000");
    RemoveFile(folder.Resolve("Settings\\A.IDCode"));
    folder.MakeFolders("Settings\\A.IDCode");
    Reload();
    EXPECT_EQ(Codes(), Texts{"1"});
    EXPECT_TRUE(Object("1").m_LastIncomingEvent.IsNever());
    EXPECT_EQ(translations.Sets()[0]->m_ZeroTrim, -1);
    EXPECT_EQ(MatchObject(*translations.Sets()[0], {"001", {}, time.Now()}, {}).object, &Object("1"));
    EXPECT_FALSE(folder.Exists("Data\\A.LastEvents")) << "saved state is used once or not at all";
}

TEST_F(TranslationsTest, ReschedulesChangedSchedulesOnly) {
    struct Case {
        const char* newSchedule;
        bool hasFailed;
        OleDate expiration;
        bool stillFailed;
    };
    const Case cases[] = {
        {"60", false, At(11), false}, {"60", true, At(11), true},    {"30", false, At(10, 45), false},
        {"30", true, At(11), true},   {"0", true, OleDate(), false}, {"", false, OleDate(), false},
    };
    for (const Case& c : cases) {
        for (const int test : {1, 2}) {
            const Text fields = test == 1 ? "1;;" : "1;;;;;;;;;;";
            time.Set(At(10));
            LoadSet("");
            LoadSet(fields + "60");
            Object("1").FailedFlag(test) = c.hasFailed;
            time.Set(At(10, 15));
            WriteSet("A", fields + c.newSchedule);
            Reload();
            EXPECT_EQ(Expiration("1", test), c.expiration) << c.newSchedule << " of test " << test;
            EXPECT_EQ(Object("1").FailedFlag(test), c.stillFailed) << c.newSchedule << " of test " << test;
        }
    }
}

TEST_F(TranslationsTest, RestartsTestsAtALoadWhereAsked) {
    LoadSet("1;;60;;;;;;;;60\n2;;;;;;;;;;60\n3;;60");
    EXPECT_EQ(Expiration("2", 2), At(11)) << "a new schedule starts by itself";
    EXPECT_EQ(Expiration("3", 2), At(10)) << "the second test follows the first one's schedule";
    settings.ResetAliveTestTimers = settings.ResetAliveTest2Timers = settings.AliveTestDebug = true;
    for (auto& object : translations.Sets()[0]->m_IdCodes)
        object->FailedFlag(1) = object->FailedFlag(2) = true;
    time.Set(At(10, 30));
    Reload();
    EXPECT_EQ(Expiration("1", 1), At(11, 30));
    EXPECT_EQ(Expiration("1", 2), At(11, 30));
    EXPECT_FALSE(Object("1").FailedFlag(1) || Object("1").FailedFlag(2));
    EXPECT_EQ(Expiration("2", 2), At(11)) << "but not without a first schedule";
    EXPECT_TRUE(Object("2").FailedFlag(2));
    EXPECT_EQ(logged.at(0),
              "AliveTest was changed by FindOrReloadTranslation (ResetAliveTestTimers) '1' to "
              "2026-03-10 11:30:00");
}

TEST_F(TranslationsTest, CarriesSupervisionOverARestart) {
    const Text objects = "1;;60;;;;;;;;90\n2;;;;;;;;;R\n3;;60\n4/070;;60";
    LoadSet(objects);
    Object("1").m_AliveTestIntervalHasExceeded = true;
    Object("1").m_LastIncomingEvent = At(9);
    StoreServicePeriod(*translations.Sets()[0], Object("2"), LogUntil(At(10), At(12)));
    ASSERT_TRUE(translations.SaveLastEvents());
    translations.Clear();
    time.Set(At(11));
    LoadSet(objects);
    EXPECT_TRUE(Object("1").m_AliveTestIntervalHasExceeded);
    EXPECT_EQ(Object("1").m_LastIncomingEvent, At(9));
    EXPECT_EQ(Expiration("1", 1), At(11));
    EXPECT_EQ(Expiration("1", 2), At(11, 30));
    EXPECT_TRUE(MatchObject(*translations.Sets()[0], {"R", {}, At(11)}, {.parksResets = true}).isInService);
    EXPECT_FALSE(folder.Exists("Data\\A.LastEvents"));
    translations.Clear();
    LoadSet(objects);
    EXPECT_EQ(Expiration("1", 1), At(12)) << "after a crash all tests start anew";
    EXPECT_FALSE(IsInService(Object("2"), At(11)));
}

TEST_F(TranslationsTest, ReadsRubbishWithoutHarm) {
    Text noise;
    for (unsigned i = 0; i < 200'000; ++i) noise += static_cast<char>(i * 2654435761u >> 13);
    WriteSet("A", noise, noise);
    WriteSet("B", Text(100'000'000, 'x'), Text(1'000'000, ';'));
    for (const char* file : {"Data\\A.LastEvents", "Data\\A.ServiceIn"}) folder.Write(file, noise);
    folder.Write("Settings\\Port1.ini", "[Translate]\nRobofon=A,B," + Text("x\0y", 3) + "\nSIA=" + noise);
    Reload();
    EXPECT_LT(translations.Find("B")->m_IdCodes.at(0)->m_IdCode.size(), 100'000u);
    EXPECT_TRUE(translations.SaveLastEvents());
    periods.TakeIn(*translations.Find("A"));
}

TEST_F(TranslationsTest, HandlesAHundredThousandObjects) {
    Text objects;
    for (int i = 0; i < 100'000; ++i)
        objects += std::to_string(i) + ";Name;60;;;;Customer;1;0;R;08:00:00\r\n";
    LoadSet(objects);
    ASSERT_TRUE(translations.SaveLastEvents());
    Reload();
    EXPECT_EQ(Codes().size(), 100'000u);
    scan.Tick(60'000, At(10, 1));  // the test's own clock stands still, so that all is one slice
    EXPECT_FALSE(scan.IsRunning());
}

TEST_F(TranslationsTest, WatchesItsFiles) {
    LoadSet("1");
    ReloadWatch watch(translations, periods, settings);
    EXPECT_FALSE(watch.Tick(1'000'000)) << "off";
    settings.AutoReloadTranslations = 3;
    const auto touch = [this](TextView file, int day) {
        const auto when = std::filesystem::file_time_type::clock::now() - std::chrono::hours(24 * day);
        std::filesystem::last_write_time(folder.Resolve(file), when);
    };
    EXPECT_FALSE(watch.Tick(60'000)) << "nothing has changed";
    touch("Settings\\A.TypeCode", 1);
    EXPECT_FALSE(watch.Tick(5'000)) << "3 seconds count as 5, and these have to be over";
    EXPECT_TRUE(watch.Tick(1));
    Reload();
    touch("Settings\\A.IDCode", 2);
    EXPECT_TRUE(watch.Tick(60'000));
    EXPECT_TRUE(watch.Tick(60'000)) << "until it has been read";
    RemoveFile(folder.Resolve("Settings\\A.IDCode"));
    EXPECT_FALSE(watch.Tick(60'000)) << "a file that is not there is no change";
    Reload();
    folder.Write("Settings\\A.IDCode", "1");
    folder.Write("Data\\A.ServiceIn", "1;3");
    EXPECT_FALSE(watch.Tick(60'000)) << "a file that was not there is not compared";
    EXPECT_EQ(Object("1").m_ServiceMode, 0) << "exchange is off";
    settings.AutoExchangeServiceInfo = true;
    EXPECT_FALSE(watch.Tick(60'000));
    EXPECT_EQ(Object("1").m_ServiceMode, 3);
}

}  // namespace
}  // namespace nordkeep
