#include "network/messages/CentreMessages.h"
#include "network/messages/HistoryMessages.h"
#include "network/messages/ObjectMessages.h"
#include "platform/Passwords.h"
#include "tests/network/ServerWorld.h"

#include <gtest/gtest.h>

namespace nordkeep {
namespace {

using namespace std::string_literals;

/// A server on played sockets: the listener is the first that was made, the slots follow.
class ServerTest : public ::testing::Test {
 protected:
    FakeWinsock& Slot(int slot) { return sockets.At(static_cast<std::size_t>(slot) + 1); }
    void CallFrom(const Text& address) {
        for (FakeWinsock* socket : sockets.made) {
            if (socket->state == SocketState::Closed) socket->remoteIp = address;
        }
        sockets.At(0).CallIn();
    }
    void Connect(int count) {
        for (int i = 0; i < count; ++i) CallFrom("127.0.0.1");
    }
    void Send(int slot, Message message, TextView payload = {}) {
        Slot(slot).Arrive(FrameOf(message, payload));
    }
    /// The numbers of the messages that a slot has been sent, and forgets them.
    std::vector<int> Sent(int slot) {
        std::vector<int> numbers;
        FrameBuffer frames;
        for (const Text& sent : Slot(slot).sends) frames.Append(sent);
        last.clear();
        while (const auto frame = frames.Next()) {
            numbers.push_back(frame->number);
            last = Text(frame->payload);
        }
        Slot(slot).sends.clear();
        return numbers;
    }
    using Numbers = std::vector<int>;

