// What the copies send each other, as a hostile peer would send it.

#include "network/messages/CentreMessages.h"
#include "network/messages/HistoryMessages.h"
#include "network/messages/ObjectMessages.h"
#include "tests/fuzz/Targets.h"
#include "tests/network/ClientWorld.h"

#include <cstdlib>

namespace nordkeep {
namespace {

std::vector<Frame> FramesOf(TextView stream) {
    std::vector<Frame> frames;
    FrameBuffer buffer;
    buffer.Append(stream);
    while (!buffer.IsTooLong()) {
        auto frame = buffer.Next();
        if (!frame) break;
        frames.push_back(std::move(*frame));
    }
    return frames;
}

// What a reader has understood is written to bytes that say the same again.
template <class Payload>
void RoundTrip(TextView bytes) {
    const auto payload = ReadWholePayload<Payload>(bytes);
    if (!payload) return;
    const Text written = PayloadOf(*payload);
    const auto again = ReadWholePayload<Payload>(written);
    if (!again || PayloadOf(*again) != written) std::abort();
}

void RunFrames(TextView input) {
    for (const Frame& frame : FramesOf(input)) {
        cAlarm alarm;
        cTranslate set;
        if (ReadEvent(frame.payload, alarm) && !ReadEvent(EventPayload(alarm), alarm)) std::abort();
        ReadTranslation(frame.payload, set);
        TranslationPayload(set);
        ReadObjectUpdate(frame.payload);
        ReadPortTree(frame.payload);
        const Text lines = LinesPayload(ReadLines(frame.payload));
        if (LinesPayload(ReadLines(lines)) != lines) std::abort();
        const Text facts = ConditionsPayload(ReadConditions(frame.payload));
        if (ConditionsPayload(ReadConditions(facts)) != facts) std::abort();
        const Text accounts = AccountsPayload(ReadAccounts(frame.payload));
        if (AccountsPayload(ReadAccounts(accounts)) != accounts) std::abort();
        const ManualTime time;
        if (const auto question = ReadHistoryQuestion(frame.payload)) HistoryQuestionPayload(*question);
        if (const auto answer = ReadHistoryAnswer(frame.payload, time)) HistoryAnswerPayload(*answer);
        if (const auto answer = ReadReportAnswer(frame.payload)) ReportAnswerPayload(*answer);
        RoundTrip<HandoverGiven>(frame.payload);
        RoundTrip<ObjectName>(frame.payload);
        RoundTrip<ServiceModeChange>(frame.payload);
        RoundTrip<ServiceReasonGiven>(frame.payload);
        RoundTrip<LoginRequest>(frame.payload);
        RoundTrip<LoginAnswer>(frame.payload);
        RoundTrip<FileToWrite>(frame.payload);
        RoundTrip<LongText>(frame.payload);
    }
}

/// A world that is made anew now and then, so that what the inputs leave in it stays small.
template <class World>
World& FreshWorld() {
    static std::unique_ptr<World> world;
    static int uses = 0;
    if (uses++ % 500 == 0) {
        world.reset();
        world = std::make_unique<World>();
    }
    return *world;
}

struct FuzzedServer {
    ManualTime time{};
    FakeSockets sockets{};
    ServerWorld world{time, sockets};

