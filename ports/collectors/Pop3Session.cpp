#include "ports/collectors/Pop3Session.h"

#include "runtime/Fields.h"

#include <utility>

namespace nordkeep {

Pop3Step Pop3Session::Send(Text command, State next) {
    state_ = next;
    return {.send = std::move(command)};
}

Pop3Step Pop3Session::Refuse() {
    Pop3Step step = Send("QUIT", State::Quit);
    step.isRefused = true;
    return step;
}

Pop3Step Pop3Session::FetchNext() {
    if (numbers_.empty()) return Send("QUIT", State::Quit);
    number_ = std::move(numbers_.front());
    numbers_.pop_front();
    mail_.clear();
    return Send("RETR " + number_, State::Retr);
}

Pop3Step Pop3Session::Take(const Text& line) {
    // What a list or a mail consists of may begin with any character.
    if (state_ == State::ListLines) return TakeListLine(line);
    if (state_ == State::Message) return TakeMessageLine(line);
    const bool isGood = line.starts_with('+');
    return isGood || line.starts_with('-') ? TakeAnswer(isGood) : Pop3Step();
}

Pop3Step Pop3Session::TakeAnswer(bool isGood) {
    Pop3Step step;
    switch (state_) {
        case State::Greeting:
            if (!isGood) return Send("QUIT", State::Quit);
            step = Send("USER " + user_, State::User);
            step.isGreeting = true;
            return step;
        case State::User:
            return isGood ? Send("PASS " + password_, State::Pass) : Refuse();
        case State::Pass:
            if (!isGood) return Refuse();
            step = Send("LIST", State::List);
            step.isAccepted = true;
            return step;
        case State::List:
            return isGood ? Send({}, State::ListLines) : Send("QUIT", State::Quit);
        case State::Retr:
            return isGood ? Send({}, State::Message) : FetchNext();
        case State::Dele:
            return FetchNext();
        case State::Quit:
            step.isOver = true;
            return step;
        default:
            return step;
    }
}

Pop3Step Pop3Session::TakeListLine(const Text& line) {
    constexpr std::size_t kMostDigits = 10;
    if (line == ".") return FetchNext();
    const Text number = GetField(line, 0, " ");
    const bool isNumber = IsNumeric(number) && number.size() <= kMostDigits;
    if (isNumber && numbers_.size() < mostMessages_) numbers_.push_back(number);
    return {};
}

Pop3Step Pop3Session::TakeMessageLine(const Text& line) {
    if (line == ".") {
        state_ = State::Storing;
        return {.mail = std::move(mail_)};
    }
    // The server doubles a dot in front of a line.
    const TextView content = TextView(line).substr(line.starts_with('.') ? 1 : 0);
    if (mail_.size() < kMostOfMail)
        mail_.append(content.substr(0, kMostOfMail - mail_.size())).append("\r\n");
    return {};
}

Pop3Step Pop3Session::OnMailHandled(bool isStored) {
    if (state_ != State::Storing) return {};
    return isStored ? Send("DELE " + number_, State::Dele) : FetchNext();
}

}  // namespace nordkeep
