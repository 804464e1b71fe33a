#include "network/messages/CentreMessages.h"
#include "network/messages/ObjectMessages.h"
#include "pipeline/Resets.h"
#include "tests/doubles/LoopbackLink.h"
#include "tests/network/ClientWorld.h"

#include <gtest/gtest.h>

#include <random>

namespace nordkeep {
namespace {

using namespace std::string_literals;

/// A client whose server is played by the test.
class PlayedServer : public ::testing::Test {
 protected:
    PlayedServer() {
        time.After(1, [this] { Socket().Establish(); });
        Answer(15, Message::ProtocolVersion, PayloadOf(LongNumber{2}));
        Answer(25, Message::ReadTextFile, PayloadOf(LongText{"[General]\r\n"}));
        Answer(35, Message::ClosePending);
        Answer(45, Message::ClosePending);
    }
    FakeWinsock& Socket() { return sockets.At(0); }
    void Answer(int ms, Message message, TextView payload = {}) {
        time.After(ms, [this, frame = FrameOf(message, payload)] { Socket().Arrive(frame); });
    }
    std::vector<int> Sent() {
        std::vector<int> numbers;
        for (const Text& frame : Socket().sends) numbers.push_back(static_cast<unsigned char>(frame[0]));
        Socket().sends.clear();
        return numbers;
    }
    Text EventOf(std::int32_t pointer, int status, const Text& text = "fire") {
        cAlarm alarm;
        alarm.m_FilePointer = pointer;
        alarm.m_Status = status;
        alarm.m_AlarmCodeToStore = text;
        return EventPayload(alarm);
    }
    using Numbers = std::vector<int>;

