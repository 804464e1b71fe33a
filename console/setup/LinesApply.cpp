#include "console/setup/LinesBox.h"
#include "console/setup/SaveQuestion.h"
#include "console/setup/SetupValues.h"

namespace nordkeep {
namespace {

constexpr TextView kLineEnd = "\r\n";
constexpr int kCaptionAskRemove = 4556;
constexpr int kCaptionRemoved = 4557;
constexpr int kCaptionSaved = 4558;
constexpr int kCaptionSavedNew = 4559;
constexpr int kCaptionNotSaved = 4560;
constexpr int kCaptionOverwrite = 4561;
constexpr int kCaptionUntested = 4563;
constexpr int kCaptionTesting = 4578;
constexpr int kCaptionSaveFault = 3882;

Text FileOf(TextView name) {
    return Text("Settings\\").append(name).append(".ini");
}

}  // namespace

void LinesBox::Apply() {
    if (!MayApply() || needs_.state.IsRequestPending()) return;
    isBusy_ = true;
    if (MaySaveFaults()) Write();
    isBusy_ = false;
    view_->Refresh();
}

bool LinesBox::MaySaveFaults() {
    for (const SetupGroup& group : shown_) {
        for (const std::size_t number : group.fields) {
            const SetupField& field = fields_[number];
            if (field.fault.empty() || field.isFaultOld) continue;
            const Text what = field.caption + " (" + field.typed + "): " + field.fault;
            if (!AsksToSave(needs_.dialogs, needs_.captions, needs_.captions(kCaptionSaveFault, {what})))
                return false;
        }
    }
    return true;
}

/// The file with what was changed; all else in it stays.
Text LinesBox::NewText() const {
    IniText text(isNew_ ? Text() : file_.Content() + Text(kLineEnd));
    for (const SetupField& field : fields_) {
        // What makes a file a line stands in it, also when it is the default.
        const bool isCore = isNew_ && (field.key.key == "PortType" || field.key.key == "MessageFormat");
        if (IsDevice(field) || (!isCore && !field.IsChanged())) continue;
        text = IniText(text.WithValue(field.key.section, field.key.key, ValueInFile(field.typed)));
    }
    return text.Content();
}

void LinesBox::Write() {
    if (isNew_) file_.Load(FileOf(name_));
    if (file_.HasChanged() || (isNew_ && file_.Exists())) {
        if (!needs_.dialogs.AskYesNo(needs_.captions(kCaptionOverwrite, {name_}))) return;
    }
    // The device first: the line that is made anew opens it.
    const bool isWritten = WriteDevice() && file_.Write(NewText());
    notice_ = {needs_.captions(kCaptionNotSaved, {FileOf(name_)}), false};
    if (!isWritten) return;
    const Text description = TypedOf("PortDescription").empty() ? name_ : TypedOf("PortDescription");
    const int said = isNew_ ? kCaptionSavedNew : kCaptionSaved;
    needs_.control.FilesChanged(FileOf(name_));
    isNew_ = false;
    ListLines();
    Open(name_);
    notice_ = {needs_.captions(said, {description}), true};
}

void LinesBox::Remove() {
    if (!MayEdit() || !current_ || isBusy_) return;
    const LineRow row = rows_[*current_];
    isBusy_ = true;
    const bool isWanted = needs_.dialogs.AskYesNo(needs_.captions(kCaptionAskRemove, {row.description}));
    bool isGone = isWanted && needs_.control.RemoveFile(row.name);
    // A client cannot take a file away: it becomes a file without a line.
    if (isWanted && !isGone) {
        const IniText text(file_.Content() + Text(kLineEnd));
        isGone = file_.Write(text.WithValue("General", "PortType", "NONE"));
    }
    isBusy_ = false;
    if (!isWanted) return;
    if (isGone) {
        needs_.control.FilesChanged(FileOf(row.name));
        Renew();
    }
    notice_ = {needs_.captions(isGone ? kCaptionRemoved : kCaptionNotSaved, {row.description}), isGone};
    view_->Refresh();
}

bool LinesBox::IsHeld() const {
    return current_ && rows_[*current_].figures.state == LineState::Held;
}

void LinesBox::ToggleHeld() {
    if (!MayEdit() || !current_ || !rows_[*current_].isRunning) return;
    needs_.control.Hold(rows_[*current_].name, !IsHeld());
    Tick();
    view_->Refresh();
}

void LinesBox::SendTest() {
    if (!current_ || isBusy_) return;
    const bool isSent = needs_.control.StartTest(rows_[*current_].name);
    notice_ = {needs_.captions(isSent ? kCaptionTesting : kCaptionUntested), isSent};
    view_->Refresh();
}

}  // namespace nordkeep
