#include "console/setup/SaveQuestion.h"
#include "console/setup/SetupBox.h"

namespace nordkeep {
namespace {

constexpr TextView kMainFile = "Settings\\Nordkeep.INI";
constexpr int kCaptionSavedNow = 3878;
constexpr int kCaptionSavedForLater = 3879;
constexpr int kCaptionNotWritten = 3880;
constexpr int kCaptionOverwrite = 3881;
constexpr int kCaptionSaveFault = 3882;
constexpr int kCaptionSavedAtServer = 3894;

}  // namespace

std::vector<std::size_t> SetupBox::Changed() const {
    std::vector<std::size_t> changed;
    for (std::size_t number = 0; number < fields_.size(); ++number) {
        if (fields_[number].IsChanged()) changed.push_back(number);
    }
    return changed;
}

void SetupBox::Apply() {
    if (!MayApply() || needs_.state.IsRequestPending()) return;
    if (SetupSection* section = Section()) return section->Apply();
    const std::vector<std::size_t> changed = Changed();
    isBusy_ = true;
    if (MaySaveFaults(changed) && MayOverwrite(changed)) Write(changed);
    isBusy_ = false;
    NewContent();
    view_->Refresh();
}

// What was wrong in the file before may stay; what is wrong newly is asked for.
bool SetupBox::MaySaveFaults(const std::vector<std::size_t>& changed) {
    for (const std::size_t number : changed) {
        const SetupField& field = fields_[number];
        if (field.fault.empty() || field.isFaultOld) continue;
        const Text what = field.caption + " (" + field.typed + "): " + field.fault;
        if (!AsksToSave(needs_.dialogs, needs_.captions, needs_.captions(kCaptionSaveFault, {what})))
            return false;
    }
    return true;
}

// The file also holds what the program itself writes at each alarm, so that its stamp says little: asked is
// for values that somebody else has changed.
bool SetupBox::MayOverwrite(const std::vector<std::size_t>& changed) {
    values_.Load();
    for (const std::size_t number : changed) {
        const SetupField& field = fields_[number];
        if (values_.Value(field.key) == field.stored) continue;
        if (!needs_.dialogs.AskYesNo(needs_.captions(kCaptionOverwrite, {field.caption}))) return false;
    }
    return true;
}

void SetupBox::Write(const std::vector<std::size_t>& changed) {
    std::vector<SetupValues::Change> changes;
    for (const std::size_t number : changed) {
        const SetupField& field = fields_[number];
        if (values_.CanWrite(field.key.scope)) changes.push_back({&field.key, field.typed});
    }
    const bool isWritten = changes.size() == changed.size() && values_.Write(changes);
    if (isWritten) {
        NoteWritten(changed);
    } else {
        notice_ = {needs_.captions(kCaptionNotWritten, {kMainFile}), false};
    }
    // Behind a failure some may stand in the file all the same.
    for (const std::size_t number : changed) {
        SetupField& field = fields_[number];
        field.stored = values_.Value(field.key);
        field.isFaultOld = !field.fault.empty() && !field.IsChanged();
    }
}

void SetupBox::NoteWritten(const std::vector<std::size_t>& changed) {
    const bool isClient = needs_.state.Rights().IsClient();
    std::size_t later = 0;
    bool isAtServer = false;
    Text what;
    for (const std::size_t number : changed) {
        const DescribedKey& key = fields_[number].key;
        later += key.when == AppliesWhen::Restart ? 1 : 0;
        isAtServer = isAtServer || (isClient && key.scope == SettingScope::Centre);
        what.append(what.empty() ? "" : ", ").append(key.section).append(".").append(key.key);
    }
    const Text count = std::to_string(changed.size());
    notice_.isGood = true;
    notice_.text = isAtServer  ? needs_.captions(kCaptionSavedAtServer, {count})
                   : later > 0 ? needs_.captions(kCaptionSavedForLater, {count, std::to_string(later)})
                               : needs_.captions(kCaptionSavedNow, {count});
    needs_.host.NoteSettings(Text(kMainFile) + ": " + what);
}

}  // namespace nordkeep
