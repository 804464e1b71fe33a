#include "console/boxes/EditorBox.h"

#include "console/lists/SharedCaptions.h"

namespace nordkeep {
namespace {

constexpr int kCaptionOverwrite = 3746;
constexpr int kCaptionNotSaved = 3747;
constexpr int kCaptionDrop = 3748;
constexpr int kCaptionAddsFaults = 4703;
/// Nothing else happens while a text is looked at before it is saved; a larger one is left to the check of
/// the centre.
constexpr std::size_t kMostCheckedAtOnce = 4 << 20;

/// Nothing else of the editor begins while one of its operations waits.
class Busy {
 public:
    explicit Busy(bool& flag) : flag_(flag) { flag_ = true; }
    ~Busy() { flag_ = false; }
    Busy(const Busy&) = delete;
    Busy& operator=(const Busy&) = delete;

 private:
    bool& flag_;
};

}  // namespace

void EditorBox::Open(const EditedFile& edited) {
    if (isBusy_ || needs_.state.IsRequestPending()) return;
    if (needs_.host.StartProgram(edited)) return;
    if (isOpen_ && edited.path == file_.Path()) {
        line_ = edited.line;
        return view_->Show(OpenedBy::Operator);
    }
    if (!MayDropText()) return;
    line_ = edited.line;
    {
        const Busy busy(isBusy_);
        file_.Load(edited.path);
    }
    title_ = edited.title;
    notice_ = {file_.IsUnreadable() ? needs_.captions(kCaptionUnreadable) : Text()};
    typed_ = file_.Content();
    CheckAll();
    findingsOfFile_ = findings_;
    ++generation_;
    isOpen_ = true;
    view_->Show(OpenedBy::Operator);
}

bool EditorPrograms::Start(const EditedFile& edited) {
    if (edited.program.empty()) return false;
    std::erase_if(running_, [](const auto& program) { return !program->IsRunning(); });
    running_.push_back(std::make_unique<ChildProcess>());
    return running_.back()->Start(ToUtf8(edited.program), {dataFolder_.Resolve(edited.path)});
}

bool EditorBox::MayEdit() const {
    const OperatorRights rights = needs_.state.Rights();
    return rights.MayEdit() && rights.MayChange();
}

bool EditorBox::MayDropText() {
    if (!isOpen_ || !IsChanged()) return true;
    const Busy busy(isBusy_);
    return needs_.dialogs.AskYesNo(needs_.captions(kCaptionDrop));
}

void EditorBox::Close() {
    if (!isOpen_ || isBusy_ || !MayDropText()) return;
    isOpen_ = false;
    view_->Close();
}

void EditorBox::Type(Text text) {
    typed_ = std::move(text);
    isCheckDue_ = true;
}

// --- What is wrong

bool EditorBox::CheckOn() {
    if (!isOpen_) return false;
    if (typed_.size() > kMostCheckedAtOnce) return false;
    if (isCheckDue_) needs_.check.Begin(file_.Path(), typed_);
    isChecking_ = isChecking_ || isCheckDue_;
    isCheckDue_ = false;
    if (!isChecking_) return false;
    isChecking_ = needs_.check.Continue();
    if (isChecking_) return true;
    findings_ = needs_.check.Take();
    view_->Refresh();
    return false;
}

void EditorBox::CheckAll() {
    findings_.clear();
    isCheckDue_ = isChecking_ = false;
    if (typed_.size() > kMostCheckedAtOnce) return;
    needs_.check.Begin(file_.Path(), typed_);
    while (needs_.check.Continue()) continue;
    findings_ = needs_.check.Take();
}

// What was wrong in the file before may stay; what is wrong newly is asked for.
bool EditorBox::MayAddFaults() {
    CheckAll();
    const std::vector<Finding> added = AddedErrors(findingsOfFile_, findings_);
    if (added.empty()) return true;
    const Finding& first = added.front();
    return needs_.dialogs.AskYesNo(needs_.captions(
        kCaptionAddsFaults, {std::to_string(added.size()), std::to_string(first.line), first.sentence}));
}

void EditorBox::Save() {
    if (!isOpen_ || !MaySave() || needs_.state.IsRequestPending()) return;
    {
        const Busy busy(isBusy_);
        if (!MayAddFaults()) return view_->Refresh();
        file_.MakeFolders();
        const bool hasChanged = file_.HasChanged();
        if (hasChanged && MayEdit() && !needs_.dialogs.AskYesNo(needs_.captions(kCaptionOverwrite))) return;
        const bool isSaved = MayEdit() && file_.Write(typed_);
        notice_ = {needs_.captions(isSaved ? kCaptionSaved : kCaptionNotSaved), isSaved};
        if (isSaved) findingsOfFile_ = findings_;
        if (isSaved) needs_.host.NoteSaved(file_.Path());
    }
    view_->Refresh();
}

}  // namespace nordkeep
