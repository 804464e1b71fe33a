#pragma once

#include "console/editors/EditorsHost.h"
#include "console/editors/RowsBox.h"
#include "console/lists/CodeLists.h"
#include "translation/SetFormat.h"

namespace nordkeep {

/// The list of the sets: their names, and which lines use them.
class SetTable final : public TextTable {
 public:
    explicit SetTable(const Captions& captions);
    void ShowSets(const std::vector<std::pair<Text, Text>>& sets);
    int DefaultWidth(int column) const override { return column == 0 ? 220 : 400; }
};

/// The translation sets: new ones, copies, other names, and which part of a telegram is what in each of them.
class SetsBox final : public FieldForm, public SetupSection {
 public:
    struct Needs {
        DataFiles& files;
        Dialogs& dialogs;
        const Captions& captions;
        const OperatorState& state;
        EditorsHost& host;
        RowFacts& facts;
    };
    explicit SetsBox(const Needs& needs);

    void SetView(WindowView& view) { view_ = &view; }
    /// Called when the sets that there are have changed.
    std::function<void()> onSets = [] {};
    /// Called instead when one of them has another name.
    std::function<void(const Text& from, const Text& to)> onRename = [](const Text&, const Text&) {};

    SetTable& Table() { return table_; }
    /// The row in front; none for a new set, and without sets.
    std::optional<std::size_t> Current() const { return current_; }
    /// The key of that row in the table; empty for none.
    Text CurrentKey() const { return current_ ? std::to_string(*current_) : Text(); }
    void Select(std::size_t row);
    /// A new set, or one with the files of that in front.
    void New();
    void Copy();
    bool IsNew() const { return isNew_; }
    bool MayEdit() const;

    /// A telegram to try the format with.
    const Text& Sample() const { return sample_; }
    void TypeSample(Text sample);
    /// A part of the sample that the format cuts out, counted from 0, with its caption.
    struct Cut {
        std::size_t start = 0;
        std::size_t length = 0;
        Text caption{};
    };
    /// The sample as it is cut: filled up in front where the set wants that.
    Text FilledSample() const;
    std::vector<Cut> Cuts() const;
    /// What would happen with the sample, by the set as it has been taken in.
    const Text& Outcome() const { return outcome_; }

    // --- SetupSection
    Text Caption() const override;
    void Load(const SetupDescriptor& descriptor) override;
    int Faults() const override;
    bool IsChanged() const override;
    bool MayApply() const override { return !isBusy_ && MayEdit() && IsChanged(); }
    void Apply() override;
    void Revert() override;
    bool MayLeave() override;
    const WindowNotice& Notice() const override { return notice_; }

    // --- FieldForm
    const std::vector<SetupField>& Fields() const override { return fields_; }
    const std::vector<SetupGroup>& Shown() const override { return shown_; }
    unsigned Generation() const override { return generation_; }
    void Type(std::size_t field, Text value) override;
    void UseDefault(std::size_t) override {}
    std::vector<DescribedChoice> ChoicesOf(const SetupField& field) const override {
        return field.key.choices;
    }
    void Play(std::size_t) override {}

 private:
    void ListSets();
    void MakeFields();
    void Open(const Text& name);
    void Show(const Text& name, const SetDirectives& directives, bool isStored);
    void BeginNew(const SetDirectives& directives);
    void CheckAll();
    Text FaultOfField(std::size_t field) const;
    SetDirectives Typed() const;
    Text TypedName() const;
    void Write();
    bool WriteFiles(const Text& name);
    bool CopyOf(const Text& from, const Text& to, TextView ending);
    void Renew(const Text& name);

    Needs needs_;
    NoWindowView noView_{};
    WindowView* view_ = &noView_;
    SharedText file_;
    SetTable table_;
    std::vector<Text> names_{};
    std::optional<std::size_t> current_{};
    std::vector<SetupField> fields_{};
    std::vector<SetupGroup> shown_{};
    Text copied_{};  // the set whose files a new one gets
    Text sample_{};
    Text outcome_{};
    WindowNotice notice_{};
    unsigned generation_ = 0;
    bool isNew_ = false;
    bool isBusy_ = false;
};

}  // namespace nordkeep
