#include "store/EventFile.h"
#include "tests/app/ground/MailServer.h"
#include "tests/app/ground/Needs.h"
#include "tests/app/ground/RunningCopy.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <set>

namespace nordkeep {
namespace {

class MailTest : public ::testing::Test {
 protected:
    MailTest() { copy.WriteMainSettings(); }

    void AddPort(const std::string& name, const std::string& lines) const {
        copy.AddPort(name, "MessageFormat=11\r\n" + lines);
    }
    /// "sender code|text" of the stored events.
    std::multiset<Text> Events() const {
        std::multiset<Text> events;
        for (const Text& file : copy.EventFiles()) {
            cAlarm alarm;
            if (!ReadFromDisk(copy.Data().Read(file), 1, alarm)) continue;
            EXPECT_EQ(alarm.m_ProtocolType, "Mail");
            events.insert(alarm.m_Originator + " " + alarm.m_AlarmCode + "|" + alarm.m_ExtraText);
        }
        return events;
    }

    RunningCopy copy{};
};

std::string Pop3Lines(int port, const std::string& more) {
    return "PortType=POP3\r\nPortSetting=localhost\r\nPOP3Interval=0\r\nPOP3User=u\r\nPOP3Password=secret\r\n"
           "PortNumber=" +
           std::to_string(port) + "\r\n" + more;
}

constexpr const char* kQuoted =
    "From: =?utf-8?Q?J=C3=B6rgen?= <j@example.com>\r\nSubject: a\r\nContent-Type: text/plain; "
    "charset=utf-8\r\n"
    "Content-Transfer-Encoding: quoted-printable\r\n\r\n1001 Br=C3=A5nd\r\n";

TEST_F(MailTest, FetchesFromARealServerAndDeletesWhatIsStored) {
    NORDKEEP_NEEDS("dovecot", "Dovecot");
    const MailServer server;
    server.Deliver("1", kQuoted);
    server.Deliver("2", "From: b\n\n.1002 with a dot\n..\n.\n+OK\n");
    std::string large = "From: c\n\n1003 large\n";
    for (int i = 0; i < 20'000; ++i)
        large += "+a line of sixty-four bytes and so on, until it is long enough.\n";
    server.Deliver("3", large);
    AddPort("Port1", Pop3Lines(server.PlainPort(), "POP3MaxMessages=2"));
    copy.Start();
    EXPECT_TRUE(WaitFor([&] { return server.WaitingMails() == 0; })) << copy.Output() << server.Log();
    EXPECT_EQ(Events(), (std::multiset<Text>{"J\xF6rgen <j@example.com> 1001|Br\xE5nd", "b |.1002 with a dot",
                                             "c 1003|large"}));
    EXPECT_EQ(copy.Stop(), 0);
}

TEST_F(MailTest, FetchesEncryptedFromAServerThatProvesWhoItIs) {
    NORDKEEP_NEEDS("dovecot", "Dovecot");
    const MailServer server;
    server.Deliver("1", kQuoted);
    AddPort("Port1", Pop3Lines(server.TlsPort(), "POP3TLS=1"));
    copy.Start();
    EXPECT_TRUE(
        copy.WaitForOutput("Could not connect to mail server localhost:" + std::to_string(server.TlsPort())));
    EXPECT_EQ(server.WaitingMails(), 1u);
    EXPECT_EQ(copy.Stop(), 0);
    AddPort("Port1", Pop3Lines(server.TlsPort(), "POP3TLS=1\r\nPOP3CAFile=" + server.CertificateFile()));
    copy.Start();
    EXPECT_TRUE(WaitFor([&] { return server.WaitingMails() == 0; })) << copy.Output() << server.Log();
    EXPECT_EQ(Events().size(), 1u);
    EXPECT_EQ(copy.Stop(), 0);
}

TEST_F(MailTest, ReadsMailsOfManyKinds) {
    const int port = FreePort();
    AddPort("Port1", "PortType=SMTP\r\nPortNumber=" + std::to_string(port));
    copy.Start();
    const std::string command = "python3 " NORDKEEP_SOURCE_DIR "/tests/data/mail_corpus.py " +
                                std::to_string(port) + " >" + copy.Data().Path() + "/taken 2>&1";
    EXPECT_EQ(std::system(command.c_str()), 0) << copy.Data().Read("taken");
    EXPECT_EQ(copy.Data().Read("taken"), "23\n");
    std::multiset<Text> told;
    for (const Text& event : Events()) told.insert(event.substr(event.find('|') + 1));
    EXPECT_EQ(told.count("\xC5ska i hallen"), 23u) << ::testing::PrintToString(told);
}

TEST_F(MailTest, TakesMailFromCommonSenders) {
    NORDKEEP_NEEDS("swaks", "swaks");
    const std::string port = std::to_string(FreePort());
    AddPort("Port1", "PortType=SMTP\r\nPortNumber=" + port + "\r\nSMTPWelcomeMessage=Alarm centre");
    copy.Start();
    copy.Data().Write("mail.txt", "From: c@d\r\nSubject: s\r\n\r\n1002 Curl\r\n");
    const std::string script =
        "import smtplib, email.message\n"
        "m = email.message.EmailMessage()\n"
        "m['From'], m['To'], m['Subject'] = 'J\\xf6rgen <e@f>', 'g@h', 'Br\\xe5nd'\n"
        "m.set_content('1003 P\\xe5 vinden\\nmore')\n"
        "m.add_alternative('<b>1003</b>', subtype='html')\n"
        "s = smtplib.SMTP('127.0.0.1', " +
        port + ")\ns.send_message(m)\ns.send_message(m)\ns.quit()\n";
    copy.Data().Write("send.py", script);
    const std::string in = "cd " + copy.Data().Path() + " && ";
    const std::string swaks =
        in + "swaks --server 127.0.0.1:" + port + " --from a@b --to x@y --body '1001 Swaks' >swaks.txt 2>&1";
    const std::string curl = in + "curl -s smtp://127.0.0.1:" + port +
                             " --mail-from c@d --mail-rcpt x@y --mail-rcpt z@y -T mail.txt >curl.txt 2>&1";
    const std::string python = in + "python3 send.py >python.txt 2>&1";
    EXPECT_EQ(std::system(swaks.c_str()), 0) << copy.Data().Read("swaks.txt");
    EXPECT_EQ(std::system(curl.c_str()), 0) << copy.Data().Read("curl.txt");
    EXPECT_EQ(std::system(python.c_str()), 0) << copy.Data().Read("python.txt");
    EXPECT_EQ(Events(),
              (std::multiset<Text>{"a@b 1001|Swaks", "c@d 1002|Curl", "J\xF6rgen <e@f> 1003|P\xE5 vinden",
                                   "J\xF6rgen <e@f> 1003|P\xE5 vinden"}));
    EXPECT_EQ(copy.Stop(), 0);
}

}  // namespace
}  // namespace nordkeep
