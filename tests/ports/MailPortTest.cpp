#include "tests/ports/PortWorld.h"

#include <gtest/gtest.h>

namespace nordkeep {
namespace {

class MailPortTest : public PortWorld {
 protected:
    MailPortTest() {
        folder.MakeFolders("LogFiles");
        language.LoadFrom(
            "1041=Opened\n1154=No contact \n1155=Refused \n1157=Dropped \n1158= to \n1159= about \n"
            "3630=Rule \n");
    }

    void MakePort(const Text& type, const Text& more) {
        folder.Write("Settings\\Port1.ini",
                     "[General]\r\nMessageFormat=11\r\nPortType=" + type + "\r\n" + more + "\r\n");
        ports.Discover(parts);
        Tick();
    }
    void Tick() {
        time.Advance(1000);
        ports.Tick(1000, conditions);
    }
    FakeWinsock& Socket(std::size_t number) { return sockets.At(number); }
    /// Bytes arrive on a socket; what is answered to them, when everything is stored.
    Text Answer(FakeWinsock& socket, TextView bytes) {
        socket.sent.clear();
        socket.Arrive(bytes);
        time.Pump();
        while (commitsWaiting) {
            commitsWaiting = false;
            commit.Commit();
            time.Pump();
        }
        return socket.sent;
    }

