#include "console/boxes/EditorBox.h"

namespace nordkeep {
namespace {

constexpr int kCaptionSaved = 3745;
constexpr int kCaptionOverwrite = 3746;
constexpr int kCaptionNotSaved = 3747;
constexpr int kCaptionDrop = 3748;

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
    if (isBusy_ || needs_.isRequestPending()) return;
    if (StartProgram(edited)) return;
    if (isOpen_ && edited.path == file_.Path()) return view_->Show(OpenedBy::Operator);
    if (!MayDropText()) return;
    {
        const Busy busy(isBusy_);
        file_.Load(edited.path);
    }
    title_ = edited.title;
    notice_ = {};
    typed_ = file_.Content();
    ++generation_;
    isOpen_ = true;
    view_->Show(OpenedBy::Operator);
}

// A client's files are not on this machine, so that no other program can work on them.
bool EditorBox::StartProgram(const EditedFile& edited) {
    if (needs_.role == Role::Client || edited.program.empty()) return false;
    std::erase_if(programs_, [](const auto& program) { return !program->IsRunning(); });
    programs_.push_back(std::make_unique<ChildProcess>());
    return programs_.back()->Start(ToUtf8(edited.program), {needs_.dataFolder.Resolve(edited.path)});
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
}

void EditorBox::Save() {
    if (!isOpen_ || !MaySave() || needs_.isRequestPending()) return;
    {
        const Busy busy(isBusy_);
        file_.MakeFolders();
        const bool hasChanged = file_.HasChanged();
        if (hasChanged && needs_.mayEdit() && !needs_.dialogs.AskYesNo(needs_.captions(kCaptionOverwrite)))
            return;
        const bool isSaved = needs_.mayEdit() && file_.Write(typed_);
        notice_ = {needs_.captions(isSaved ? kCaptionSaved : kCaptionNotSaved), isSaved};
        if (isSaved) needs_.saved(file_.Path());
    }
    view_->Refresh();
}

}  // namespace nordkeep
