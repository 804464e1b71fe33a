#include "console/editors/ObjectFormBox.h"

#include "console/lists/SharedCaptions.h"
#include "runtime/ObjectFiles.h"

#include <algorithm>

namespace nordkeep {
namespace {

constexpr int kCaptionTitle = 5122;
constexpr int kCaptionOverwrite = 5126;
constexpr int kCaptionNotSaved = 5127;
constexpr int kCaptionDrop = 5128;
constexpr int kCaptionSaveFault = 5129;

ControlKind ControlOf(FormKind kind) {
    if (kind == FormKind::Choice) return ControlKind::Choice;
    return kind == FormKind::Lines ? ControlKind::Lines : ControlKind::Words;
}

/// A choice that is left open stands in front of the others.
std::vector<DescribedChoice> ChoicesOfField(const FormField& field) {
    std::vector<DescribedChoice> choices;
    if (field.kind == FormKind::Choice) choices.push_back({.value = {}, .caption = {.own = " "}});
    for (const Text& choice : field.choices) choices.push_back({.value = choice, .caption = {.own = choice}});
    return choices;
}

/// No value brings a line of its own into the file unless its field has several.
Text FitValue(Text value, ControlKind control) {
    const bool hasLines = control == ControlKind::Lines;
    std::ranges::replace_if(
        value, [hasLines](char c) { return c == '\0' || (!hasLines && (c == '\r' || c == '\n')); }, ' ');
    return value;
}

}  // namespace

void ObjectFormBox::Open(const Text& set, const Text& idCode, const Text& name) {
    const Text path = InformationFile(set, idCode);
    if (path.empty() || isBusy_ || needs_.state.IsRequestPending()) return;
    if (isOpen_ && path == file_.Path()) return view_->Show(OpenedBy::Operator);
    if (!MayDrop()) return;
    isBusy_ = true;
    needs_.forms.Load();
    file_.Load(path);
    isBusy_ = false;
    title_ = needs_.captions(kCaptionTitle, {name.empty() ? idCode : name + " (" + idCode + ")"});
    notice_ = {file_.IsUnreadable() ? needs_.captions(kCaptionUnreadable) : Text()};
    MakeFields();
    TakeValues();
    isOpen_ = true;
    view_->Show(OpenedBy::Operator);
}

void ObjectFormBox::MakeFields() {
    fields_.clear();
    shown_.clear();
    for (const FormGroup& group : needs_.forms.Known().groups) {
        SetupGroup made{.caption = needs_.forms.CaptionOf(group.caption, {})};
        for (const FormField& field : group.fields) {
            SetupField row;
            row.key.key = field.name;
            row.key.control = ControlOf(field.kind);
            row.key.choices = ChoicesOfField(field);
            row.caption = needs_.forms.CaptionOf(field.caption, field.name);
            made.fields.push_back(fields_.size());
            fields_.push_back(std::move(row));
        }
        if (!made.fields.empty()) shown_.push_back(std::move(made));
    }
}

void ObjectFormBox::TakeValues() {
    for (SetupField& field : fields_) {
        field.stored = field.typed = FormValue(file_.Content(), field.key.key);
        field.isReadOnly = !MayEdit();
        Check(field);
        field.isFaultOld = !field.fault.empty();
    }
    other_ = OtherInformation(file_.Content(), needs_.forms.Known());
    ++generation_;
}

bool ObjectFormBox::MayEdit() const {
    const OperatorRights rights = needs_.state.Rights();
    return rights.MayEdit() && rights.MayChange() && !file_.IsUnreadable();
}

bool ObjectFormBox::IsChanged() const {
    return std::ranges::any_of(fields_, &SetupField::IsChanged);
}

void ObjectFormBox::Check(SetupField& field) const {
    const FormField* described = needs_.forms.Known().Find(field.key.key);
    const int fault = described ? FaultOfFormValue(*described, field.typed) : 0;
    field.fault = fault == 0 ? Text() : needs_.captions(fault);
}

void ObjectFormBox::Type(std::size_t number, Text value) {
    if (number >= fields_.size() || fields_[number].isReadOnly || isBusy_) return;
    fields_[number].typed = FitValue(std::move(value), fields_[number].key.control);
    Check(fields_[number]);
    notice_ = {};
    view_->Refresh();
}

// --- Saving

Text ObjectFormBox::NewContent() const {
    Text content = file_.Content();
    for (const SetupField& field : fields_) {
        if (field.IsChanged())
            content = WithFormValue(content, needs_.forms.Known(), field.key.key, field.typed);
    }
    return content;
}

bool ObjectFormBox::MaySaveFaults() {
    for (const SetupField& field : fields_) {
        if (field.fault.empty() || field.isFaultOld) continue;
        if (!needs_.dialogs.AskYesNo(needs_.captions(kCaptionSaveFault, {field.caption, field.fault})))
            return false;
    }
    return true;
}

// What somebody else wrote meanwhile stays but for the fields that were typed here.
bool ObjectFormBox::MayOverwrite() {
    if (!file_.HasChanged()) return true;
    if (!needs_.dialogs.AskYesNo(needs_.captions(kCaptionOverwrite, {file_.Path()}))) return false;
    file_.Load(file_.Path());
    return MayEdit();
}

void ObjectFormBox::Save() {
    if (!MaySave() || needs_.state.IsRequestPending()) return;
    isBusy_ = true;
    if (MaySaveFaults()) Write();
    isBusy_ = false;
    view_->Refresh();
}

void ObjectFormBox::Write() {
    file_.MakeFolders();
    if (!MayOverwrite()) return;
    if (!MayEdit() || !file_.Write(NewContent())) {
        notice_ = {needs_.captions(kCaptionNotSaved, {file_.Path()})};
        return;
    }
    needs_.host.NoteSaved(file_.Path());
    TakeValues();
    notice_ = {needs_.captions(kCaptionSaved), true};
}

bool ObjectFormBox::MayDrop() {
    if (!isOpen_ || !IsChanged()) return true;
    isBusy_ = true;
    const bool mayDrop = needs_.dialogs.AskYesNo(needs_.captions(kCaptionDrop));
    isBusy_ = false;
    return mayDrop;
}

void ObjectFormBox::Close() {
    if (!isOpen_ || isBusy_ || !MayDrop()) return;
    isOpen_ = false;
    view_->Close();
}

void ObjectFormBox::EditAsText() {
    if (!isOpen_ || isBusy_ || !MayDrop()) return;
    isOpen_ = false;
    view_->Close();
    needs_.host.OpenAsText(file_.Path());
}

}  // namespace nordkeep
