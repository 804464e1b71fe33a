#include "console/setup/SetupBox.h"

#include <algorithm>

namespace nordkeep {
namespace {

constexpr TextView kOwnDescriptor = "Settings\\Nordkeep.desc";
constexpr TextView kDeliveredDescriptor = "Nordkeep.Default_desc";
constexpr int kCaptionFaults = 3862;
constexpr int kCaptionDamaged = 3883;
constexpr int kCaptionDrop = 3884;
constexpr int kCaptionNotFound = 3885;
constexpr int kCaptionNotPlayed = 3887;
constexpr int kCaptionUnreadable = 3893;
constexpr int kCaptionNoFaults = 3897;
constexpr TextView kSoundDevice = "AlarmSoundDevice";

/// The words of a search; all of them have to be found.
bool HoldsAll(TextView text, TextView words) {
    for (const Text& word : Split(words, ' ')) {
        if (!word.empty() && FindNoCase(text, word) == TextView::npos) return false;
    }
    return true;
}

}  // namespace

// --- Opening and closing

SetupBox::SetupBox(const Needs& needs)
    : needs_(needs), values_({needs.files, needs.centreFiles, needs.state}) {}

void SetupBox::OpenAt(const SetupSection& section) {
    Open();
    const auto at = std::ranges::find(sections_, &section);
    if (isOpen_ && at != sections_.end()) ShowPage(static_cast<std::size_t>(at - sections_.begin()));
}

void SetupBox::Open() {
    if (isBusy_ || needs_.state.IsRequestPending()) return;
    if (!isOpen_) {
        notice_ = {};
        isBusy_ = true;
        LoadDescriptor();
        values_.Load();
        sections_ = needs_.sections;
        std::erase_if(sections_, [](const SetupSection* section) { return !section->IsThere(); });
        for (SetupSection* section : sections_) section->Load(descriptor_);
        isBusy_ = false;
        MakeFields();
        page_ = 0;
        search_.clear();
        isOpen_ = true;
        NewContent();
    }
    view_->Show(OpenedBy::Operator);
}

void SetupBox::Close() {
    if (!isOpen_ || isBusy_) return;
    for (SetupSection* section : sections_) {
        if (!section->MayLeave()) return;
    }
    if (HasChanges()) {
        isBusy_ = true;
        const bool mayDrop = needs_.dialogs.AskYesNo(needs_.captions(kCaptionDrop));
        isBusy_ = false;
        if (!mayDrop) return;
    }
    Drop();
}

void SetupBox::Drop() {
    if (!isOpen_) return;
    isOpen_ = false;
    view_->Close();
}

SetupDescriptor SetupBox::Delivered() {
    return ParseDescriptor(LoadFile(needs_.programFolder.Resolve(kDeliveredDescriptor)).bytes);
}

void SetupBox::LoadDescriptor() {
    const SetupDescriptor delivered = Delivered();
    const FileContent own = LoadFile(needs_.dataFolder.Resolve(kOwnDescriptor));
    descriptor_ = delivered;
    if (own.state == FileContent::State::Unreadable) {
        notice_ = {needs_.captions(kCaptionUnreadable, {own.reason}), false};
    } else if (own.state == FileContent::State::Read) {
        SetupDescriptor mine = ParseDescriptor(own.bytes);
        if (!mine.fault) {
            descriptor_ = Complete(std::move(mine), delivered);
        } else {
            const Text line = std::to_string(mine.fault->line);
            notice_ = {needs_.captions(kCaptionDamaged, {line, mine.fault->text}), false};
        }
    }
}

// --- Pages and fields

void SetupBox::MakeFields() {
    fields_.clear();
    pages_.clear();
    for (const SetupSection* section : sections_) pages_.push_back({.caption = section->Caption()});
    for (const DescribedPage& page : descriptor_.pages) {
        if (!page.isHidden) AddPage(page);
    }
    pages_.push_back({});  // the faults
    LoadValues();
}

void SetupBox::AddPage(const DescribedPage& page) {
    SetupPage made{.caption = WordsOf(page.caption, needs_.captions, page.name)};
    for (const DescribedGroup& group : page.groups) {
        SetupGroup shown{.caption = WordsOf(group.caption, needs_.captions, {})};
        for (const DescribedKey& key : group.keys) {
            if (key.scope == SettingScope::Port) continue;  // each line has its own
            shown.fields.push_back(fields_.size());
            fields_.push_back({.key = key,
                               .caption = WordsOf(key.caption, needs_.captions, key.key),
                               .help = WordsOf(key.help, needs_.captions, {})});
        }
        if (!shown.fields.empty()) made.groups.push_back(std::move(shown));
    }
    if (!made.groups.empty()) pages_.push_back(std::move(made));
}

CheckGround SetupBox::Ground(const DescribedKey& key) const {
    const bool isAway = key.scope == SettingScope::Centre && needs_.state.Rights().IsClient();
    return {.captions = needs_.captions, .dataFolder = needs_.dataFolder, .seesFiles = !isAway};
}

void SetupBox::LoadValues() {
    for (SetupField& field : fields_) {
        field.stored = values_.Value(field.key);
        field.typed = field.stored;
        field.isReadOnly = !values_.CanWrite(field.key.scope);
        Check(field);
        field.isFaultOld = !field.fault.empty();
    }
}

// A value that the program brings itself is never a fault.
void SetupBox::Check(SetupField& field) const {
    field.fault = field.IsDefault() ? Text() : FaultOf(field.key, field.typed, Ground(field.key));
}

void SetupBox::CountUp() {
    int all = 0;
    for (SetupPage& page : pages_) {
        page.faults = 0;
        page.isChanged = false;
        for (const SetupGroup& group : page.groups) {
            for (const std::size_t field : group.fields) {
                page.faults += fields_[field].fault.empty() ? 0 : 1;
                page.isChanged = page.isChanged || fields_[field].IsChanged();
            }
        }
        all += page.faults;
    }
    for (std::size_t number = 0; number < sections_.size(); ++number) {
        pages_[number].caption = sections_[number]->Caption();
        pages_[number].faults = sections_[number]->Faults();
        pages_[number].isChanged = sections_[number]->IsChanged();
    }
    pages_.back().caption = needs_.captions(kCaptionFaults, {std::to_string(all)});
}

void SetupBox::NewContent() {
    CountUp();
    FillShown();
    ++generation_;
}

void SetupBox::FillShown() {
    if (!search_.empty()) {
        shown_ = Found();
    } else if (page_ + 1 == pages_.size()) {
        shown_ = {Faults()};
    } else {
        shown_ = pages_[page_].groups;
    }
}

std::vector<SetupGroup> SetupBox::Found() const {
    std::vector<SetupGroup> found;
    for (const SetupPage& page : pages_) {
        SetupGroup here{.caption = page.caption};
        for (const SetupGroup& group : page.groups) {
            for (const std::size_t number : group.fields) {
                const SetupField& field = fields_[number];
                const Text text = page.caption + "\n" + group.caption + "\n" + field.caption + "\n" +
                                  field.help + "\n" + field.key.section + "\n" + field.key.key;
                if (HoldsAll(text, search_)) here.fields.push_back(number);
            }
        }
        if (!here.fields.empty()) found.push_back(std::move(here));
    }
    if (found.empty()) found.push_back({.caption = needs_.captions(kCaptionNotFound)});
    return found;
}

SetupGroup SetupBox::Faults() const {
    SetupGroup faults;
    for (std::size_t number = 0; number < fields_.size(); ++number) {
        if (!fields_[number].fault.empty()) faults.fields.push_back(number);
    }
    if (faults.fields.empty()) faults.caption = needs_.captions(kCaptionNoFaults);
    return faults;
}

void SetupBox::ShowPage(std::size_t page) {
    if (page >= pages_.size()) return;
    page_ = page;
    search_.clear();
    if (SetupSection* section = Section()) section->Enter();
    NewContent();
    view_->Refresh();
}

void SetupBox::Search(Text words) {
    const TextView wanted = TrimBlanks(words);
    if (wanted == search_) return;
    search_ = Text(wanted);
    NewContent();
    view_->Refresh();
}

// --- Typing

void SetupBox::Type(std::size_t number, Text value) {
    if (number >= fields_.size() || fields_[number].isReadOnly || isBusy_) return;
    SetupField& field = fields_[number];
    field.typed = std::move(value);
    notice_ = {};
    Check(field);
    CountUp();
    view_->Refresh();
}

void SetupBox::UseDefault(std::size_t number) {
    if (number >= fields_.size() || fields_[number].isReadOnly || isBusy_) return;
    fields_[number].typed = fields_[number].key.byDefault;
    Check(fields_[number]);
    notice_ = {};
    CountUp();
    ++generation_;
    view_->Refresh();
}

void SetupBox::Revert() {
    if (!isOpen_ || isBusy_) return;
    if (SetupSection* section = Section()) return section->Revert();
    isBusy_ = true;
    values_.Load();
    isBusy_ = false;
    LoadValues();
    notice_ = {};
    NewContent();
    view_->Refresh();
}

bool SetupBox::HasChanges() const {
    return std::ranges::any_of(fields_, &SetupField::IsChanged);
}

bool SetupBox::IsChanged() const {
    const SetupSection* section = Section();
    return section ? section->IsChanged() : HasChanges();
}

bool SetupBox::MayApply() const {
    if (!isOpen_ || isBusy_) return false;
    const SetupSection* section = Section();
    return section ? section->MayApply() : HasChanges();
}

const WindowNotice& SetupBox::Notice() const {
    const SetupSection* section = Section();
    return section && !section->Notice().text.empty() ? section->Notice() : notice_;
}

SetupSection* SetupBox::Section() const {
    return page_ < sections_.size() && search_.empty() ? sections_[page_] : nullptr;
}

void SetupBox::NoteSection() {
    CountUp();
    view_->Refresh();
}

std::vector<DescribedChoice> SetupBox::ChoicesOf(const SetupField& field) const {
    if (field.key.control != ControlKind::Language) return field.key.choices;
    std::vector<DescribedChoice> choices;
    for (const LanguageChoice& language : needs_.host.Languages()) {
        choices.push_back(
            {.value = LanguageNumber(language.number), .caption = {.number = 0, .own = language.name}});
    }
    return choices;
}

void SetupBox::Play(std::size_t number) {
    if (number >= fields_.size()) return;
    Text device;
    for (const SetupField& field : fields_) {
        if (EqualsNoCase(field.key.key, kSoundDevice)) device = field.typed;
    }
    const bool isPlayed = needs_.host.PlaySound(fields_[number].typed, device);
    notice_ = isPlayed ? WindowNotice() : WindowNotice{needs_.captions(kCaptionNotPlayed), false};
    view_->Refresh();
}

}  // namespace nordkeep
