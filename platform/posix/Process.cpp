#include "platform/Process.h"

#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>

namespace nordkeep {

bool StartDetached(const NativePath& program, const std::vector<std::string>& arguments,
                   const NativePath& folder) {
    if (access(program.c_str(), X_OK) != 0) return false;
    std::vector<char*> words{const_cast<char*>(program.c_str())};
    for (const std::string& argument : arguments) words.push_back(const_cast<char*>(argument.c_str()));
    words.push_back(nullptr);
    // The child in between ends at once, so the program becomes an orphan and leaves no zombie here.
    const pid_t between = fork();
    if (between < 0) return false;
    if (between == 0) {
        setsid();
        if (fork() == 0) {
            if (!folder.empty() && chdir(folder.c_str()) != 0) _exit(127);
            execv(program.c_str(), words.data());
            _exit(127);
        }
        _exit(0);
    }
    waitpid(between, nullptr, 0);
    return true;
}

void RaiseDescriptorLimit() {
    rlimit limit{};
    if (getrlimit(RLIMIT_NOFILE, &limit) != 0) return;
    limit.rlim_cur = limit.rlim_max;
    setrlimit(RLIMIT_NOFILE, &limit);
}

void KeepFilesFromOthers() {
    constexpr mode_t kNotForOthers = 027;
    umask(umask(kNotForOthers) | kNotForOthers);
}

std::uint64_t StartSeed() {
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    const auto ticks = static_cast<std::uint64_t>(std::chrono::nanoseconds(now).count());
    return ticks ^ (static_cast<std::uint64_t>(getpid()) << 40);
}

}  // namespace nordkeep
