#include "console/setup/LinesBox.h"

#include "console/lists/LineRows.h"
#include "console/setup/SetupValues.h"
#include "runtime/Dates.h"

#include <algorithm>

namespace nordkeep {
namespace {

constexpr TextView kGeneral = "General";
constexpr TextView kTranslate = "Translate";
constexpr TextView kLineEnd = "\r\n";
constexpr int kCaptionLines = 4540;
constexpr int kCaptionProtocols = 4550;
constexpr int kCaptionSetsHelp = 4551;
constexpr int kCaptionPairFault = 4552;
constexpr int kCaptionNumberNeeded = 4553;
constexpr int kCaptionNumberTaken = 4554;
constexpr int kCaptionLineNeeded = 5174;
constexpr int kCaptionNoSet = 4555;
constexpr int kCaptionDrop = 3884;
constexpr int kCaptionNever = 4564;
constexpr int kCaptionTestGood = 4575;
constexpr int kCaptionTestBad = 4576;

constexpr int kHighestPort = 65535;
constexpr int kHighestLine = 999;  // of serial lines

Text FileOf(TextView name) {
    return Text("Settings\\").append(name).append(".ini");
}

bool IsTcpServer(PortType type) {
    return type == PortType::TCPS || type == PortType::SMTP;
}

/// Both of them need the number for themselves.
bool ShareNumbers(PortType a, PortType b) {
    return (IsTcpServer(a) && IsTcpServer(b)) || (a == b && a == PortType::UDP) ||
           (a == b && a == PortType::RS232);
}

}  // namespace

// --- The list

Text LinesBox::Caption() const {
    return needs_.captions(kCaptionLines);
}

void LinesBox::Load(const SetupDescriptor& descriptor) {
    descriptor_ = descriptor;
    notice_ = {};
    isNew_ = false;
    step_.reset();
    current_.reset();
    name_.clear();
    main_.Load("Settings\\Nordkeep.INI");
    ListSets();
    MakeFields();
    ListLines();
    if (!rows_.empty()) {
        Open(rows_.front().name);
    } else {
        FillShown();
    }
}

void LinesBox::ListSets() {
    sets_.clear();
    for (const Text& file : needs_.files.ScanForFiles("Settings\\*.IDCode")) {
        sets_.push_back(file.substr(0, file.rfind('.')));
    }
}

void LinesBox::Enter() {
    ListSets();
    CheckAll();
    view_->Refresh();
}

void LinesBox::ListLines() {
    rows_.clear();
    for (const Text& file : needs_.files.ScanForFiles("Settings\\Port*.ini")) {
        rows_.push_back(ReadRow(file.substr(0, file.find('.'))));
    }
    std::ranges::sort(rows_, [](const LineRow& a, const LineRow& b) {
        return a.name.size() != b.name.size() ? a.name.size() < b.name.size() : a.name < b.name;
    });
    current_.reset();
    for (std::size_t row = 0; row < rows_.size(); ++row) {
        if (!isNew_ && EqualsNoCase(rows_[row].name, name_)) current_ = row;
    }
    Tick();
}

LineRow LinesBox::ReadRow(const Text& name) {
    const IniText ini(needs_.files.ReadTextFile(FileOf(name)));
    const auto value = [&ini](TextView key) { return ini.Value(kGeneral, key).value_or(Text()); };
    LineRow row{.name = name, .description = Text(TrimBlanks(value("PortDescription")))};
    if (row.description.empty()) row.description = name;
    row.is = {ParsePortType(TrimBlanks(value("PortType"))),
              ParseMessageFormat(LeadingInt32(value("MessageFormat")))};
    row.number = LeadingInt32(value("PortNumber"));
    const bool hasNumber = row.is.type && NeedsNumber(*row.is.type);
    row.kind = LineKindText(value("PortType"), hasNumber ? row.number : 0,
                            row.is.type ? row.is.format : std::nullopt);
    return row;
}

void LinesBox::Tick() {
    if (const auto isGood = needs_.control.TakeTestOutcome()) {
        notice_ = {needs_.captions(*isGood ? kCaptionTestGood : kCaptionTestBad), *isGood};
        view_->Refresh();
    }
    const std::vector<LineFigures> figures = needs_.control.Lines();
    for (LineRow& row : rows_) {
        const auto known = std::ranges::find_if(
            figures, [&row](const LineFigures& line) { return EqualsNoCase(line.name, row.name); });
        row.isRunning = known != figures.end();
        row.figures = row.isRunning ? *known : LineFigures{};
    }
}

Text LinesBox::TimeText(OleDate time) const {
    if (time.IsNever()) return needs_.captions(kCaptionNever);
    const bool isToday = FormatDate(time, "YYYY-MM-DD") == FormatDate(needs_.clock.Now(), "YYYY-MM-DD");
    return FormatDate(time, isToday ? "HH:NN:SS" : "YYYY-MM-DD HH:NN");
}

Text LinesBox::StateText(const LineRow& row) const {
    if (!row.isRunning) return {};
    const Text word = LineStateText(needs_.captions, row.figures.state);
    return row.figures.since.IsNever() ? word : word + " " + TimeText(row.figures.since);
}

// --- The line in front

void LinesBox::Open(const Text& name) {
    isNew_ = false;
    step_.reset();
    name_ = name;
    file_.Load(FileOf(name));
    TakeValues(IniText(file_.Content() + Text(kLineEnd)), true);
    current_.reset();
    for (std::size_t row = 0; row < rows_.size(); ++row) {
        if (rows_[row].name == name) current_ = row;
    }
    CheckAll();
    for (SetupField& field : fields_) field.isFaultOld = !field.fault.empty();
    FillShown();
    ++generation_;
}

void LinesBox::MakeFields() {
    fields_.clear();
    for (const DescribedPage& page : descriptor_.pages) {
        for (const DescribedGroup& group : page.groups) {
            for (const DescribedKey& key : group.keys) {
                if (key.scope != SettingScope::Port) continue;
                fields_.push_back({.key = key,
                                   .caption = WordsOf(key.caption, needs_.captions, key.key),
                                   .help = WordsOf(key.help, needs_.captions, {})});
            }
        }
    }
    for (SetupField& field : fields_) {
        if (field.key.key == "BindSocketToAddress") field.key.control = ControlKind::Offered;
    }
    device_ = fields_.size();
    AddDevice();
    AddProtocols();
}

void LinesBox::AddField(DescribedKey key, int caption, int help) {
    key.scope = SettingScope::Port;
    key.when = AppliesWhen::Reopen;
    const Text words = caption == 0 ? key.key : needs_.captions(caption);
    fields_.push_back({.key = std::move(key), .caption = words, .help = needs_.captions(help)});
}

void LinesBox::AddProtocols() {
    for (int number = 0; number < kProtocolCount; ++number) {
        const Text key(ProtocolKey(ProtocolOf(number)));
        // Two protocols may share a key; it is one field all the same.
        if (Find(kTranslate, key)) continue;
        AddField({.section = Text(kTranslate), .key = key, .control = ControlKind::Offered}, 0,
                 kCaptionSetsHelp);
    }
}

void LinesBox::TakeValues(const IniText& ini, bool isStored) {
    for (SetupField& field : fields_) {
        field.typed = ini.Value(field.key.section, field.key.key).value_or(field.key.byDefault);
        field.stored = isStored ? field.typed : field.key.byDefault;
        field.isReadOnly = !MayEdit() || (isStored && file_.IsUnreadable());
    }
    TakeDevice();
}

const SetupField* LinesBox::Find(TextView section, TextView key) const {
    for (const SetupField& field : fields_) {
        if (EqualsNoCase(field.key.key, key) && EqualsNoCase(field.key.section, section)) return &field;
    }
    return nullptr;
}

Text LinesBox::TypedOf(TextView key) const {
    const SetupField* field = Find(kGeneral, key);
    return field ? Text(TrimBlanksAndTabs(field->typed)) : Text();
}

LineKind LinesBox::TypedKind() const {
    return {ParsePortType(TypedOf("PortType")), ParseMessageFormat(LeadingInt32(TypedOf("MessageFormat")))};
}

// Of the protocols those that the format raises, and those that the file binds already.
bool LinesBox::IsShown(const SetupField& field) const {
    if (step_ && StepOf(field) != *step_) return false;
    if (IsDevice(field)) return shownKind_.type == PortType::RS232;
    if (!EqualsNoCase(field.key.section, kTranslate))
        return ReadsKey(shownKind_, field.key.section, field.key.key);
    if (!field.stored.empty() || !field.typed.empty()) return true;
    if (!shownKind_.format) return false;
    const std::vector<Protocol> raised = ProtocolsOf(*shownKind_.format);
    return std::ranges::any_of(
        raised, [&field](Protocol protocol) { return EqualsNoCase(ProtocolKey(protocol), field.key.key); });
}

void LinesBox::FillShown() {
    shownKind_ = TypedKind();
    shown_.clear();
    if (!current_ && !isNew_) return;
    std::size_t number = 0;
    for (const DescribedPage& page : descriptor_.pages) {
        for (const DescribedGroup& group : page.groups) {
            SetupGroup made{.caption = WordsOf(group.caption, needs_.captions, {})};
            for (const DescribedKey& key : group.keys) {
                if (key.scope != SettingScope::Port) continue;
                if (IsShown(fields_[number])) made.fields.push_back(number);
                if (key.key == "PortNumber" && IsShown(fields_[device_])) made.fields.push_back(device_);
                ++number;
            }
            if (!made.fields.empty()) shown_.push_back(std::move(made));
        }
    }
    ++number;  // the device, which stands beside the number
    SetupGroup protocols{.caption = needs_.captions(kCaptionProtocols)};
    for (; number < fields_.size(); ++number) {
        if (IsShown(fields_[number])) protocols.fields.push_back(number);
    }
    if (!protocols.fields.empty()) shown_.push_back(std::move(protocols));
}

// --- What is wrong

void LinesBox::CheckAll() {
    for (SetupField& field : fields_) field.fault = FaultOfField(field);
}

int LinesBox::Faults() const {
    int faults = 0;
    for (const SetupGroup& group : shown_) {
        for (const std::size_t field : group.fields) faults += fields_[field].fault.empty() ? 0 : 1;
    }
    return faults;
}

Text LinesBox::FaultOfField(const SetupField& field) const {
    if (EqualsNoCase(field.key.section, kTranslate)) return FaultOfSets(field.typed);
    if (IsDevice(field)) return FaultOfDevice(field.typed);
    const LineKind kind = TypedKind();
    if (field.key.key == "MessageFormat" && kind.type && kind.format &&
        !GoTogether(*kind.type, *kind.format)) {
        return needs_.captions(kCaptionPairFault, {TypedOf("PortType"), NameOf(*kind.format)});
    }
    if (field.key.key == "PortNumber") {
        if (Text fault = FaultOfNumber(field); !fault.empty()) return fault;
    }
    if (field.IsDefault() && field.key.key != "PortType") return {};
    return FaultOf(field.key, field.typed,
                   {.captions = needs_.captions, .dataFolder = needs_.dataFolder, .seesFiles = false});
}

Text LinesBox::FaultOfNumber(const SetupField& field) const {
    const LineKind kind = TypedKind();
    if (!kind.type || !NeedsNumber(*kind.type)) return {};
    const int number = LeadingInt32(field.typed);
    const bool isSerial = kind.type == PortType::RS232;
    if (number < 1 || number > (isSerial ? kHighestLine : kHighestPort))
        return needs_.captions(isSerial ? kCaptionLineNeeded : kCaptionNumberNeeded);
    for (const LineRow& row : rows_) {
        const bool isOther = isNew_ || !EqualsNoCase(row.name, name_);
        if (isOther && row.is.type && row.number == number && ShareNumbers(*row.is.type, *kind.type)) {
            return needs_.captions(kCaptionNumberTaken, {row.description});
        }
    }
    return {};
}

Text LinesBox::FaultOfSets(TextView sets) const {
    if (TrimBlanks(sets).empty()) return {};
    for (const Text& piece : Split(sets, ',')) {
        const TextView set = TrimBlanks(piece);
        const auto isSame = [set](const Text& known) { return EqualsNoCase(known, set); };
        if (!set.empty() && std::ranges::none_of(sets_, isSame)) return needs_.captions(kCaptionNoSet, {set});
    }
    return {};
}

// --- Typing

void LinesBox::Type(std::size_t number, Text value) {
    if (number >= fields_.size() || fields_[number].isReadOnly || isBusy_) return;
    fields_[number].typed = std::move(value);
    notice_ = {};
    const bool isOtherLine = fields_[number].key.key == "PortNumber" || fields_[number].key.key == "PortType";
    if (isOtherLine) TakeDevice();
    CheckAll();
    if (TypedKind() != shownKind_) {
        FillShown();
        ++generation_;
    }
    view_->Refresh();
}

void LinesBox::UseDefault(std::size_t number) {
    if (number >= fields_.size()) return;
    Type(number, fields_[number].key.byDefault);
    ++generation_;
    view_->Refresh();
}

std::vector<DescribedChoice> LinesBox::Offers(const SetupField& field) const {
    std::vector<Text> words = sets_;
    if (IsDevice(field)) words = needs_.control.SerialDevices();
    if (field.key.key == "BindSocketToAddress") words = needs_.control.Addresses();
    std::vector<DescribedChoice> choices;
    for (const Text& word : words) choices.push_back({.value = word, .caption = {.number = 0, .own = word}});
    return choices;
}

std::vector<DescribedChoice> LinesBox::ChoicesOf(const SetupField& field) const {
    if (field.key.control == ControlKind::Offered) return Offers(field);
    const LineKind kind = TypedKind();
    if (field.key.key != "MessageFormat" || !kind.type) return field.key.choices;
    std::vector<DescribedChoice> fitting;
    for (const DescribedChoice& choice : field.key.choices) {
        const auto format = ParseMessageFormat(LeadingInt32(choice.value));
        if (format && GoTogether(*kind.type, *format)) fitting.push_back(choice);
    }
    return fitting;
}

bool LinesBox::MayEdit() const {
    const OperatorRights rights = needs_.state.Rights();
    return rights.MayEdit() && rights.MayChange();
}

bool LinesBox::IsChanged() const {
    return isNew_ || std::ranges::any_of(fields_, &SetupField::IsChanged);
}

bool LinesBox::MayLeave() {
    if (isBusy_) return false;
    if (!MayApply()) return true;
    isBusy_ = true;
    const bool mayDrop = needs_.dialogs.AskYesNo(needs_.captions(kCaptionDrop));
    isBusy_ = false;
    return mayDrop;
}

void LinesBox::Select(std::size_t row) {
    if (row >= rows_.size() || (row == current_ && !isNew_)) return;
    if (!MayLeave()) return view_->Refresh();
    notice_ = {};
    Open(rows_[row].name);
    view_->Refresh();
}

void LinesBox::Revert() {
    if (isBusy_) return;
    notice_ = {};
    if (isNew_ || !current_) return Renew();
    Open(name_);
    view_->Refresh();
}

/// Back to the list as the files have it.
void LinesBox::Renew() {
    isNew_ = false;
    step_.reset();
    ListLines();
    if (current_) {
        Open(name_);
    } else if (!rows_.empty()) {
        Open(rows_.front().name);
    } else {
        TakeValues(IniText(), true);
        FillShown();
        ++generation_;
    }
    view_->Refresh();
}

}  // namespace nordkeep
