// Sends log lines to a relay over RELP, one at a time on each of several connections, as nordkeep-send sends
// telegrams to the receiver: the next one leaves when the relay has confirmed the last.

#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

namespace {

using Time = std::chrono::steady_clock::time_point;

struct Line {
    int descriptor = -1;
    long transaction = 1;
    Time sent{};
    std::string received{};
};

int Connect(int port) {
    const int descriptor = socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<std::uint16_t>(port));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    const int on = 1;
    setsockopt(descriptor, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
    return connect(descriptor, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0 ? descriptor : -1;
}

bool Send(Line& line, const std::string& command, const std::string& data) {
    const std::string frame = std::to_string(line.transaction) + " " + command + " " +
                              std::to_string(data.size()) + " " + data + "\n";
    line.sent = std::chrono::steady_clock::now();
    return write(line.descriptor, frame.data(), frame.size()) == static_cast<ssize_t>(frame.size());
}

bool SendNext(Line& line) {
    char text[200];
    std::snprintf(text, sizeof text,
                  "<134>Mar  5 07:08:09 sender receiver: 2024-03-05;07:08:09;Robofon;1;Object;Type;%08ld;",
                  line.transaction);
    return Send(line, "syslog", text);
}

/// True when the confirmation of what was sent last is whole.
bool TakeConfirmation(Line& line) {
    char buffer[4096];
    const ssize_t count = read(line.descriptor, buffer, sizeof buffer);
    if (count <= 0) std::exit(1);
    line.received.append(buffer, static_cast<std::size_t>(count));
    long transaction = 0;
    unsigned long size = 0;
    int front = 0;
    if (std::sscanf(line.received.c_str(), "%ld rsp %lu%n", &transaction, &size, &front) < 2) return false;
    const std::size_t whole = static_cast<std::size_t>(front) + 1 + size + 1;
    if (line.received.size() < whole) return false;
    if (line.received.find(" 200 OK") > static_cast<std::size_t>(front) + 1) std::exit(1);
    line.received.erase(0, whole);
    return transaction == line.transaction++;
}

double MillisecondsSince(Time time) {
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - time).count();
}

std::vector<Line> OpenAll(int port, int count) {
    std::vector<Line> lines(static_cast<std::size_t>(count));
    for (Line& line : lines) {
        line.descriptor = Connect(port);
        if (line.descriptor < 0 ||
            !Send(line, "open", "relp_version=0\nrelp_software=bench\ncommands=syslog"))
            std::exit(1);
        while (!TakeConfirmation(line)) continue;
    }
    return lines;
}

}  // namespace

/// Takes a port, a number of connections and a number of messages.
int main(int argc, char** argv) {
    if (argc != 4) return 2;
    std::vector<Line> lines = OpenAll(std::atoi(argv[1]), std::atoi(argv[2]));
    const auto total = static_cast<std::size_t>(std::atol(argv[3]));
    std::vector<double> times;
    std::size_t sent = 0;
    const Time begin = std::chrono::steady_clock::now();
    for (Line& line : lines) sent += SendNext(line) ? 1 : 0;
    while (times.size() < total) {
        std::vector<pollfd> waiting;
        for (const Line& line : lines) waiting.push_back({line.descriptor, POLLIN, 0});
        poll(waiting.data(), waiting.size(), -1);
        for (std::size_t i = 0; i < lines.size(); ++i) {
            if (waiting[i].revents == 0 || !TakeConfirmation(lines[i])) continue;
            times.push_back(MillisecondsSince(lines[i].sent));
            if (sent < total) sent += SendNext(lines[i]) ? 1 : 0;
        }
    }
    const double seconds = MillisecondsSince(begin) / 1000;
    std::sort(times.begin(), times.end());
    std::printf("acknowledged %zu, %.1f messages/s, 99th percentile %.3f ms\n", times.size(),
                static_cast<double>(times.size()) / seconds, times[times.size() * 99 / 100]);
}
