#include "network/NetworkServer.h"

#include "network/Users.h"
#include "network/messages/CentreMessages.h"
#include "network/messages/EventRecord.h"
#include "network/messages/ObjectMessages.h"
#include "runtime/Versions.h"
#include "translation/AliveTestReset.h"
#include "translation/ObjectLookup.h"

#include <algorithm>
#include <utility>

namespace nordkeep {
namespace {

constexpr int kTextNoSuchEvent = 1078;
constexpr int kTextRefusedLogin = 1090;
constexpr int kTextLoginSlowed = 3859;
constexpr int kTextRefusedFile = 3822;
constexpr int kTextLoggedIn = 1091;
constexpr int kTextLoggedOut = 1092;
constexpr std::size_t kLongestNameInLog = 128;
/// As much of a large store waits in memory for a client at once; the rest follows when that has left.
constexpr std::size_t kMostEventBytesAtOnce = 16 << 20;
/// What each of eight clients may have of a turn of the loop; telegrams are taken in between.
constexpr std::size_t kMostEventsInOneTurn = 500;
constexpr std::size_t kMostEventBytesInOneTurn = 1 << 20;
constexpr int kMostEventMsInOneTurn = 2;
constexpr std::size_t kEventsBetweenLooksAtTheClock = 16;

/// A set and one of its objects; both or none.
struct FoundObject {
    cTranslate* set = nullptr;
    cIDCode* object = nullptr;
    explicit operator bool() const { return object != nullptr; }
};

/// Without the line end that goes to the dispatcher.
Text OneLine(const Text& text) {
    return text.substr(0, text.find_last_not_of("\r\n") + 1);
}

FoundObject FindNamedObject(const Translations& translations, const ObjectName& name) {
    cTranslate* set = translations.Find(name.fileName);
    return {.set = set, .object = set == nullptr ? nullptr : FindExactObject(*set, name.idCode)};
}

}  // namespace

std::vector<PortTreeNode> MakePortTree(const std::vector<PortInTree>& ports) {
    std::vector<PortTreeNode> nodes;
    for (const PortInTree& port : ports) {
        nodes.push_back({0, port.description});
        for (int number = 0; port.binding != nullptr && number < kProtocolCount; ++number) {
            const auto& sets = port.binding->SetsOf(ProtocolOf(number));
            if (sets.empty()) continue;
            nodes.push_back({1, Text(ProtocolKey(ProtocolOf(number)))});
            for (const cTranslate* set : sets) nodes.push_back({2, set->m_FileName});
        }
    }
    return nodes;
}

const NetworkServer::Handler NetworkServer::kHandlers[] = {
    {Message::InitialData, &NetworkServer::SendInitialData},
    {Message::OldEvent, &NetworkServer::ChangeEvent},
    {Message::AllEvents, &NetworkServer::SendAllEvents},
    {Message::SendToTorvex, &NetworkServer::ForwardToTorvex},
    {Message::ResetAliveTestTimer, &NetworkServer::ResetAliveTests},
    {Message::SetServiceMode, &NetworkServer::ChangeServiceMode},
    {Message::Login, &NetworkServer::Login},
    {Message::Logout, &NetworkServer::Logout},
    {Message::ReadTextFile, &NetworkServer::ReadTextFile},
    {Message::WriteTextFile, &NetworkServer::WriteTextFile},
    {Message::FileDateTimeStamp, &NetworkServer::TellFileTime},
    {Message::ScanForFiles, &NetworkServer::ScanForFiles},
    {Message::ReadBinaryFile, &NetworkServer::ReadBinaryFile},
    {Message::ProtocolVersion, &NetworkServer::TellVersion},
    {Message::MakeDir, &NetworkServer::MakeDir},
    {Message::Extensions, &NetworkServer::TellExtensions},
    {Message::ServiceReason, &NetworkServer::TakeServiceReason},
    {Message::History, &NetworkServer::SearchHistory},
    {Message::Report, &NetworkServer::MakeReport},
    {Message::Handover, &NetworkServer::TakeHandover},
    {Message::Accounts, &NetworkServer::TellAccounts},
};

NetworkServer::NetworkServer(const Needs& needs)
    : needs_(needs),
      fileService_(needs.dataFolder, needs.settings.RemoteFileFolders),
      history_(needs.slots, needs.history, needs.deeds) {
    needs_.slots.SetHandler(this);
}

NetworkServer::~NetworkServer() {
    needs_.slots.SetHandler(nullptr);
}

// KEEPALIVE needs no handler: that something came is all it says. An answer says that what was done before it
// is done: it does not leave before that is safe.
void NetworkServer::HandleMessage(int slot, std::uint8_t number, TextView payload) {
    const bool isChange = static_cast<std::uint8_t>(Message::OldEvent) == number;
    if (!isChange && std::exchange(hasChanged_, false)) needs_.commit.Commit();
    hasChanged_ |= isChange;
    for (const Handler& handler : kHandlers) {
        if (static_cast<std::uint8_t>(handler.message) == number) (this->*handler.handle)(slot, payload);
    }
}

Doer NetworkServer::DoerAt(int slot) const {
    return {.user = users_.at(static_cast<std::size_t>(slot)), .station = needs_.slots.AddressOf(slot)};
}

Text NetworkServer::AddressLine(int textNumber, int slot) const {
    return needs_.language.GetLanguageText(textNumber) + needs_.slots.AddressOf(slot);
}

void NetworkServer::SendTranslations(int slot) {
    for (const auto& set : needs_.translations.Sets())
        needs_.slots.SendTo(slot, Message::Translation, TranslationPayload(*set));
}

void NetworkServer::SendPortTree(int slot) {
    needs_.slots.SendTo(slot, Message::PortTree, PortTreePayload(MakePortTree(needs_.ports())));
}

void NetworkServer::SendInitialData(int slot, TextView) {
    SendPortTree(slot);
    SendTranslations(slot);
    needs_.slots.SendTo(slot, Message::ClosePending, {});
}

// Asked again before all have been sent, the same walk answers both: what comes and changes is told anyway.
void NetworkServer::SendAllEvents(int slot, TextView) {
    std::optional<EventSequence>& walk = walks_.at(static_cast<std::size_t>(slot));
    if (walk) return;
    walk = 0;
    if (ContinueWork(slot)) needs_.slots.RequestTurn();
}

// An event that changes before its turn is sent as it is then.
bool NetworkServer::ContinueWork(int slot) {
    std::optional<EventSequence>& walk = walks_.at(static_cast<std::size_t>(slot));
    if (!walk || !needs_.slots.IsConnected(slot)) return false;
    if (needs_.slots.UnsentBytes(slot) > kMostEventBytesAtOnce) return false;
    needs_.slots.SendEach(slot, Message::InitialEvent, NextEvents(*walk));
    if (*walk != 0) return true;
    walk.reset();
    needs_.slots.SendTo(slot, Message::ClosePending, {});
    return false;
}

// As many as a turn has room for; 0 is behind the last one.
std::vector<Text> NetworkServer::NextEvents(EventSequence& walk) const {
    const EventList& events = needs_.store.Events();
    const std::int64_t endMs = needs_.clock.MonotonicMs() + kMostEventMsInOneTurn;
    std::vector<Text> payloads;
    std::size_t bytes = 0;
    const auto hasRoom = [&] {
        if (payloads.size() >= kMostEventsInOneTurn || bytes >= kMostEventBytesInOneTurn) return false;
        return payloads.size() % kEventsBetweenLooksAtTheClock != 0 || needs_.clock.MonotonicMs() <= endMs;
    };
    do {
        walk = events.Next(walk);
        if (walk == 0) break;
        payloads.push_back(EventPayload(*events.Find(walk)));
        bytes += payloads.back().size();
    } while (hasRoom());
    return payloads;
}

void NetworkServer::SendReload() {
    for (int slot = 0; slot < kSlotCount; ++slot) {
        if (!needs_.slots.IsConnected(slot)) continue;
        needs_.slots.SendTo(slot, Message::RemovePortTree, {});
        needs_.slots.SendTo(slot, Message::RemoveTranslations, {});
        SendTranslations(slot);
        SendPortTree(slot);
    }
}

// --- What only some clients know

void NetworkServer::TellExtensions(int slot, TextView payload) {
    const std::int32_t theirs = ReadPayload<LongNumber>(payload).value;
    const std::int32_t both = std::min(theirs, kHighestExtension);
    told_.at(static_cast<std::size_t>(slot)) = {.knowsUpTo = both};
    needs_.slots.SendTo(slot, Message::Extensions, PayloadOf(LongNumber{both}));
}

void NetworkServer::TakeServiceReason(int slot, TextView payload) {
    constexpr std::size_t kLongest = 500;
    auto given = ReadWholePayload<ServiceReasonGiven>(payload);
    if (!given) return;
    given->reason.resize(std::min(given->reason.size(), kLongest));
    std::ranges::replace_if(
        given->reason, [](char c) { return static_cast<unsigned char>(c) < 32; }, ' ');
    told_.at(static_cast<std::size_t>(slot)).reason = std::move(*given);
}

void NetworkServer::SearchHistory(int slot, TextView payload) {
    history_.Search(slot, LevelAt(slot), payload);
}

void NetworkServer::MakeReport(int slot, TextView payload) {
    history_.Report(slot, LevelAt(slot), payload);
}

void NetworkServer::TakeHandover(int slot, TextView payload) {
    history_.TakeHandover(LevelAt(slot), DoerAt(slot), payload);
}

void NetworkServer::TellAccounts(int slot, TextView payload) {
    const Text line = ReadPayload<LineName>(payload).name;
    needs_.slots.SendTo(slot, Message::Accounts, AccountsPayload({line, needs_.accounts(line)}));
}

bool NetworkServer::IsCentreStateWanted() const {
    return std::ranges::any_of(told_, [](const Told& told) { return told.knowsUpTo > 0; });
}

void NetworkServer::TellIfNew(int slot, Message message, std::optional<Text>& told, const Text& payload) {
    const Told& client = told_.at(static_cast<std::size_t>(slot));
    if (client.knowsUpTo < static_cast<std::int32_t>(message) || told == payload) return;
    told = payload;
    needs_.slots.SendTo(slot, message, payload);
}

void NetworkServer::SendCentreState(const std::vector<LineFigures>& lines,
                                    const std::vector<ConditionFact>& facts) {
    if (!IsCentreStateWanted()) return;
    const Text ofLines = LinesPayload(lines);
    const Text ofConditions = ConditionsPayload(facts);
    for (int slot = 0; slot < kSlotCount; ++slot) {
        if (!needs_.slots.IsConnected(slot)) continue;
        Told& told = told_.at(static_cast<std::size_t>(slot));
        TellIfNew(slot, Message::Lines, told.lines, ofLines);
        TellIfNew(slot, Message::Conditions, told.conditions, ofConditions);
    }
}

void NetworkServer::ChangeEvent(int slot, TextView payload) {
    const EventHead head = ReadEventHead(payload);
    cAlarm* alarm = needs_.store.FindAlarmByKey(head.filePointer);
    cAlarm changed = alarm != nullptr ? *alarm : cAlarm();
    if (!ReadEvent(payload, changed)) return;
    if (alarm == nullptr) {
        const Text line = needs_.language.GetLanguageText(kTextNoSuchEvent) +
                          " (Filepointer: " + std::to_string(head.filePointer) +
                          ", Status: " + std::to_string(head.status) +
                          ", Client: " + needs_.slots.AddressOf(slot) + ")";
        return needs_.slots.Log(slot, line, LogKind::Oddity);
    }
    const cAlarm left = needs_.handling.TakeOver(*alarm, std::move(changed), DoerAt(slot));
    // The other clients get the change a second time, as they always have.
    needs_.slots.SendToAllBut(slot, Message::OldEvent, EventPayload(left));
}

void NetworkServer::ForwardToTorvex(int slot, TextView payload) {
    const Text line = ReadPayload<ShortText>(payload).text;
    needs_.torvex.Send(line);
    needs_.deeds.Note(JournalKind::Send, DoerAt(slot), {}, OneLine(line));
}

void NetworkServer::ResetAliveTests(int slot, TextView payload) {
    const auto name = ReadWholePayload<ObjectName>(payload);
    const FoundObject found = name ? FindNamedObject(needs_.translations, *name) : FoundObject();
    if (!found) return;
    const AliveTestReset reset({needs_.timers, needs_.objectViews, needs_.objectReplica});
    reset.Reset(*found.set, *found.object, needs_.clock.Now());
    needs_.deeds.Note(JournalKind::AliveTest, DoerAt(slot), found.object->m_IdCode, found.set->m_FileName);
}

void NetworkServer::ChangeServiceMode(int slot, TextView payload) {
    const auto change = ReadWholePayload<ServiceModeChange>(payload);
    const ServiceReasonGiven given = std::exchange(told_.at(static_cast<std::size_t>(slot)).reason, {});
    const FoundObject found = change ? FindNamedObject(needs_.translations, change->object) : FoundObject();
    if (!found) return;
    const bool isAboutThis =
        given.object.fileName == change->object.fileName && given.object.idCode == change->object.idCode;
    needs_.servicePeriods.Set(*found.set, *found.object,
                              {.mode = change->mode,
                               .begin = change->begin,
                               .end = change->end,
                               .reason = isAboutThis ? given.reason : Text()},
                              DoerAt(slot));
}

void NetworkServer::Login(int slot, TextView payload) {
    const auto request = ReadPayload<LoginRequest>(payload);
    const Text address = needs_.slots.AddressOf(slot);
    const std::int64_t nowMs = needs_.clock.MonotonicMs();
    const LoginBrake::Verdict verdict = brake_.Ask(address, nowMs);
    if (verdict == LoginBrake::Verdict::RefusedForTheFirstTime)
        needs_.slots.Log(slot, AddressLine(kTextLoginSlowed, slot), LogKind::Failure);
    if (verdict != LoginBrake::Verdict::Free) return RefuseLogin(slot);
    const Text name = request.userName.substr(0, kLongestNameInLog);
    const auto answer = CheckLogin(needs_.files, request);
    brake_.NoteOutcome(address, answer.has_value(), nowMs);
    if (!answer) {
        RefuseLogin(slot);
        needs_.slots.Log(slot, "'" + name + "'" + AddressLine(kTextRefusedLogin, slot), LogKind::Failure);
        needs_.deeds.Note(JournalKind::Refused, Doer{name, address}, {}, {});
        return;
    }
    needs_.slots.SendTo(slot, Message::Login, PayloadOf(*answer));
    needs_.slots.Log(slot, "'" + name + "'" + AddressLine(kTextLoggedIn, slot), LogKind::Information);
    users_.at(static_cast<std::size_t>(slot)) = request.userName;
    levels_.at(static_cast<std::size_t>(slot)) = answer->level;
    needs_.deeds.Note(JournalKind::Login, DoerAt(slot), {}, answer->fullName);
}

// The client takes the answer for the end of its login.
void NetworkServer::RefuseLogin(int slot) {
    ForgetUser(slot);
    needs_.slots.SendTo(slot, Message::Logout, {});
}

void NetworkServer::Logout(int slot, TextView) {
    needs_.slots.SendTo(slot, Message::Logout, {});
    needs_.slots.Log(slot, AddressLine(kTextLoggedOut, slot), LogKind::Information);
    needs_.deeds.Note(JournalKind::Logout, DoerAt(slot), {}, {});
    ForgetUser(slot);
}

void NetworkServer::ForgetUser(int slot) {
    users_.at(static_cast<std::size_t>(slot)).clear();
    levels_.at(static_cast<std::size_t>(slot)) = 0;
}

int NetworkServer::LevelAt(int slot) const {
    const bool isAnyUser = StampOf(needs_.dataFolder.Resolve("Settings\\Users.INI")).Exists();
    return isAnyUser ? levels_.at(static_cast<std::size_t>(slot)) : 0;
}

void NetworkServer::LogRefusal(int slot, TextView path) {
    constexpr std::size_t kShown = 120;
    Text shown(path.substr(0, kShown));
    std::ranges::replace_if(
        shown, [](char c) { return static_cast<unsigned char>(c) < 32; }, ' ');
    needs_.slots.Log(slot, AddressLine(kTextRefusedFile, slot) + " '" + shown + "'", LogKind::Failure);
}

void NetworkServer::ReadTextFile(int slot, TextView payload) {
    const Text path = ReadPayload<ShortText>(payload).text;
    const bool mayRead = fileService_.MayRead(path, LevelAt(slot));
    if (!mayRead) LogRefusal(slot, path);
    const Text text = mayRead ? fileService_.ReadTextFile(path) : Text();
    needs_.slots.SendTo(slot, Message::ReadTextFile, PayloadOf(LongText{text}));
}

void NetworkServer::WriteTextFile(int slot, TextView payload) {
    const auto file = ReadPayload<FileToWrite>(payload);
    if (!fileService_.MayWrite(file.path, LevelAt(slot))) return LogRefusal(slot, file.path);
    KeepVersion(needs_.dataFolder, file.path, needs_.clock.Now());
    if (!fileService_.WriteTextFile(file.path, file.text)) return;
    needs_.deeds.Note(JournalKind::Edit, DoerAt(slot), {}, file.path);
    if (IsTranslationFile(file.path)) needs_.requestReload();
    if (IsSettingsFile(file.path)) needs_.noteSettings();
}

void NetworkServer::TellFileTime(int slot, TextView payload) {
    const std::int32_t time = fileService_.FileTimeStamp(ReadPayload<ShortText>(payload).text);
    needs_.slots.SendTo(slot, Message::FileDateTimeStamp, PayloadOf(LongNumber{time}));
}

void NetworkServer::ScanForFiles(int slot, TextView payload) {
    const Text names = fileService_.ScanForFiles(ReadPayload<ShortText>(payload).text);
    needs_.slots.SendTo(slot, Message::ScanForFiles, PayloadOf(ShortText{names}));
}

void NetworkServer::ReadBinaryFile(int slot, TextView payload) {
    const Text path = ReadPayload<ShortText>(payload).text;
    const bool mayRead = fileService_.MayRead(path, LevelAt(slot));
    if (!mayRead) LogRefusal(slot, path);
    const Text bytes = mayRead ? fileService_.ReadBinaryFile(path) : Text();
    needs_.slots.SendTo(slot, Message::ReadBinaryFile, PayloadOf(LongText{bytes}));
}

void NetworkServer::TellVersion(int slot, TextView) {
    needs_.slots.SendTo(slot, Message::ProtocolVersion, PayloadOf(LongNumber{kProtocolVersion}));
}

void NetworkServer::MakeDir(int slot, TextView payload) {
    fileService_.MakeDataFolder(ReadPayload<ShortText>(payload).text);
    needs_.slots.SendTo(slot, Message::MakeDir, {});
}

}  // namespace nordkeep
