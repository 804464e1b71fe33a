#include "tools/Peers.h"

#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace nordkeep::tools {
namespace {

/// The head of a request.
std::string TakeRequest(int connection, int timeoutMs) {
    std::string request;
    while (request.find("\r\n\r\n") == std::string::npos && request.size() < 65536) {
        pollfd waiting{connection, POLLIN, 0};
        char buffer[4096];
        if (::poll(&waiting, 1, timeoutMs) <= 0) break;
        const ssize_t count = ::read(connection, buffer, sizeof buffer);
        if (count <= 0) break;
        request.append(buffer, static_cast<std::size_t>(count));
    }
    return request;
}

/// A queue of events, as a web service has one for each virtual receiver.
class Queue {
 public:
    explicit Queue(const SendOptions& options) : options_(options) {}

    /// The number in a request tells what is stored at the receiver.
    std::string Answer(const std::string& request) {
        if (options_.telegram.hasWrongCheck) return "ERROR:BAD PASS";
        const std::size_t place = request.find("event=");
        confirmed_ = place == std::string::npos ? 0 : std::atol(request.c_str() + place + 6);
        const long last = std::min(confirmed_ + options_.glue, options_.count);
        if (last <= confirmed_) return "ERROR:EVENTQUEUEEMPTY";
        std::string answer = "OK:[" + std::to_string(last) + "]";
        for (long number = confirmed_; number < last; ++number) {
            const std::string code = NumberedCode(options_, number);
            const std::size_t cut = code.size() > 2 ? code.size() - 2 : code.size();
            answer += "<rocip100><EventCode>" + code.substr(cut) + "</EventCode><site>" +
                      code.substr(0, cut) + "</site><EventText>" + options_.telegram.text +
                      "</EventText></rocip100>";
        }
        return answer;
    }
    bool IsConfirmed() const { return confirmed_ >= options_.count; }

 private:
    const SendOptions& options_;
    long confirmed_ = 0;
};

void Reply(int connection, const std::string& answer, const SendOptions& options) {
    if (options.slowMs > 0) ::poll(nullptr, 0, options.slowMs);
    std::string reply =
        "HTTP/1.1 200 OK\r\nConnection: close\r\nContent-Length: " + std::to_string(answer.size()) +
        "\r\n\r\n" + answer;
    if (options.isCut) reply.resize(reply.size() - answer.size() / 2);
    if (!options.isQuiet) std::printf("-> %s\n", Readable(answer).c_str());
    for (std::size_t at = 0; at < reply.size();) {
        const ssize_t count = ::send(connection, reply.data() + at, reply.size() - at, MSG_NOSIGNAL);
        if (count <= 0) return;
        at += static_cast<std::size_t>(count);
    }
}

}  // namespace

int AnswerPolls(const SendOptions& options) {
    std::string port;
    if (!TakeTarget(options, "listen", port)) return Complain("the target is listen:PORT", kWrongUse);
    const int listener = ListenOn(port);
    if (listener < 0) return Complain("port " + port + " cannot be had", kRefused);
    Queue queue(options);
    const bool hasFault = options.isCut || options.telegram.hasWrongCheck;
    for (long answered = 0; !queue.IsConfirmed() && (!hasFault || answered < options.count); ++answered) {
        const int connection = ::accept4(listener, nullptr, nullptr, SOCK_CLOEXEC);
        const std::string request = TakeRequest(connection, options.timeoutMs);
        if (!options.isQuiet) std::printf("<- %s\n", request.substr(0, request.find('\r')).c_str());
        Reply(connection, queue.Answer(request), options);
        ::close(connection);
    }
    ::close(listener);
    std::printf("%s\n", queue.IsConfirmed() ? "all events are confirmed" : "answered with a fault");
    return hasFault || queue.IsConfirmed() ? 0 : 1;
}

}  // namespace nordkeep::tools
