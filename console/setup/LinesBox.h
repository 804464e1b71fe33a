#pragma once

#include "console/lists/OperatorState.h"
#include "console/lists/SharedText.h"
#include "console/setup/FieldForm.h"
#include "console/setup/LineControl.h"
#include "console/setup/LineKinds.h"
#include "console/setup/SetupSection.h"
#include "platform/Clock.h"
#include "platform/Dialogs.h"
#include "runtime/IniText.h"

namespace nordkeep {

/// One line in the list of the set-up.
struct LineRow {
    Text name{};         // of the settings file, "Port1"
    Text description{};  // what people call it
    Text kind{};         // "TCPS 17601, Robofon (RBM600)"
    LineKind is{};
    int number = 0;
    LineFigures figures{};
    bool isRunning = false;  // there are figures
};

/// The lines: their settings files, how they do, and one of them in front to be edited. Works on the files of
/// this copy, or on a client on those of its server.
class LinesBox final : public FieldForm, public SetupSection {
 public:
    struct Needs {
        DataFiles& files;
        Dialogs& dialogs;
        const Captions& captions;
        const OperatorState& state;
        const Clock& clock;
        const FileTree& dataFolder;
        LineControl& control;
    };
    explicit LinesBox(const Needs& needs) : needs_(needs), file_(needs.files), main_(needs.files) {}

    void SetView(WindowView& view) { view_ = &view; }

    // --- SetupSection
    Text Caption() const override;
    void Load(const SetupDescriptor& descriptor) override;
    /// Sets may have been made or renamed meanwhile.
    void Enter() override;
    int Faults() const override;
    bool IsChanged() const override;
    bool MayApply() const override { return !isBusy_ && MayEdit() && IsChanged() && IsComplete(); }
    void Apply() override;
    void Revert() override;
    bool MayLeave() override;
    const WindowNotice& Notice() const override { return notice_; }

    /// Asks how the lines do, and what came of a test.
    void Tick();

    const std::vector<LineRow>& Rows() const { return rows_; }
    /// The row in front; none for a new line, and without lines.
    std::optional<std::size_t> Current() const { return current_; }
    bool IsNew() const { return isNew_; }
    /// Asks first when the present one has not been applied.
    void Select(std::size_t row);
    /// A new line, or one with the settings of that in front.
    void New();
    void Copy();
    void Remove();
    /// Closes the line in front, or opens it again.
    void ToggleHeld();
    void SendTest();
    bool IsHeld() const;
    /// Throws away what comes on the line in front for a while, or takes it in again.
    void ToggleMuted();
    bool IsMuted() const;

    // --- A new line is made in steps: what it is, what only its kind has, what all have, its sets
    static constexpr int kSteps = 4;
    /// From 0; none but for a new line.
    std::optional<int> Step() const { return step_; }
    /// "Step 2 of 4: ..."; empty when there is none.
    Text StepText() const;
    bool MayGoOn() const { return step_ && *step_ + 1 < kSteps; }
    bool MayGoBack() const { return step_ && *step_ > 0; }
    /// A step with a fault is not left for the next one.
    void GoOn();
    void GoBack();
    bool MayEdit() const;

    /// The state of a line in words, with its time.
    Text StateText(const LineRow& row) const;
    Text TimeText(OleDate time) const;

    // --- FieldForm
    const std::vector<SetupField>& Fields() const override { return fields_; }
    const std::vector<SetupGroup>& Shown() const override { return shown_; }
    unsigned Generation() const override { return generation_; }
    void Type(std::size_t field, Text value) override;
    void UseDefault(std::size_t field) override;
    std::vector<DescribedChoice> ChoicesOf(const SetupField& field) const override;
    void Play(std::size_t) override {}

 private:
    void ListLines();
    void ListSets();
    LineRow ReadRow(const Text& name);
    void Open(const Text& name);
    void MakeFields();
    void AddProtocols();
    void AddDevice();
    void AddField(DescribedKey key, int caption, int help);
    /// What the steps of a new line have been taken through.
    bool IsComplete() const { return !step_ || *step_ + 1 == kSteps; }
    int StepOf(const SetupField& field) const;
    void BeginNew(const IniText& from, std::optional<int> step);
    bool IsDevice(const SetupField& field) const;
    Text DeviceOfFile() const;
    void TakeDevice();
    Text FaultOfDevice(TextView device) const;
    bool WriteDevice();
    void TakeValues(const IniText& ini, bool isStored);
    void CheckAll();
    Text FaultOfField(const SetupField& field) const;
    Text FaultOfNumber(const SetupField& field) const;
    Text FaultOfSets(TextView sets) const;
    void FillShown();
    bool IsShown(const SetupField& field) const;
    LineKind TypedKind() const;
    const SetupField* Find(TextView section, TextView key) const;
    Text TypedOf(TextView key) const;
    std::vector<DescribedChoice> Offers(const SetupField& field) const;
    Text FreeName() const;
    bool MaySaveFaults();
    void Write();
    Text NewText() const;
    void Renew();

    Needs needs_;
    NoWindowView noView_{};
    WindowView* view_ = &noView_;
    SharedText file_;
    SharedText main_;  // which device a serial line is stands in the main settings
    SetupDescriptor descriptor_{};
    std::vector<LineRow> rows_{};
    std::vector<Text> sets_{};  // that have a file
    std::vector<SetupField> fields_{};
    std::vector<SetupGroup> shown_{};
    std::size_t device_ = 0;  // of the fields
    std::optional<std::size_t> current_{};
    Text name_{};  // of the line in front
    LineKind shownKind_{};
    WindowNotice notice_{};
    unsigned generation_ = 0;
    bool isNew_ = false;
    std::optional<int> step_{};
    bool isBusy_ = false;
};

}  // namespace nordkeep
