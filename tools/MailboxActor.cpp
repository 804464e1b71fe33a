#include "tools/Peers.h"

#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <set>

namespace nordkeep::tools {
namespace {

/// A mailbox as POP3 shows it. Every name and password is good.
class Mailbox {
 public:
    explicit Mailbox(const SendOptions& options) {
        for (long number = 1; number <= options.count; ++number) {
            const std::string line = NumberedCode(options, number - 1) + " " + options.telegram.text;
            mails_[number] = "From: sender@example.com\r\nSubject: Alarm\r\n\r\n" + line + "\r\n";
        }
    }
    bool IsEmpty() const { return mails_.empty(); }

    /// The answer to one line of a session.
    std::string Answer(const std::string& line) {
        const std::string verb = line.substr(0, 4);
        const long number = std::atol(line.c_str() + std::min<std::size_t>(4, line.size()));
        if (verb == "LIST") return List();
        if (verb == "RETR" && mails_.contains(number)) return "+OK\r\n" + mails_[number] + ".\r\n";
        if (verb == "DELE") deleted_.insert(number);
        if (verb == "QUIT") Delete();
        return verb == "RETR" ? "-ERR no such mail\r\n" : "+OK\r\n";
    }
    /// A session that ends without QUIT deletes nothing.
    void EndSession() { deleted_.clear(); }

 private:
    std::string List() const {
        std::string answer = "+OK\r\n";
        for (const auto& [number, mail] : mails_)
            answer += std::to_string(number) + " " + std::to_string(mail.size()) + "\r\n";
        return answer + ".\r\n";
    }
    void Delete() {
        for (const long number : deleted_) mails_.erase(number);
    }

    std::map<long, std::string> mails_{};
    std::set<long> deleted_{};
};

void Serve(int connection, Mailbox& mailbox, const SendOptions& options) {
    std::string received;
    std::string answer = "+OK\r\n";
    for (bool isOpen = true; isOpen;) {
        if (!options.isQuiet) std::printf("-> %s\n", Readable(answer).c_str());
        if (::send(connection, answer.data(), answer.size(), MSG_NOSIGNAL) < 0) break;
        while (received.find('\n') == std::string::npos && isOpen) {
            pollfd waiting{connection, POLLIN, 0};
            char buffer[512];
            const ssize_t count =
                ::poll(&waiting, 1, options.timeoutMs) > 0 ? ::read(connection, buffer, sizeof buffer) : 0;
            isOpen = count > 0;
            if (isOpen) received.append(buffer, static_cast<std::size_t>(count));
        }
        const std::size_t end = received.find('\n');
        if (end == std::string::npos) break;
        const std::string line = received.substr(0, end);
        received.erase(0, end + 1);
        if (!options.isQuiet) std::printf("<- %s\n", Readable(line).c_str());
        answer = mailbox.Answer(line);
        if (line.starts_with("QUIT")) {
            ::send(connection, answer.data(), answer.size(), MSG_NOSIGNAL);
            break;
        }
    }
    mailbox.EndSession();
}

}  // namespace

int ActAsMailbox(const SendOptions& options) {
    std::string port;
    if (!TakeTarget(options, "listen", port)) return Complain("the target is listen:PORT", kWrongUse);
    const int listener = ListenOn(port);
    if (listener < 0) return Complain("port " + port + " cannot be had", kRefused);
    Mailbox mailbox(options);
    while (!mailbox.IsEmpty()) {
        const int connection = ::accept4(listener, nullptr, nullptr, SOCK_CLOEXEC);
        Serve(connection, mailbox, options);
        ::close(connection);
    }
    ::close(listener);
    std::printf("all mails are fetched\n");
    return 0;
}

}  // namespace nordkeep::tools
