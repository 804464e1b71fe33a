#include "ports/Dc09Check.h"
#include "ports/dc09/Dc09Frame.h"
#include "tests/ports/PortWorld.h"

namespace nordkeep {
namespace {

Text Frame(const Text& content) {
    return MakeDc09Frame(content, Dc09Check::Digits);
}

Text Burglary(const Text& account, const Text& sequence = "0001") {
    return Frame("\"SIA-DCS\"" + sequence + "#" + account + "[#" + account + "|Nri1/BA01]");
}

Text Ack(const Text& account, const Text& sequence = "0001") {
    return Frame("\"ACK\"" + sequence + "#" + account + "[]");
}

/// A port of format 109.
class Dc09PortTest : public PortWorld {
 protected:
    void Open(const Text& type, const Text& more = {}) {
        folder.MakeFolders("LogFiles");
        folder.Write("Settings\\Port1.ini",
                     "[General]\r\nMessageFormat=109\r\nPortNumber=4001\r\nPortType=" + type + "\r\n" + more);
        ports.Discover(parts);
        Tick();
    }
    void Tick() {
        time.Advance(1000);
        ports.Tick(1000, conditions);
        commit.Commit();
    }
    FakeWinsock& Connect() {
        Open("TCPS");
        sockets.At(0).CallIn();
        return sockets.At(1);
    }
};

TEST_F(Dc09PortTest, AcknowledgesNeitherAMessageNorItsRepeatBeforeItIsStored) {
    FakeWinsock& caller = Connect();
    caller.Arrive(Burglary("1234") + Burglary("1234"));
    EXPECT_EQ(intake.events.size(), 1u);
    EXPECT_EQ(caller.sent, "");
    commit.Commit();
    EXPECT_EQ(caller.sent, Ack("1234") + Ack("1234"));
}

TEST_F(Dc09PortTest, TakesAMessageAnewThatCouldNotBeStored) {
    FakeWinsock& caller = Connect();
    intake.during = [this] {
        if (intake.events.size() == 1) commit.NoteFailure();
    };
    caller.Arrive(Burglary("1234") + Burglary("1234") + Burglary("5678"));
    commit.Commit();
    EXPECT_EQ(caller.sent, Ack("5678")) << "the repeat of what is lost is not acknowledged either";
    caller.Arrive(Burglary("1234"));
    commit.Commit();
    EXPECT_EQ(intake.events.size(), 3u);
    EXPECT_EQ(caller.sent, Ack("5678") + Ack("1234"));
}

TEST_F(Dc09PortTest, KnowsARepeatThatComesOverAnotherConnection) {
    FakeWinsock& caller = Connect();
    caller.Arrive(Burglary("1234"));
    caller.CloseByPeer();
    sockets.At(0).CallIn();
    caller.Arrive(Burglary("1234"));
    EXPECT_EQ(caller.sent, "") << "what the one before has sent is still on its way to the disk";
    commit.Commit();
    EXPECT_EQ(intake.events.size(), 1u);
    EXPECT_EQ(caller.sent, Ack("1234"));
}

TEST_F(Dc09PortTest, AnswersEachDatagramToItsOwnSender) {
    Open("UDP");
    FakeWinsock& socket = sockets.At(0);
    const SocketPeer first{"192.0.2.1", 5001};
    const SocketPeer second{"192.0.2.2", 5002};
    socket.Arrive(Burglary("1234"), first);
    socket.Arrive(Burglary("5678"), second);
    socket.Arrive(Frame("\"NULL\"0002#5678[]"), second);
    commit.Commit();
    EXPECT_EQ(socket.sends, (std::vector<Text>{Ack("1234"), Ack("5678") + Ack("5678", "0002")}));
    EXPECT_EQ(socket.sentTo, (std::vector<SocketPeer>{first, second}));
}

TEST_F(Dc09PortTest, IsNotDisturbedByHalfADatagramOfAnotherSender) {
    Open("UDP");
    FakeWinsock& socket = sockets.At(0);
    socket.Arrive(Burglary("1234").substr(0, 30), {"192.0.2.1", 5001});
    socket.Arrive(Burglary("5678"), {"192.0.2.2", 5002});
    commit.Commit();
    EXPECT_EQ(socket.sent, Ack("5678"));
}

TEST_F(Dc09PortTest, ALinkTestIsASignOfLifeOfTheObjectAsItReports) {
    FakeWinsock& caller = Connect();
    caller.Arrive(Frame("\"NULL\"0001#1234[]"));
    ASSERT_EQ(intake.signs.size(), 2u) << "it has not reported yet";
    EXPECT_EQ(intake.signs[0].ObjectID, "001234");
    EXPECT_EQ(intake.signs[1].DefaultAlarmCode, "123418160200000");
    EXPECT_TRUE(intake.signs[0].PortObject);
    caller.Arrive(Burglary("1234", "0002") + Frame("\"NULL\"0003#1234[]"));
    ASSERT_EQ(intake.signs.size(), 3u);
    EXPECT_EQ(intake.signs[2].TranslationNumberToUse, Protocol::SIA);
}

TEST_F(Dc09PortTest, DoesNotCountTheTimeInWhichItIsClosed) {
    Open("TCPS", "[DC09Accounts]\r\n1234=,60\r\n");
    for (int i = 0; i < 50; ++i) Tick();
    conditions.arePortsDisabled = true;
    for (int i = 0; i < 100; ++i) Tick();
    conditions.arePortsDisabled = false;
    for (int i = 0; i < 5; ++i) Tick();
    EXPECT_EQ(intake.events.size(), 0u);
    for (int i = 0; i < 10; ++i) Tick();
    ASSERT_EQ(intake.events.size(), 1u);
    EXPECT_EQ(intake.events[0].DefaultAlarmCode, "YC");
    EXPECT_FALSE(intake.events[0].IsSignOfLife);
}

TEST_F(Dc09PortTest, TellsItsAccountsWithTheirLastMessage) {
    Open("TCPS", "[DC09Accounts]\r\n1234=,60\r\n99=,0\r\n");
    sockets.At(0).CallIn();
    FakeWinsock& caller = sockets.At(1);
    caller.Arrive(Frame("\"NULL\"0001#1234[]") + Frame("\"NULL\"0001#AB[]"));
    const OleDate heard = time.Now();
    for (int i = 0; i < 70; ++i) Tick();
    const std::vector<LineAccount> accounts = ports.Ports().at(0)->Accounts();
    ASSERT_EQ(accounts.size(), 3u) << "the named ones and those who have sent something";
    EXPECT_EQ(accounts[0].name, "1234");
    EXPECT_EQ(accounts[0].lastMessage, heard);
    EXPECT_TRUE(accounts[0].isSilent);
    EXPECT_EQ(accounts[1].name, "99");
    EXPECT_TRUE(accounts[1].lastMessage.IsNever());
    EXPECT_EQ(accounts[2].name, "AB");
    EXPECT_FALSE(accounts[2].isSilent);
}

TEST_F(Dc09PortTest, TellsTheSilentOnesOfManyAccountsFirst) {
    Text accounts = "[DC09Accounts]\r\n";
    for (int i = 1000; i < 2000; ++i) accounts += std::to_string(i) + (i < 1999 ? "=,0\r\n" : "=,60\r\n");
    Open("TCPS", accounts);
    for (int i = 0; i < 70; ++i) Tick();
    const std::vector<LineAccount> told = ports.AccountsOf("Port1");
    ASSERT_EQ(told.size(), 500u) << "more than that nobody reads";
    EXPECT_EQ(told[0].name, "1999");
    EXPECT_EQ(told[1].name, "1000");
    EXPECT_TRUE(ports.AccountsOf("Port2").empty());
}

TEST_F(Dc09PortTest, NeverRepeatsTheKeyOfAnAccountInAFinding) {
    language.LoadFrom("5324=%1 %2 %3\n");
    const Text key(30, 'A');
    Findings all(language);
    FileFindings findings(all, "Port1.ini");
    CheckDc09Accounts(IniLines("[DC09Accounts]\r\n1234=" + key + "\r\n77=,x\r\n*=,60\r\n"), findings);
    ASSERT_EQ(all.Count(), 2u);
    EXPECT_EQ(all.All()[0].line, 2);
    EXPECT_EQ(all.All()[0].sentence.find(key), Text::npos) << all.All()[0].sentence;
}

}  // namespace
}  // namespace nordkeep
