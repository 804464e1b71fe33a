#pragma once

#include "platform/Dialogs.h"

#include <deque>

namespace nordkeep {

/// Answers as the test has said beforehand, no when it has not, and keeps what was shown.
class FakeDialogs : public Dialogs {
 public:
    std::vector<Text> messages{};
    std::vector<Text> questions{};
    std::vector<Answer> defaults{};  // of these
    std::vector<LanguageChoice> offered{};
    std::deque<bool> answers{};
    std::optional<int> language{};
    bool isQuestionUp = false;

    void ShowMessage(const Text& text) override { messages.push_back(text); }
    void ShowNotice(const Text& text) override { messages.push_back(text); }
    using Dialogs::AskYesNo;
    bool AskYesNo(const Text& question, Answer byDefault) override {
        questions.push_back(question);
        defaults.push_back(byDefault);
        if (answers.empty()) return false;
        const bool answer = answers.front();
        answers.pop_front();
        return answer;
    }
    bool IsQuestionUp() const override { return isQuestionUp; }
    std::optional<int> ChooseLanguage(const std::vector<LanguageChoice>& choices) override {
        offered = choices;
        return language;
    }
};

}  // namespace nordkeep
