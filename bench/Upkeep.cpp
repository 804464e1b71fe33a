// What the loop has to bear when alarms grow too old or are read again: removing records that came in this
// run beside removing as many that were read from their files, and the longest turn of each.

#include "console/lists/AlarmLists.h"
#include "platform/posix/DurableFiles.h"
#include "platform/posix/SystemClock.h"
#include "platform/sqlite/SqliteJournal.h"
#include "store/EventStore.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>

namespace {

using namespace nordkeep;

constexpr int kDaysOld = 100;
constexpr int kTogether = 8;  // telegrams of one turn

double MillisecondsOf(const auto& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

/// A store with its files and its journal, as the program has one.
struct World {
    explicit World(const FileTree& tree) : folder(tree), files(tree), log(tree, clock) {
        MakeFolder(folder.Resolve("Data"));
        MakeFolder(folder.Resolve("Data\\Events"));
        settings.MaxAlarms = settings.MaxAlarmDays = 0;
        journal.Open();
    }

    void Receive(int count) {
        for (int i = 1; i <= count; ++i) {
            auto alarm = std::make_unique<cAlarm>();
            alarm->m_ArrivedTime = alarm->m_TimeStamp = clock.Now().PlusDays(-kDaysOld);
            alarm->m_IdCode = alarm->m_AlarmCode = std::to_string(i);
            alarm->m_TranslatedIDCode = "Object " + alarm->m_IdCode;
            alarm->m_TranslatedPrio = Text("1");
            store.StoreNew(std::move(alarm));
            if (i % kTogether == 0) commit.Commit();
        }
        commit.Commit();
    }

    struct Upkeep {
        double total = 0;
        double longestTurn = 0;
    };
    Upkeep RemoveAll() {
        settings.MaxAlarmDays = kDaysOld / 2;
        store.PruneOldAlarms();
        return WorkOff();
    }
    Upkeep Reload() {
        store.ReloadEvents();
        return WorkOff();
    }
    Upkeep WorkOff() {
        Upkeep upkeep;
        for (bool isMore = true; isMore;) {
            const double ms = MillisecondsOf([&] {
                isMore = store.UpkeepSlice();
                commit.Commit();
            });
            upkeep.total += ms;
            upkeep.longestTurn = std::max(upkeep.longestTurn, ms);
        }
        return upkeep;
    }

    const FileTree& folder;
    SystemClock clock{};
    Settings files;
    Language language{};
    SysLog log;
    DurableFiles disk{};
    SqliteJournal database{};
    Journal journal{database, folder, clock};
    EventCommit commit{disk, [] {}, &journal};
    NoReplica replica{};
    AlarmLists lists{};
    NoStorageAlarm noAlarm{};
    StoreSettings settings{};
    EventStore store{{.dataFolder = folder,
                      .files = files,
                      .language = language,
                      .clock = clock,
                      .log = log,
                      .commit = commit,
                      .replica = replica,
                      .views = lists,
                      .storageAlarm = noAlarm},
                     settings};
};

void Print(const char* what, const World::Upkeep& upkeep, int count) {
    std::printf("%s of %d records: %.1f us each, longest turn %.1f ms\n", what, count,
                upkeep.total * 1000 / count, upkeep.longestTurn);
}

}  // namespace

/// Takes an empty folder and a number of records.
int main(int argc, char** argv) {
    if (argc != 3) return 2;
    const FileTree folder(argv[1]);
    const int count = std::atoi(argv[2]);
    {
        World received(folder);
        received.Receive(count);
        Print("removal, received in this run,", received.RemoveAll(), count);
        received.Receive(count);
        received.commit.SynchroniseAll();
    }
    World loaded(folder);
    std::printf("load of %d: %.0f ms\n", count, MillisecondsOf([&] { loaded.store.LoadEvents(); }));
    Print("reading again while running", loaded.Reload(), count);
    Print("removal, read from files,", loaded.RemoveAll(), count);
}
