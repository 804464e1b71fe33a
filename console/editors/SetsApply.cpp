#include "console/editors/SetsBox.h"

namespace nordkeep {
namespace {

constexpr int kCaptionSaved = 4914;
constexpr int kCaptionNotSaved = 4701;
constexpr int kCaptionOverwrite = 4702;
constexpr int kCaptionAskRename = 4915;
constexpr int kCaptionNotRenamed = 4916;
constexpr int kCaptionFaulty = 4917;
constexpr TextView kEndings[] = {".TypeCode", ".DataCode"};

Text FileOf(TextView name, TextView ending) {
    return Text("Settings\\").append(name).append(ending);
}

}  // namespace

void SetsBox::Apply() {
    if (!MayApply() || needs_.state.IsRequestPending()) return;
    isBusy_ = true;
    if (Faults() > 0) {
        for (const SetupField& field : fields_) {
            if (field.fault.empty()) continue;
            notice_ = {needs_.captions(kCaptionFaulty, {field.caption, field.fault}), false};
            break;
        }
    } else {
        Write();
    }
    isBusy_ = false;
    view_->Refresh();
}

void SetsBox::Write() {
    const Text name = TypedName();
    const Text old = isNew_ ? name : names_[*current_];
    const bool isRenamed = name != old;
    const bool isMerelyRenamed = isRenamed && Typed() == DirectivesOf(file_.Content());
    if (isRenamed && !needs_.dialogs.AskYesNo(needs_.captions(kCaptionAskRename, {old, name}))) return;
    if (!isMerelyRenamed && !WriteFiles(old)) return;
    if (isRenamed && !needs_.host.RenameSet(old, name)) {
        notice_ = {needs_.captions(kCaptionNotRenamed, {old}), false};
        return;
    }
    needs_.host.NoteSaved(IdCodeFileName(name));
    Renew(name);
    if (isRenamed) {
        onRename(old, name);
    } else {
        onSets();
    }
    notice_ = {needs_.captions(kCaptionSaved, {name}), true};
}

/// The directives of a set, and of a copy the files of the original.
bool SetsBox::WriteFiles(const Text& name) {
    const Text path = IdCodeFileName(name);
    Text content = file_.Content();
    if (isNew_ && copied_.empty()) content.clear();
    if (isNew_) {
        for (const TextView ending : kEndings) {
            if (!copied_.empty() && !CopyOf(copied_, name, ending)) return false;
        }
        file_.Load(path);
    }
    notice_ = {needs_.captions(kCaptionNotSaved, {path}), false};
    const bool hasChanged = isNew_ ? file_.Exists() : file_.HasChanged();
    if (hasChanged && !needs_.dialogs.AskYesNo(needs_.captions(kCaptionOverwrite, {path}))) return false;
    needs_.host.KeepVersion(path);
    return file_.Write(WithDirectives(content, Typed()));
}

bool SetsBox::CopyOf(const Text& from, const Text& to, TextView ending) {
    SharedText original(needs_.files);
    original.Load(FileOf(from, ending));
    if (!original.Exists()) return true;
    SharedText copy(needs_.files);
    copy.Load(FileOf(to, ending));
    const bool isThere = copy.Exists() || original.IsUnreadable();
    if (!isThere && copy.Write(original.Content())) return true;
    notice_ = {needs_.captions(kCaptionNotSaved, {FileOf(to, ending)}), false};
    return false;
}

}  // namespace nordkeep
