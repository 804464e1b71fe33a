#include "console/boxes/CommentBox.h"
#include "console/lists/SharedCaptions.h"
#include "runtime/ObjectFiles.h"

#include <utility>

namespace nordkeep {
namespace {

constexpr int kTextOverwrite = 1080;
constexpr int kCaptionNotSaved = 3266;
constexpr int kCaptionSentTo = 3701;
constexpr int kCaptionNotSent = 3702;
constexpr TextView kLineEnd = "\r\n";

void AppendLines(std::vector<Text>& lines, TextView heading, TextView text) {
    if (text.empty()) return;
    lines.emplace_back();
    if (!heading.empty()) lines.emplace_back(heading);
    for (const TextView line : Lines(text)) lines.emplace_back(line);
}

}  // namespace

/// While it lives the sheet is busy; shows what has changed at its end.
class CommentBox::Operation {
 public:
    explicit Operation(CommentBox& sheet) : sheet_(sheet) {
        sheet_.isBusy_ = true;
        sheet_.notice_ = {};
    }
    ~Operation() {
        sheet_.isBusy_ = false;
        if (isToClose_ && !sheet_.HasTyped()) {
            sheet_.Close();
        } else {
            sheet_.shownControls_ = sheet_.Controls();
            sheet_.view_->Refresh();
        }
    }
    Operation(const Operation&) = delete;
    Operation& operator=(const Operation&) = delete;
    /// What was typed while the operation waited keeps the sheet open all the same.
    void CloseAtEnd() { isToClose_ = true; }

 private:
    CommentBox& sheet_;
    bool isToClose_ = false;
};

Text DispatcherLine(TextView receiver, TextView alarmText) {
    return Text("3||||||").append(receiver).append("|").append(alarmText).append("\n");
}

void CommentBox::Warn(int caption) {
    notice_ = {needs_.captions(caption)};
}

void CommentBox::Save() {
    if (!isOpen_ || IsWaiting() || !MayChange()) return;
    Operation operation(*this);
    const TextSaved saved = SaveText();
    if (saved == TextSaved::Refused) return;
    StoreInAlarm(saved == TextSaved::Written);
    operation.CloseAtEnd();
}

CommentBox::TextSaved CommentBox::SaveText() {
    if (newComments_.empty()) return TextSaved::Nothing;
    const Text typed = newComments_;
    comments_.MakeFolders();
    const bool hasChanged = comments_.HasChanged();
    if (!MayChange()) {
        Warn(kCaptionNoContact);
        return TextSaved::Refused;
    }
    if (comments_.IsUnreadable()) {
        Warn(kCaptionUnreadable);
        return TextSaved::Refused;
    }
    if (hasChanged && !MayOverwrite()) return TextSaved::Refused;
    const TextView between = comments_.Content().empty() ? TextView() : kLineEnd;
    if (!comments_.Write(Text(comments_.Content()).append(between).append(typed))) {
        Warn(kCaptionNotSaved);
        return TextSaved::Refused;
    }
    newComments_ = newComments_.starts_with(typed) ? newComments_.substr(typed.size()) : Text();
    for (InstructionStep& step : steps_) {
        if (newComments_.find(step.ticked) == Text::npos) step.ticked.clear();
    }
    NoteStepsDone();
    return TextSaved::Written;
}

bool CommentBox::MayOverwrite() {
    if (needs_.dialogs.AskYesNo(needs_.language.GetLanguageText(kTextOverwrite))) {
        if (MayChange()) return true;
        Warn(kCaptionNoContact);
        return false;
    }
    // What the others wrote is shown, and the next save puts the typed text behind it.
    comments_.Load(comments_.Path());
    NoteStepsDone();
    return false;
}

std::optional<Text> CommentBox::TakeSmallComment(const cAlarm& alarm) {
    if (!std::exchange(isSmallCommentTyped_, false) || smallComment_ == alarm.m_SmallComment) return {};
    return smallComment_;
}

void CommentBox::StoreInAlarm(bool isCommentWritten) {
    cAlarm* alarm = Alarm();
    if (!alarm) {
        isSmallCommentTyped_ = false;
        return;
    }
    const std::optional<Text> smallComment = TakeSmallComment(*alarm);
    if (isCommentWritten) return needs_.handling.Comment(*alarm, smallComment);
    if (smallComment) needs_.handling.TakeSmallComment(*alarm, *smallComment);
}

void CommentBox::EndAlarm() {
    if (!isOpen_ || IsWaiting() || !Controls().canEnd) return;
    Operation operation(*this);
    const Text question = needs_.language.GetLanguageText(kTextEndSelected);
    if (!needs_.dialogs.AskYesNo(question, Answer::Yes)) return;
    cAlarm* alarm = Alarm();
    if (!alarm || !Controls().canEnd) {
        Warn(MayChange() ? kCaptionChangedByOthers : kCaptionNoContact);
        return;
    }
    needs_.handling.End(*alarm, TakeSmallComment(*alarm));
    // The alarm stays ended when its comment cannot be saved; then the sheet stays with the typed text.
    if (SaveText() != TextSaved::Refused) operation.CloseAtEnd();
}

void CommentBox::Send(std::size_t receiver) {
    const cAlarm* alarm = Alarm();
    if (!isOpen_ || IsWaiting() || !Controls().canSend || receiver >= texts_.receivers.size()) return;
    const Text text = needs_.store.Texts().BuildAlarmText(
        {needs_.settings.ManualTransmissionFormat, "YYYY-MM-DD", "HH:NN:SS"}, *alarm);
    const Text& key = texts_.receivers[receiver].key;
    if (needs_.centre.SendToDispatcher(DispatcherLine(key, text))) {
        notice_ = {needs_.captions(kCaptionSentTo, {texts_.receivers[receiver].value}), true};
    } else {
        Warn(kCaptionNotSent);
    }
    view_->Refresh();
}

void CommentBox::PrintInfo() {
    if (!isOpen_) return;
    PrintDocument document{.title = texts_.title, .look = needs_.printerSettings};
    AppendLines(document.lines, {}, texts_.alarm);
    AppendLines(document.lines, needs_.captions(kCaptionObjectInformation), texts_.information);
    AppendLines(document.lines, needs_.captions(kCaptionTypeInformation), texts_.typeCodeInfo);
    AppendLines(document.lines, needs_.captions(kCaptionComments), OldComments());
    AppendLines(document.lines, needs_.captions(kCaptionNewComment), newComments_);
    needs_.printer.Print(document);
}

void CommentBox::PrintLog() {
    if (!isOpen_ || IsWaiting() || !hasLog_) return;
    Operation operation(*this);
    PrintDocument document{.title = texts_.title, .look = needs_.printerSettings};
    AppendLines(document.lines, {}, needs_.files.ReadTextFile(ObjectLogFile(subject_.objectName)));
    needs_.printer.Print(document);
}

}  // namespace nordkeep
