#pragma once

#include "console/lists/WindowView.h"
#include "console/setup/FieldForm.h"
#include "console/setup/SetupSection.h"
#include "console/setup/SetupValues.h"
#include "platform/Dialogs.h"

namespace nordkeep {

/// What the set-up asks of the program around it.
class SetupHost {
 public:
    virtual ~SetupHost() = default;
    /// Settings have been written: those that can are to count now. `what` names them for the journal.
    virtual void NoteSettings(const Text& what) = 0;
    /// False when the file cannot be played now.
    virtual bool PlaySound(const Text& file, const Text& device) = 0;
    /// The language files that are there.
    virtual std::vector<LanguageChoice> Languages() = 0;
};

struct SetupPage {
    Text caption{};
    std::vector<SetupGroup> groups{};
    int faults = 0;
    bool isChanged = false;
};

/// The set-up: the sections first, such as the lines, then the main settings file, page by page as the
/// descriptor file has it. What is typed counts when it is applied; a wrong value is told beside its field at
/// once.
class SetupBox final : public FieldForm {
 public:
    struct Needs {
        Settings& files;
        DataFiles& centreFiles;
        Dialogs& dialogs;
        const Captions& captions;
        const OperatorState& state;
        SetupHost& host;
        std::vector<SetupSection*> sections{};
        const FileTree& dataFolder;
        const FileTree& programFolder;
    };
    explicit SetupBox(const Needs& needs);

    void SetView(WindowView& view) { view_ = &view; }

    /// Reads the descriptor and the settings anew, unless the window is open.
    void Open();
    /// The same, with the page of a section in front.
    void OpenAt(const SetupSection& section);
    /// Asks first when something has not been applied.
    void Close();
    /// At the end of the program: nothing is asked.
    void Drop();
    bool IsOpen() const { return isOpen_; }

    const WindowNotice& Notice() const;
    /// Of the pages, the first, in this order.
    const std::vector<SetupSection*>& Sections() const { return sections_; }
    /// The section whose page is shown; none for a page of fields.
    SetupSection* Section() const;
    /// Something of a section has changed.
    void NoteSection();
    const std::vector<SetupField>& Fields() const override { return fields_; }
    /// The pages: the sections first, and last the faults of the others.
    const std::vector<SetupPage>& Pages() const { return pages_; }
    std::size_t CurrentPage() const { return page_; }
    void ShowPage(std::size_t page);
    /// Shows the fields whose caption, help, section or key hold every word; with no words the page again.
    void Search(Text words);
    const Text& SearchedFor() const { return search_; }
    /// What is to be shown: the page, or what was found.
    const std::vector<SetupGroup>& Shown() const override { return shown_; }
    unsigned Generation() const override { return generation_; }

    void Type(std::size_t field, Text value) override;
    void UseDefault(std::size_t field) override;
    /// Drops what was typed and not applied.
    void Revert();
    /// Of the section in front, or of all fields.
    bool IsChanged() const;
    bool MayApply() const;
    void Apply();

    /// What can be chosen: the choices of the descriptor, or the languages that are there.
    std::vector<DescribedChoice> ChoicesOf(const SetupField& field) const override;
    void Play(std::size_t field) override;

 private:
    bool HasChanges() const;
    void LoadDescriptor();
    SetupDescriptor Delivered();
    void MakeFields();
    void AddPage(const DescribedPage& page);
    void LoadValues();
    void Check(SetupField& field) const;
    void CountUp();
    void FillShown();
    std::vector<SetupGroup> Found() const;
    SetupGroup Faults() const;
    std::vector<std::size_t> Changed() const;
    bool MaySaveFaults(const std::vector<std::size_t>& changed);
    bool MayOverwrite(const std::vector<std::size_t>& changed);
    void Write(const std::vector<std::size_t>& changed);
    void NoteWritten(const std::vector<std::size_t>& changed);
    void NewContent();
    CheckGround Ground(const DescribedKey& key) const;

    Needs needs_;
    NoWindowView noView_{};
    WindowView* view_ = &noView_;
    std::vector<SetupSection*> sections_{};
    SetupValues values_;
    SetupDescriptor descriptor_{};
    std::vector<SetupField> fields_{};
    std::vector<SetupPage> pages_{};
    std::vector<SetupGroup> shown_{};
    std::size_t page_ = 0;
    Text search_{};
    WindowNotice notice_{};
    unsigned generation_ = 0;
    bool isOpen_ = false;
    bool isBusy_ = false;
};

}  // namespace nordkeep
