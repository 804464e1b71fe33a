#include "network/Mirror.h"

#include "network/messages/CentreMessages.h"
#include "network/messages/EventRecord.h"
#include "network/messages/ObjectMessages.h"
#include "translation/ObjectLookup.h"
#include "translation/ServicePeriods.h"

#include <utility>

namespace nordkeep {
namespace {

constexpr int kTextNoSuchEvent = 1077;
constexpr int kTextServerEnds = 1081;
/// Nobody reads more sheets than these after a burst; the lists show all events anyway.
constexpr std::size_t kMostToPresent = 20;

}  // namespace

const Mirror::Handler Mirror::kHandlers[] = {
    {Message::Translation, &Mirror::AddTranslation},
    {Message::PortTree, &Mirror::TakePortTree},
    {Message::InitialEvent, &Mirror::TakeInitialEvent},
    {Message::OldEvent, &Mirror::TakeOldEvent},
    {Message::NewEvent, &Mirror::TakeNewEvent},
    {Message::RemovePortTree, &Mirror::RemovePortTree},
    {Message::RemoveTranslations, &Mirror::RemoveTranslations},
    {Message::ResetAliveTestTimer, &Mirror::ResetAliveTests},
    {Message::SetServiceMode, &Mirror::SetServiceMode},
    {Message::UpdateIdCode, &Mirror::UpdateObject},
    {Message::Login, &Mirror::Login},
    {Message::Logout, &Mirror::Logout},
    {Message::ServerIsShuttingDown, &Mirror::ServerShutsDown},
    {Message::Extensions, &Mirror::TakeExtensions},
    {Message::Lines, &Mirror::TakeLines},
    {Message::Conditions, &Mirror::TakeConditions},
    {Message::History, &Mirror::TakeHistory},
    {Message::Report, &Mirror::TakeReport},
    {Message::Accounts, &Mirror::TakeAccounts},
};

Mirror::Mirror(const Needs& needs) : needs_(needs), log_(needs.log, needs.clock) {
    needs_.link.SetPushes(this);
}

Mirror::~Mirror() {
    needs_.link.SetPushes(nullptr);
}

void Mirror::HandleMessage(std::uint8_t number, TextView payload) {
    for (const Handler& handler : kHandlers) {
        if (static_cast<std::uint8_t>(handler.message) == number) (this->*handler.handle)(payload);
    }
}

bool Mirror::RequestInitialData() {
    RemovePortTree({});
    RemoveTranslations({});
    return needs_.link.RequestInitialData();
}

bool Mirror::RequestAllEvents() {
    needs_.views.BeginBulkLoad();
    const bool isDone = needs_.link.RequestAllEvents();
    needs_.views.EndBulkLoad();
    return isDone;
}

// Events that can be out of date are not shown, whether the connection comes about or not.
void Mirror::ConnectionStarts() {
    const EventList& events = needs_.store.Events();
    while (const EventSequence first = events.Next(0)) needs_.store.Forget(*events.Find(first));
    removed_.clear();
    eventsToPresent_.clear();
    server_ = {};
    needs_.history.NoteLoss();
    needs_.accounts.NoteLoss();
}

// On a later turn: whoever asked still has to look at the answer.
void Mirror::RequestEnded() {
    if (!isTreeToShow_ && eventsToPresent_.empty()) return;
    needs_.loop.Post([this, life = std::weak_ptr<bool>(life_)] {
        if (!life.expired()) ShowWhatWaits();
    });
}

void Mirror::ShowWhatWaits() {
    if (needs_.link.IsRequestPending()) return;  // its end brings us here again
    if (std::exchange(isTreeToShow_, false)) {
        needs_.objectViews.RebuildTree();
        needs_.screen.ShowPortTree(tree_);
    }
    while (!eventsToPresent_.empty() && !needs_.link.IsRequestPending()) {
        cAlarm* alarm = needs_.store.FindAlarmByKey(eventsToPresent_.front());
        eventsToPresent_.pop_front();
        if (alarm != nullptr) needs_.screen.PresentNewEvent(*alarm);
    }
}

void Mirror::AddTranslation(TextView payload) {
    auto set = std::make_unique<cTranslate>();
    ReadTranslation(payload, *set);
    if (needs_.translations.Find(set->m_FileName) == nullptr) needs_.translations.Add(std::move(set));
}

void Mirror::TakePortTree(TextView payload) {
    tree_ = ReadPortTree(payload);
    isTreeToShow_ = true;
    if (!needs_.link.IsRequestPending()) ShowWhatWaits();
}

void Mirror::RemovePortTree(TextView) {
    needs_.screen.ForgetPortTree();
    tree_.clear();
    needs_.objectViews.ClearTree();
}

void Mirror::RemoveTranslations(TextView) {
    needs_.translations.Clear();
}

// An event that came while all events were asked for comes a second time; it stays one record.
cAlarm& Mirror::StoreEvent(TextView payload) {
    cAlarm* alarm = needs_.store.FindAlarmByKey(ReadEventHead(payload).filePointer);
    if (alarm != nullptr) {
        ReadEvent(payload, *alarm);
    } else {
        auto added = std::make_unique<cAlarm>();
        ReadEvent(payload, *added);
        alarm = &needs_.store.Append(std::move(added));
        removed_.erase(alarm->m_FilePointer);
    }
    needs_.store.UpdateAlarmLists(*alarm);
    return *alarm;
}

void Mirror::TakeInitialEvent(TextView payload) {
    StoreEvent(payload);
}

void Mirror::TakeNewEvent(TextView payload) {
    const cAlarm& alarm = StoreEvent(payload);
    eventsToPresent_.push_back(alarm.m_FilePointer);
    if (eventsToPresent_.size() > kMostToPresent) eventsToPresent_.pop_front();
    if (!needs_.link.IsRequestPending()) ShowWhatWaits();
}

// Of a removed event only the pointer stays, so that a message that was still under way for it is no oddity;
// a client that stays connected for months must not keep every record that its server once had.
void Mirror::TakeOldEvent(TextView payload) {
    const std::int32_t pointer = ReadEventHead(payload).filePointer;
    cAlarm* alarm = needs_.store.FindAlarmByKey(pointer);
    cAlarm changed = alarm != nullptr ? *alarm : cAlarm();
    if (!ReadEvent(payload, changed)) return;
    if (alarm == nullptr && !removed_.contains(pointer)) {
        return log_.Write(needs_.link.ServerAddress(), needs_.language.GetLanguageText(kTextNoSuchEvent),
                          LogKind::Oddity);
    }
    if (changed.m_Status == kStatusRemoved) {
        removed_.insert(pointer);
        if (alarm != nullptr) needs_.store.Forget(*alarm);
    } else {
        StoreEvent(payload);
    }
}

void Mirror::ResetAliveTests(TextView payload) {
    const auto name = ReadWholePayload<ObjectName>(payload);
    if (!name) return;
    cTranslate* set = needs_.translations.Find(name->fileName);
    cIDCode* object = set == nullptr ? nullptr : FindExactObject(*set, name->idCode);
    if (object != nullptr) {
        needs_.timers.StartAnew(*object, needs_.clock.Now());
        needs_.objectViews.UpdateObjectTreeEntry(*set, *object);
    }
    needs_.objectViews.RecalcAliveTestView();
}

void Mirror::SetServiceMode(TextView payload) {
    const auto change = ReadWholePayload<ServiceModeChange>(payload);
    if (!change) return;
    cTranslate* set = needs_.translations.Find(change->object.fileName);
    cIDCode* object = set == nullptr ? nullptr : FindExactObject(*set, change->object.idCode);
    if (object == nullptr) return;
    if (!StoreServicePeriod(*set, *object,
                            {.mode = change->mode, .begin = change->begin, .end = change->end}))
        return;
    needs_.objectViews.UpdateObjectTreeEntry(*set, *object);
    needs_.objectViews.RecalcAliveTestView();
}

void Mirror::UpdateObject(TextView payload) {
    const auto update = ReadObjectUpdate(payload);
    if (!update) return;
    cTranslate* set = needs_.translations.Find(update->name.fileName);
    cIDCode* object = set == nullptr ? nullptr : FindExactObject(*set, update->name.idCode);
    if (object == nullptr) return;
    const bool hadFailed[] = {object->FailedFlag(1), object->FailedFlag(2)};
    StoreObjectUpdate(*set, *object, update->object);
    if (hadFailed[0] != object->FailedFlag(1) || hadFailed[1] != object->FailedFlag(2))
        needs_.objectViews.RecalcAliveTestView();
    needs_.objectViews.UpdateObjectTreeEntry(*set, *object);
}

void Mirror::Login(TextView payload) {
    needs_.user = ReadPayload<LoginAnswer>(payload);
    needs_.screen.ShowUser(needs_.user);
}

void Mirror::Logout(TextView) {
    needs_.user = {};
    needs_.screen.ShowUser(needs_.user);
    if (needs_.settings.ViewLoginFormAutomatically) needs_.screen.AskForLogin();
}

// With reconnects the close of the connection, which follows, says enough.
void Mirror::ServerShutsDown(TextView) {
    if (needs_.settings.NetworkReconnectInterval > 0) return;
    const Text text = needs_.language.GetLanguageText(kTextServerEnds);
    needs_.log.WriteSysLog(text, LogKind::Oddity);
    needs_.screen.EndProgram(text);
}

// --- What only some servers know

void Mirror::TakeExtensions(TextView payload) {
    server_.knowsUpTo = ReadPayload<LongNumber>(payload).value;
    server_.isTold = server_.knowsUpTo > 0;
    needs_.history.NoteServerKnows(server_.knowsUpTo);
    needs_.accounts.NoteServerKnows(server_.knowsUpTo);
}

void Mirror::TakeLines(TextView payload) {
    server_.lines = ReadLines(payload);
}

void Mirror::TakeConditions(TextView payload) {
    server_.conditions = ReadConditions(payload);
}

}  // namespace nordkeep
