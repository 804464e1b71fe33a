// Reading the stored events back at start, beside a plain read of the same files.

#include "console/lists/AlarmLists.h"
#include "platform/posix/DurableFiles.h"
#include "platform/posix/SystemClock.h"
#include "store/EventStore.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <vector>

namespace {

using namespace nordkeep;

double MillisecondsOf(const auto& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

double Median(std::vector<double> values) {
    std::ranges::sort(values);
    return values[values.size() / 2];
}

void LoadEvents(const FileTree& folder) {
    SystemClock clock;
    Settings files(folder);
    Language language;
    SysLog log(folder, clock);
    DurableFiles disk;
    EventCommit commit(disk, [] {});
    NoReplica replica;
    AlarmLists lists;
    NoStorageAlarm noAlarm;
    StoreSettings settings;
    settings.MaxAlarms = settings.MaxAlarmDays = 0;
    EventStore store({.dataFolder = folder,
                      .files = files,
                      .language = language,
                      .clock = clock,
                      .log = log,
                      .commit = commit,
                      .replica = replica,
                      .views = lists,
                      .storageAlarm = noAlarm},
                     settings);
    store.LoadEvents();
}

void ReadPlainly(const FileTree& folder) {
    const NativePath events = folder.Resolve("Data\\Events");
    for (const Text& name : ListFiles(events)) ReadFile(events + "/" + name);
}

}  // namespace

/// Takes a data folder and how often to measure.
int main(int argc, char** argv) {
    if (argc != 3) return 2;
    const FileTree folder(argv[1]);
    std::vector<double> load, plain;
    for (int i = 0; i < std::atoi(argv[2]); ++i) {
        plain.push_back(MillisecondsOf([&] { ReadPlainly(folder); }));
        load.push_back(MillisecondsOf([&] { LoadEvents(folder); }));
    }
    std::printf("load of the stored events / plain read %5.2f   (%.0f and %.0f ms)\n",
                Median(load) / Median(plain), Median(load), Median(plain));
}
