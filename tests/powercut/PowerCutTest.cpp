#include "runtime/Fields.h"
#include "tests/doubles/TempFolder.h"
#include "tests/powercut/CoreRun.h"
#include "tests/powercut/RecordedDisk.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <random>

namespace nordkeep {
namespace {

constexpr int kObjects = 4;
/// The files of the last events keep whole seconds.
constexpr double kSecond = 1.1 / 86'400;

/// What somebody has been promised: what a reply, a closed sheet or a set mode stands for.
struct Promises {
    std::map<Text, int> events{};      // by their text: how often they have been changed
    std::map<Text, int> removed{};     // the same of those that have left
    std::map<Text, double> service{};  // by ID code: when its mode began
    std::int32_t lastNumber = -1;      // of an alarm
};

class PowerCutTest : public ::testing::Test {
 protected:
    PowerCutTest() {
        // Those of the data are made by the first start, and have to outlast the power cut behind it.
        for (const char* name : {"Settings", "LogFiles", "Comments"}) folder.MakeFolders(name);
        folder.Write("Settings\\Nordkeep.INI",
                     "[General]\r\nNextAlarmId=1\r\nMaxAlarms=12\r\nMaxTestAlarms=-99\r\nWidthForNumber=4\r\n"
                     "SmallCommentSize=20\r\nArchiveLogFileTimeFormat=[AlarmCode]\r\n");
        folder.Write("Settings\\Port1.ini", "[Translate]\r\nRobofon=Town\r\n");
        folder.Write("Settings\\Town.IDCode",
                     "FORMAT=1,4,0,0,5,2\r\n1001;a\r\n1002;b\r\n1003;c\r\n1004;d\r\n");
        folder.Write("Settings\\Town.TypeCode", "01;1;Fire;02\r\n02;3;Over;\r\n");
    }

    void PlayOneTurn(CoreRun& run, std::mt19937& random, Promises& made);
    void Check(const NativePath& image, const Promises& least, const Text& what);