    ManualTime time{};
    FakeSockets sockets{};
    ClientWorld client{time, sockets};
};

TEST_F(PlayedServer, IsAskedInOrder) {
    client.network.AutoLoginUserName = "anna";
    client.network.AutoLoginPassword = "x";
    const ClientStart start = client.Start();
    EXPECT_EQ(start.failure, "");
    EXPECT_EQ(start.serverSettings, "[General]\r\n");
    EXPECT_EQ(Sent(), (Numbers{23, 18, 5, 16, 9, 30}));
    EXPECT_FALSE(client.link.IsConnectionLost());
    EXPECT_TRUE(client.HasLogged("127.0.0.1 at server:17666"));
}

TEST(ClientStart, FailsWithItsReason) {
    struct Case {
        std::function<void(ManualTime&, FakeWinsock&)> play;
        Text failure;
        std::int64_t longestMs;
    };
    const auto version = [](int number) {
        return FrameOf(Message::ProtocolVersion, PayloadOf(LongNumber{number}));
    };
    const Case cases[] = {
        {[](ManualTime&, FakeWinsock&) {}, "cannot", 31'000},
        {[](ManualTime& time, FakeWinsock& socket) { time.After(5, [&] { socket.Break("refused"); }); },
         "cannot", 100},
        {[](ManualTime& time, FakeWinsock& socket) { time.After(5, [&] { socket.Establish(); }); },
         "Server protocol version is 0, but we support version 2", 6000},
        {[&](ManualTime& time, FakeWinsock& socket) {
             time.After(5, [&] { socket.Establish(); });
             time.After(15, [&] { socket.Arrive(version(3)); });
         },
         "Server protocol version is 3, but we support version 2", 100},
        {[&](ManualTime& time, FakeWinsock& socket) {
             time.After(5, [&] { socket.Establish(); });
             time.After(15, [&] { socket.Arrive(version(2)); });
             time.After(25, [&] { socket.Arrive(FrameOf(Message::ReadTextFile, "\0\0\0\0"s)); });
         },
         "Could not get the server INI-file!", 100},
    };
    for (const Case& one : cases) {
        ManualTime time;
        FakeSockets sockets;
        ClientWorld client(time, sockets);
        one.play(time, sockets.At(0));
        const auto start = time.MonotonicMs();
        EXPECT_EQ(client.Start().failure, one.failure);
        EXPECT_LE(time.MonotonicMs() - start, one.longestMs);
    }
}

// Two machines of which one serves: the other refuses, or is gone, or takes the call and hangs.
TEST(ServerLink, TriesItsServersInTurnAndStaysWithTheOneThatAnswers) {
    ManualTime time;
    FakeSockets sockets;
    ClientWorld world(time, sockets);
    world.network.ServerAddress = "first, second";
    ServerLink link{{sockets, time, time, world.language, world.log, world.traffic, world.network}};
    FakeWinsock& socket = sockets.Last();
    std::vector<Text> tried;
    const auto play = [&](const Text& serving) {
        tried.clear();
        const auto network = time.NewTimer([&] {
            if (socket.state != SocketState::Connecting) return;
            if (!tried.empty() && tried.back() == socket.remoteHost) return;
            tried.push_back(socket.remoteHost);
            if (socket.remoteHost == serving) return socket.Establish();
            if (serving != "none") socket.Break("refused");
        });
        network->Start(5);
        return link.ConnectToServer();
    };
    using Hosts = std::vector<Text>;
    EXPECT_TRUE(play("second"));
    EXPECT_EQ(tried, (Hosts{"first", "second"}));
    EXPECT_EQ(link.ServerAddress(), "second");
    socket.Arrive(FrameOf(Message::ProtocolVersion, PayloadOf(LongNumber{2})));
    socket.CloseByPeer();
    EXPECT_TRUE(play("second"));
    EXPECT_EQ(tried, (Hosts{"second"})) << "the one that answered last";
    socket.CloseByPeer();
    EXPECT_TRUE(play("first"));
    EXPECT_EQ(tried, (Hosts{"first"})) << "one that says nothing is left first";
    const auto start = time.MonotonicMs();
    socket.Arrive(FrameOf(Message::ProtocolVersion, PayloadOf(LongNumber{2})));
    socket.CloseByPeer();
    EXPECT_FALSE(play("none"));
    EXPECT_EQ(tried, (Hosts{"first", "second"}));
    EXPECT_LE(time.MonotonicMs() - start, 31'000);
}

TEST_F(PlayedServer, EventsAreMirroredOnceAndLeaveWhenRemoved) {
    client.Start();
    Socket().Arrive(FrameOf(Message::NewEvent, EventOf(5, 0)));
    Socket().Arrive(FrameOf(Message::InitialEvent, EventOf(5, 1)));
    EXPECT_EQ(client.store.Events().Count(), 1u);
    EXPECT_EQ(client.core.views.rows.at(5), 1);
    Socket().Arrive(FrameOf(Message::OldEvent, EventOf(5, -1)));
    Socket().Arrive(FrameOf(Message::OldEvent, EventOf(5, -1)));
    EXPECT_EQ(client.store.Events().Count(), 0u);
    EXPECT_TRUE(client.core.views.rows.empty());
    Socket().Arrive(FrameOf(Message::OldEvent, EventOf(5, 1)));
    EXPECT_EQ(client.core.views.rows.at(5), 1);
    EXPECT_FALSE(client.HasLogged("unknown"));
    Socket().Arrive(FrameOf(Message::OldEvent, EventOf(5, -1)));
    Socket().Arrive(FrameOf(Message::OldEvent, EventOf(6, 5)));
    EXPECT_TRUE(client.HasLogged("unknown"));
    Socket().Arrive(FrameOf(Message::NewEvent, EventOf(7, 5)));
    EXPECT_EQ(client.screen.presented, (std::vector<Text>{"fire", "fire"}));
    EXPECT_TRUE(ListEntries(client.folder.Path()) == std::vector<Text>{"LogFiles_Client"});
}

TEST_F(PlayedServer, WhatOpensSheetsWaitsForThePendingRequest) {
    client.Start();
    std::optional<Text> inner;
    client.screen.onPresent = [&] { inner = client.remote.ReadTextFile("Comments\\1"); };
    time.After(15, [&] { Socket().Arrive(FrameOf(Message::NewEvent, EventOf(5, 0))); });
    Answer(25, Message::ReadTextFile, PayloadOf(LongText{"outer"}));
    Answer(45, Message::ReadTextFile, PayloadOf(LongText{"inner"}));
    EXPECT_EQ(client.remote.ReadTextFile("Maps\\x"), "outer");
    EXPECT_FALSE(inner);
    time.Advance(100);
    EXPECT_EQ(inner, "inner");
}

TEST_F(PlayedServer, ASecondRequestDoesNotDisturbTheFirst) {
    client.Start();
    time.After(15, [&] { EXPECT_EQ(client.remote.ReadBinaryFile("x"), ""); });
    Answer(30, Message::ReadTextFile, PayloadOf(LongText{"first"}));
    EXPECT_EQ(client.remote.ReadTextFile("a"), "first");
    EXPECT_FALSE(client.link.IsConnectionLost());
}

TEST_F(PlayedServer, ChangesCarryTheInitials) {
    client.Start();
    Socket().Arrive(FrameOf(Message::Login, PayloadOf(LoginAnswer{2, "Anna", "A"})));
    EXPECT_EQ(client.screen.level, 2);
    Socket().Arrive(FrameOf(Message::NewEvent, EventOf(5, 0)));
    Sent();
    cAlarm& alarm = *client.store.FindAlarmByKey(5);
    client.store.Update(alarm);
    EXPECT_EQ(alarm.m_User, "A  ");
    EXPECT_EQ(Sent(), Numbers{7});
    client.network.ViewLoginFormAutomatically = true;
    Socket().Arrive(FrameOf(Message::Logout, {}));
    EXPECT_EQ(client.screen.level, 0);
    EXPECT_EQ(client.screen.loginQuestions, 1);
}

TEST_F(PlayedServer, IsToldThatTheClientLives) {
    client.Start();
    Sent();
    for (int i = 0; i < 99; ++i) client.session.Tick(100);
    EXPECT_EQ(Sent(), Numbers{0});
    client.session.Tick(100);
    EXPECT_EQ(Sent(), Numbers{0});
}

TEST_F(PlayedServer, TellsOfItselfWhenItKnowsHow) {
    client.Start();
    Socket().Arrive(FrameOf(Message::Extensions, PayloadOf(LongNumber{32})));
    Socket().Arrive(FrameOf(Message::Lines, LinesPayload({{.name = "Port1", .state = LineState::Failed}})));
    Socket().Arrive(FrameOf(Message::Conditions,
                            ConditionsPayload({{.kind = ConditionKind::LineFailed, .name = "Modem"}})));
    EXPECT_EQ(client.mirror.Server().lines.at(0).state, LineState::Failed);
    EXPECT_EQ(client.mirror.Server().conditions.at(0).name, "Modem");
    Socket().CloseByPeer();
    client.session.Tick(100);
    EXPECT_FALSE(client.mirror.Server().isTold) << "what may be out of date is not shown";
    EXPECT_TRUE(client.mirror.Server().lines.empty());
}

TEST_F(PlayedServer, IsAskedForAccountsWhileSomebodyLooks) {
    client.Start();
    Sent();
    EXPECT_TRUE(client.accounts.Of("Port1").empty());
    EXPECT_EQ(Sent(), Numbers{}) << "it has not said that it knows them";
    Socket().Arrive(FrameOf(Message::Extensions, PayloadOf(LongNumber{kHighestExtension})));
    client.accounts.Of("Port1");
    client.accounts.Of("Port2");
    client.accounts.Of("Port1");
    EXPECT_EQ(Sent(), (Numbers{37, 37}));
    Socket().Arrive(FrameOf(Message::Accounts, AccountsPayload({"Port1", {{"1234", time.Now(), true}}})));
    Socket().Arrive(FrameOf(Message::Accounts, AccountsPayload({"Other", {{"1", {}, false}}})));
    EXPECT_EQ(client.accounts.Of("Port1").at(0).name, "1234");
    time.Advance(5'000);
    client.accounts.Of("Port1");
    client.accounts.Of("Port2");
    EXPECT_EQ(Sent(), Numbers{37}) << "a line without any is asked about more seldom";
    Socket().CloseByPeer();
    client.session.Tick(100);
    EXPECT_TRUE(client.accounts.Of("Port1").empty()) << "what may be out of date is not shown";
}

// A server has one question of a client in hand; the others wait their turn.
TEST_F(PlayedServer, IsAskedForItsHistoryByOneAtATime) {
    struct Taker final : HistoryTaker {
        void TakePage(std::int32_t number, const HistoryPage&) override { pages.push_back(number); }
        void TakeReport(std::int32_t number, const AlarmFigures&) override { reports.push_back(number); }
        std::vector<std::int32_t> pages{};
        std::vector<std::int32_t> reports{};
    } one, other;
    client.Start();
    RemoteHistory& history = client.history;
    EXPECT_EQ(history.Readiness(), HistorySource::State::NotKnown);
    Socket().Arrive(FrameOf(Message::Extensions, PayloadOf(LongNumber{kHighestExtension})));
    EXPECT_EQ(history.Readiness(), HistorySource::State::NotAllowed);
    Socket().Arrive(FrameOf(Message::Login, PayloadOf(LoginAnswer{1, "Anna", "A"})));
    ASSERT_EQ(history.Readiness(), HistorySource::State::Ready);
    Sent();
    history.Ask(one, 11, HistoryQuery{});
    history.Ask(one, 12, HistoryQuery{});
    history.Ask(other, 21, ReportSpan{});
    EXPECT_EQ(Sent(), Numbers{34});
    Socket().Arrive(FrameOf(Message::History, HistoryAnswerPayload({1, {}})));
    EXPECT_TRUE(one.pages.empty()) << "it has asked for something else meanwhile";
    EXPECT_EQ(Sent(), Numbers{34});
    Socket().Arrive(FrameOf(Message::History, HistoryAnswerPayload({99, {}})));
    Socket().Arrive(FrameOf(Message::History, HistoryAnswerPayload({2, {}})));
    EXPECT_EQ(one.pages, std::vector<std::int32_t>{12});
    EXPECT_EQ(Sent(), Numbers{35});
    history.Forget(other);
    Socket().Arrive(FrameOf(Message::Report, ReportAnswerPayload({3, {}})));
    EXPECT_TRUE(other.reports.empty());
    EXPECT_TRUE(history.SignOver("quiet", "list"));
    EXPECT_EQ(Sent(), Numbers{36});
}

// Its answer to what it does not know may be silence, or the end of the connection.
TEST_F(PlayedServer, ServesAsEverWhenItDoesNotKnowMessage30) {
    client.Start();
    for (int i = 0; i < 20; ++i) client.session.Tick(100);
    EXPECT_FALSE(client.mirror.Server().isTold);
    EXPECT_EQ(client.session.State(), LinkState::Connected);
    Sent();
    Socket().CloseByPeer();
    client.session.Tick(100);
    EXPECT_EQ(client.session.State(), LinkState::Lost) << "a second behind the question it is a loss";

    const auto answerAnew = [this] {
        time.After(1, [this] { Socket().Establish(); });
        Answer(15, Message::ProtocolVersion, PayloadOf(LongNumber{2}));
        Answer(25, Message::ClosePending);
        Answer(35, Message::ClosePending);
    };
    answerAnew();
    client.session.ReconnectNow();
    EXPECT_EQ(Sent(), (Numbers{23, 5, 9, 30}));
    answerAnew();
    Socket().CloseByPeer();
    client.session.Tick(100);
    EXPECT_EQ(client.session.State(), LinkState::Connected) << "back at once";
    EXPECT_EQ(Sent(), (Numbers{23, 5, 9})) << "and not asked again";
}

TEST_F(PlayedServer, ASlowAnswerIsALostConnection) {
    client.Start();
    EXPECT_EQ(client.remote.ReadTextFile("x"), "");
    EXPECT_TRUE(client.link.IsConnectionLost());
    Sent();
    EXPECT_FALSE(client.link.SendToServer(Message::KeepAlive));
    EXPECT_TRUE(Sent().empty());
    EXPECT_EQ(std::count(client.logged.begin(), client.logged.end(), "lost"), 1);
    client.session.Tick(100);
    EXPECT_EQ(client.session.State(), LinkState::Lost);
}

TEST_F(PlayedServer, AnEndlessFrameIsALostConnection) {
    client.Start();
    Socket().Arrive("\x07\xFF\0\0\0"s);
    EXPECT_TRUE(client.link.IsConnectionLost());
    EXPECT_TRUE(client.HasLogged("lost (frame too long)"));
}

TEST_F(PlayedServer, WithoutReconnectsTheClientEndsWithItsServer) {
    client.network.NetworkReconnectInterval = 0;
    client.Start();
    Socket().Arrive(FrameOf(Message::ServerIsShuttingDown, {}));
    EXPECT_EQ(client.screen.ends, std::vector<Text>{"bye"});
    Socket().CloseByPeer();
    client.session.Tick(100);
    EXPECT_EQ(client.session.State(), LinkState::Ended);
    EXPECT_TRUE(client.HasLogged("ends"));
}

class Day;

constexpr const char* kComment = "Comments\\1.TXT";

/// A real server and real clients on a loopback link.
class MirrorTest : public ::testing::Test {
 protected:
    MirrorTest() {
        server.network.ClientAddresses = "*";
        server.slots.Listen();
    }
    void Settle() { time.Advance(0); }
    // What a client's mirror differs in, by design; everything else is compared:
    // - m_IsStored is the sender's at the time of sending;
    // - m_URL and m_RepeatedCompareTime are not sent;
    // - message 2 leaves the first expiration of an object empty;
    // - dates come in whole seconds.
    static std::map<std::int32_t, Text> EventsOf(EventStore& store) {
        std::map<std::int32_t, Text> events;
        for (EventSequence at = store.Events().Next(0); at != 0; at = store.Events().Next(at)) {
            cAlarm alarm = *store.Events().Find(at);
            alarm.m_IsStored = false;
            if (alarm.m_Status != kStatusRemoved) events[alarm.m_FilePointer] = EventPayload(alarm);
        }
        return events;
    }
    static std::vector<Text> SetsOf(Translations& translations) {
        std::vector<Text> sets;
        for (const auto& set : translations.Sets()) {
            cTranslate copy;
            ReadTranslation(TranslationPayload(*set), copy);
            sets.push_back(TranslationPayload(copy));
        }
        return sets;
    }
    void ExpectEqual(ClientWorld& client) {
        EXPECT_EQ(EventsOf(client.store), EventsOf(server.store));
        EXPECT_EQ(client.core.views.rows, server.core.views.rows);
        EXPECT_EQ(SetsOf(client.translations), SetsOf(server.translations));
        EXPECT_EQ(client.mirror.PortTree(), MakePortTree({{"Port one", &server.port}}));
        EXPECT_EQ(client.screen.tree, client.mirror.PortTree());
        EXPECT_EQ(client.remote.ReadTextFile(kComment), server.folder.Read(kComment));
    }
    /// All clients lose the server, which goes on working, and come back after their interval.
    void RestartTheNetwork(const std::vector<std::unique_ptr<ClientWorld>>& clients, Day& day);

    ManualTime time{};
    LoopbackLink link{time};
    ServerWorld server{time, link};
};

TEST_F(MirrorTest, AClientWorksOnTheFilesOfTheServer) {
    ClientWorld client(time, link);
    EXPECT_EQ(client.Start().serverSettings, "[General]\r\nMaxAlarms=77\r\n");
    client.remote.WriteTextFile("Comments\\1.txt", "hello");
    EXPECT_EQ(client.remote.ReadTextFile("comments\\1.TXT"), "hello\r\n");
    EXPECT_EQ(client.remote.ScanForFiles("Comments\\*.*"), std::vector<Text>{"1.txt"});
    EXPECT_FALSE(client.remote.FileTimeStamp("Comments\\1.txt").IsNever());
    client.remote.MakeDataFolder("Comments\\New");
    EXPECT_TRUE(FolderExists(server.folder.Resolve("Comments\\New")));
    EXPECT_EQ(client.remote.ReadTextFile("Settings\\Users.INI"), "");
}

TEST_F(MirrorTest, ALostServerComesBackAfterAFullInterval) {
    ClientWorld client(time, link);
    client.network.NetworkReconnectInterval = 1000;
    server.Raise("before");
    client.Start();
    server.slots.Shutdown();
    Settle();
    client.session.Tick(100);
    EXPECT_EQ(client.session.State(), LinkState::Lost);
    EXPECT_EQ(client.store.Events().Count(), 0u) << "what may be out of date is not shown";
    EXPECT_TRUE(client.core.views.rows.empty());
    link.isRefusing = true;
    for (int i = 0; i < 10; ++i) client.session.Tick(100);
    EXPECT_EQ(client.session.State(), LinkState::Lost);

    server.Raise("meanwhile");
    link.isRefusing = false;
    server.slots.Listen();
    for (int i = 0; i < 10; ++i) client.session.Tick(100);
    EXPECT_EQ(client.session.State(), LinkState::Connected);
    time.Advance(100);
    ExpectEqual(client);
    using S = LinkState;
    EXPECT_EQ(client.screen.states,
              (std::vector<S>{S::Lost, S::Connecting, S::Lost, S::Connecting, S::Connected}));
}

/// One step of a server's day, or of an operator's at a client.
class Day {
 public:
    Day(ServerWorld& server, unsigned seed) : server_(server), random_(seed) {
        resetSettings_.AutoAckResetEvents = static_cast<int>(seed % 3);
    }

    int Below(int end) { return static_cast<int>(random_() % static_cast<unsigned>(end)); }
    cAlarm* AnyEvent(EventStore& store) {
        std::vector<cAlarm*> all;
        for (EventSequence at = store.Events().Next(0); at != 0; at = store.Events().Next(at))
            all.push_back(store.Events().Find(at));
        return all.empty() ? nullptr : all[static_cast<std::size_t>(Below(static_cast<int>(all.size())))];
    }
    void ServerStep() {
        cIDCode& object = server_.Object(static_cast<std::size_t>(Below(2)));
        cTranslate& set = *server_.translations.Sets().at(0);
        switch (Below(9)) {
            case 0:
                server_.Raise("event" + std::to_string(random_()), Below(6));
                break;
            case 1:
                if (cAlarm* alarm = AnyEvent(server_.store)) Change(server_.store, *alarm, Below(6));
                break;
            case 2:
                if (cAlarm* alarm = AnyEvent(server_.store)) server_.store.RemoveAlarm(*alarm);
                break;
            case 3:
                server_.core.servicePeriods.Set(set, object, {.mode = Below(4), .end = server_.time.Now()});
                break;
            case 4:
                object.m_LastIncomingEvent = server_.time.Now();
                object.FailedFlag(1 + Below(2)) = Below(2) == 0;
                server_.replica.SendObjectUpdate(set, object);
                break;
            case 5:
                resets_.AcknowledgeDelayed(server_.time.Now());
                break;
            case 6:
            case 7:
                Arrive();
                break;
            default:
                server_.Reload();
                server_.server.SendReload();
        }
    }
    void ClientStep(ClientWorld& client) {
        if (client.translations.Sets().empty()) return;
        const cTranslate& set = *client.translations.Sets()[0];
        const cIDCode& object = *set.m_IdCodes.at(static_cast<std::size_t>(Below(2)));
        switch (Below(4)) {
            case 0:
                if (cAlarm* alarm = AnyEvent(client.store)) Change(client.store, *alarm, Below(7) - 1);
                break;
            case 3:
                client.remote.WriteTextFile(kComment, "comment " + std::to_string(random_()));
                break;
            case 1:
                client.replica.RequestServiceMode(set, object, {.mode = Below(4)});
                break;
            default:
                client.replica.RequestAliveTestReset(set, object);
        }
    }

 private:
    /// An alarm that waits for its reset, a repeat of it, or the reset.
    void Arrive() {
        auto alarm = std::make_unique<cAlarm>();
        alarm->m_IdCode = std::to_string(Below(2));
        alarm->m_TypeCode = std::to_string(Below(2));
        if (alarm->m_TypeCode == "1") {
            alarm->m_Status = kStatusNewWaiting;
            alarm->m_ResetTypeCode = "0";
        }
        alarm->m_ArrivedTime = server_.time.Now();
        resets_.DetectRepeat(*alarm);
        resets_.ResolveResets(*alarm);
        server_.store.StoreNew(std::move(alarm));
    }
    void Change(EventStore& store, cAlarm& alarm, int status) {
        if (alarm.m_Status == kStatusRemoved) return;
        alarm.m_Status = status;
        alarm.m_SmallComment = "note" + std::to_string(random_());
        store.Update(alarm);
        if (&store == &server_.store && status == kStatusRemoved) store.Forget(alarm);
    }

    ServerWorld& server_;
    std::mt19937 random_;
    ResetSettings resetSettings_;
    Resets resets_{server_.store, server_.core.handling, server_.time, resetSettings_};
};

void MirrorTest::RestartTheNetwork(const std::vector<std::unique_ptr<ClientWorld>>& clients, Day& day) {
    server.slots.Shutdown();
    Settle();
    for (int i = 0; i < 3; ++i) day.ServerStep();
    server.slots.Listen();
    for (const auto& client : clients) {
        for (int i = 0; client && i < 11; ++i) client->session.Tick(100);
        if (client) {
            EXPECT_EQ(client->session.State(), LinkState::Connected);
        }
    }
}

TEST_F(MirrorTest, EveryClientEndsEqualToTheServer) {
    for (unsigned seed = 1; seed <= 5; ++seed) {
        Day day(server, seed);
        std::vector<std::unique_ptr<ClientWorld>> clients(4);
        for (int round = 0; round < 60; ++round) {
            auto& client = clients[static_cast<std::size_t>(day.Below(4))];
            if (!client) {
                client = std::make_unique<ClientWorld>(time, link);
                client->network.NetworkReconnectInterval = 1000;
                for (int i = 0; i < 4; ++i) time.After(day.Below(40), [&] { day.ServerStep(); });
                ASSERT_EQ(client->Start().failure, "");
            } else if (day.Below(8) == 0) {
                client.reset();
            }
            if (day.Below(15) == 0) RestartTheNetwork(clients, day);
            for (int i = 0; i < 5; ++i) {
                day.ServerStep();
                for (auto& each : clients) {
                    if (each && day.Below(2) == 0) day.ClientStep(*each);
                }
                if (day.Below(2) == 0) Settle();
            }
            time.Advance(61'000);  // beyond the delay of an acknowledge
            for (auto& each : clients) {
                if (each) ExpectEqual(*each);
            }
            ASSERT_FALSE(HasFailure()) << "seed " << seed << " round " << round;
        }
        EXPECT_NE(server.folder.Read(kComment), "") << "the operators have written";
        clients.clear();
        Settle();
    }
}

}  // namespace
}  // namespace nordkeep
