#pragma once

#include "platform/Text.h"
#include "tests/app/ground/FreePort.h"
#include "tests/doubles/RobofonTelegram.h"
#include "tests/doubles/TempFolder.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace nordkeep {

/// Waits up to half a minute for something to become true.
bool WaitFor(const std::function<bool()>& condition);

/// The built program, started as a service on a data folder of its own, or on one that several share.
class RunningCopy {
 public:
    RunningCopy() : own_(std::make_unique<TempFolder>()), data_(*own_) {}
    explicit RunningCopy(const TempFolder& shared) : data_(shared) {}
    ~RunningCopy();

    const TempFolder& Data() const { return data_; }
    /// Writes a settings file for a port; `lines` follow the section header General.
    void AddPort(const std::string& name, const std::string& lines, const std::string& translate = {}) const;
    /// A main settings file with the English language, and `lines` in section General.
    void WriteMainSettings(const std::string& lines = {}) const;

    /// The program to start instead of the operator's.
    void UseProgram(const std::string& name) { program_ = name; }
    /// Starts it without a switch but the folder, and waits until the log says that it has.
    void StartAsItIs();
    /// Starts the program and waits until the log says that it has.
    void Start(const std::vector<std::string>& switches = {});
    /// Starts the service and waits until it stands by because the folder is in use.
    void StartStandby();
    /// Starts it as a workstation instead of a service, and waits for nothing.
    void StartWithScreen();
    /// The same on a display, such as ":7", with a person who answers its questions.
    void StartOnDisplay(const std::string& display);
    /// SIGTERM; the exit status. SIGKILL gives -1.
    int Stop();
    void Kill();
    int Pid() const { return pid_; }
    /// What the program has written to standard output and standard error.
    std::string Output() const;
    bool WaitForOutput(const std::string& text) const;
    bool WaitForOutput(const std::string& text, int times) const;

    /// The event files, as records in the order of arrival.
    std::vector<Text> EventFiles() const;

 private:
    void Launch(const std::vector<std::string>& words, const std::string& display = {});
    int Wait();

    std::unique_ptr<TempFolder> own_{};
    const TempFolder& data_;
    TempFolder output_{};
    std::string program_ = "nordkeep";
    int pid_ = -1;
};

/// A blocking TCP connection to a port of the loopback address.
class Caller {
 public:
    explicit Caller(int port);
    ~Caller();
    Caller(const Caller&) = delete;
    Caller& operator=(const Caller&) = delete;

    bool IsConnected() const { return descriptor_ >= 0; }
    void Send(TextView bytes) const;
    /// Waits up to half a minute for so many bytes; fewer when the other side closes.
    Text Receive(std::size_t count) const;
    /// The same for so many milliseconds without a byte.
    Text ReceiveWithin(std::size_t count, int ms) const;
    /// True when the other side closes within half a minute.
    bool IsClosedByPeer() const;

 private:
    int descriptor_ = -1;
};

}  // namespace nordkeep