    TempFolder folder{};
    ManualTime time{};
    int counter = 0;
};

// What is done in one turn counts as promised when its commit has come back.
void PowerCutTest::PlayOneTurn(CoreRun& run, std::mt19937& random, Promises& made) {
    Promises turn = made;
    for (auto deeds = 1 + random() % 3; deeds > 0; --deeds) {
        const auto kind = random() % 10;
        const auto& known = turn.events;
        if (kind < 5 || known.empty()) {
            const Text code =
                "100" + std::to_string(1 + random() % kObjects) + "01" + std::to_string(++counter);
            bool isStored = false;
            run.core->commit.Begin();
            run.core->intake.HandleIncomingEvent({.AlarmTime = time.Now(),
                                                  .ProtocolType = "Robofon",
                                                  .DefaultAlarmCode = code,
                                                  .PortObject = &run.port,
                                                  .TranslationNumberToUse = Protocol::Robofon});
            run.core->commit.End([&isStored](bool isSafe) { isStored = isSafe; });
            turn.events[code] = 0;
            if (const cAlarm* alarm = run.Find(code)) turn.lastNumber = alarm->m_AlarmId;
            run.core->commit.Commit();
            EXPECT_TRUE(isStored);
        } else if (kind < 7) {
            const auto chosen =
                std::next(known.begin(), static_cast<std::ptrdiff_t>(random() % known.size()));
            const Text text = chosen->first;
            const int version = chosen->second + 1;
            cAlarm* alarm = run.Find(text);
            if (!alarm) continue;
            random() % 3 == 0 ? run.core->handling.End(*alarm, std::to_string(version))
                              : run.core->handling.Comment(*alarm, std::to_string(version));
            turn.events[text] = version;
        } else if (kind == 7) {
            const std::size_t object = random() % kObjects;
            run.core->servicePeriods.Set(run.Set(), run.Object(object),
                                         LogUntil(time.Now(), time.Now().PlusMinutes(9999)),
                                         {.user = "anna", .station = kHere});
            turn.service[run.Object(object).m_IdCode] = run.Object(object).m_ServicePeriodBegin.Days();
        } else if (kind == 8) {
            const auto chosen =
                std::next(known.begin(), static_cast<std::ptrdiff_t>(random() % known.size()));
            const cAlarm* alarm = run.Find(chosen->first);
            if (!alarm) continue;
            const std::int32_t pointer = alarm->m_FilePointer;
            turn.removed[chosen->first] = chosen->second;
            turn.events.erase(chosen->first);
            run.core->handling.Archive(std::span(&pointer, 1));
        } else {
            time.Advance(static_cast<std::int64_t>(random() % 8000));
            run.core->store.UpkeepSlice();
            run.core->commit.UseIdleMoment(time);
        }
    }
    run.core->commit.Commit();
    // What the limits have taken out has left by a way of its own.
    for (auto at = turn.events.begin(); at != turn.events.end();) {
        if (run.Find(at->first)) {
            ++at;
            continue;
        }
        turn.removed[at->first] = at->second;
        at = turn.events.erase(at);
    }
    made = turn;
}

void PowerCutTest::Check(const NativePath& image, const Promises& least, const Text& what) {
    ManualTime later(time.Now().PlusMinutes(1));
    CoreRun run(image, later);
    ASSERT_TRUE(run.journal.IsOpen()) << what << run.journal.LastError();
    const Text archive = ReadFile(run.tree.Resolve("Data\\Archive.TXT")).value_or(Text());
    for (const auto& [text, version] : least.events) {
        const cAlarm* alarm = run.Find(text);
        if (!alarm) {
            ASSERT_NE(archive.find(text), Text::npos) << what << " lost " << text;
            continue;
        }
        ASSERT_GE(LeadingInt32(alarm->m_SmallComment), version) << what << " went back: " << text;
    }
    for (const auto& [text, version] : least.removed) {
        ASSERT_NE(archive.find(text), Text::npos) << what << " archived and gone: " << text;
        ASSERT_EQ(run.Find(text), nullptr) << what << " came back: " << text;
    }
    for (const auto& [idCode, begin] : least.service) {
        const auto& objects = run.Set().m_IdCodes;
        const auto object = std::ranges::find(objects, idCode, [](const auto& one) { return one->m_IdCode; });
        ASSERT_NE((*object)->m_ServiceMode, 0) << what << " back in use: " << idCode;
        ASSERT_GE((*object)->m_ServicePeriodBegin.Days(), begin - kSecond) << what << " " << idCode;
    }
    ASSERT_GT(run.core->store.GetNextAlarmId(), least.lastNumber) << what << " a number twice";
}

int EnvironmentOr(const char* name, int byDefault) {
    const char* text = std::getenv(name);
    return text ? std::atoi(text) : byDefault;
}

// The program plays its days on the real system, and every call that reaches the disk is written down. Then
// the power goes at these calls, one after the other, and takes what had not been synchronised: all of it,
// the bytes behind new names, or what chance decides. Each time a start has to find everything that had been
// promised by then.
TEST_F(PowerCutTest, EverythingPromisedIsThereWheneverThePowerGoes) {
    const auto seed = static_cast<unsigned>(EnvironmentOr("NORDKEEP_SEED", 1));
    const int turns = EnvironmentOr("NORDKEEP_TURNS", 60);
    const int wanted = EnvironmentOr("NORDKEEP_CUTS", 400);
    std::mt19937 random(seed);
    std::vector<std::pair<std::size_t, Promises>> history{{0, {}}};
    RecordedDisk disk(folder.Path());
    Promises made;
    auto run = std::make_unique<CoreRun>(folder.Path(), time);
    for (int turn = 0; turn < turns; ++turn) {
        time.Advance(static_cast<std::int64_t>(random() % 3000));
        PlayOneTurn(*run, random, made);
        history.emplace_back(disk.CallCount(), made);
        if (random() % 20 != 0) continue;
        if (random() % 2 == 0) {
            run->StopCleanly();
        }
        run.reset();
        run = std::make_unique<CoreRun>(folder.Path(), time);
    }
    run.reset();
    disk.Stop();
    const std::size_t calls = disk.CallCount();
    const std::size_t step = std::max<std::size_t>(1, calls / static_cast<std::size_t>(wanted));
    std::size_t at = 0;
    for (std::size_t cut = random() % step; cut <= calls; cut += step) {
        while (at + 1 < history.size() && history[at + 1].first <= cut) ++at;
        const Leftover kinds[] = {Leftover::Nothing, Leftover::NamesOnly, Leftover::Anything,
                                  Leftover::Anything};
        for (const Leftover leftover : kinds) {
            if (wanted <= 1000 && random() % 2 == 0) continue;
            const TempFolder image;
            disk.Restore(cut, leftover, static_cast<std::uint32_t>(random()), image.Path());
            Check(image.Path(), history[at].second,
                  "cut " + std::to_string(cut) + " of " + std::to_string(calls) + ", leftover " +
                      std::to_string(static_cast<int>(leftover)) + ":");
            if (HasFatalFailure()) return;
        }
    }
}

}  // namespace
}  // namespace nordkeep
