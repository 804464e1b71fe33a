#include "store/EventFile.h"
#include "tests/app/ground/RunningCopy.h"
#include "tests/app/ground/Shell.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <map>

namespace nordkeep {
namespace {

namespace fs = std::filesystem;

/// Data folders as each released version has left them, with the journal as its statements.
const fs::path kVersions = fs::path(NORDKEEP_SOURCE_DIR) / "tests/data/versions";

std::map<Text, Text> EventsIn(const RunningCopy& copy) {
    std::map<Text, Text> events;
    for (const Text& name : ListFiles(copy.Data().Resolve("Data\\Events")))
        events[name] = copy.Data().Read("Data\\Events\\" + name);
    return events;
}

std::string Ask(const RunningCopy& copy, const std::string& question) {
    return Shell("sqlite3 -readonly '" + copy.Data().Path() + "/Data/Journal.db' \"" + question + "\"")
        .output;
}

/// Puts such a folder in place; the port that it listens on.
int PutInPlace(const fs::path& version, const RunningCopy& copy) {
    const std::string folder = copy.Data().Path();
    fs::copy(version, folder, fs::copy_options::recursive | fs::copy_options::overwrite_existing);
    EXPECT_EQ(Shell("sqlite3 '" + folder + "/Data/Journal.db' < '" + folder + "/Data/Journal.sql'").status,
              0);
    const int port = FreePort();
    const Text settings = copy.Data().Read("Settings\\Port1.ini");
    const std::size_t at = settings.find("=PORT") + 1;
    copy.Data().Write("Settings\\Port1.ini",
                      settings.substr(0, at) + std::to_string(port) + settings.substr(at + 4));
    return port;
}

void ExpectsToGoOnWith(const RunningCopy& copy, int port, const std::map<Text, Text>& before, int entries) {
    // What the journal has to write again comes behind the first line of the log.
    EXPECT_TRUE(WaitFor([&] { return EventsIn(copy) == before; })) << "to the byte";
    Caller caller(port);
    caller.Send(RobofonTelegram("10000101"));
    ASSERT_EQ(caller.Receive(1), "\x06");
    std::map<Text, Text> after = EventsIn(copy);
    ASSERT_EQ(after.size(), before.size() + 1);
    long newest = 0;
    long oldest = 0;
    for (const auto& [name, bytes] : after) {
        cAlarm alarm;
        ASSERT_TRUE(ReadFromDisk(bytes, 1, alarm)) << name;
        long& most = before.contains(name) ? oldest : newest;
        most = std::max<long>(most, alarm.m_AlarmId);
    }
    EXPECT_EQ(newest, oldest + 1) << "the numbers of alarms go on";
    EXPECT_EQ(Ask(copy, "SELECT count(*) >= " + std::to_string(entries + 1) + " FROM entries"), "1\n");
}

// Whatever version a centre was begun with, the program of today goes on with it: stopped cleanly, and, as
// behind a crash, from the journal alone.
TEST(Versions, OfAllYearsAreGoneOnWith) {
    int count = 0;
    for (const fs::directory_entry& version : fs::directory_iterator(kVersions)) {
        SCOPED_TRACE(version.path().filename().string());
        RunningCopy copy;
        const int port = PutInPlace(version.path(), copy);
        const std::map<Text, Text> before = EventsIn(copy);
        const int entries = std::stoi(Ask(copy, "SELECT count(*) FROM entries"));
        const Shell check(NORDKEEP_BIN_DIR "/nordkeep --check '/PATH:" + copy.Data().Path() + "'");
        EXPECT_EQ(check.status, 0) << check.output;
        copy.Start();
        ExpectsToGoOnWith(copy, port, before, entries);
        EXPECT_EQ(copy.Stop(), 0);
        EXPECT_NE(copy.Data().Read("Data\\Town.LastEvents").find(";1;20261122000000;20990101000000;"),
                  Text::npos)
            << "the service of an object goes on";

        RunningCopy crashed;
        const int again = PutInPlace(version.path(), crashed);
        Shell("sqlite3 '" + crashed.Data().Path() + "/Data/Journal.db' 'UPDATE marks SET value = 0'");
        fs::remove_all(crashed.Data().Path() + "/Data/Events");
        crashed.Start();
        ExpectsToGoOnWith(crashed, again, before, entries);
        ++count;
    }
    EXPECT_GE(count, 1);
}

}  // namespace
}  // namespace nordkeep
