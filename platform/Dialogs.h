#pragma once

#include "platform/Text.h"

#include <optional>
#include <vector>

namespace nordkeep {

/// One language file that can be chosen.
struct LanguageChoice {
    int number = 0;  // the extension of NK_Lang.NNN
    Text name{};     // the file's own name of the language, text 0
};

enum class Answer { No, Yes };

/// A question that is answered with yes or no.
struct Question {
    Text text{};
    Answer byDefault = Answer::No;
    Text yes{};  // what the button says: a verb for what will happen; empty: yes
    Text no{};
};

/// Messages and questions to the person at the screen. A copy without a screen answers at once.
class Dialogs {
 public:
    virtual ~Dialogs() = default;
    virtual void ShowMessage(const Text& text) = 0;
    /// A message that nobody waits for: the caller goes on at once.
    virtual void ShowNotice(const Text& text) = 0;
    /// True for yes. `byDefault` is the answer of the Enter key; closing the question is a no.
    virtual bool AskYesNo(const Text& question, Answer byDefault) = 0;
    /// A question whose careless answer is to be no.
    bool AskYesNo(const Text& question) { return AskYesNo(question, Answer::No); }
    /// The same with buttons that say what they do.
    virtual bool Ask(const Question& question) { return AskYesNo(question.text, question.byDefault); }
    /// Somebody is being asked something at this moment.
    virtual bool IsQuestionUp() const = 0;
    /// The number of the chosen language; none when nothing was chosen.
    virtual std::optional<int> ChooseLanguage(const std::vector<LanguageChoice>& choices) = 0;
};

}  // namespace nordkeep
