#include "app/PlaceEditors.h"

#include "runtime/Dates.h"
#include "runtime/Fields.h"
#include "runtime/ObjectFiles.h"
#include "runtime/Versions.h"
#include "translation/ObjectLookup.h"
#include "translation/SetText.h"

#include <deque>

namespace nordkeep {
namespace {

constexpr int kCaptionNotLoaded = 4790;
constexpr int kCaptionLastHeard = 4791;
constexpr int kCaptionNextExpiry = 4792;
constexpr int kCaptionFailed = 4793;
constexpr int kCaptionInformation = 4794;
constexpr int kCaptionLastAlarms = 4795;
constexpr int kCaptionNever = 4564;
constexpr int kCaptionNotFound = 4920;
constexpr int kCaptionFound = 4921;
constexpr int kCaptionType = 4922;
constexpr int kCaptionPriority = 4923;
constexpr int kCaptionWaits = 4924;
constexpr int kCaptionInService = 4925;
constexpr int kCaptionOld = 4926;
constexpr int kCaptionNew = 4927;
constexpr int kCaptionPassedTo = 4928;
constexpr int kCaptionPassedToNobody = 4929;
constexpr int kCaptionSetUnused = 4930;
constexpr int kCaptionParked = 4931;
constexpr int kCaptionNoType = 4938;
constexpr std::size_t kMostAlarms = 5;
constexpr std::size_t kMostInformation = 600;

Text ShownTime(OleDate time, const Captions& captions) {
    return time.IsNever() ? captions(kCaptionNever) : FormatDate(time, "YYYY-MM-DD HH:NN:SS");
}

}  // namespace

void PlaceEditors::KeepVersion(const Text& path) {
    if (IsAtServer()) return;
    nordkeep::KeepVersion(needs_.foundation.DataFolder(), path, needs_.foundation.Platform().clock.Now());
}

void PlaceEditors::OpenAsText(const Text& path) {
    needs_.editor.Open({.path = path, .title = path});
}

// --- Sets and their lines

bool PlaceEditors::RenameSet(const Text& from, const Text& to) {
    return !IsAtServer() && MoveSet(needs_.foundation.DataFolder(), needs_.foundation.Files(), from, to);
}

Text PlaceEditors::LinesOf(const Text& set) {
    if (IsAtServer()) return {};
    const Settings& files = needs_.foundation.Files();
    Text lines;
    Text last;
    for (const SetUse& use : UsesOfSet(needs_.foundation.DataFolder(), files, set)) {
        const Text name(TrimBlanks(files.ReadPortIni("General", "PortDescription", use.port, use.port)));
        if (use.port == last) {
            lines.insert(lines.size() - 1, Text(", ").append(ProtocolKey(use.protocol)));
            continue;
        }
        lines.append(lines.empty() ? "" : ", ").append(name.empty() ? use.port : name);
        lines.append(" (").append(ProtocolKey(use.protocol)).append(")");
        last = use.port;
    }
    return lines;
}

// The types as they have been taken in, and the event codes of the file. Asking a server may let other
// handlers run: nothing of the set is touched behind it.
std::vector<CodeText> PlaceEditors::CodeTexts(const Text& set, const Text& idCode) {
    const cTranslate* known = needs_.translations.Find(set);
    std::vector<CodeText> items = known ? TypeTextsOf(*known) : std::vector<CodeText>();
    for (CodeText& item : EventTextsOf(needs_.files, set)) items.push_back(std::move(item));
    return MarkedItems(needs_.files, set, idCode, std::move(items));
}

// --- What a set stands in

SetSurroundings PlaceEditors::SurroundingsOf(const Text& set) {
    if (!IsAtServer()) return ground_.Of(set);
    SetSurroundings around;  // maps and lines are the server's
    around.isZeroTrimmed = IsTrue(needs_.foundation.Files().ReadMainIni("General", "ZeroTrimObjectId", "0"));
    return around;
}

std::vector<Protocol> PlaceEditors::ProtocolsOf(const Text& set) {
    return IsAtServer() ? std::vector<Protocol>() : ground_.Of(set).protocols;
}

// --- What is known of an object

Text PlaceEditors::FactsOf(const Text& set, const RowFormat::Values& row) {
    const Text& idCode = row[kObjectIdCode];
    if (idCode.empty()) return {};
    const cTranslate* known = needs_.translations.Find(set);
    const cIDCode* object = known ? FindExactObject(*known, idCode) : nullptr;
    Text facts = object ? SupervisionOf(*object) : needs_.captions(kCaptionNotLoaded);
    // On a client each look is a request to the server.
    const Text file = InformationFile(set, idCode);
    if (!file.empty() && !IsAtServer()) {
        const Text information = needs_.files.ReadTextFile(file).substr(0, kMostInformation);
        if (!information.empty()) facts += "\n\n" + needs_.captions(kCaptionInformation) + "\n" + information;
    }
    return facts + AlarmsOf(set, idCode);
}

Text PlaceEditors::SupervisionOf(const cIDCode& object) const {
    const Captions& captions = needs_.captions;
    Text facts = ServiceWord(captions, object);
    facts += "\n" + captions(kCaptionLastHeard, {ShownTime(object.m_LastIncomingEvent, captions)});
    for (const int test : {1, 2}) {
        if (!object.AliveTestIsToBeUsed(test)) continue;
        const Text next = ShownTime(object.GetNextAliveTestExpirationTime(test), captions);
        facts += "\n" + captions(kCaptionNextExpiry, {std::to_string(test), next});
        const bool hasFailed =
            test == 1 ? object.m_AliveTestIntervalHasExceeded : object.m_AliveTest2IntervalHasExceeded;
        if (hasFailed) facts += ", " + captions(kCaptionFailed);
    }
    return facts;
}

Text PlaceEditors::AlarmsOf(const Text& set, const Text& idCode) const {
    const EventList& events = needs_.store.Events();
    std::deque<const cAlarm*> latest;
    for (EventSequence at = events.Next(0); at != 0; at = events.Next(at)) {
        const cAlarm* alarm = events.Find(at);
        if (alarm->m_IdCode != idCode || !EqualsNoCase(alarm->m_TranslationFile, set)) continue;
        latest.push_front(alarm);
        if (latest.size() > kMostAlarms) latest.pop_back();
    }
    if (latest.empty()) return {};
    Text facts = "\n\n" + needs_.captions(kCaptionLastAlarms);
    for (const cAlarm* alarm : latest) {
        const OleDate time = alarm->m_TimeStamp.IsNever() ? alarm->m_ArrivedTime : alarm->m_TimeStamp;
        facts += "\n" + FormatDate(time, "YYYY-MM-DD HH:NN") + "  " + alarm->m_TranslatedTypeCode;
    }
    return facts;
}

// --- What would happen

Text PlaceEditors::Try(const Text& set, const Text& telegram) {
    cTranslate* known = needs_.translations.Find(set);
    if (!known) return needs_.captions(kCaptionSetUnused);
    const std::vector<Protocol> protocols = ProtocolsOf(set);
    IncomingEvent event;
    event.AlarmTime = needs_.foundation.Platform().clock.Now();
    event.TranslationNumberToUse = protocols.empty() ? Protocol::Robofon : protocols.front();
    event.ProtocolType = ProtocolKey(event.TranslationNumberToUse);
    event.SpecificTranslationToUse = known;
    event.DefaultAlarmCode = telegram;
    if (event.TranslationNumberToUse == Protocol::SIA) {
        // The object stands beside the code there: "1234 BA01".
        event.ObjectID = GetField(telegram, 0, " ");
        event.DefaultAlarmCode = GetField(telegram, 1, " ");
    }
    return OutcomeOf(needs_.intake.Try(event));
}

Text PlaceEditors::OutcomeOf(const Intake::Trial& trial) const {
    const Captions& captions = needs_.captions;
    const cAlarm& alarm = *trial.alarm;
    Text text = trial.isFound ? captions(kCaptionFound, {alarm.m_TranslatedIDCode, alarm.m_IdCode})
                              : captions(kCaptionNotFound, {alarm.m_IdCode});
    text += "\n" + (alarm.m_TypeCode.empty()
                        ? captions(kCaptionNoType)
                        : captions(kCaptionType, {alarm.m_TypeCode, alarm.m_TranslatedTypeCode}));
    text += ", " + captions(kCaptionPriority, {alarm.m_TranslatedPrio});
    if (alarm.m_Status == kStatusNewWaiting)
        text +=
            "\n" + captions(kCaptionWaits, {TrimBlanks(alarm.m_ResetIdCode + " " + alarm.m_ResetTypeCode)});
    if (trial.mayBeParked) text += "\n" + captions(kCaptionParked);
    if (trial.isInService) {
        text += "\n" + captions(kCaptionInService);
    } else {
        text += "\n" + captions(alarm.m_Status == kStatusAcknowledged ? kCaptionOld : kCaptionNew);
    }
    return text + ", " + ForwardersOf(alarm);
}

Text PlaceEditors::ForwardersOf(const cAlarm& alarm) const {
    const std::pair<bool, TextView> forwarders[] = {
        {needs_.torvex.IsConfigured() && needs_.dispatcher.IsToBePassedToTorvex(alarm), "Torvex"},
        {needs_.outputs.ComCall().IsConfigured(), "ComCall"},
        {needs_.outputs.Queue().IsConfigured(), "MSMQ"}};
    Text names;
    for (const auto& [isOn, name] : forwarders) {
        if (isOn) names.append(names.empty() ? "" : ", ").append(name);
    }
    return names.empty() ? needs_.captions(kCaptionPassedToNobody)
                         : needs_.captions(kCaptionPassedTo, {names});
}

}  // namespace nordkeep
