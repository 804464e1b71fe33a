#include "console/setup/LinesBox.h"
#include "console/setup/SetupValues.h"
#include "platform/MachineFacts.h"

#include <algorithm>

// New lines, and what a line has outside its file: its device, and whether it is muted.

namespace nordkeep {
namespace {

constexpr TextView kLineEnd = "\r\n";
constexpr TextView kSerialPorts = "SerialPorts";
constexpr TextView kDevice = "Device";
constexpr TextView kCore[] = {"PortDescription", "PortType", "MessageFormat"};
constexpr int kCaptionNewLine = 4562;
constexpr int kFirstStep = 5180;  // captions of the steps
constexpr int kCaptionStep = 5184;
constexpr int kCaptionStepFault = 5185;
constexpr int kCaptionDevice = 5186;
constexpr int kHelpDevice = 5187;
constexpr int kCaptionNoDevice = 5188;
constexpr int kCaptionDeviceMissing = 5189;
constexpr int kCaptionMuteAsk = 5190;

Text ComName(TextView number) {
    return Text("COM").append(number);
}

}  // namespace

Text LinesBox::FreeName() const {
    for (int number = 1;; ++number) {
        Text name = "Port" + std::to_string(number);
        const auto isSame = [&name](const LineRow& row) { return EqualsNoCase(row.name, name); };
        if (std::ranges::none_of(rows_, isSame)) return name;
    }
}

void LinesBox::New() {
    if (!MayEdit() || !MayLeave()) return;
    BeginNew(IniText("[General]\r\nPortType=TCPS\r\nPortDescription=" + needs_.captions(kCaptionNewLine) +
                     Text(kLineEnd)),
             0);
}

void LinesBox::Copy() {
    if (!MayEdit() || !current_ || !MayLeave()) return;
    BeginNew(IniText(file_.Content() + Text(kLineEnd)), std::nullopt);
}

void LinesBox::BeginNew(const IniText& from, std::optional<int> step) {
    TakeValues(from, false);
    isNew_ = true;
    step_ = step;
    current_.reset();
    name_ = FreeName();
    notice_ = {};
    CheckAll();
    for (SetupField& field : fields_) field.isFaultOld = false;
    FillShown();
    ++generation_;
    view_->Refresh();
}

// --- Steps

int LinesBox::StepOf(const SetupField& field) const {
    if (EqualsNoCase(field.key.section, "Translate")) return 3;
    if (std::ranges::count(kCore, TextView(field.key.key)) > 0) return 0;
    const bool isCommon = !IsDevice(field) && IsCommonKey(field.key.section, field.key.key);
    // Where it calls, listens or writes to belongs to what it is.
    return isCommon && field.key.key != "PortSetting" ? 2 : 1;
}

Text LinesBox::StepText() const {
    if (!step_) return {};
    return needs_.captions(kCaptionStep, {std::to_string(*step_ + 1), std::to_string(kSteps),
                                          needs_.captions(kFirstStep + *step_)});
}

void LinesBox::GoOn() {
    if (!MayGoOn() || isBusy_) return;
    notice_ = {};
    for (const SetupGroup& group : shown_) {
        for (const std::size_t number : group.fields) {
            const SetupField& field = fields_[number];
            if (field.fault.empty()) continue;
            notice_ = {needs_.captions(kCaptionStepFault, {field.caption, field.fault})};
            return view_->Refresh();
        }
    }
    // A step without a field is none.
    do {
        ++*step_;
        FillShown();
    } while (shown_.empty() && MayGoOn());
    ++generation_;
    view_->Refresh();
}

void LinesBox::GoBack() {
    if (!MayGoBack() || isBusy_) return;
    notice_ = {};
    do {
        --*step_;
        FillShown();
    } while (shown_.empty() && MayGoBack());
    ++generation_;
    view_->Refresh();
}

// --- The device of a serial line

void LinesBox::AddDevice() {
    AddField({.section = Text(kSerialPorts), .key = Text(kDevice), .control = ControlKind::Offered},
             kCaptionDevice, kHelpDevice);
}

bool LinesBox::IsDevice(const SetupField& field) const {
    return field.key.section == kSerialPorts && field.key.key == kDevice;
}

Text LinesBox::DeviceOfFile() const {
    const Text number = TypedOf("PortNumber");
    if (TypedKind().type != PortType::RS232 || LeadingInt32(number) < 1) return {};
    const IniText main(main_.Content() + Text(kLineEnd));
    return main.Value(kSerialPorts, ComName(std::to_string(LeadingInt32(number)))).value_or(Text());
}

/// Of another number, unless a person has chosen one already.
void LinesBox::TakeDevice() {
    for (SetupField& field : fields_) {
        if (!IsDevice(field)) continue;
        const bool isKept = field.IsChanged();
        field.stored = DeviceOfFile();
        if (!isKept && field.typed != field.stored) {
            field.typed = field.stored;
            ++generation_;
        }
        field.isReadOnly = !MayEdit() || main_.IsUnreadable();
    }
}

Text LinesBox::FaultOfDevice(TextView typed) const {
    const TextView device = TrimBlanks(typed);
    if (device.empty() || TypedKind().type != PortType::RS232) return {};
    if (device.front() != '/') return needs_.captions(kCaptionNoDevice);
    // A client does not see the devices of its server.
    const bool isHere =
        needs_.state.Rights().IsClient() || RightsOf(needs_.dataFolder.ResolveSetting(device)).isThere;
    return isHere ? Text() : needs_.captions(kCaptionDeviceMissing, {device});
}

bool LinesBox::WriteDevice() {
    const auto device =
        std::ranges::find_if(fields_, [this](const SetupField& one) { return IsDevice(one); });
    if (device == fields_.end() || !device->IsChanged() || TypedKind().type != PortType::RS232) return true;
    // What others have written meanwhile stays: only one key of it becomes another.
    main_.Load(main_.Path());
    if (main_.IsUnreadable()) return false;
    const IniText main(main_.Content() + Text(kLineEnd));
    const Text name = ComName(std::to_string(LeadingInt32(TypedOf("PortNumber"))));
    if (!main_.Write(main.WithValue(kSerialPorts, name, ValueInFile(TrimBlanks(device->typed)))))
        return false;
    needs_.control.FilesChanged(main_.Path());
    return true;
}

// --- Muting

bool LinesBox::IsMuted() const {
    return current_ && EqualsNoCase(needs_.control.MutedPort(), rows_[*current_].name);
}

void LinesBox::ToggleMuted() {
    if (!MayEdit() || !current_ || !rows_[*current_].isRunning || isBusy_) return;
    const LineRow row = rows_[*current_];
    const bool isMuted = IsMuted();
    isBusy_ = true;
    const bool isWanted =
        isMuted || needs_.dialogs.AskYesNo(needs_.captions(kCaptionMuteAsk, {row.description}));
    isBusy_ = false;
    if (!isWanted) return;
    needs_.control.Mute(row.name, !isMuted);
    Tick();
    view_->Refresh();
}

}  // namespace nordkeep
