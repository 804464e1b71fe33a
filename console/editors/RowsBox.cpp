#include "console/editors/RowsBox.h"

#include "console/lists/SharedCaptions.h"
#include "runtime/Fields.h"

#include <algorithm>

namespace nordkeep {
namespace {

constexpr int kCaptionDrop = 3884;
constexpr int kSlicesAtOnce = 10;

}  // namespace

RowsBox::RowsBox(const Needs& needs, const RowFormat& format)
    : needs_(needs), format_(format), text_(needs.files), table_(format, needs.captions, items_) {}

// --- Files

bool RowsBox::IsThere() const {
    return !needs_.isOnServerOnly || !needs_.state.Rights().IsClient();
}

void RowsBox::Load(const SetupDescriptor&) {
    const Text known = file_ ? Name() : Text();
    MakeFields();
    ListFiles();
    notice_ = {};
    file_.reset();
    const auto same = std::ranges::find(names_, known);
    if (same != names_.end()) file_ = static_cast<std::size_t>(same - names_.begin());
    if (!file_ && !names_.empty()) file_ = 0;
    // A file is read when its page is looked at: it may be large, and on another machine.
    ShowRows([this] { items_.clear(); }, 0);
    steps_.Clear();
    findings_.clear();
    isRead_ = false;
}

void RowsBox::Enter() {
    if (!isRead_) Open();
    view_->Refresh();
}

void RowsBox::ListFiles() {
    names_.clear();
    const Text pattern = format_.Pattern();
    if (pattern.find('*') == Text::npos) {
        names_.emplace_back();
        return;
    }
    for (const Text& file : needs_.files.ScanForFiles(pattern))
        names_.push_back(file.substr(0, file.rfind('.')));
}

void RowsBox::RenewFiles() {
    const Text known = file_ ? Name() : Text();
    ListFiles();
    file_.reset();
    for (std::size_t number = 0; number < names_.size(); ++number) {
        if (EqualsNoCase(names_[number], known)) file_ = number;
    }
    if (!file_) {
        if (!names_.empty()) file_ = 0;
        Open();
    }
    view_->Refresh();
}

void RowsBox::FollowRename(const Text& from, const Text& to) {
    if (!file_ || !isRead_ || !EqualsNoCase(Name(), from)) return RenewFiles();
    ListFiles();
    file_.reset();
    for (std::size_t number = 0; number < names_.size(); ++number) {
        if (EqualsNoCase(names_[number], to)) file_ = number;
    }
    if (!file_) return RenewFiles();
    text_.NoteRenamed(format_.FileOf(Name()));
    BeginCheck();
    view_->Refresh();
}

void RowsBox::ChooseFile(std::size_t number) {
    if (number >= names_.size() || number == file_ || isBusy_) return;
    if (MayLeave()) {
        file_ = number;
        notice_ = {};
        Open();
    }
    view_->Refresh();
}

void RowsBox::ShowRow(const Text& name, const Text& key) {
    for (std::size_t number = 0; number < names_.size(); ++number) {
        if (EqualsNoCase(names_[number], name)) ChooseFile(number);
    }
    Enter();
    if (!file_ || !EqualsNoCase(Name(), name) || key.empty()) return;
    Search({});
    for (const FileItem& item : items_) {
        if (!item.isRow || !EqualsNoCase(format_.ValuesOf(item)[format_.KeyField()], key)) continue;
        return Select(std::to_string(item.id));
    }
}

void RowsBox::Open() {
    isRead_ = true;
    steps_.Clear();
    losing_.clear();
    findings_.clear();
    findingsOfFile_.clear();
    isFileChecked_ = false;
    isBusy_ = true;
    if (file_) text_.Load(format_.FileOf(Name()));
    isBusy_ = false;
    std::vector<FileItem> items = format_.Items(file_ ? text_.Content() : Text());
    int first = 0;
    for (FileItem& item : items) {
        if (!item.isRow) continue;
        item.id = ++lastId_;
        item.loaded = item.text;
        if (first == 0) first = item.id;
    }
    words_.clear();
    ShowRows([this, &items] { items_ = std::move(items); }, first);
    if (file_ && text_.IsUnreadable()) notice_ = {needs_.captions(kCaptionUnreadable), false};
    BeginCheck();
}

void RowsBox::Revert() {
    if (isBusy_) return;
    notice_ = {};
    Open();
    view_->Refresh();
}

bool RowsBox::MayEdit() const {
    const OperatorRights rights = needs_.state.Rights();
    return rights.MayEdit() && rights.MayChange() && file_ && !text_.IsUnreadable();
}

bool RowsBox::MayLeave() {
    if (isBusy_) return false;
    if (!IsChanged()) return true;
    isBusy_ = true;
    const bool mayDrop = needs_.dialogs.AskYesNo(needs_.captions(kCaptionDrop));
    isBusy_ = false;
    return mayDrop;
}

void RowsBox::EditAsText() {
    if (file_ && !isBusy_) needs_.host.OpenAsText(format_.FileOf(Name()));
}

void RowsBox::EditInformation() {
    if (!row_ || isBusy_ || !HasInformation()) return;
    const RowFormat::Values values = format_.ValuesOf(items_[*row_]);
    needs_.host.EditInformation(Name(), values[format_.KeyField()], values[*format_.ObjectNameField()]);
}

std::vector<CodeText> RowsBox::CodeTexts() {
    if (!row_ || isBusy_ || !HasInformation() || needs_.state.IsRequestPending()) return {};
    return needs_.host.CodeTexts(Name(), format_.ValuesOf(items_[*row_])[format_.KeyField()]);
}

void RowsBox::EditCodeText(const Text& code) {
    if (!row_ || isBusy_ || !HasInformation()) return;
    const Text idCode = format_.ValuesOf(items_[*row_])[format_.KeyField()];
    if (const Text path = CodeInfoFile(Name(), idCode, code); !path.empty()) needs_.host.OpenAsText(path);
}

// --- The table

void RowsBox::ShowRows(const std::function<void()>& change, int rowInFront) {
    row_.reset();
    table_.Show(words_, change);
    TakeRow(PlaceOf(rowInFront));
}

std::optional<std::size_t> RowsBox::PlaceOf(int id) const {
    if (id == 0) return std::nullopt;
    const auto item = std::ranges::find(items_, id, &FileItem::id);
    return item == items_.end() ? std::nullopt
                                : std::optional(static_cast<std::size_t>(item - items_.begin()));
}

void RowsBox::Search(const Text& words) {
    const Text wanted(TrimBlanks(words));
    if (wanted == words_) return;
    words_ = wanted;
    const int inFront = row_ ? items_[*row_].id : 0;
    ShowRows([] {}, inFront);
    view_->Refresh();
}

void RowsBox::Select(const Text& key) {
    if (key == Current()) return;
    notice_ = {};
    TakeRow(PlaceOf(LeadingInt32(key)));
    view_->Refresh();
}

// --- The row in front

void RowsBox::MakeFields() {
    fields_.clear();
    shown_.clear();
    for (const DescribedGroup& group : format_.Groups()) {
        SetupGroup made{.caption = WordsOf(group.caption, needs_.captions, {})};
        for (const DescribedKey& key : group.keys) {
            made.fields.push_back(fields_.size());
            fields_.push_back({.key = key,
                               .caption = WordsOf(key.caption, needs_.captions, key.key),
                               .help = WordsOf(key.help, needs_.captions, {})});
        }
        shown_.push_back(std::move(made));
    }
}

void RowsBox::TakeRow(std::optional<std::size_t> row) {
    row_ = row;
    ++generation_;
    rowFault_.clear();
    factsText_.clear();
    const RowFormat::Values blank(fields_.size());
    const RowFormat::Values values = row_ ? format_.ValuesOf(items_[*row_]) : blank;
    FileItem loaded = row_ ? items_[*row_] : FileItem();
    loaded.text = loaded.loaded;
    const RowFormat::Values stored = loaded.text.empty() ? blank : format_.ValuesOf(loaded);
    for (std::size_t number = 0; number < fields_.size(); ++number) {
        fields_[number].typed = values[number];
        fields_[number].stored = stored[number];
        fields_[number].fault.clear();
        fields_[number].isReadOnly = !row_ || !MayEdit();
    }
    if (!row_) return;
    CheckRow();
    if (needs_.facts) factsText_ = needs_.facts->FactsOf(Name(), values);
}

RowFormat::Values RowsBox::Typed() const {
    RowFormat::Values values;
    for (const SetupField& field : fields_) values.push_back(field.typed);
    return values;
}

Text RowsBox::Try(const Text& telegram) const {
    return needs_.facts && file_ && !telegram.empty() ? needs_.facts->Try(Name(), telegram) : Text();
}

std::vector<DescribedChoice> RowsBox::ChoicesOf(const SetupField& field) const {
    return format_.ChoicesOf(field.key, items_);
}

// --- What is wrong

void RowsBox::BeginCheck() {
    typedSinceCheck_.clear();
    isKeyTyped_ = false;
    checked_ = ContentOf(items_);
    check_ = format_.NewCheck(file_ ? Name() : Text(), checked_);
    isChecking_ = true;
    Tick();
}

bool RowsBox::Tick() {
    if (!isChecking_) return false;
    for (int slice = 0; slice < kSlicesAtOnce && isChecking_; ++slice) isChecking_ = check_->Continue();
    if (isChecking_) return false;
    findings_ = check_->Found();
    if (!isFileChecked_) findingsOfFile_ = findings_;
    isFileChecked_ = true;
    std::set<int> faulty;
    for (const Finding& finding : findings_) {
        const auto place = static_cast<std::size_t>(finding.line - 1);
        if (finding.line > 0 && place < items_.size()) faulty.insert(items_[place].id);
    }
    table_.MarkFaults(std::move(faulty));
    CheckRow();
    return true;
}

void RowsBox::CheckRow() {
    rowFault_.clear();
    for (SetupField& field : fields_) {
        field.fault.clear();
        const Text hint = row_ ? format_.HintOf(field.key, field.typed) : Text();
        field.help = WordsOf(field.key.help, needs_.captions, {});
        if (!hint.empty()) field.help.append(field.help.empty() ? "" : " ").append(hint);
    }
    if (!row_) return;
    for (std::size_t number = 0; number < fields_.size(); ++number)
        fields_[number].fault = format_.FaultOf(number, Typed());
    if (!check_ || isChecking_) return;
    const FileItem typed = format_.TypedItem(Typed(), items_[*row_]);
    const auto content = [this, &typed] {
        std::vector<FileItem> items = items_;
        items[*row_] = typed;
        return ContentOf(items);
    };
    for (const Finding& finding : check_->OfRow(typed, LineOf(*row_), content)) {
        const auto field = format_.FieldOf(finding.field);
        Text& fault = field && *field < fields_.size() ? fields_[*field].fault : rowFault_;
        if (fault.empty()) fault = finding.sentence;
    }
}

}  // namespace nordkeep
