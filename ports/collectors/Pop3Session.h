#pragma once

#include "platform/Text.h"

#include <deque>
#include <optional>

namespace nordkeep {

/// What a session asks of its line.
struct Pop3Step {
    Text send{};                 // a command without its line end
    std::optional<Text> mail{};  // complete; the session goes on when it is told what became of it
    bool isGreeting = false;
    bool isAccepted = false;  // the login
    bool isRefused = false;   // user or password
    bool isOver = false;
};

/// One session with a mail server: logs in, fetches the waiting mails one by one, deletes each that is
/// stored, and takes leave. It knows lines only.
class Pop3Session {
 public:
    /// What is kept of one mail, in bytes.
    static constexpr std::size_t kMostOfMail = 1 << 20;

    Pop3Session(Text user, Text password, std::size_t mostMessages)
        : user_(std::move(user)), password_(std::move(password)), mostMessages_(mostMessages) {}

    /// A line of the server, without its end.
    Pop3Step Take(const Text& line);
    /// What became of the mail. One that is not stored stays on the server.
    Pop3Step OnMailHandled(bool isStored);
    bool IsWaiting() const { return state_ == State::Storing; }

 private:
    enum class State { Greeting, User, Pass, List, ListLines, Retr, Message, Storing, Dele, Quit };

    Pop3Step TakeAnswer(bool isGood);
    Pop3Step TakeListLine(const Text& line);
    Pop3Step TakeMessageLine(const Text& line);
    Pop3Step Send(Text command, State next);
    Pop3Step Refuse();
    Pop3Step FetchNext();

    Text user_;
    Text password_;
    std::size_t mostMessages_;
    State state_ = State::Greeting;
    std::deque<Text> numbers_{};  // of the messages to fetch
    Text number_{};               // of the one in hand
    Text mail_{};
};

}  // namespace nordkeep
