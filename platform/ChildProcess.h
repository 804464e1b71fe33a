#pragma once

#include <string>
#include <vector>

namespace nordkeep {

/// A program that runs beside this one, without input and output. No operation waits for it.
class ChildProcess {
 public:
    ChildProcess() = default;
    /// Ends the program.
    ~ChildProcess();
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    /// Starts a program, by its path or its name on the search path, in place of one that still runs. It
    /// inherits no open files and no signal settings. False when there is no such program.
    bool Start(const std::string& program, const std::vector<std::string>& arguments);
    bool IsRunning();
    /// True when the last program has ended by itself and said that all went well.
    bool HasSucceeded();
    /// Asks the program to end.
    void Stop();

 private:
    void Reap();

    int running_ = 0;  // process id, 0 for none
    bool hasSucceeded_ = false;
    std::vector<int> stopped_{};  // told to end, and not gone yet
};

}  // namespace nordkeep
