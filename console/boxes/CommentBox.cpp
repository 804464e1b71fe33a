#include "console/boxes/CommentBox.h"

#include "console/lists/SharedCaptions.h"
#include "runtime/Dates.h"
#include "runtime/ObjectFiles.h"

namespace nordkeep {
namespace {

constexpr int kCaptionOfAlarm = 3250;
constexpr int kCaptionOfObject = 3251;
constexpr int kCaptionCount = 3265;
constexpr int kCaptionReadOnly = 3703;
constexpr int kCaptionEnded = 5802;
constexpr std::size_t kMostOtherAlarms = 20;
constexpr const char* kReceiversFile = "Settings\\TorvexReceivers.INI";
constexpr const char* kReceiversSection = "Receivers";

}  // namespace

bool CommentBox::OpenAlarm(std::int32_t filePointer, OpenedBy by) {
    if (IsWaiting()) return false;
    const cAlarm* alarm = needs_.store.FindAlarmByKey(filePointer);
    if (!alarm || alarm->m_Status == kStatusRemoved) return false;
    Open({.filePointer = filePointer,
          .set = alarm->m_TranslationFile,
          .idCode = alarm->m_IdCode,
          .typeCode = alarm->m_TypeCode,
          .objectName = alarm->m_TranslatedIDCode,
          .mapReference = alarm->m_TranslatedMapName,
          .alarmId = alarm->m_AlarmId},
         by);
    return true;
}

bool CommentBox::OpenObject(const Text& set, const Text& idCode) {
    if (IsWaiting()) return false;
    Subject subject{.set = set, .idCode = idCode};
    if (const cTranslate* known = needs_.translations.Find(set)) {
        const auto object = std::ranges::find(known->m_IdCodes, idCode,
                                              [](const auto& each) -> const Text& { return each->m_IdCode; });
        if (object != known->m_IdCodes.end()) {
            subject.objectName = (*object)->m_ObjectName;
            subject.mapReference = (*object)->m_MapName;
        }
    }
    Open(std::move(subject), OpenedBy::Operator);
    return true;
}

void CommentBox::Open(Subject subject, OpenedBy by) {
    subject_ = std::move(subject);
    newComments_.clear();
    isSmallCommentTyped_ = false;
    texts_ = {};
    others_.clear();
    lookedUpTo_ = 0;
    notice_ = {};
    isBusy_ = true;
    Load();
    isBusy_ = false;
    isOpen_ = true;
    shownControls_ = Controls();
    view_->Show(by);
}

void CommentBox::Load() {
    const Text& name = subject_.objectName.empty() ? subject_.idCode : subject_.objectName;
    texts_.title = needs_.captions(subject_.filePointer ? kCaptionOfAlarm : kCaptionOfObject) + " - " + name;
    texts_.object =
        subject_.objectName.empty() ? subject_.idCode : subject_.objectName + "   " + subject_.idCode;
    texts_.information = needs_.files.ReadTextFile(InformationFile(subject_.set, subject_.idCode));
    if (!texts_.information.empty()) needs_.forms.Load();
    if (needs_.settings.ViewDynamicFormInAlarmComment) texts_.form = needs_.forms.RowsOf(texts_.information);
    if (subject_.filePointer && !subject_.typeCode.empty()) {
        texts_.typeCodeInfo =
            needs_.files.ReadTextFile(TypeInformationFile(subject_.set, subject_.idCode, subject_.typeCode));
    }
    comments_.Load(CommentFile(subject_.set, subject_.idCode));
    hasLog_ = !subject_.objectName.empty() &&
              !needs_.files.FileTimeStamp(ObjectLogFile(subject_.objectName)).IsNever();
    if (subject_.filePointer && needs_.settings.MaySend()) LoadReceivers();
    if (const cAlarm* alarm = Alarm()) {
        texts_.alarm = AlarmLine(*alarm);
        smallComment_ = TrimBlanks(alarm->m_SmallComment);
    } else {
        smallComment_.clear();
    }
    LoadAids();
    RenewOtherAlarms();
}

void CommentBox::LoadAids() {
    texts_.phrases = LoadPhrases(needs_.files, needs_.captions);
    texts_.phones = needs_.forms.PhonesOf(texts_.information);
    for (const PhoneNumber& phone : PhoneNumbersIn(texts_.typeCodeInfo)) texts_.phones.push_back(phone);
    steps_ = StepsOf(texts_.typeCodeInfo);
    for (InstructionStep& step : StepsOf(texts_.information)) steps_.push_back(std::move(step));
    NoteStepsDone();
}

void CommentBox::NoteStepsDone() {
    const cAlarm* alarm = Alarm();
    NoteDone(steps_, comments_.Content(), alarm ? alarm->m_ArrivedTime : OleDate());
}

void CommentBox::LoadReceivers() {
    const IniText file(needs_.files.ReadTextFile(kReceiversFile));
    for (const Text& key : file.Keys(kReceiversSection)) {
        texts_.receivers.push_back({key, file.Value(kReceiversSection, key).value_or(Text())});
    }
}

bool CommentBox::IsOtherAlarm(const cAlarm& alarm) const {
    return alarm.m_Status != kStatusRemoved && alarm.m_IdCode == subject_.idCode &&
           alarm.m_TranslationFile == subject_.set && alarm.m_FilePointer != subject_.filePointer;
}

// At each tick, so only what has come since the last one is looked at.
bool CommentBox::RenewOtherAlarms() {
    const EventList& events = needs_.store.Events();
    for (EventSequence at = events.Next(lookedUpTo_); at != 0; at = events.Next(at)) {
        lookedUpTo_ = at;
        if (IsOtherAlarm(*events.Find(at))) others_.push_front(at);
        if (others_.size() > kMostOtherAlarms) others_.pop_back();
    }
    std::vector<Text> lines;
    for (const EventSequence at : others_) {
        const cAlarm* alarm = events.Find(at);
        if (!alarm || !IsOtherAlarm(*alarm)) continue;
        const Text comment(TrimBlanks(alarm->m_SmallComment));
        lines.push_back(AlarmLine(*alarm) + (comment.empty() ? "" : "   - " + comment));
    }
    if (lines == texts_.otherAlarms) return false;
    texts_.otherAlarms = std::move(lines);
    return true;
}

Text CommentBox::AlarmLine(const cAlarm& alarm) const {
    Text line = GeneralDate(alarm.m_TimeStamp.IsNever() ? alarm.m_ArrivedTime : alarm.m_TimeStamp);
    for (const Text* part : {&alarm.m_TranslatedPrio, &alarm.m_TranslatedTypeCode, &alarm.m_AlarmCodeToStore,
                             &alarm.m_SIAStatus, &alarm.m_SIAAddress}) {
        if (!part->empty()) line.append("   ").append(*part);
    }
    return line;
}

cAlarm* CommentBox::Alarm() const {
    if (!subject_.filePointer) return nullptr;
    cAlarm* alarm = needs_.store.FindAlarmByKey(*subject_.filePointer);
    const bool isTheSame = alarm && alarm->m_Status != kStatusRemoved &&
                           alarm->m_AlarmId == subject_.alarmId && alarm->m_IdCode == subject_.idCode;
    return isTheSame ? alarm : nullptr;
}

bool CommentBox::MayChange() const {
    return needs_.state.Rights().MayChange();
}

SheetControls CommentBox::Controls() const {
    const OperatorRights rights = needs_.state.Rights();
    const cAlarm* alarm = Alarm();
    SheetControls controls;
    controls.hasAlarm = subject_.filePointer.has_value();
    controls.canType = rights.MayOperate();
    controls.canSave = rights.MayChange();
    controls.canEnd = rights.MayChange() && alarm && IsUnacknowledged(*alarm);
    controls.hasReceivers = !texts_.receivers.empty();
    controls.canSend = rights.MayChange() && alarm && controls.hasReceivers;
    controls.canPrintLog = hasLog_;
    controls.canShowMap = !subject_.mapReference.empty();
    controls.hasSmallComment = controls.hasAlarm && needs_.settings.SmallCommentSize > 0;
    controls.isSmallCommentTooLong =
        smallComment_.size() > static_cast<std::size_t>(needs_.settings.SmallCommentSize);
    return controls;
}

Text CommentBox::SmallCommentCount() const {
    return needs_.captions(kCaptionCount, {std::to_string(smallComment_.size()),
                                           std::to_string(needs_.settings.SmallCommentSize)});
}

WindowNotice CommentBox::Notice() const {
    if (!notice_.text.empty()) return notice_;
    const OperatorRights rights = needs_.state.Rights();
    if (!rights.MayOperate()) return {needs_.captions(kCaptionReadOnly)};
    if (rights.isConnectionLost) return {needs_.captions(kCaptionNoContact)};
    return {};
}

Text CommentBox::StatusWord() const {
    const cAlarm* alarm = Alarm();
    return alarm ? needs_.captions(kCaptionFirstStatus + std::clamp(alarm->m_Status, 0, 5)) : Text();
}

void CommentBox::TypeNewComments(Text text) {
    newComments_ = std::move(text);
}

void CommentBox::TickStep(std::size_t step, bool isDone) {
    if (step >= steps_.size() || !Controls().canType || isBusy_) return;
    TickInto(newComments_, steps_[step], isDone, needs_.clock.Now(), needs_.state.Initials());
    view_->Refresh();
}

void CommentBox::TypeSmallComment(Text text) {
    if (text == smallComment_) return;
    smallComment_ = std::move(text);
    isSmallCommentTyped_ = true;
}

void CommentBox::Close() {
    if (!isOpen_ || isBusy_) return;
    isOpen_ = false;
    newComments_.clear();
    isSmallCommentTyped_ = false;
    view_->Close();
}

void CommentBox::CloseIfUntouched() {
    if (!HasTyped()) Close();
}

void CommentBox::Tick() {
    // Without a connection, and while the events are fetched anew, a missing alarm means nothing.
    if (!isOpen_ || IsWaiting() || needs_.state.Rights().isConnectionLost) return;
    const cAlarm* alarm = Alarm();
    const bool hasNewSmallComment =
        alarm && !isSmallCommentTyped_ && smallComment_ != TrimBlanks(alarm->m_SmallComment);
    if (hasNewSmallComment) smallComment_ = TrimBlanks(alarm->m_SmallComment);
    const bool hasOthers = RenewOtherAlarms();
    const SheetControls controls = Controls();
    if (controls == shownControls_ && !hasNewSmallComment && !hasOthers) return;
    const bool hasJustEnded = shownControls_.canEnd && controls.canSave && !controls.canEnd;
    if (hasJustEnded) Warn(kCaptionEnded);
    if (controls.canEnd) notice_ = {};
    shownControls_ = controls;
    view_->Refresh();
}

void CommentBox::ShowMap() {
    if (!subject_.mapReference.empty()) {
        needs_.windows.OpenMap(subject_.mapReference, subject_.filePointer.value_or(0), OpenedBy::Operator);
    }
}

}  // namespace nordkeep
