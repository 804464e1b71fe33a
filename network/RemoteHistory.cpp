#include "network/RemoteHistory.h"

#include <algorithm>

namespace nordkeep {

HistorySource::State RemoteHistory::Readiness() const {
    if (link_.IsConnectionLost()) return State::NoContact;
    if (knowsUpTo_ < static_cast<std::int32_t>(Message::Handover)) return State::NotKnown;
    return user_.level > 0 ? State::Ready : State::NotAllowed;
}

void RemoteHistory::Ask(HistoryTaker& taker, std::int32_t number, const HistoryQuery& query) {
    ++lastSent_;
    Add(taker, number, Message::History, HistoryQuestionPayload({lastSent_, query}), lastSent_);
}

void RemoteHistory::Ask(HistoryTaker& taker, std::int32_t number, const ReportSpan& span) {
    ++lastSent_;
    Add(taker, number, Message::Report, PayloadOf(ReportQuestion{lastSent_, span}), lastSent_);
}

// What is on its way is answered; nobody need hear it any more.
void RemoteHistory::Add(HistoryTaker& taker, std::int32_t number, Message message, Text payload,
                        std::int32_t sentAs) {
    for (std::size_t i = 0; i < questions_.size(); ++i) {
        if (questions_[i].taker == &taker && questions_[i].message == message) questions_[i].taker = nullptr;
    }
    const auto isDropped = [](const Question& question) { return question.taker == nullptr; };
    if (!questions_.empty())
        questions_.erase(std::remove_if(questions_.begin() + 1, questions_.end(), isDropped),
                         questions_.end());
    questions_.push_back({&taker, number, message, std::move(payload), sentAs});
    if (questions_.size() == 1) SendFirst();
}

void RemoteHistory::SendFirst() {
    while (!questions_.empty() && questions_.front().taker == nullptr) questions_.pop_front();
    if (!questions_.empty()) link_.SendToServer(questions_.front().message, questions_.front().payload);
}

void RemoteHistory::Forget(HistoryTaker& taker) {
    for (Question& question : questions_) {
        if (question.taker == &taker) question.taker = nullptr;
    }
}

bool RemoteHistory::SignOver(const Text& note, const Text& list) {
    return Readiness() == State::Ready &&
           link_.SendToServer(Message::Handover, PayloadOf(HandoverGiven{note, list}));
}

void RemoteHistory::NoteLoss() {
    knowsUpTo_ = 0;
    questions_.clear();
}

// Number 0 is the refusal of whatever was asked.
std::optional<RemoteHistory::Question> RemoteHistory::Take(Message message, std::int32_t number) {
    if (questions_.empty() || questions_.front().message != message) return std::nullopt;
    if (number != 0 && number != questions_.front().sentAs) return std::nullopt;
    Question question = std::move(questions_.front());
    questions_.pop_front();
    SendFirst();
    return question;
}

void RemoteHistory::TakeHistory(TextView payload) {
    const auto answer = ReadHistoryAnswer(payload, clock_);
    const auto question = answer ? Take(Message::History, answer->number) : std::nullopt;
    if (question && question->taker) question->taker->TakePage(question->number, answer->page);
}

void RemoteHistory::TakeReport(TextView payload) {
    const auto answer = ReadReportAnswer(payload);
    const auto question = answer ? Take(Message::Report, answer->number) : std::nullopt;
    if (question && question->taker) question->taker->TakeReport(question->number, answer->figures);
}

}  // namespace nordkeep
