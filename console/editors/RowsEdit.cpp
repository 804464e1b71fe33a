#include "console/editors/RowsBox.h"
#include "console/setup/SaveQuestion.h"
#include "runtime/Fields.h"

#include <algorithm>

namespace nordkeep {
namespace {

constexpr int kCaptionSaved = 4700;
constexpr int kCaptionNotSaved = 4701;
constexpr int kCaptionOverwrite = 4702;
constexpr int kCaptionAddsFaults = 4703;
constexpr int kCaptionLoses = 4704;
constexpr int kCaptionRemoved = 4705;

/// No value holds what ends a row.
Text OnOneLine(Text value) {
    std::ranges::replace_if(
        value, [](char c) { return c == '\r' || c == '\n' || c == '\0'; }, ' ');
    return value;
}

}  // namespace

void RowsBox::Say(int caption, std::initializer_list<TextView> values, bool isGood) {
    notice_ = {needs_.captions(caption, values), isGood};
}

void RowsBox::Do(RowStep step, int rowInFront) {
    notice_ = {};
    ShowRows([&] { ApplyStep(items_, step); }, rowInFront);
    steps_.Note(std::move(step), 0);
    BeginCheck();
}

// --- Typing

void RowsBox::Type(std::size_t number, Text value) {
    if (!row_ || number >= fields_.size() || fields_[number].isReadOnly || isBusy_) return;
    SetupField& field = fields_[number];
    const Text fit = format_.FitValue(field.key, OnOneLine(value));
    if (fit != value) ++generation_;
    if (fit == field.typed) return view_->Refresh();
    field.typed = fit;
    notice_ = {};
    const FileItem before = items_[*row_];
    const FileItem after = ItemOfTyped(before);
    losing_.erase(before.id);
    if (format_.Loses(Typed())) losing_.insert(before.id);
    if (!format_.StaysInPlace(before, after)) return MoveRow(after);
    RowStep step = {{.place = *row_, .before = before, .after = after}};
    ApplyStep(items_, step);
    steps_.Note(std::move(step), before.id);
    table_.NoteRow(before.id);
    typedSinceCheck_.insert(before.id);
    if (number == format_.KeyField()) isKeyTyped_ = true;
    CheckRow();
    view_->Refresh();
}

/// What is typed back to what the file had is that again, byte by byte.
FileItem RowsBox::ItemOfTyped(const FileItem& before) const {
    FileItem loaded = before;
    loaded.text = loaded.loaded;
    const RowFormat::Values typed = Typed();
    if (!loaded.text.empty() && format_.ValuesOf(loaded) == typed) return loaded;
    return format_.ItemOf(typed, before);
}

void RowsBox::MoveRow(const FileItem& after) {
    RowStep step = {{.place = *row_, .before = items_[*row_]}};
    std::vector<FileItem> items = items_;
    ApplyStep(items, step);
    for (ItemChange& change : Inserted(items, after)) step.push_back(std::move(change));
    Do(std::move(step), after.id);
    view_->Refresh();
}

/// The row in its place, with what has to stand around it.
RowStep RowsBox::Inserted(const std::vector<FileItem>& items, const FileItem& row) const {
    const std::vector<FileItem> frame = format_.FrameFor(items, row);
    if (frame.empty()) return {{.place = format_.PlaceFor(items, row), .after = row}};
    RowStep step;
    std::vector<FileItem> framed = items;
    for (const FileItem& line : frame) {
        step.push_back({.place = framed.size(), .after = line});
        framed.push_back(line);
    }
    step.push_back({.place = format_.PlaceFor(framed, row), .after = row});
    return step;
}

// --- Rows

void RowsBox::AddRow(const RowFormat::Values& values) {
    FileItem row{.id = ++lastId_, .isRow = true};
    row = format_.ItemOf(values, row);
    words_.clear();
    Do(Inserted(items_, row), row.id);
    view_->Refresh();
}

void RowsBox::Add() {
    if (MayEdit() && !isBusy_) AddRow(format_.NewValues());
}

void RowsBox::Copy() {
    if (!MayEdit() || isBusy_ || !row_) return;
    AddRow(format_.ValuesOf(items_[*row_]));
}

void RowsBox::Remove(const std::vector<Text>& keys) {
    if (!MayEdit() || isBusy_) return;
    std::set<int> ids;
    for (const Text& key : keys) ids.insert(LeadingInt32(key));
    RowStep step;
    std::size_t next = 0;  // the row that is to be in front
    for (std::size_t place = items_.size(); place > 0; --place) {
        const FileItem& item = items_[place - 1];
        if (item.isRow && ids.contains(item.id)) {
            step.push_back({.place = place - 1, .before = item});
            next = place - 1;
        }
    }
    if (step.empty()) return;
    const Text count = std::to_string(step.size());
    const auto stays = [&](const FileItem& item) { return item.isRow && !ids.contains(item.id); };
    const auto from = items_.begin() + static_cast<std::ptrdiff_t>(next);
    auto inFront = std::find_if(from, items_.end(), stays);
    if (inFront == items_.end()) inFront = std::ranges::find_if(items_, stays);
    Do(std::move(step), inFront == items_.end() ? 0 : inFront->id);
    Say(kCaptionRemoved, {count}, true);
    view_->Refresh();
}

void RowsBox::Undo() {
    if (!MayUndo() || isBusy_) return;
    const RowStep step = steps_.TakeLast();
    const ItemChange& first = step.front();
    const int inFront = first.before ? first.before->id : row_ ? items_[*row_].id : 0;
    notice_ = {};
    ShowRows([&] { TakeBack(items_, step); }, inFront);
    BeginCheck();
    view_->Refresh();
}

// --- Saving

void RowsBox::Apply() {
    if (!MayApply() || needs_.state.IsRequestPending()) return;
    for (std::size_t number = 0; row_ && number < fields_.size(); ++number) {
        const Text fault = format_.FaultOf(number, Typed());
        if (fault.empty()) continue;
        notice_ = {fields_[number].caption + ": " + fault, false};
        return view_->Refresh();
    }
    isBusy_ = true;
    const Text content = ContentOf(items_);
    if (MaySaveFaults(content) && MayOverwrite()) Write(content);
    isBusy_ = false;
    view_->Refresh();
}

// What was wrong in the file before may stay; what is wrong newly is asked for.
bool RowsBox::MaySaveFaults(const Text& content) {
    if (!losing_.empty()) {
        const auto place = PlaceOf(*losing_.begin());
        const Text which = place ? format_.ValuesOf(items_[*place])[format_.KeyField()] : Text();
        if (!AsksToSave(needs_.dialogs, needs_.captions, needs_.captions(kCaptionLoses, {which})))
            return false;
    }
    const std::vector<Finding> added = AddedErrors(findingsOfFile_, FindingsNow(content));
    if (added.empty()) return true;
    const Finding& first = added.front();
    return AsksToSave(needs_.dialogs, needs_.captions,
                      needs_.captions(kCaptionAddsFaults, {std::to_string(added.size()),
                                                           std::to_string(first.line), first.sentence}));
}

// A row that was typed in its place is looked at by the check that has looked at all others already.
std::vector<Finding> RowsBox::FindingsNow(const Text& content) {
    if (isChecking_ || !check_ || isKeyTyped_ || typedSinceCheck_.size() > 1) {
        const auto check = format_.NewCheck(Name(), content);
        while (check->Continue()) continue;
        return check->Found();
    }
    std::vector<Finding> findings;
    std::set<int> lines;
    for (const int id : typedSinceCheck_) {
        const auto place = PlaceOf(id);
        if (!place) continue;
        lines.insert(LineOf(*place));
        for (Finding& finding : check_->OfRow(items_[*place], LineOf(*place), [&content] { return content; }))
            findings.push_back(std::move(finding));
    }
    for (const Finding& finding : findings_) {
        if (!lines.contains(finding.line)) findings.push_back(finding);
    }
    return findings;
}

bool RowsBox::MayOverwrite() {
    if (!text_.HasChanged()) return true;
    return needs_.dialogs.AskYesNo(needs_.captions(kCaptionOverwrite, {text_.Path()}));
}

void RowsBox::Write(const Text& content) {
    const Text path = text_.Path();
    needs_.host.KeepVersion(path);
    if (!text_.Write(content)) return Say(kCaptionNotSaved, {path}, false);
    for (FileItem& item : items_) item.loaded = item.isRow ? item.text : Text();
    steps_.NoteSaved();
    losing_.clear();
    needs_.host.NoteSaved(path);
    isFileChecked_ = false;
    TakeRow(row_);
    BeginCheck();
    Say(kCaptionSaved, {path}, true);
}

}  // namespace nordkeep
