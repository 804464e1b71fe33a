#pragma once

#include "platform/Dialogs.h"

namespace nordkeep {

/// The dialogs of a copy without a screen: a message goes to standard error, a question is answered with no,
/// and nothing is chosen.
class TerminalDialogs final : public Dialogs {
 public:
    void ShowMessage(const Text& text) override;
    void ShowNotice(const Text& text) override { ShowMessage(text); }
    using Dialogs::AskYesNo;
    bool AskYesNo(const Text&, Answer) override { return false; }
    bool IsQuestionUp() const override { return false; }
    std::optional<int> ChooseLanguage(const std::vector<LanguageChoice>&) override { return std::nullopt; }
};

}  // namespace nordkeep
