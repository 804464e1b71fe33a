#pragma once

#include "console/editors/EditorsHost.h"
#include "console/lists/ObjectForms.h"
#include "console/lists/OperatorState.h"
#include "console/lists/SharedText.h"
#include "console/lists/WindowView.h"
#include "console/setup/FieldForm.h"
#include "platform/Dialogs.h"

namespace nordkeep {

/// The information of an object as a form. What is no field of the form stays in the file as it is, and is
/// shown beside the fields.
class ObjectFormBox final : public FieldForm {
 public:
    struct Needs {
        DataFiles& files;
        Dialogs& dialogs;
        const Captions& captions;
        const OperatorState& state;
        EditorsHost& host;
        ObjectForms& forms;
    };
    explicit ObjectFormBox(const Needs& needs) : needs_(needs), file_(needs.files) {}

    void SetView(WindowView& view) { view_ = &view; }

    /// An unsaved form is asked for first. `name` is the object's, for the title.
    void Open(const Text& set, const Text& idCode, const Text& name);
    /// Asks first when something has not been saved.
    void Close();
    bool IsOpen() const { return isOpen_; }

    const Text& Title() const { return title_; }
    const WindowNotice& Notice() const { return notice_; }
    /// The lines of the file that are no field.
    const Text& Other() const { return other_; }
    bool IsChanged() const;
    bool MayEdit() const;
    bool MaySave() const { return isOpen_ && !isBusy_ && MayEdit() && IsChanged(); }
    void Save();
    /// Leaves the form for the text as a whole.
    void EditAsText();

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
    void MakeFields();
    void TakeValues();
    void Check(SetupField& field) const;
    bool MayDrop();
    bool MaySaveFaults();
    bool MayOverwrite();
    void Write();
    Text NewContent() const;

    Needs needs_;
    NoWindowView noView_{};
    WindowView* view_ = &noView_;
    SharedText file_;
    Text title_{};
    Text other_{};
    std::vector<SetupField> fields_{};
    std::vector<SetupGroup> shown_{};
    WindowNotice notice_{};
    unsigned generation_ = 0;
    bool isOpen_ = false;
    bool isBusy_ = false;
};

}  // namespace nordkeep