    FuzzedServer() {
        world.slots.Listen();
        world.Raise("1", kStatusNew);
        world.Raise("2", kStatusNewWaiting);
    }
};

// Files that clients write are left out: every input would leave one behind.
void RunServer(TextView input) {
    FuzzedServer& server = FreshWorld<FuzzedServer>();
    server.sockets.At(0).CallIn();
    FakeWinsock& slot = server.sockets.At(1);
    for (Frame& frame : FramesOf(input)) {
        if (frame.number == 19 || frame.number == 24) continue;
        slot.Arrive(FrameOf(static_cast<Message>(frame.number), frame.payload));
    }
    slot.Arrive(input.substr(0, 4));
    slot.CloseByPeer();
    for (FakeWinsock* socket : server.sockets.made) {
        socket->sent.clear();
        socket->sends.clear();
    }
    server.world.logged.clear();
}

struct FuzzedClient {
    ManualTime time{};
    FakeSockets sockets{};
    ClientWorld world{time, sockets};
};

void RunClient(TextView input) {
    FuzzedClient& client = FreshWorld<FuzzedClient>();
    for (const Frame& frame : FramesOf(input)) client.world.mirror.HandleMessage(frame.number, frame.payload);
    client.world.mirror.ConnectionStarts();
    client.world.logged.clear();
}

struct FuzzedFolder {
    TempFolder folder{};
    FuzzedFolder() { folder.Write("Maps\\Town.png", "x"); }
};

void RunPaths(TextView input) {
    const FuzzedFolder& world = FreshWorld<FuzzedFolder>();
    const SharedPaths paths(world.folder.Tree(), "");
    const std::string inside = world.folder.Path();
    for (const PathKind kind : {PathKind::Read, PathKind::BelowDataFolder}) {
        const auto place = paths.Find(input, kind);
        if (place && place->folder.compare(0, inside.size(), inside) != 0) std::abort();
    }
}

}  // namespace

std::vector<FuzzTarget> NetworkTargets() {
    const cAlarm alarm{.m_FilePointer = 2, .m_Status = 1, .m_AlarmCode = "1234", .m_IdCode = "1"};
    const Text event = EventPayload(alarm);
    const Text object = PayloadOf(ObjectName{"A", "1"});
    const Text service = PayloadOf(ServiceModeChange{{"A", "1"}, 1, {}, OleDate::FromDays(45000)});
    const Text asked = FrameOf(Message::InitialData, {}) + FrameOf(Message::AllEvents, {}) +
                       FrameOf(Message::OldEvent, event) + FrameOf(Message::ResetAliveTestTimer, object) +
                       FrameOf(Message::SetServiceMode, service) +
                       FrameOf(Message::Login, PayloadOf(LoginRequest{"anna", "secret"})) +
                       FrameOf(Message::ReadTextFile, PayloadOf(ShortText{"Settings\\A.IDCode"}));
    FuzzedServer server;
    const Text told = FrameOf(Message::Extensions, PayloadOf(LongNumber{kHighestExtension})) +
                      FrameOf(Message::ServiceReason, PayloadOf(ServiceReasonGiven{{"A", "1"}, "why"})) +
                      FrameOf(Message::SetServiceMode, service) +
                      FrameOf(Message::Lines, LinesPayload({{.name = "Port1", .caller = "10.0.0.1"}})) +
                      FrameOf(Message::Conditions, ConditionsPayload({{.name = "Port1", .count = 1}})) +
                      FrameOf(Message::Accounts, PayloadOf(LineName{"Port1"})) +
                      FrameOf(Message::Accounts, AccountsPayload({"Port1", {{"1234", {}, true}}}));
    const OleDate day = OleDate::FromDays(45000);
    const HistoryPage page{.entries = {{.place = {"2024-03-05T06:08:09.123Z", 7}, .kind = "end"}}};
    const AlarmFigures figures{.from = day, .to = day.PlusDays(1), .bins = {1, 2}, .frequent = {{"1"}}};
    const Text history =
        FrameOf(Message::Extensions, PayloadOf(LongNumber{kHighestExtension})) +
        FrameOf(Message::Login, PayloadOf(LoginRequest{"anna", "secret"})) +
        FrameOf(Message::History, HistoryQuestionPayload({1, {.from = day, .object = "1"}})) +
        FrameOf(Message::Report, PayloadOf(ReportQuestion{2, {day, day.PlusDays(1)}})) +
        FrameOf(Message::Handover, PayloadOf(HandoverGiven{"note", "list"}));
    const Text answered = FrameOf(Message::History, HistoryAnswerPayload({0, page})) +
                          FrameOf(Message::Report, ReportAnswerPayload({0, figures}));
    const Text pushed =
        FrameOf(Message::NewEvent, event) + FrameOf(Message::OldEvent, event) +
        FrameOf(Message::Translation, TranslationPayload(*server.world.translations.Sets().at(0))) +
        FrameOf(Message::RemoveTranslations, {}) + FrameOf(Message::SetServiceMode, service);
    return {{"frames", &RunFrames, {asked, pushed, told, history, answered}},
            {"server", &RunServer, {asked, told, history}, 150},
            {"client", &RunClient, {pushed, told, answered}},
            {"paths", &RunPaths, {"Maps\\Town.png", "..\\x", "C:\\Maps/../Settings\\Users.INI"}}};
}

}  // namespace nordkeep
