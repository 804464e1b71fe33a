#include "pipeline/Intake.h"

#include "pipeline/EventTexts.h"
#include "pipeline/RecordBuilding.h"
#include "runtime/Fields.h"
#include "runtime/ObjectFiles.h"

#include <algorithm>

namespace nordkeep {
namespace {

constexpr int kTextConfirmation = 1098;

void Pad(IntakeRun& run, const cTranslate& set) {
    const auto count = static_cast<std::size_t>(std::max(set.m_Padding_Count, 0));
    if (run.code.size() >= count) return;
    run.code.insert(0, count - run.code.size(), static_cast<char>(set.m_Padding_Character));
}

void ClearTextsOfUnknownObject(IntakeRun& run) {
    const Protocol protocol = run.event.TranslationNumberToUse;
    const bool applies = ClassOf(protocol) == ProtocolClass::Texts;
    cAlarm& alarm = *run.alarm;
    // Asked of the texts and not of the match: an object named like its code counts as unknown.
    if (!applies || alarm.m_TranslatedIDCode != alarm.m_IdCode) return;
    alarm.m_ExtraText = alarm.m_AlarmCodeToStore;
    alarm.m_TranslatedIDCode.clear();
    if (protocol != Protocol::SMS) alarm.m_TranslatedTypeCode.clear();
}

void TypeUnknownCaller(IntakeRun& run) {
    const EventPort* port = run.event.PortObject;
    if (run.event.TranslationNumberToUse != Protocol::CLID || run.IsFound() || !port) return;
    cAlarm& alarm = *run.alarm;
    alarm.m_TypeCode = alarm.m_TranslatedTypeCode = port->m_CLIdUnknownIDCodeAliveTestType;
    alarm.m_TranslatedPrio = std::to_string(LeadingInt32(port->m_CLIdUnknownIDCodeAliveTestPrio));
}

void NamePortOfOwnEvent(IntakeRun& run) {
    const IncomingEvent& event = run.event;
    if (!run.IsOwn() || !event.PortObject) return;
    Text& type = run.alarm->m_TranslatedTypeCode;
    type += " (" + event.PortObject->m_PortDescription + ")";
    if (!event.LineCardNumber.empty()) type += " (" + event.LineCardNumber + ")";
}

void AwaitReset(cAlarm& alarm) {
    const bool hasReset = !alarm.m_ResetTypeCode.empty() || !alarm.m_ResetIdCode.empty();
    if (alarm.m_Status == kStatusNew && hasReset) alarm.m_Status = kStatusNewWaiting;
}

}  // namespace

void Intake::HandleIncomingEvent(const IncomingEvent& event) {
    // One look at the files of the centre for the whole of an event.
    const FileTree::Moment moment(needs_.dataFolder);
    IntakeRun run{.event = event, .alarm = std::make_unique<cAlarm>()};
    run.alarm->m_AlarmId = needs_.store.GetNextAlarmId();
    Build(run);
    if (!event.IsAConfirmationSMS) {
        FeedAliveTests(run);
        AwaitReset(*run.alarm);
        if (needs_.resets.ResolveResets(*run.alarm)) {
            if (run.isInService) run.alarm->m_Status = kStatusAcknowledged;
            // It has found its alarm, so operators are to see it now.
            run.isParked = false;
        }
    }
    HandOver(run);
}

/// The record with all that the files of the centre say of it.
void Intake::Build(IntakeRun& run) {
    run.alarm->m_ArrivedTime = needs_.clock.Now();
    const auto priorities = LoadSettings(needs_.files, PrioritySettingRows());
    BuildRecord(run, {priorities.NonTextDefaultPrio, needs_.settings.SIADecodeErrorType});
    ApplyFieldMap(run, kBeforeTranslation);
    if (run.event.IsAConfirmationSMS)
        return FillConfirmation(run, needs_.language.GetLanguageText(kTextConfirmation));
    Translate(run, priorities.AlwaysApplyNonTextDefaultPrio);
    FinishTexts(run);
}

Intake::Trial Intake::Try(const IncomingEvent& event) {
    const FileTree::Moment moment(needs_.dataFolder);
    IntakeRun run{.event = event, .alarm = std::make_unique<cAlarm>(), .isTrial = true};
    Build(run);
    AwaitReset(*run.alarm);
    const bool isFound = run.IsFound();
    return {std::move(run.alarm), isFound, run.isInService, run.isParked};
}

// The record is made for the look-up only.
void Intake::HandleSignOfLife(const IncomingEvent& event) {
    const FileTree::Moment moment(needs_.dataFolder);
    IntakeRun run{.event = event, .alarm = std::make_unique<cAlarm>()};
    Build(run);
    FeedAliveTests(run);
}

void Intake::HandOver(IntakeRun& run) {
    run.alarm->m_TranslationIsOk = run.IsFound();
    if (run.isParked) return needs_.parked.Add(std::move(run.alarm));
    needs_.dispatcher.DispatchEvent(std::move(run.alarm));
    needs_.parked.DispatchMatched();
}

void Intake::ApplyFieldMap(IntakeRun& run, TextView moment) {
    if (!needs_.fieldMap || !run.event.PortObject) return;
    for (const FieldMapRow& row : kFieldMaps) {
        if (row.protocol != run.event.TranslationNumberToUse) continue;
        needs_.fieldMap->ApplyXmlFieldMap(*run.event.PortObject, *run.alarm, row.section + Text(moment),
                                          run.event.XMLDocument);
        run.code = run.alarm->m_AlarmCode;
    }
}

void Intake::Translate(IntakeRun& run, bool alwaysApplyDefaultPrio) {
    const IncomingEvent& event = run.event;
    const PortBinding* port = event.PortObject ? &event.PortObject->binding : nullptr;
    const Protocol protocol = event.TranslationNumberToUse;
    cTranslate* set = event.SpecificTranslationToUse;
    if (!set) set = needs_.translations.GetNextTranslation(port, protocol, nullptr);
    // Padding is the first set's, and stays for all that follow.
    if (set) Pad(run, *set);
    while (set && !run.IsFound()) {
        WalkSet(run, *set, alwaysApplyDefaultPrio);
        run.lastSet = set;
        set = event.SpecificTranslationToUse ? nullptr
                                             : needs_.translations.GetNextTranslation(port, protocol, set);
    }
}

void Intake::WalkSet(IntakeRun& run, cTranslate& set, bool alwaysApplyDefaultPrio) {
    cAlarm& alarm = *run.alarm;
    alarm.m_TranslationFile = set.m_FileName;
    alarm.m_IdCode = Substring(run.code, set.m_IdCode_Format_StartPos, set.m_IdCode_Format_Length);
    alarm.m_TranslatedIDCode = alarm.m_IdCode;
    const ObjectMatch match =
        MatchObject(set, {alarm.m_IdCode, run.event.Originator, needs_.clock.Now()}, needs_.lookup);
    run.isParked = run.isParked || match.isParked;
    run.isInService = run.isInService || match.isInService;
    if (match.object) TakeObject(run, set, *match.object);
    if (set.m_Prio_Format_Length > 0 && (run.IsFound() || !alwaysApplyDefaultPrio)) {
        alarm.m_Prio = Substring(run.code, set.m_Prio_Format_StartPos, set.m_Prio_Format_Length);
        alarm.m_TranslatedPrio = alarm.m_Prio;
    }
    TranslateEventText(run, set, needs_.files, needs_.language);
}

void Intake::TakeObject(IntakeRun& run, cTranslate& set, cIDCode& object) {
    cAlarm& alarm = *run.alarm;
    alarm.m_ZeroTrim = set.m_ZeroTrim;
    alarm.m_TranslatedMapName = TrimBlanks(object.m_MapName);
    alarm.m_TranslatedIDCode = object.m_ObjectName;
    alarm.m_Customer = object.m_Customer;
    alarm.m_ResetIdCode = object.m_ResetIdCode;
    ReadObjectInformation(alarm);
    if (!run.isTrial) NoteObjectHeard(run, set, object);
    run.object = &object;
    run.objectSet = &set;
    if (IsInService(object, needs_.clock.Now())) {
        alarm.m_Status = kStatusAcknowledged;
        run.isInService = true;
    }
    if (!run.isTrial) ShowObject(set, object);
}

void Intake::ReadObjectInformation(cAlarm& alarm) const {
    const Text file = InformationFile(alarm.m_TranslationFile, alarm.m_IdCode);
    if (file.empty()) return;
    const auto path = needs_.dataFolder.Find(file);
    const auto text = path ? ReadFile(*path) : std::nullopt;
    if (!text) return;
    const std::vector<TextView> lines = Lines(*text);
    if (!lines.empty()) alarm.m_ObjectInformation = lines.front();
}

void Intake::FinishTexts(IntakeRun& run) {
    TypeUnknownCaller(run);
    ClearTextsOfUnknownObject(run);
    NamePortOfOwnEvent(run);
    ApplyFieldMap(run, kAfterTranslation);
    if (LeadingNumber(run.alarm->m_TranslatedPrio) == -1) run.alarm->m_Status = kStatusAcknowledged;
}

void Intake::ShowObject(cTranslate& set, cIDCode& object) {
    needs_.views.UpdateObjectTreeEntry(set, object);
    needs_.views.RecalcAliveTestView();
    needs_.replica.SendObjectUpdate(set, object);
}

}  // namespace nordkeep
