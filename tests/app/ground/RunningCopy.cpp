#include "tests/app/ground/RunningCopy.h"

#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <thread>

namespace nordkeep {
namespace {

constexpr int kPatienceMs = 30'000;

sockaddr_in Loopback(int port) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(static_cast<std::uint16_t>(port));
    return address;
}

}  // namespace

bool WaitFor(const std::function<bool()>& condition) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(kPatienceMs);
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end) return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    return true;
}

RunningCopy::~RunningCopy() {
    Kill();
}

void RunningCopy::AddPort(const std::string& name, const std::string& lines,
                          const std::string& translate) const {
    data_.Write("Settings\\" + name + ".ini",
                "[General]\r\n" + lines + "\r\n[Translate]\r\n" + translate + "\r\n");
}

void RunningCopy::WriteMainSettings(const std::string& lines) const {
    data_.Write("Settings\\Nordkeep.INI", "[General]\r\nLanguage=044\r\n" + lines + "\r\n[NetWork]\r\n");
}

void RunningCopy::Start(const std::vector<std::string>& switches) {
    std::vector<std::string> words = {"/RunAsService"};
    words.insert(words.end(), switches.begin(), switches.end());
    Launch(words);
    WaitForOutput(NORDKEEP_VERSION);
}

void RunningCopy::StartAsItIs() {
    Launch({});
    WaitForOutput(NORDKEEP_VERSION);
}

void RunningCopy::StartStandby() {
    Launch({"/RunAsService"});
    WaitForOutput("in use by another copy");
}

void RunningCopy::StartWithScreen() {
    Launch({});
}

void RunningCopy::StartOnDisplay(const std::string& display) {
    Launch({}, display);
}

void RunningCopy::Launch(const std::vector<std::string>& words, const std::string& display) {
    std::vector<std::string> command = {std::string(NORDKEEP_BIN_DIR) + "/" + program_};
    command.insert(command.end(), words.begin(), words.end());
    // The path stands last: its value would take in a word that is no switch.
    command.push_back("/PATH:" + data_.Path());
    const std::string output = output_.Path() + "/output";
    // Emptied before the start, so that nobody waits for what an earlier run has written.
    WriteFile(output, "");
    pid_ = fork();
    if (pid_ != 0) return;
    const int log = open(output.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    dup2(log, STDOUT_FILENO);
    dup2(log, STDERR_FILENO);
    // Without a display a workstation gets a screen that nobody sees, and nobody answers its questions.
    unsetenv("DISPLAY");
    setenv("XDG_CONFIG_HOME", output_.Path().c_str(), 1);
    if (display.empty()) {
        setenv("QT_QPA_PLATFORM", "offscreen", 1);
        setenv("NORDKEEP_UNATTENDED", "1", 1);
    } else {
        setenv("DISPLAY", display.c_str(), 1);
        setenv("LSAN_OPTIONS",
               "print_suppressions=0:suppressions=" NORDKEEP_SOURCE_DIR "/tests/data/leaks.txt", 1);
        unsetenv("QT_QPA_PLATFORM");
        unsetenv("NORDKEEP_UNATTENDED");
    }
    std::vector<char*> pointers;
    for (std::string& word : command) pointers.push_back(word.data());
    pointers.push_back(nullptr);
    execv(pointers[0], pointers.data());
    _exit(127);
}

int RunningCopy::Wait() {
    int status = -1;
    waitpid(pid_, &status, 0);
    pid_ = -1;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

int RunningCopy::Stop() {
    if (pid_ < 0) return -1;
    kill(pid_, SIGTERM);
    return Wait();
}

void RunningCopy::Kill() {
    if (pid_ < 0) return;
    kill(pid_, SIGKILL);
    Wait();
}

std::string RunningCopy::Output() const {
    return output_.Read("output");
}

bool RunningCopy::WaitForOutput(const std::string& text) const {
    return WaitForOutput(text, 1);
}

bool RunningCopy::WaitForOutput(const std::string& text, int times) const {
    return WaitFor([&] {
        const std::string output = Output();
        int found = 0;
        for (std::size_t at = output.find(text); at != std::string::npos; at = output.find(text, at + 1))
            ++found;
        return found >= times;
    });
}

std::vector<Text> RunningCopy::EventFiles() const {
    std::vector<Text> files;
    for (const Text& name : ListFiles(data_.Resolve("Data\\Events"))) {
        if (MatchesMask(name, "A???????.eve")) files.push_back("Data\\Events\\" + name);
    }
    return files;
}

Caller::Caller(int port) {
    const sockaddr_in address = Loopback(port);
    WaitFor([&] {
        descriptor_ = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
        if (connect(descriptor_, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0)
            return true;
        close(descriptor_);
        descriptor_ = -1;
        return false;
    });
}

Caller::~Caller() {
    if (descriptor_ >= 0) close(descriptor_);
}

void Caller::Send(TextView bytes) const {
    while (!bytes.empty()) {
        const ssize_t sent = send(descriptor_, bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (sent <= 0) return;
        bytes.remove_prefix(static_cast<std::size_t>(sent));
    }
}

Text Caller::Receive(std::size_t count) const {
    return ReceiveWithin(count, kPatienceMs);
}

Text Caller::ReceiveWithin(std::size_t count, int ms) const {
    Text received;
    while (received.size() < count) {
        pollfd waiting{descriptor_, POLLIN, 0};
        if (poll(&waiting, 1, ms) <= 0) break;
        char buffer[4096];
        const ssize_t got = read(descriptor_, buffer, std::min(sizeof buffer, count - received.size()));
        if (got <= 0) break;
        received.append(buffer, static_cast<std::size_t>(got));
    }
    return received;
}

bool Caller::IsClosedByPeer() const {
    pollfd waiting{descriptor_, POLLIN, 0};
    char byte = 0;
    return poll(&waiting, 1, kPatienceMs) > 0 && read(descriptor_, &byte, 1) <= 0;
}

}  // namespace nordkeep
