#include "platform/posix/SystemClock.h"
#include "runtime/Fields.h"
#include "runtime/Settings.h"
#include "tools/cli/Terminal.h"
#include "tools/copy/AlarmLogCopy.h"
#include "tools/copy/CopyCommand.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cstdio>

// Started by the centre every half minute, in its data folder, with the name of a file: takes the lines of
// the alarm log's spool to the end of that file.
int main(int argc, char** argv) {
    using namespace nordkeep;
    std::string target;
    CLI::App app;
    tools::PrepareTool(app, "NKCopy");
    DeclareCopy(app, target);
    if (const auto status = tools::ReadWords(app, argc, argv)) return *status;
    const FileTree folder(CanonicalPath(".").value_or("."));
    // One at a time; the other one does the work.
    const int lock = ::open(folder.Resolve("AlarmLogFile.lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0640);
    if (lock < 0) return std::perror("NKCopy: AlarmLogFile.lock"), tools::kFailed;
    if (::flock(lock, LOCK_EX | LOCK_NB) != 0) return tools::kDone;

    const Settings settings(folder);
    const auto number = [&](TextView key) { return LeadingInt32(settings.ReadMainIni("General", key, "0")); };
    const CopyRotation rotation{.mostKilobytes = std::max(0, number("AlarmLogFileMaxSize")),
                                .isDaily = number("AlarmLogFileDaily") != 0};
    const CivilTime now = SystemClock().Now().Civil();
    char today[16];
    std::snprintf(today, sizeof today, "%04d-%02d-%02d", now.year, now.month, now.day);
    const auto hindered = AlarmLogCopy(folder, FromUtf8(target), rotation).Run(today);
    if (hindered) std::fprintf(stderr, "NKCopy: %s\n", hindered->c_str());
    return hindered ? tools::kFailed : tools::kDone;
}
