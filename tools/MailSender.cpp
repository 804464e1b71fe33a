#include "tools/Line.h"
#include "tools/Peers.h"

#include <poll.h>

#include <cstdio>

namespace nordkeep::tools {
namespace {

/// One connection to a mail server, and what it answers.
class MailDialogue {
 public:
    explicit MailDialogue(const SendOptions& options) : options_(options) {}

    bool Open(const std::string& address) {
        return line_.Open("tcp:" + address) && IsAnswered('2') && Send("EHLO nordkeep-send\r\n") &&
               IsAnswered('2');
    }

    /// Mails in one write, which the server answers one by one.
    bool SendTogether(const std::vector<std::string>& mails) {
        std::string all;
        for (const std::string& mail : mails) {
            all += "MAIL FROM:<nordkeep-send@localhost>\r\nRCPT TO:<nordkeep@localhost>\r\nDATA\r\n" + mail +
                   ".\r\n";
        }
        if (options_.isCut) all.resize(all.size() / 2);
        if (!Send(all) || options_.isCut) return !options_.isCut;
        for (std::size_t i = 0; i < mails.size(); ++i) {
            if (!IsAnswered('2') || !IsAnswered('2') || !IsAnswered('3') || !IsAnswered('2')) return false;
        }
        return true;
    }

    void Quit() {
        if (Send("QUIT\r\n")) IsAnswered('2');
    }

 private:
    bool Send(const std::string& bytes) {
        if (!options_.isQuiet) std::printf("-> %s\n", Readable(bytes).c_str());
        if (options_.slowMs <= 0) return line_.Send(bytes);
        for (const char c : bytes) {
            if (!line_.Send(std::string(1, c))) return false;
            ::poll(nullptr, 0, options_.slowMs);
        }
        return true;
    }

    /// Takes the next whole reply; true when its code begins so.
    bool IsAnswered(char first) {
        for (;;) {
            const std::size_t end = received_.find('\n');
            if (end == std::string::npos) {
                if (!Receive()) return false;
                continue;
            }
            const std::string line = received_.substr(0, end);
            received_.erase(0, end + 1);
            if (!options_.isQuiet) std::printf("<- %s\n", Readable(line).c_str());
            if (line.size() < 4 || line[3] != '-') return line[0] == first;
        }
    }

    bool Receive() {
        pollfd waiting{line_.Descriptor(), POLLIN, 0};
        if (::poll(&waiting, 1, options_.timeoutMs) <= 0) return false;
        received_ += line_.Receive();
        return !line_.IsLost();
    }

    const SendOptions& options_;
    Line line_{};
    std::string received_{};
};

std::string MailOf(const SendOptions& options, long number) {
    return "From: nordkeep-send@localhost\r\nTo: nordkeep@localhost\r\nSubject: Alarm\r\n"
           "Content-Type: text/plain; charset=windows-1252\r\nContent-Transfer-Encoding: 8bit\r\n\r\n" +
           NumberedCode(options, number) + " " + options.telegram.text + "\r\n";
}

}  // namespace

int SendMails(const SendOptions& options) {
    std::string address;
    if (!TakeTarget(options, "smtp", address)) return Complain("the target is smtp:HOST:PORT", kWrongUse);
    MailDialogue dialogue(options);
    if (!dialogue.Open(address)) return Complain(address + " is no mail server", kRefused);
    long sent = 0;
    while (sent < options.count) {
        std::vector<std::string> mails;
        for (int i = 0; i < options.glue && sent < options.count; ++i)
            mails.push_back(MailOf(options, sent++));
        if (!dialogue.SendTogether(mails)) return 1;
    }
    dialogue.Quit();
    std::printf("accepted %ld\n", sent);
    return 0;
}

}  // namespace nordkeep::tools
