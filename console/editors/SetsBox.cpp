#include "console/editors/SetsBox.h"

#include "console/editors/FieldList.h"
#include "runtime/Fields.h"
#include "runtime/IniCheck.h"
#include "translation/SetRows.h"

#include <algorithm>
#include <array>

namespace nordkeep {
namespace {

constexpr int kCaption = 4880;
constexpr int kFirstHeading = 4881;
constexpr int kGroupSet = 4883;
constexpr int kGroupFormat = 4884;
constexpr int kGroupMore = 4885;
constexpr int kCaptionName = 4886;
constexpr int kHelpName = 4887;
constexpr int kFirstPart = 4888;  // start and length of each part, in the order of FORMAT
constexpr int kHelpStart = 4898;
constexpr int kHelpLength = 4899;
constexpr int kFirstMore = 4900;  // padding, character, zero trim, and their helps
constexpr int kFirstZeroTrim = 4906;
constexpr int kCaptionNoName = 4909;
constexpr int kCaptionNameTaken = 4910;
constexpr int kCaptionNoNumber = 4911;
constexpr int kCaptionNoIdCode = 4912;
constexpr int kCaptionNoCharacter = 4913;
constexpr int kCaptionDrop = 3884;
constexpr int kFirstPartName = 4933;
constexpr int kColumns = 2;
constexpr int kMostNumber = 999;

enum Field : std::size_t {
    kName,
    kFirstNumber,  // start and length of each part
    kPaddingCount = kFirstNumber + 2 * kCodeParts,
    kPaddingCharacter,
    kZeroTrim,
    kFields
};
constexpr std::array<const char*, kCodeParts> kParts = {"IdCode", "Priority", "TypeCode", "Group", "Zone"};

}  // namespace

SetTable::SetTable(const Captions& captions) : TextTable(captions, kFirstHeading, kColumns) {}

void SetTable::ShowSets(const std::vector<std::pair<Text, Text>>& sets) {
    std::vector<Line> lines;
    for (const auto& [name, lineNames] : sets) lines.push_back({name, lineNames});
    Show(std::move(lines));
}

SetsBox::SetsBox(const Needs& needs) : needs_(needs), file_(needs.files), table_(needs.captions) {}

Text SetsBox::Caption() const {
    return needs_.captions(kCaption);
}

// --- The list

void SetsBox::Load(const SetupDescriptor&) {
    notice_ = {};
    isNew_ = false;
    sample_.clear();
    outcome_.clear();
    MakeFields();
    Renew({});
}

void SetsBox::ListSets() {
    names_.clear();
    std::vector<std::pair<Text, Text>> rows;
    for (const Text& file : needs_.files.ScanForFiles("Settings\\*.IDCode")) {
        names_.push_back(file.substr(0, file.rfind('.')));
        rows.emplace_back(names_.back(), needs_.host.LinesOf(names_.back()));
    }
    table_.ShowSets(rows);
}

/// The files as they are now, with this set in front.
void SetsBox::Renew(const Text& name) {
    isNew_ = false;
    ListSets();
    current_.reset();
    for (std::size_t number = 0; number < names_.size(); ++number) {
        if (EqualsNoCase(names_[number], name)) current_ = number;
    }
    if (!current_ && !names_.empty()) current_ = 0;
    Open(current_ ? names_[*current_] : Text());
}

void SetsBox::Select(std::size_t row) {
    if (row >= names_.size() || (row == current_ && !isNew_) || isBusy_) return;
    if (MayLeave()) {
        notice_ = {};
        isNew_ = false;
        current_ = row;
        Open(names_[row]);
    }
    view_->Refresh();
}

bool SetsBox::MayEdit() const {
    const OperatorRights rights = needs_.state.Rights();
    return rights.MayEdit() && rights.MayChange();
}

// --- The set in front

void SetsBox::MakeFields() {
    using K = ControlKind;
    std::vector<DescribedGroup> groups = {
        FieldGroup(kGroupSet, {{"Name", K::Words, kCaptionName, kHelpName}}), FieldGroup(kGroupFormat, {}),
        FieldGroup(kGroupMore, {{"PaddingCount", K::Number, kFirstMore, kFirstMore + 3},
                                {"PaddingCharacter", K::Words, kFirstMore + 1, kFirstMore + 4}})};
    for (int number = 0; number < 2 * kCodeParts; ++number) {
        const bool isStart = number % 2 == 0;
        const Text name = Text(kParts[static_cast<std::size_t>(number / 2)]) + (isStart ? "Start" : "Length");
        auto made = FieldGroup(
            0, {{name.c_str(), K::Number, kFirstPart + number, isStart ? kHelpStart : kHelpLength}});
        groups[1].keys.push_back(std::move(made.keys.front()));
    }
    ListedField trim{"ZeroTrim", K::Choice, kFirstMore + 2, kFirstMore + 5};
    for (const char* value : {"", "1", "0"}) {
        const int caption = kFirstZeroTrim + static_cast<int>(trim.choices.size());
        trim.choices.push_back({.value = value, .caption = {.number = caption, .own = {}}});
    }
    groups[2].keys.push_back(FieldGroup(0, {trim}).keys.front());
    fields_.clear();
    shown_.clear();
    for (DescribedGroup& group : groups) {
        SetupGroup made{.caption = WordsOf(group.caption, needs_.captions, {})};
        for (DescribedKey& key : group.keys) {
            made.fields.push_back(fields_.size());
            const Text caption = WordsOf(key.caption, needs_.captions, key.key);
            const Text help = WordsOf(key.help, needs_.captions, {});
            fields_.push_back({.key = std::move(key), .caption = caption, .help = help});
        }
        shown_.push_back(std::move(made));
    }
}

void SetsBox::Open(const Text& name) {
    copied_.clear();
    isBusy_ = true;
    if (!name.empty()) file_.Load(IdCodeFileName(name));
    isBusy_ = false;
    Show(name, name.empty() ? SetDirectives() : DirectivesOf(file_.Content()), true);
}

void SetsBox::Show(const Text& name, const SetDirectives& directives, bool isStored) {
    std::vector<Text> values(kFields);
    values[kName] = name;
    for (std::size_t part = 0; part < kCodeParts; ++part) {
        values[kFirstNumber + 2 * part] = std::to_string(directives.parts[part].start);
        values[kFirstNumber + 2 * part + 1] = std::to_string(directives.parts[part].length);
    }
    values[kPaddingCount] = std::to_string(directives.paddingCount);
    values[kPaddingCharacter] = Text(1, static_cast<char>(directives.paddingCharacter));
    if (directives.zeroTrim) values[kZeroTrim] = Text(1, *directives.zeroTrim != 0 ? '1' : '0');
    for (std::size_t number = 0; number < kFields; ++number) {
        fields_[number].typed = values[number];
        fields_[number].stored = isStored ? values[number] : Text("\n");  // nothing typed is like it
        fields_[number].isReadOnly = !MayEdit() || (isStored && (name.empty() || file_.IsUnreadable()));
    }
    CheckAll();
    ++generation_;
}

void SetsBox::BeginNew(const SetDirectives& directives) {
    isNew_ = true;
    current_.reset();
    notice_ = {};
    Show({}, directives, false);
    view_->Refresh();
}

void SetsBox::New() {
    if (!MayEdit() || isBusy_ || !MayLeave()) return;
    copied_.clear();
    SetDirectives usual;  // of the receivers that most centres have
    usual.parts[static_cast<std::size_t>(CodePart::IdCode)] = {1, 6};
    usual.parts[static_cast<std::size_t>(CodePart::TypeCode)] = {7, 2};
    BeginNew(usual);
}

void SetsBox::Copy() {
    if (!MayEdit() || isBusy_ || !current_ || !MayLeave()) return;
    const Text from = names_[*current_];
    const SetDirectives directives = DirectivesOf(file_.Content());
    copied_ = from;
    BeginNew(directives);
}

SetDirectives SetsBox::Typed() const {
    SetDirectives directives;
    for (std::size_t part = 0; part < kCodeParts; ++part) {
        directives.parts[part] = {LeadingInt16(fields_[kFirstNumber + 2 * part].typed),
                                  LeadingInt16(fields_[kFirstNumber + 2 * part + 1].typed)};
    }
    directives.paddingCount = LeadingInt16(fields_[kPaddingCount].typed);
    const Text& character = fields_[kPaddingCharacter].typed;
    directives.paddingCharacter = character.empty() ? 0 : static_cast<unsigned char>(character.front());
    const Text& trim = fields_[kZeroTrim].typed;
    if (!trim.empty()) directives.zeroTrim = LeadingInt16(trim);
    return directives;
}

Text SetsBox::TypedName() const {
    return Text(TrimBlanks(fields_[kName].typed));
}

// --- What is wrong

void SetsBox::CheckAll() {
    for (std::size_t number = 0; number < kFields; ++number) fields_[number].fault = FaultOfField(number);
}

Text SetsBox::FaultOfField(std::size_t field) const {
    const Text& typed = fields_[field].typed;
    if (!isNew_ && !current_) return {};
    if (field == kName) {
        const Text name = TypedName();
        if (name.empty() || !IsSafeComponent(name) || name.find_first_of(",;=") != Text::npos)
            return needs_.captions(kCaptionNoName);
        const bool isOther = isNew_ || !EqualsNoCase(name, names_[*current_]);
        const auto isThis = [&name](const Text& known) { return EqualsNoCase(known, name); };
        return isOther && std::ranges::any_of(names_, isThis) ? needs_.captions(kCaptionNameTaken) : Text();
    }
    if (field == kZeroTrim) return {};
    if (field == kPaddingCharacter) {
        const bool isNeeded = LeadingNumber(fields_[kPaddingCount].typed) > 0;
        return isNeeded && typed.size() != 1 ? needs_.captions(kCaptionNoCharacter) : Text();
    }
    const auto number = WholeNumber(typed);
    if (!number || *number < 0 || *number > kMostNumber) return needs_.captions(kCaptionNoNumber);
    return field == kFirstNumber + 1 && *number == 0 ? needs_.captions(kCaptionNoIdCode) : Text();
}

int SetsBox::Faults() const {
    return static_cast<int>(
        std::ranges::count_if(fields_, [](const SetupField& field) { return !field.fault.empty(); }));
}

// --- Typing

void SetsBox::Type(std::size_t number, Text value) {
    if (number >= fields_.size() || fields_[number].isReadOnly || isBusy_) return;
    fields_[number].typed = std::move(value);
    notice_ = {};
    CheckAll();
    view_->Refresh();
}

bool SetsBox::IsChanged() const {
    return isNew_ || std::ranges::any_of(fields_, &SetupField::IsChanged);
}

bool SetsBox::MayLeave() {
    if (isBusy_) return false;
    if (!IsChanged()) return true;
    isBusy_ = true;
    const bool mayDrop = needs_.dialogs.AskYesNo(needs_.captions(kCaptionDrop));
    isBusy_ = false;
    return mayDrop;
}

void SetsBox::Revert() {
    if (isBusy_) return;
    notice_ = {};
    Renew(current_ ? names_[*current_] : Text());
    view_->Refresh();
}

// --- The sample

void SetsBox::TypeSample(Text sample) {
    sample_ = std::move(sample);
    const bool canTry = current_ && !isNew_ && !sample_.empty();
    outcome_ = canTry ? needs_.facts.Try(names_[*current_], sample_) : Text();
    view_->Refresh();
}

Text SetsBox::FilledSample() const {
    const SetDirectives typed = Typed();
    const auto count = static_cast<std::size_t>(std::clamp(typed.paddingCount, 0, 999));
    if (sample_.size() >= count || typed.paddingCharacter == 0) return sample_;
    return Text(count - sample_.size(), static_cast<char>(typed.paddingCharacter)) + sample_;
}

std::vector<SetsBox::Cut> SetsBox::Cuts() const {
    std::vector<Cut> cuts;
    const Text telegram = FilledSample();
    const SetDirectives typed = Typed();
    for (std::size_t part = 0; part < kCodeParts; ++part) {
        const PartPlace& place = typed.parts[part];
        if (place.length < 1 || place.start < 1) continue;
        const auto start = static_cast<std::size_t>(place.start - 1);
        if (start >= telegram.size()) continue;
        const std::size_t length = std::min(static_cast<std::size_t>(place.length), telegram.size() - start);
        cuts.push_back({start, length, needs_.captions(kFirstPartName + static_cast<int>(part))});
    }
    return cuts;
}

}  // namespace nordkeep
