#include "platform/ChildProcess.h"

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>

namespace nordkeep {
namespace {

// Children that do not go although they were told to: a device driver holds them. More are not made then.
constexpr std::size_t kMostStopped = 8;

/// What a child gets instead of what this program has: no signal blocked or ignored, a process group of its
/// own (a Ctrl-C at this program's terminal is not meant for it), no files but three ends of nothing.
class FreshStart {
 public:
    FreshStart() {
        ::posix_spawnattr_init(&attributes_);
        ::posix_spawnattr_setflags(&attributes_,
                                   POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETPGROUP);
        sigset_t signals{};
        ::sigemptyset(&signals);
        ::posix_spawnattr_setsigmask(&attributes_, &signals);
        ::sigfillset(&signals);
        ::posix_spawnattr_setsigdefault(&attributes_, &signals);
        ::posix_spawn_file_actions_init(&files_);
        for (const int end : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
            ::posix_spawn_file_actions_addopen(&files_, end, "/dev/null", O_RDWR, 0);
        }
        ::posix_spawn_file_actions_addclosefrom_np(&files_, STDERR_FILENO + 1);
    }
    ~FreshStart() {
        ::posix_spawnattr_destroy(&attributes_);
        ::posix_spawn_file_actions_destroy(&files_);
    }
    FreshStart(const FreshStart&) = delete;
    FreshStart& operator=(const FreshStart&) = delete;

    /// The process id; none when the program cannot be started.
    int Spawn(char* const* words) const {
        pid_t child = 0;
        return ::posix_spawnp(&child, words[0], &files_, &attributes_, words, environ) == 0 ? child : 0;
    }

 private:
    posix_spawnattr_t attributes_{};
    posix_spawn_file_actions_t files_{};
};

}  // namespace

ChildProcess::~ChildProcess() {
    Stop();
    for (const int child : stopped_) ::kill(child, SIGKILL);
    Reap();
}

bool ChildProcess::Start(const std::string& program, const std::vector<std::string>& arguments) {
    Stop();
    Reap();
    hasSucceeded_ = false;
    if (stopped_.size() >= kMostStopped) return false;
    std::vector<char*> words{const_cast<char*>(program.c_str())};
    for (const std::string& argument : arguments) words.push_back(const_cast<char*>(argument.c_str()));
    words.push_back(nullptr);
    running_ = FreshStart().Spawn(words.data());
    return running_ != 0;
}

bool ChildProcess::IsRunning() {
    Reap();
    return running_ != 0;
}

bool ChildProcess::HasSucceeded() {
    return !IsRunning() && hasSucceeded_;
}

void ChildProcess::Stop() {
    Reap();
    if (running_ == 0) return;
    ::kill(running_, SIGTERM);
    stopped_.push_back(running_);
    running_ = 0;
    hasSucceeded_ = false;
}

void ChildProcess::Reap() {
    int status = 0;
    if (running_ != 0 && ::waitpid(running_, &status, WNOHANG) != 0) {
        hasSucceeded_ = WIFEXITED(status) && WEXITSTATUS(status) == 0;
        running_ = 0;
    }
    std::erase_if(stopped_, [](int child) { return ::waitpid(child, nullptr, WNOHANG) != 0; });
}

}  // namespace nordkeep
