#pragma once

#include "console/lists/Captions.h"
#include "platform/Dialogs.h"

#include <QtCore/QPointer>
#include <QtWidgets/QDialog>

#include <functional>

class QPushButton;

namespace nordkeep {

/// Questions on the screen. Who asks waits in a loop of its own, in which everything else goes on: alarms
/// arrive, sound and are stored. There is one question at a time; while it is up a second one is answered
/// with no, and the first comes to the front.
class QtDialogs final : public Dialogs {
 public:
    using Dialogs::AskYesNo;

    /// As soon as there are captions; until then buttons have both languages.
    void UseCaptions(const Captions& captions) { captions_ = &captions; }
    /// The window that questions stand in front of when none of the program's has the keys.
    void UseParent(std::function<QWidget*()> parent) { parent_ = std::move(parent); }

    /// What the key that silences the sound does while a question blocks the window that has it.
    void UseSilence(std::function<void()> silence) { silence_ = std::move(silence); }

    void ShowMessage(const Text& text) override;
    void ShowNotice(const Text& text) override;
    bool AskYesNo(const Text& question, Answer byDefault) override {
        return Ask({.text = question, .byDefault = byDefault, .yes = {}, .no = {}});
    }
    bool Ask(const Question& question) override;
    std::optional<int> ChooseLanguage(const std::vector<LanguageChoice>& choices) override;

    bool IsQuestionUp() const override { return !question_.isNull(); }
    /// The program ends: what is being asked is answered with no.
    void CloseQuestion();

 private:
    QString ButtonText(int caption, const char* bilingual) const;
    QPushButton* NewAnswer(const Text& verb, int caption, const char* bilingual) const;
    QWidget* Parent() const;
    /// Until the dialog has been answered or is gone.
    void Await(QDialog& dialog);
    static void GiveBack(QWidget* focus);

    const Captions* captions_ = nullptr;
    std::function<QWidget*()> parent_{};
    std::function<void()> silence_{};
    QPointer<QDialog> question_{};
};

}  // namespace nordkeep