    bool commitsWaiting = false;
    EventCommit commit{disk, [this] { commitsWaiting = true; }};
    PortParts parts = PartsWith(commit);
};

class Pop3PortTest : public MailPortTest {
 protected:
    Pop3PortTest() {
        MakePort("POP3",
                 "PortSetting=mail.example\r\nPortNumber=110\r\nPOP3User=u\r\nPOP3Password=p\r\n"
                 "POP3Interval=3000\r\nPOP3ConnectionTimeout=5000\r\nPOP3MaxMessages=2");
    }
    FakeWinsock& Server() { return Socket(0); }
    void Connect() {
        for (int i = 0; i < 10 && Server().state != SocketState::Connecting; ++i) Tick();
        ASSERT_EQ(Server().state, SocketState::Connecting);
        Server().Establish();
    }
};

TEST_F(Pop3PortTest, FetchesAndDeletesWhatIsStored) {
    EXPECT_EQ(LinesWith("Opened: 'Port1' (POP3 server = mail.example:110,"), 1u);
    Connect();
    EXPECT_EQ(Server().localPort, 0);
    EXPECT_EQ(Answer(Server(), "hello\r\n+OK ready\r\n"), "USER u\r\n");
    EXPECT_EQ(Answer(Server(), "+OK\r\n"), "PASS p\r\n");
    EXPECT_EQ(Answer(Server(), "+OK\r\n"), "LIST\r\n");
    EXPECT_EQ(Answer(Server(), "+OK 3 messages\r\n3 120\r\n-x\r\n7 80\r\n8 80\r\n.\r\n"), "RETR 3\r\n");
    EXPECT_EQ(Answer(Server(), "+OK\r\nSubject: S\r\n\r\n..1\r\n+2\r\n-3\r\n"), "");
    EXPECT_TRUE(intake.events.empty());
    EXPECT_EQ(Answer(Server(), ".\r\n"), "DELE 3\r\n");
    ASSERT_EQ(intake.events.size(), 1u);
    EXPECT_EQ(intake.events[0].ExtraText, ".1");
    EXPECT_EQ(Answer(Server(), "-ERR locked\r\n"), "RETR 7\r\n");
    EXPECT_EQ(Answer(Server(), "-ERR gone\r\n"), "QUIT\r\n") << "two messages a session";
    EXPECT_EQ(Answer(Server(), "+OK\r\n"), "");
    EXPECT_EQ(Server().state, SocketState::Closed);
}

TEST_F(Pop3PortTest, LeavesOnTheServerWhatIsNotStored) {
    intake.during = [this] { commit.NoteFailure(); };
    Connect();
    EXPECT_EQ(Answer(Server(), "+1\n+2\n+3\n+4\n1 9\n2 9\n.\n+OK\n\n1234 a\n.\n"),
              "USER u\r\nPASS p\r\nLIST\r\nRETR 1\r\nRETR 2\r\n");
    EXPECT_EQ(intake.events.size(), 1u);
}

TEST_F(Pop3PortTest, GivesTheSameEventsHoweverTheBytesAreCut) {
    const Text whole =
        "+1\r\n+2\r\n+3\r\n+4\r\n1 9\r\n2 9\r\n.\r\n+5\r\nSubject: a\r\n\r\n1 a\r\n..\r\n.\r\n"
        "+6\r\n+7\r\n\r\n2 b\r\n.\r\n+8\r\n+9\r\n";
    for (std::size_t cut = 0; cut < whole.size(); ++cut) {
        intake.events.clear();
        Connect();
        Text sent = Answer(Server(), whole.substr(0, cut));
        sent += Answer(Server(), whole.substr(cut));
        EXPECT_EQ(sent, "USER u\r\nPASS p\r\nLIST\r\nRETR 1\r\nDELE 1\r\nRETR 2\r\nDELE 2\r\nQUIT\r\n")
            << cut;
        ASSERT_EQ(intake.events.size(), 2u) << cut;
        EXPECT_EQ(intake.events[1].DefaultAlarmCode + intake.events[1].ExtraText, "2b");
        EXPECT_EQ(Server().state, SocketState::Closed);
    }
}

TEST_F(Pop3PortTest, GivesUpAStalledSessionAndTellsAFailureOnce) {
    Connect();
    Answer(Server(), "+OK\r\n");
    for (int i = 0; i < 5; ++i) Tick();
    EXPECT_EQ(Server().state, SocketState::Connected);
    Tick();
    EXPECT_EQ(Server().state, SocketState::Closed);
    for (int i = 0; i < 2; ++i) {
        Connect();
        EXPECT_EQ(Answer(Server(), "+OK\r\n+OK\r\n-ERR\r\n"), "USER u\r\nPASS p\r\nQUIT\r\n");
        Server().CloseByPeer();
    }
    EXPECT_EQ(LinesWith("Refused Port1: Port1"), 1u);
    for (int i = 0; i < 2; ++i) {
        Connect();
        Server().Break("it is dark");
        EXPECT_EQ(Server().state, SocketState::Closed);
    }
    EXPECT_EQ(LinesWith("No contact mail.example:110 it is dark"), 1u);
}

TEST_F(Pop3PortTest, KeepsAMegabyteOfAMailAndFetchesNothingWhileMuted) {
    Connect();
    Answer(Server(), "+1\n+2\n+3\n+4\n1 9\n.\n+5\n\n");
    for (int i = 0; i < 40; ++i) Answer(Server(), Text(65536, 'x') + "\n");
    EXPECT_EQ(Answer(Server(), ".\n"), "DELE 1\r\n");
    ASSERT_EQ(intake.events.size(), 1u);
    Answer(Server(), "+6\n+7\n");
    conditions.mutedPort = "Port1";
    for (int i = 0; i < 9; ++i) Tick();
    EXPECT_EQ(Server().state, SocketState::Closed);
}

TEST_F(MailPortTest, TellsWhetherTheConnectionIsEncrypted) {
    struct Case {
        const char* settings;
        bool isOn;
    };
    for (const Case& c : {Case{"PortNumber=995", true}, Case{"PortNumber=995\r\nPOP3TLS=0", false},
                          Case{"PortNumber=110\r\nPOP3TLS=1\r\nMailParsingRule=2", true}}) {
        ports = PortList();
        MakePort("POP3", "PortSetting=h\r\nPOP3Interval=0\r\n" + Text(c.settings));
        Tick();
        EXPECT_EQ(sockets.Last().tls.isOn, c.isOn) << c.settings;
    }
    EXPECT_EQ(LinesWith("Rule Port1 (MailParsingRule=2)"), 1u);
}

class SmtpPortTest : public MailPortTest {
 protected:
    SmtpPortTest() { MakePort("SMTP", "PortNumber=25\r\nSubjectFilter=L*\r\nSMTPWelcomeMessage=Hi"); }
    FakeWinsock& Slot(std::size_t number) { return Socket(1 + number); }
    FakeWinsock& Call() {
        Socket(0).CallIn();
        for (std::size_t i = 0; i + 1 < sockets.made.size(); ++i) {
            if (Slot(i).sent == "220 Hi\r\n") return Slot(i);
        }
        return Slot(0);
    }
};

TEST_F(SmtpPortTest, AnswersAsAMailServerDoes) {
    EXPECT_EQ(LinesWith("Opened: 'Port1' (SMTP port = 25,"), 1u);
    FakeWinsock& caller = Call();
    struct Case {
        Text line;
        Text answer;
    };
    const Case cases[] = {
        {"ehlo me", "250-Nordkeep\r\n250-SIZE 1048576\r\n250 8BITMIME\r\n"},
        {"RCPT TO:<a@b>", "503"},
        {"DATA", "503"},
        {"", "500"},
        {"STARTTLS", "502"},
        {"MAIL FROM:<a@b> BODY=8BITMIME SIZE=1048577", "552"},
        {"MAIL FROM", "500"},
        {"mail from: <> SIZE=1048576", "250"},
        {"MAIL FROM:<a@b>", "503"},
        {"DATA", "503"},
        {"RCPT TO:<>", "250"},
        {"RSET", "250"},
        {"VRFY x", "252"},
        {"noop", "250"},
        {Text(1001, 'x'), "500"},
        {Text(5000, 'x'), "500"},
        {"MAIL FROM:a@b", "250"},
        {"RCPT TO:<c@d>", "250"},
        {"DATA", "354"},
        {"From: me\r\nSubject: Larm\r\n\r\n1234 Hall\r\n..\r\n.", "250"},
        {"DATA", "503"},
        {"HELO me", "250 Nordkeep\r\n"},
        {"QUIT", "221"},
    };
    for (const Case& c : cases) {
        const Text answer = Answer(caller, c.line + "\r\n");
        EXPECT_EQ(answer.substr(0, c.answer.size()), c.answer) << c.line.substr(0, 60);
        EXPECT_TRUE(answer.ends_with("\r\n"));
    }
    EXPECT_EQ(caller.state, SocketState::Closed);
    ASSERT_EQ(intake.events.size(), 1u);
    EXPECT_EQ(intake.events[0].DefaultAlarmCode, "1234");
    EXPECT_EQ(intake.events[0].Originator, "me");
}

constexpr const char* kMail =
    "MAIL FROM:<e@f>\r\nRCPT TO:<a>\r\nRCPT TO:<b>\r\nDATA\r\nSubject: Larm\r\n\r\n1234 Hall\r\n.\r\n";

/// The codes of replies.
Text Codes(const Text& replies) {
    Text codes;
    for (const TextView line : Lines(replies)) {
        codes += (codes.empty() ? "" : " ") + Text(line.substr(0, 3));
    }
    return codes;
}

TEST_F(SmtpPortTest, TakesPipelinedMailsHoweverTheBytesAreCut) {
    const Text whole = Text(kMail) + kMail + "QUIT\r\n";
    for (std::size_t cut = 0; cut < whole.size(); ++cut) {
        intake.events.clear();
        FakeWinsock& caller = Call();
        Text replies = Answer(caller, whole.substr(0, cut));
        replies += Answer(caller, whole.substr(cut));
        EXPECT_EQ(Codes(replies), "250 250 250 354 250 250 250 250 354 250 221") << cut;
        ASSERT_EQ(intake.events.size(), 2u) << cut;
        EXPECT_EQ(intake.events[0].Originator, "e@f");
    }
}

TEST_F(SmtpPortTest, AcceptsOnlyWhatIsStored) {
    FakeWinsock& caller = Call();
    caller.sent.clear();
    caller.Arrive(kMail);
    time.Pump();
    EXPECT_EQ(Codes(caller.sent), "250 250 250 354") << "not before the event is safe";
    EXPECT_EQ(Codes(Answer(caller, "")), "250");
    intake.during = [this] { commit.NoteFailure(); };
    EXPECT_EQ(Codes(Answer(caller, kMail)), "250 250 250 354 451");
    EXPECT_EQ(Codes(Answer(caller, ReplaceAll(kMail, "Larm", "Hej"))), "250 250 250 354 250") << "filtered";
    EXPECT_EQ(LinesWith("Dropped  to  about Hej"), 1u);
    EXPECT_EQ(intake.events.size(), 2u);
}

TEST_F(SmtpPortTest, RefusesWhatIsTooMuch) {
    FakeWinsock& caller = Call();
    Text many = "MAIL FROM:<a>\r\n";
    for (int i = 0; i < 101; ++i) many += "RCPT TO:<a>\r\n";
    EXPECT_TRUE(Codes(Answer(caller, many)).ends_with("250 452"));
    Answer(caller, "DATA\r\nSubject: L\r\n\r\n");
    for (int i = 0; i < 40; ++i) Answer(caller, Text(32768, 'x') + (i % 8 ? "" : "\n"));
    EXPECT_EQ(Codes(Answer(caller, "\r\n.\r\n")), "552");
    EXPECT_TRUE(intake.events.empty());
    Text errors;
    for (int i = 0; i < 25; ++i) errors += "FOO\r\n";
    EXPECT_TRUE(Codes(Answer(caller, errors)).ends_with("502 421"));
    EXPECT_EQ(caller.state, SocketState::Closed);
}

TEST_F(SmtpPortTest, PushesOffTheIdlestCallerAndTheSilentOnes) {
    for (std::size_t i = 0; i < 8; ++i) {
        Call().sent.clear();
        time.Advance(10);
    }
    Answer(Slot(0), "NOOP\r\n");
    Slot(1).sent.clear();
    Socket(0).CallIn();
    EXPECT_EQ(Codes(Slot(1).sent), "421 220");
    EXPECT_EQ(Slot(1).state, SocketState::Connected);
    for (int i = 0; i < 61; ++i) {
        if (i % 20 == 0) Answer(Slot(2), "NOOP\r\n");
        Slot(3).Arrive("x");
        Tick();
    }
    EXPECT_EQ(Slot(2).state, SocketState::Connected);
    EXPECT_EQ(Slot(3).state, SocketState::Closed);
    EXPECT_TRUE(Slot(3).sent.ends_with("421 Too long without a line\r\n"));
    ports.CloseAll();
    EXPECT_EQ(Slot(2).state, SocketState::Closed);
    EXPECT_EQ(Socket(0).state, SocketState::Closed);
}

}  // namespace
}  // namespace nordkeep