    ManualTime time{};
    FakeSockets sockets{};
    ServerWorld world{time, sockets};
    Text last{};  // payload
};

TEST_F(ServerTest, LetsInEightAllowedCallers) {
    world.network.ClientAddresses = "10.0.0.1,127.0.0.1,,10.0.0.9";
    ASSERT_TRUE(world.slots.Listen());
    EXPECT_EQ(sockets.At(0).localPort, 17666);
    CallFrom("10.0.0.9");
    EXPECT_TRUE(world.HasLogged("notallowed 10.0.0.9"));
    Connect(8);
    EXPECT_EQ(world.slots.ConnectedCount(), 8);
    CallFrom("10.0.0.9");
    EXPECT_TRUE(world.HasLogged("toomany 10.0.0.9"));
    EXPECT_EQ(world.slots.ConnectedCount(), 8);

    Slot(3).CloseByPeer();
    EXPECT_TRUE(world.HasLogged("gone 127.0.0.1"));
    CallFrom("10.0.0.1");
    EXPECT_EQ(Slot(3).state, SocketState::Connected);
    EXPECT_EQ(world.slots.AddressOf(3), "10.0.0.1");
}

TEST(ClientAddresses, AreComparedAsTheyStand) {
    EXPECT_TRUE(IsAllowedToCall("*", "1.2.3.4"));
    EXPECT_FALSE(IsAllowedToCall("*,1.2.3.4", "5.6.7.8"));
    EXPECT_FALSE(IsAllowedToCall("1.1.1.1, 2.2.2.2", "2.2.2.2"));
    EXPECT_FALSE(IsAllowedToCall("1.1.1.1", "1.1.1.11"));
}

TEST_F(ServerTest, AnswersRequests) {
    world.Raise("a");
    world.Raise("b");
    Connect(2);
    Send(0, Message::InitialData);
    EXPECT_EQ(Sent(0), (Numbers{3, 2, 4}));
    Send(0, Message::AllEvents);
    EXPECT_EQ(Sent(0), (Numbers{6, 6, 4}));
    Send(0, Message::ProtocolVersion);
    EXPECT_EQ(Sent(0), Numbers{23});
    EXPECT_EQ(last, "\0\0\0\x02"s);
    Send(0, Message::ReadTextFile, PayloadOf(ShortText{"Settings\\Nordkeep.INI"}));
    EXPECT_EQ(Sent(0), Numbers{18});
    EXPECT_EQ(ReadPayload<LongText>(last).text, "[General]\r\nMaxAlarms=77\r\n");
    Send(0, Message::ReadTextFile, PayloadOf(ShortText{"settings/users.ini"}));
    EXPECT_EQ(Sent(0), Numbers{18});
    EXPECT_EQ(last, "\0\0\0\0"s);
    Send(0, Message::ScanForFiles, PayloadOf(ShortText{"Settings\\*.TypeCode"}));
    EXPECT_EQ(Sent(0), Numbers{21});
    EXPECT_EQ(ReadPayload<ShortText>(last).text, "A.TypeCode|");
    Send(0, Message::MakeDir, PayloadOf(ShortText{"Comments\\1"}));
    EXPECT_EQ(Sent(0), Numbers{24});
    EXPECT_TRUE(FolderExists(world.folder.Resolve("Comments\\1")));
    Send(0, Message::KeepAlive);
    Send(0, static_cast<Message>(200), "nonsense");
    EXPECT_EQ(Sent(0), Numbers{});
    EXPECT_EQ(Sent(1), Numbers{});
}

TEST_F(ServerTest, TellsHowItDoesToThoseThatHaveAsked) {
    const std::vector<LineFigures> lines = {{.name = "Port1", .description = "Modem"}};
    const std::vector<ConditionFact> facts = {{.kind = ConditionKind::NoLineOpen}};
    Connect(3);
    EXPECT_FALSE(world.server.IsCentreStateWanted());
    Send(0, Message::Extensions, PayloadOf(LongNumber{99}));
    EXPECT_EQ(Sent(0), Numbers{30});
    EXPECT_EQ(ReadPayload<LongNumber>(last).value, kHighestExtension) << "what both know";
    Send(1, Message::Extensions, PayloadOf(LongNumber{31}));
    Sent(1);
    world.server.SendCentreState(lines, facts);
    EXPECT_EQ(Sent(0), (Numbers{31, 32}));
    EXPECT_EQ(ReadConditions(last), facts);
    EXPECT_EQ(Sent(1), Numbers{31}) << "an earlier copy gets what it knows";
    EXPECT_EQ(Sent(2), Numbers{}) << "who has not asked gets nothing";
    world.server.SendCentreState(lines, facts);
    EXPECT_EQ(Sent(0), Numbers{});
    world.server.SendCentreState(lines, {});
    EXPECT_EQ(Sent(0), Numbers{32});
    Slot(0).CloseByPeer();
    Connect(1);
    world.server.SendCentreState(lines, facts);
    EXPECT_EQ(Sent(0), Numbers{}) << "who comes next has not asked";
}

TEST_F(ServerTest, TellsTheAccountsOfALine) {
    world.accounts = {{.name = "1234", .isSilent = true}, {.name = "77"}};
    Connect(1);
    Send(0, Message::Accounts, PayloadOf(LineName{"Port1"}));
    EXPECT_EQ(Sent(0), Numbers{37});
    const LineAccounts told = ReadAccounts(last);
    EXPECT_EQ(told.line, "Port1");
    ASSERT_EQ(told.accounts.size(), 2u);
    EXPECT_EQ(told.accounts.at(0).name, "1234");
    EXPECT_TRUE(told.accounts.at(0).isSilent);
    Send(0, Message::Accounts, PayloadOf(LineName{"..\\x"}));
    EXPECT_EQ(Sent(0), Numbers{37});
    EXPECT_TRUE(ReadAccounts(last).accounts.empty());
}

TEST_F(ServerTest, TellsItsHistoryToThoseWhoHaveLoggedIn) {
    world.journal.Open();
    for (const char* object : {"1", "2"}) world.journal.Note({.kind = JournalKind::Event, .object = object});
    world.journal.Commit();
    Connect(2);
    const Text question = HistoryQuestionPayload({7, {.object = "2"}});
    Send(0, Message::History, question);
    EXPECT_EQ(Sent(0), Numbers{34});
    EXPECT_EQ(ReadHistoryAnswer(last, time)->number, 0) << "nobody has logged in";
    Send(0, Message::Login, PayloadOf(LoginRequest{"anna", "Secret"}));
    Sent(0);
    Send(0, Message::History, question);
    time.Advance(100);
    EXPECT_EQ(Sent(0), Numbers{34});
    const auto answer = ReadHistoryAnswer(last, time);
    EXPECT_EQ(answer->number, 7);
    ASSERT_EQ(answer->page.entries.size(), 1u);
    EXPECT_EQ(answer->page.entries.at(0).object, "2");
    Send(0, Message::Report, PayloadOf(ReportQuestion{8, {time.Now(), time.Now().PlusDays(1)}}));
    time.Advance(100);
    EXPECT_EQ(Sent(0), Numbers{35});
    EXPECT_EQ(ReadReportAnswer(last)->number, 8);
    Send(0, Message::History, question);
    Slot(0).CloseByPeer();
    Connect(1);
    time.Advance(100);
    EXPECT_EQ(Sent(0), Numbers{}) << "who comes next has not asked";
}

TEST_F(ServerTest, LetsNobodyTouchFilesThatArePastHisLevel) {
    world.folder.Write("Settings\\Port1.ini", "[General]\r\nPOP3Password=x\r\n");
    world.folder.MakeFolders("Comments");
    Connect(2);
    const auto write = [&](int slot, const Text& path) {
        Send(slot, Message::WriteTextFile, PayloadOf(FileToWrite{path, "E2;1;New;"}));
        return world.folder.Read(path) == "E2;1;New;\r\n";
    };
    const auto read = [&](Message message) {
        Send(0, message, PayloadOf(ShortText{"Settings\\Port1.ini"}));
        Sent(0);
        return ReadPayload<LongText>(last).text.size();
    };
    EXPECT_TRUE(write(0, "Comments\\1.txt")) << "the sheet of anybody writes comments";
    EXPECT_FALSE(write(0, "Settings\\A.TypeCode"));
    EXPECT_EQ(read(Message::ReadTextFile) + read(Message::ReadBinaryFile), 0u);
    EXPECT_EQ(world.reloads, 0);
    EXPECT_TRUE(world.HasLogged("kept from 127.0.0.1 'Settings\\A.TypeCode'"));
    Send(0, Message::Login, PayloadOf(LoginRequest{"anna", "Secret"}));
    EXPECT_TRUE(write(0, "Settings\\A.TypeCode"));
    EXPECT_EQ(world.reloads, 1);
    EXPECT_GT(read(Message::ReadTextFile), 0u);
    EXPECT_GT(read(Message::ReadBinaryFile), 0u);
    EXPECT_FALSE(write(1, "Settings\\A.TypeCode2")) << "a login counts at its own client";
    for (const char* path : {"Settings\\Users.INI", "Settings\\Other.txt", "Data\\x.LastEvents", "x.txt"})
        EXPECT_FALSE(write(0, path)) << path;
    Send(0, Message::Login, PayloadOf(LoginRequest{"anna", "wrong"}));
    EXPECT_FALSE(write(0, "Settings\\New.IDCode")) << "a refused login ends the one before";
    Send(0, Message::Login, PayloadOf(LoginRequest{"anna", "Secret"}));
    RemoveFile(world.folder.Resolve("Settings\\Users.INI"));
    EXPECT_FALSE(write(0, "Settings\\New.IDCode")) << "without users there is nobody";
}

TEST_F(ServerTest, ShowsTheTreeOfItsPorts) {
    Connect(1);
    Send(0, Message::InitialData);
    const auto nodes = ReadPortTree(Slot(0).sends.at(0).substr(5));
    EXPECT_EQ(nodes, (std::vector<PortTreeNode>{{0, "Port one"}, {1, "Robofon"}, {2, "A"}}));
}

TEST_F(ServerTest, ChecksPasswords) {
    const std::pair<LoginRequest, int> cases[] = {
        {{"ANNA", "sEcret"}, 16}, {{"anna", "wrong"}, 17}, {{"anna", ""}, 17},
        {{"bo", ""}, 17},         {{"", "Secret"}, 17},    {{"nobody", "x"}, 17},
    };
    Connect(1);
    for (const auto& [request, answer] : cases) {
        Send(0, Message::Login, PayloadOf(request));
        EXPECT_EQ(Sent(0), Numbers{answer}) << request.userName;
        if (answer == 16) {
            EXPECT_EQ(ReadPayload<LoginAnswer>(last).fullName, "Anna Berg");
        }
    }
    EXPECT_TRUE(world.HasLogged("'ANNA' in 127.0.0.1"));
    EXPECT_TRUE(world.HasLogged("'nobody' refused 127.0.0.1"));
    Send(0, Message::Logout);
    EXPECT_EQ(Sent(0), Numbers{17});
}

TEST_F(ServerTest, ComparesAHashWithWhatWasTypedToTheLetter) {
    const auto hash = MakePasswordHash(ToUtf8("S\xE4kert, l\xF6sen"));
    ASSERT_TRUE(hash);
    EXPECT_NE(hash, MakePasswordHash(ToUtf8("S\xE4kert, l\xF6sen"))) << "a salt of its own";
    world.folder.Write("Settings\\Users.INI",
                       "[Users]\r\nanna=Anna Berg,A," + *hash + ",2\r\nbo=Bo,B,$y$no hash,2\r\n");
    Connect(1);
    for (const auto& [request, answer] : {std::pair{LoginRequest{"anna", "S\xE4kert, l\xF6sen"}, 16},
                                          {{"anna", "s\xE4kert, l\xF6sen"}, 17},
                                          {{"anna", Text(*hash)}, 17},
                                          {{"bo", "$y$no hash"}, 17},
                                          {{"bo", ""}, 17}}) {
        Send(0, Message::Login, PayloadOf(request));
        EXPECT_EQ(Sent(0), Numbers{answer}) << request.password;
    }
}

TEST_F(ServerTest, SlowsWhoTriesOnePasswordAfterTheOther) {
    Connect(1);
    const auto answerTo = [&](const char* password) {
        Send(0, Message::Login, PayloadOf(LoginRequest{"anna", password}));
        return Sent(0);
    };
    for (int i = 0; i < 5; ++i) EXPECT_EQ(answerTo("wrong"), Numbers{17});
    for (int i = 0; i < 20; ++i) EXPECT_EQ(answerTo("Secret"), Numbers{17}) << "too soon to be looked at";
    EXPECT_TRUE(world.HasLogged("slowed: 127.0.0.1"));
    EXPECT_EQ(std::ranges::count(world.logged, "slowed: 127.0.0.1"), 1);
    time.Advance(1000);
    EXPECT_EQ(answerTo("wrong again"), Numbers{17});
    EXPECT_EQ(answerTo("Secret"), Numbers{17});
    time.Advance(1000);
    EXPECT_EQ(answerTo("Secret"), Numbers{16});
    EXPECT_EQ(answerTo("wrong"), Numbers{17});
    EXPECT_EQ(answerTo("Secret"), Numbers{16}) << "a right one forgets the wrong ones";
}

TEST_F(ServerTest, TellsChangesOnceAndThoseOfAClientTwiceToTheOthers) {
    Connect(3);
    cAlarm& alarm = world.Raise("fire");
    EXPECT_EQ(Sent(0), Numbers{8});
    cAlarm sent;
    ReadEvent(last, sent);
    EXPECT_FALSE(sent.m_IsStored);

    cAlarm changed = alarm;
    changed.m_URL.clear();
    changed.m_Status = kStatusAcknowledged;
    changed.m_User = "AB ";
    Sent(1);
    Send(1, Message::OldEvent, EventPayload(changed));
    EXPECT_EQ(Sent(0), (Numbers{7, 7}));
    EXPECT_EQ(Sent(1), Numbers{7});
    EXPECT_EQ(alarm.m_User, "AB ");
    EXPECT_EQ(alarm.m_URL, "url");
    EXPECT_EQ(world.core.views.rows.at(alarm.m_FilePointer), kStatusAcknowledged);

    changed.m_Status = kStatusRemoved;
    Send(1, Message::OldEvent, EventPayload(changed));
    EXPECT_EQ(world.store.Events().Count(), 0u);
    EXPECT_TRUE(world.core.views.rows.empty());
    world.core.commit.Commit();
    EXPECT_TRUE(ListFiles(world.folder.Resolve("Data\\Events")).empty());
    EXPECT_NE(world.folder.Read("Data\\Archive.TXT"), "");
    Send(1, Message::OldEvent, EventPayload(changed));
    EXPECT_TRUE(world.HasLogged("nosuch (Filepointer: " + std::to_string(changed.m_FilePointer) +
                                ", Status: -1, Client: 127.0.0.1)"));
}

TEST_F(ServerTest, DropsChangesThatAreNotWhole) {
    Connect(1);
    cAlarm& alarm = world.Raise("fire");
    cAlarm changed = alarm;
    changed.m_Status = kStatusRemoved;
    const Text whole = EventPayload(changed);
    for (std::size_t cut = 0; cut < whole.size(); ++cut) Send(0, Message::OldEvent, whole.substr(0, cut));
    EXPECT_EQ(alarm.m_Status, kStatusNew);
    const Text mode = PayloadOf(ServiceModeChange{{"A", "1"}, 3, {}, {}});
    for (std::size_t cut = 0; cut < mode.size(); ++cut) Send(0, Message::SetServiceMode, mode.substr(0, cut));
    EXPECT_EQ(world.Object().m_ServiceMode, 0);
    EXPECT_EQ(Sent(0), Numbers{8});
}

TEST_F(ServerTest, TakesServiceModesAndAliveTestResets) {
    Connect(2);
    world.Object().m_AliveTestIntervalHasExceeded = true;
    Send(0, Message::ResetAliveTestTimer, PayloadOf(ObjectName{"a", "1"}));
    EXPECT_EQ(Sent(1), Numbers{13});
    EXPECT_FALSE(world.Object().m_AliveTestIntervalHasExceeded);
    EXPECT_EQ(world.Object().GetNextAliveTestExpirationTime(1), time.Now().PlusMinutes(60));
    Send(0, Message::SetServiceMode, PayloadOf(ServiceModeChange{{"A", "1"}, 3, {}, {}}));
    EXPECT_EQ(Sent(1), Numbers{14});
    EXPECT_EQ(world.Object().m_ServiceMode, 3);
    Send(0, Message::SetServiceMode, PayloadOf(ServiceModeChange{{"A", "nobody"}, 3, {}, {}}));
    Send(0, Message::ResetAliveTestTimer, PayloadOf(ObjectName{"B", "1"}));
    EXPECT_EQ(Sent(1), Numbers{});
}

TEST_F(ServerTest, RenewsItsClientsBehindAReload) {
    Connect(1);
    world.server.SendReload();
    EXPECT_EQ(Sent(0), (Numbers{11, 12, 2, 3}));
}

TEST_F(ServerTest, ClosesSilentClientsAndForgetsTheirHalfFrames) {
    world.network.NetworkKeepAliveInterval = 1500;  // seven whole seconds
    Connect(2);
    Slot(0).Arrive("\x07\0\0"s);
    for (int second = 0; second < 7; ++second) {
        time.Advance(1000);
        Send(1, Message::KeepAlive);
        world.slots.Supervise(1000);
    }
    EXPECT_TRUE(world.slots.IsConnected(0));
    time.Advance(1000);
    world.slots.Supervise(500);
    EXPECT_TRUE(world.slots.IsConnected(0));
    world.slots.Supervise(500);
    EXPECT_FALSE(world.slots.IsConnected(0));
    EXPECT_TRUE(world.slots.IsConnected(1));
    EXPECT_TRUE(world.HasLogged("silent 127.0.0.1"));
    EXPECT_FALSE(world.HasLogged("gone 127.0.0.1"));

    // The next client in the slot is not read behind what the last one has begun.
    Connect(1);
    Send(0, Message::ProtocolVersion);
    EXPECT_EQ(Sent(0), Numbers{23});
}

TEST_F(ServerTest, EndsPeersThatAnnounceTooMuchOrTakeNothing) {
    Connect(2);
    Slot(0).Arrive(FrameOf(Message::ProtocolVersion, {}) + "\x07\x04\0\0\x01"s);
    EXPECT_FALSE(world.slots.IsConnected(0));
    EXPECT_EQ(Sent(0), Numbers{23});
    EXPECT_TRUE(world.HasLogged("error 127.0.0.1 (frame too long)"));
    Connect(1);
    Send(0, Message::ProtocolVersion);
    EXPECT_EQ(Sent(0), Numbers{23});

    Slot(1).unsentBytes = (64u << 20) + 1;
    world.Raise("fire");
    EXPECT_FALSE(world.slots.IsConnected(1));
    EXPECT_EQ(Sent(0), Numbers{8});
}

TEST_F(ServerTest, SendsALargeStoreInPiecesThatTheClientTakes) {
    for (int i = 0; i < 3; ++i) world.Raise("event");
    Connect(2);
    Slot(0).unsentBytes = (16u << 20) + 1;
    Send(0, Message::AllEvents);
    EXPECT_EQ(Sent(0), Numbers{});
    world.store.RemoveAlarm(*world.store.Events().Find(world.store.Events().Next(0)));
    world.Raise("new");
    Send(1, Message::AllEvents);
    EXPECT_EQ(Sent(0), (Numbers{7, 8})) << "what happens meanwhile is told";
    EXPECT_EQ(Sent(1), (Numbers{7, 8, 6, 6, 6, 4})) << "and nobody else waits";
    Slot(0).CompleteSending();
    time.Advance(0);
    EXPECT_EQ(Sent(0), (Numbers{6, 6, 6, 4}));

    Slot(0).unsentBytes = (16u << 20) + 1;
    Send(0, Message::AllEvents);
    Slot(0).CloseByPeer();
    Slot(0).unsentBytes = 0;
    Connect(1);
    Slot(0).CompleteSending();
    time.Advance(0);
    EXPECT_EQ(Sent(0), Numbers{}) << "the next client has not asked";
}

// Each piece that left at once led to the next ones in the same turn: eight clients who asked for 100,000
// events held every line back for five seconds.
TEST_F(ServerTest, APieceThatHasLeftLeadsToNoMoreThanOneFurtherPieceATurn) {
    for (int i = 0; i < 1800; ++i) world.Raise("event");
    Connect(1);
    Send(0, Message::AllEvents);
    const std::size_t first = Sent(0).size();
    EXPECT_LE(first, 500u);
    for (int i = 0; i < 20; ++i) Slot(0).CompleteSending();
    EXPECT_EQ(Sent(0), Numbers{}) << "not before others have had their turn";
    time.Advance(0);
    EXPECT_EQ(first + Sent(0).size(), 1801u);
}

// 5,000 requests in 25 kB once held every line back for five seconds.
TEST_F(ServerTest, GivesAClientThatAsksForMuchNoMoreThanItsShareOfATurn) {
    constexpr std::size_t kEvents = 1200;
    for (std::size_t i = 0; i < kEvents; ++i) world.Raise("event");
    Connect(2);
    Text flood;
    for (int i = 0; i < 5000; ++i) flood += FrameOf(Message::AllEvents, {});
    Slot(0).Arrive(flood);
    EXPECT_LE(Sent(0).size(), 500u);
    Send(1, Message::ProtocolVersion);
    EXPECT_EQ(Sent(1), Numbers{23}) << "others are served at once";
    time.Advance(0);
    const Numbers sent = Sent(0);
    EXPECT_GE(std::ranges::count(sent, 6), static_cast<std::ptrdiff_t>(kEvents));
    EXPECT_LE(std::ranges::count(sent, 6), static_cast<std::ptrdiff_t>(kEvents * 100)) << "walks are joined";
    EXPECT_EQ(sent.back(), 4);
    Send(0, Message::ProtocolVersion);
    EXPECT_EQ(Sent(0), Numbers{23}) << "and goes on being served";
}

// An operator who ends two hundred alarms and goes home has ended all of them.
TEST_F(ServerTest, FinishesWhatAClientAskedBeforeItLeft) {
    Connect(1);
    Text changes;
    std::vector<cAlarm*> alarms;
    for (int i = 0; i < 200; ++i) {
        alarms.push_back(&world.Raise("fire"));
        cAlarm changed = *alarms.back();
        changed.m_Status = kStatusAcknowledged;
        changes += FrameOf(Message::OldEvent, EventPayload(changed));
    }
    Slot(0).Arrive(changes);
    Slot(0).CloseByPeer();
    time.Advance(0);
    for (const cAlarm* alarm : alarms) EXPECT_EQ(alarm->m_Status, kStatusAcknowledged);
    Connect(1);
    EXPECT_TRUE(world.slots.IsConnected(0)) << "the slot is free again";
}

TEST_F(ServerTest, ServesWhatArrivedWithTheClose) {
    cAlarm& alarm = world.Raise("fire");
    Connect(1);
    cAlarm changed = alarm;
    changed.m_Status = kStatusAcknowledged;
    const Text frame = FrameOf(Message::OldEvent, EventPayload(changed));
    Slot(0).Arrive(frame.substr(0, 9));
    Slot(0).Arrive(frame.substr(9));
    Slot(0).CloseByPeer();
    EXPECT_EQ(alarm.m_Status, kStatusAcknowledged);
}

TEST_F(ServerTest, TellsItsEndAndWaitsForTheLastByte) {
    Connect(2);
    time.After(30, [&] { Slot(0).CompleteSending(); });
    time.After(50, [&] { Slot(1).CompleteSending(); });
    const auto start = time.MonotonicMs();
    world.slots.Shutdown();
    EXPECT_EQ(Sent(1), Numbers{99});
    EXPECT_EQ(time.MonotonicMs() - start, 50);
    EXPECT_EQ(world.slots.ConnectedCount(), 0);
}

TEST_F(ServerTest, WritesAFewLinesForAFlood) {
    for (int i = 0; i < 5000; ++i) CallFrom("10.0.0.1");
    CallFrom("10.0.0.2");
    EXPECT_EQ(world.logged.size(), PeerLog::kMostLines + 1u);
    time.Advance(60'000);
    CallFrom("10.0.0.1");
    EXPECT_EQ(world.logged.back(), "notallowed 10.0.0.1 (+4940)");
}

TEST_F(ServerTest, WritesItsTraffic) {
    world.traffic.Configure(true, Role::Server);
    Connect(1);
    Send(0, Message::ProtocolVersion);
    EXPECT_EQ(world.folder.Read("LogFiles\\Traffic_2024-03-05.LOG"),
              "24-03-05 07:08:09  <- 00000 NETWORK_PROTOCOLVERSION\r\n"
              "24-03-05 07:08:09  -> 00004 NETWORK_PROTOCOLVERSION\r\n");
}

}  // namespace
}  // namespace nordkeep
