// The least work that can keep a receiver's promise: reads telegrams of 26 bytes from up to eight callers,
// checks them, brings them to safety and answers with ACK. The receiver itself is measured against it.
//
// With a file of an event's size for each telegram, synchronised together with its folder, and a line in a
// log; or, as the receiver itself does, with a journal, which everything that has come in one turn is
// appended to and which is synchronised once.

#include <fcntl.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

namespace {

constexpr std::size_t kTelegram = 26;
constexpr std::size_t kEventSize = 320;
constexpr std::size_t kMostCallers = 8;

struct Caller {
    int descriptor;
    char bytes[kTelegram];
    std::size_t count = 0;
};

int Listen(int port) {
    const int listener = socket(AF_INET, SOCK_STREAM, 0);
    const int on = 1;
    setsockopt(listener, SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(static_cast<std::uint16_t>(port));
    if (bind(listener, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0) return -1;
    return listen(listener, kMostCallers) == 0 ? listener : -1;
}

bool IsGood(const Caller& caller) {
    char sum = 0;
    for (std::size_t i = 1; i < kTelegram; ++i) sum = static_cast<char>(sum ^ caller.bytes[i]);
    return caller.bytes[0] == 2 && caller.bytes[24] == 3 && sum == 0;
}

bool Store(const std::string& folder, int folderDescriptor, long number, const Caller& caller) {
    char name[32];
    std::snprintf(name, sizeof name, "/A%07ld.eve", number);
    char event[kEventSize] = {};
    std::memcpy(event, caller.bytes, kTelegram);
    const int file = open((folder + name).c_str(), O_RDWR | O_CREAT | O_EXCL, 0644);
    const bool isStored = file >= 0 && write(file, event, sizeof event) == ssize_t{sizeof event} &&
                          fsync(file) == 0 && fsync(folderDescriptor) == 0;
    if (file >= 0) close(file);
    return isStored;
}

/// What a journal holds of an event besides.
constexpr std::size_t kEntrySize = 1024;

bool Append(int journal, const std::string& entries) {
    return entries.empty() ||
           (write(journal, entries.data(), entries.size()) == static_cast<ssize_t>(entries.size()) &&
            fdatasync(journal) == 0);
}

void Answer(const Caller& caller, bool isStored) {
    const char reply = isStored ? 6 : 21;
    if (write(caller.descriptor, &reply, 1) != 1) std::perror("reply");
}

}  // namespace

/// Takes a port, a folder and "files" or "journal".
int main(int argc, char** argv) {
    if (argc != 4) return 2;
    const std::string folder = argv[2];
    const bool hasJournal = std::strcmp(argv[3], "journal") == 0;
    const int listener = Listen(std::atoi(argv[1]));
    const int folderDescriptor = open(folder.c_str(), O_RDONLY | O_DIRECTORY);
    const int log = open((folder + "/floor.log").c_str(), O_WRONLY | O_CREAT | O_APPEND, 0644);
    const int journal = open((folder + "/journal").c_str(), O_WRONLY | O_CREAT | O_APPEND, 0644);
    if (listener < 0 || folderDescriptor < 0 || log < 0 || journal < 0) return 1;
    std::vector<Caller> callers;
    long number = 0;
    for (;;) {
        std::vector<pollfd> waiting{{listener, POLLIN, 0}};
        for (const Caller& caller : callers) waiting.push_back({caller.descriptor, POLLIN, 0});
        poll(waiting.data(), waiting.size(), -1);
        std::string entries;
        std::vector<Caller> toAnswer;
        for (std::size_t i = callers.size(); i-- > 0;) {
            if ((waiting[i + 1].revents & (POLLIN | POLLHUP)) == 0) continue;
            Caller& caller = callers[i];
            const ssize_t count =
                read(caller.descriptor, caller.bytes + caller.count, kTelegram - caller.count);
            if (count <= 0) {
                close(caller.descriptor);
                callers.erase(callers.begin() + static_cast<std::ptrdiff_t>(i));
                continue;
            }
            caller.count += static_cast<std::size_t>(count);
            if (caller.count < kTelegram) continue;
            caller.count = 0;
            static const char kLine[] =
                "5;24-03-05;07:08:09 ;2024-03-05;07:08:09;Robofon;1;Object;Type;10000103;\r\n";
            const bool isGood = IsGood(caller) && write(log, kLine, sizeof kLine - 1) > 0;
            if (isGood && hasJournal) {
                entries.append(caller.bytes, kTelegram).append(kEntrySize - kTelegram, ' ');
                toAnswer.push_back(caller);
            } else {
                Answer(caller, isGood && Store(folder, folderDescriptor, number++, caller));
            }
        }
        const bool isStored = Append(journal, entries);
        for (const Caller& caller : toAnswer) Answer(caller, isStored);
        if ((waiting[0].revents & POLLIN) != 0 && callers.size() < kMostCallers) {
            const int descriptor = accept(listener, nullptr, nullptr);
            const int on = 1;
            setsockopt(descriptor, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
            callers.push_back({.descriptor = descriptor, .bytes = {}});
        }
    }
}
