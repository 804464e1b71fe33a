#include "tools/Peers.h"

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <map>
#include <vector>

namespace nordkeep::tools {
namespace {

/// One port of the demonstration centre and what it is fed. In a target "@" is the centre's folder, and "#"
/// what the settings of the centre say: the TCP or UDP port, or the device of the modem.
struct DemoStep {
    int number;
    const char* name;
    const char* format;
    const char* target;
    const char* code;
    const char* text;
    char classCode = '0';
};

constexpr DemoStep kSteps[] = {
    {1, "Robofon", "robofon", "tcp:127.0.0.1:#", "10000101", ""},
    {2, "text", "text", "tcp:127.0.0.1:#", "10000303", "Entrance door"},
    {3, "Googol", "googol", "tcp:127.0.0.1:#", "10000203", "Pump hall"},
    {4, "RSM-02", "rsm02", "tcp:127.0.0.1:#", "10000401", "", '1'},
    {5, "Contact ID", "contactid", "tcp:127.0.0.1:#", "123418113001004", ""},
    {5, "SIA", "sia", "tcp:127.0.0.1:#", "1234", "Nri1/BA003"},
    {6, "SOS Access", "sosaccess", "tcp:127.0.0.1:#", "100001", "3"},
    {7, "SOS Access mini", "sosmini", "tcp:127.0.0.1:#", "100002", "Gate 2"},
    {8, "Aptus", "aptus", "tcp:127.0.0.1:#", "100001", "Side door"},
    {9, "text over UDP", "text", "udp:127.0.0.1:#", "10000501", "Ward 2"},
    {10, "text to a caller", "text", "listen:#", "10000503", "Back door"},
    {11, "SMTP", "mail", "smtp:127.0.0.1:#", "10000103", "Store room"},
    {12, "POP3", "mailbox", "listen:#", "10000201", "Level high"},
    {13, "web service", "virtualreceiver", "listen:#", "10000201", "Pump stopped"},
    {14, "files", "file", "file:@/Alarms.txt", "100002", "Filter blocked"},
    {15, "GSM modem", "gsm", "pty:#", "10000403", "Yard"},
    {17, "export", "export", "listen:#", "", ""},
    {18, "confirmations", "confirmation", "file:@/Confirmations.txt", "0701234567", "Delivered"},
    {16, "SIA DC-09", "dc09", "udp:127.0.0.1:#", "1234", "Nri1/FA002"},
    {16, "Contact ID DC-09", "dc09cid", "udp:127.0.0.1:#", "1234", "1110 01 007"},
};

// Some ports come by themselves, and only after a while.
constexpr int kPatienceMs = 20'000;

/// The value of a key of a settings file, whatever its section.
std::string SettingOf(const std::string& path, const std::string& key) {
    std::ifstream file(path);
    for (std::string line; std::getline(file, line);) {
        if (!line.starts_with(key + "=")) continue;
        if (line.ends_with('\r')) line.pop_back();
        return line.substr(key.size() + 1);
    }
    return {};
}

/// What stands for "#": a web service names its port at the end of its address.
std::string AddressOf(const DemoStep& step, const std::string& folder) {
    if (std::string(step.target).starts_with("pty:"))
        return SettingOf(folder + "/Settings/Nordkeep.INI", "COM1");
    const std::string path = folder + "/Settings/Port" + std::to_string(step.number) + ".ini";
    if (std::string port = SettingOf(path, "PortNumber"); !port.empty()) return port;
    const std::string url = SettingOf(path, "PortSetting");
    return std::to_string(std::atoi(url.c_str() + url.rfind(':') + 1));
}

std::string TargetOf(const DemoStep& step, const std::string& folder) {
    std::string target = step.target;
    if (const std::size_t place = target.find('@'); place != std::string::npos)
        target.replace(place, 1, folder);
    else if (const std::size_t gap = target.find('#'); gap != std::string::npos)
        target.replace(gap, 1, AddressOf(step, folder));
    return target;
}

int Feed(const DemoStep& step, const std::string& folder) {
    SendOptions options;
    options.targets = {TargetOf(step, folder)};
    options.telegram.format = step.format;
    options.telegram.code = step.code;
    options.telegram.text = step.text;
    options.telegram.classCode = step.classCode;
    const std::string path = folder + "/Settings/Port" + std::to_string(step.number) + ".ini";
    options.telegram.key = FromHex(SettingOf(path, step.code));
    options.isQuiet = true;
    options.timeoutMs = kPatienceMs;
    const Play play = FindPlay(options.telegram.format);
    return play ? play(options) : Send(options);
}

using Steps = std::vector<const DemoStep*>;

/// The steps of one port in turn, since it has room for one caller; the ports side by side, since some come
/// by themselves and only after a while.
pid_t Begin(const Steps& steps, const std::string& folder) {
    const pid_t child = ::fork();
    if (child != 0) return child;
    ::prctl(PR_SET_PDEATHSIG, SIGTERM);  // a port that never comes by is not waited for behind the end
    if (const int nowhere = ::open("/dev/null", O_WRONLY); nowhere >= 0) ::dup2(nowhere, STDOUT_FILENO);
    int result = 0;
    for (const DemoStep* step : steps) result = std::max(result, Feed(*step, folder));
    ::_exit(result);
}

}  // namespace

int FeedDemo(const std::string& folder) {
    std::map<int, Steps> ports;
    for (const DemoStep& step : kSteps) ports[step.number].push_back(&step);
    std::map<pid_t, const Steps*> running;
    for (const auto& [number, steps] : ports) running[Begin(steps, folder)] = &steps;
    int result = 0;
    while (!running.empty()) {
        int status = 0;
        const pid_t ended = ::wait(&status);
        if (ended < 0) return 1;
        const bool isWell = WIFEXITED(status) && WEXITSTATUS(status) == 0;
        if (!isWell) result = 1;
        for (const DemoStep* step : *running[ended])
            std::printf("Port%-3d %-20s %s\n", step->number, step->name, isWell ? "fed" : "not taken");
        std::fflush(stdout);
        running.erase(ended);
    }
    return result;
}

}  // namespace nordkeep::tools
