#pragma once

#include <algorithm>
#include <map>
#include <string>
#include <vector>

namespace nordkeep::tools {

/// What a GSM modem says: it answers commands from the messages that lie in its card. It knows bytes only;
/// whoever has the line decides how fast and in which pieces they go.
class Modem {
 public:
    struct Message {
        std::string sender{};
        std::string text{};
    };

    bool echoes = true;
    bool isSilent = false;                        // takes commands and says nothing
    std::string emptyAnswer = "+CMS ERROR: 321";  // to a read of a location without a message
    std::string refused{};                        // a command that begins so is answered with ERROR
    int locations = 10;
    std::map<int, Message> messages{};
    std::vector<std::string> commands{};  // all that have come

    /// The answer to bytes of the line; a command is complete at its carriage return.
    std::string Take(const std::string& bytes) {
        std::string answer;
        for (const char c : bytes) {
            if (echoes && !isSilent) answer += c;
            if (c != '\r') {
                if (c != '\n') command_ += c;
                continue;
            }
            commands.push_back(command_);
            if (!isSilent && !command_.empty()) answer += Answer(command_);
            command_.clear();
        }
        return answer;
    }

    /// Stores a message in the first free location; what the modem tells of it.
    std::string Deliver(const Message& message) {
        int place = 1;
        while (messages.contains(place)) ++place;
        messages[place] = message;
        return "\r\n+CMTI: \"SM\"," + std::to_string(place) + "\r\n";
    }

    /// What the modem tells of a call; `type` 129 is a national number, 145 one with "+".
    static std::string Ring(const std::string& number, int type = 129) {
        return "\r\nRING\r\n\r\n+CLIP: \"" + number + "\"," + std::to_string(type) + ",\"\",,\"\",0\r\n";
    }

 private:
    static std::string Line(const std::string& text) { return "\r\n" + text + "\r\n"; }

    static bool StartsWith(const std::string& text, const char* start) { return text.rfind(start, 0) == 0; }

    std::string Answer(const std::string& command) {
        if (!refused.empty() && StartsWith(command, refused.c_str())) return Line("ERROR");
        const std::size_t place = command.find('=');
        const int number = place == std::string::npos ? 0 : std::atoi(command.c_str() + place + 1);
        if (StartsWith(command, "AT+CMGR=")) return Read(number);
        if (StartsWith(command, "AT+CMGD=")) messages.erase(number);
        if (StartsWith(command, "ATE")) echoes = command != "ATE0";
        return StartsWith(command, "AT") ? Line("OK") : Line("ERROR");
    }

    std::string Read(int number) const {
        const auto found = messages.find(number);
        if (found == messages.end()) return Line(number > locations ? "+CMS ERROR: 321" : emptyAnswer);
        return Line("+CMGR: \"REC UNREAD\",\"" + found->second.sender + "\",,\"24/05/17,13:45:30+08\"\r\n" +
                    found->second.text) +
               Line("OK");
    }

    std::string command_{};
};

}  // namespace nordkeep::tools
