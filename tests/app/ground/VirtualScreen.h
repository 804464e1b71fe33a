#pragma once

#include "tests/app/ground/RunningCopy.h"
#include "tests/app/ground/Shell.h"

#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <optional>

namespace nordkeep {

/// A virtual screen with a window manager, until the end of the scope.
class VirtualScreen {
 public:
    VirtualScreen() : VirtualScreen("1280x900x24") {}
    /// Both are there behind it. A number that another screen has just given up can lose its socket to that
    /// one's end: then there is another screen.
    explicit VirtualScreen(const std::string& size) {
        constexpr int kTries = 5;
        for (int i = 0; i < kTries && !IsManaged(); ++i) {
            Stop();
            StartBoth(size);
        }
    }
    ~VirtualScreen() { Stop(); }
    VirtualScreen(const VirtualScreen&) = delete;
    VirtualScreen& operator=(const VirtualScreen&) = delete;

    const std::string& Display() const { return display_; }
    /// Runs a command of xdotool; true when it succeeded.
    bool Do(const std::string& command) const {
        return std::system(
                   ("DISPLAY=" + display_ + " timeout 10 xdotool " + command + " >/dev/null 2>&1").c_str()) ==
               0;
    }
    bool HasWindow(const std::string& title) const {
        return Do("search --onlyvisible --name '" + title + "'");
    }
    void Focus(const std::string& title) const {
        Do("search --onlyvisible --name '" + title + "' windowactivate --sync");
    }
    /// Waits until a window of this title has the keys.
    bool AwaitActive(const std::string& title) const {
        return WaitFor([&] {
            return std::system(("DISPLAY=" + display_ +
                                " timeout 10 xdotool getactivewindow getwindowname | grep -q '" + title + "'")
                                   .c_str()) == 0;
        });
    }
    void Keys(const std::string& title, const std::string& keys) const {
        Focus(title);
        Do("key --delay 60 " + keys);
    }
    /// The left edge of a window, px; none without it.
    std::optional<int> LeftOf(const std::string& title) const {
        const std::string command = "DISPLAY=" + display_ +
                                    " timeout 10 xdotool search --onlyvisible --name '" + title +
                                    "' getwindowgeometry --shell 2>/dev/null | sed -n 's/^X=//p'";
        const std::string left = Shell(command).output;
        if (left.empty()) return std::nullopt;
        return std::stoi(left);
    }
    /// A program of the desktop, such as a tray, until the end of the scope.
    void Run(std::vector<std::string> words) { programs_.push_back(Start(std::move(words))); }
    void Type(const std::string& text) const { Do("type --delay 40 '" + text + "'"); }

 private:
    void StartBoth(const std::string& size) {
        int ends[2];
        if (pipe(ends) != 0) return;
        const std::string end = std::to_string(ends[1]);
        display_.clear();
        programs_ = {Start({"Xvfb", "-displayfd", end, "-screen", "0", size, "-nolisten", "tcp"})};
        close(ends[1]);
        std::string number;
        for (char digit = 0; read(ends[0], &digit, 1) == 1 && digit != '\n';) number += digit;
        close(ends[0]);
        if (number.empty()) return;
        display_ = ":" + number;
        programs_.push_back(Start({"openbox"}));
    }
    /// Waits some seconds for the window manager.
    bool IsManaged() const {
        constexpr int kTries = 50;
        for (int i = 0; i < kTries && !display_.empty(); ++i) {
            if (Do("get_desktop")) return true;
            usleep(100'000);
        }
        return false;
    }
    /// Last come, first gone.
    void Stop() {
        for (; !programs_.empty(); programs_.pop_back()) {
            if (programs_.back() <= 0) continue;  // it could not be started
            kill(programs_.back(), SIGTERM);
            waitpid(programs_.back(), nullptr, 0);
        }
    }

    int Start(std::vector<std::string> words) const {
        const int pid = fork();
        if (pid != 0) return pid;
        if (!display_.empty()) setenv("DISPLAY", display_.c_str(), 1);
        std::vector<char*> pointers;
        for (std::string& word : words) pointers.push_back(word.data());
        pointers.push_back(nullptr);
        execvp(pointers[0], pointers.data());
        _exit(127);
    }

    std::vector<int> programs_{};
    std::string display_{};
};

}  // namespace nordkeep
