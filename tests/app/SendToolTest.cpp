#include "tests/app/ground/RunningCopy.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>

namespace nordkeep {
namespace {

/// nordkeep-send against the ports of a running copy.
class SendToolTest : public ::testing::Test {
 protected:
    SendToolTest() { copy.WriteMainSettings(); }

    /// The words behind the program's name; its exit status.
    int Send(const std::string& words) const {
        const std::string command = std::string(NORDKEEP_BIN_DIR) + "/nordkeep-send --timeout 20000 " +
                                    words + " >" + copy.Data().Path() + "/sent.txt 2>&1";
        const int status = std::system(command.c_str());
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
    std::string Sent() const { return copy.Data().Read("sent.txt"); }
    bool HasEvents(std::size_t count) const {
        return WaitFor([&] { return copy.EventFiles().size() >= count; });
    }

    int port = FreePort();
    RunningCopy copy{};
};

TEST_F(SendToolTest, SpeaksTheSmallXmlFormats) {
    const int aptus = FreePort();
    copy.AddPort("Port1", "PortType=TCPS\r\nMessageFormat=6\r\nPortNumber=" + std::to_string(port));
    copy.AddPort("Port2", "PortType=TCPS\r\nMessageFormat=7\r\nPortNumber=" + std::to_string(aptus));
    copy.Start();
    EXPECT_EQ(Send("--format sosmini --count 3 tcp:127.0.0.1:" + std::to_string(port)), 0) << Sent();
    EXPECT_EQ(Send("--format aptus --slow 1 tcp:127.0.0.1:" + std::to_string(aptus)), 0) << Sent();
    EXPECT_EQ(copy.EventFiles().size(), 4u);
}

TEST_F(SendToolTest, SendsMailsTogetherAndBreaksOneOff) {
    const std::string target = " smtp:127.0.0.1:" + std::to_string(port);
    copy.AddPort("Port1", "PortType=SMTP\r\nMessageFormat=11\r\nPortNumber=" + std::to_string(port));
    copy.Start();
    EXPECT_EQ(Send("--format mail --text Larm --count 4 --glue 2 --number-codes" + target), 0) << Sent();
    EXPECT_EQ(copy.EventFiles().size(), 4u);
    EXPECT_EQ(Send("--format mail --cut" + target), 1) << Sent();
    EXPECT_EQ(Send("--format mail" + target), 0) << Sent();
    EXPECT_EQ(copy.EventFiles().size(), 5u);
}

TEST_F(SendToolTest, DropsFilesOfBothKinds) {
    copy.Data().MakeFolders("a");
    copy.Data().MakeFolders("b");
    copy.AddPort("Port1", "PortType=FILE\r\nMessageFormat=12\r\nPortSetting=a\\in.txt");
    copy.AddPort("Port2", "PortType=FILE\r\nMessageFormat=8\r\nPortSetting=b\\in.txt");
    copy.Start();
    const std::string path = "file:" + copy.Data().Path();
    EXPECT_EQ(Send("--format file --count 4 --glue 3 --number-codes " + path + "/a/in.txt"), 0) << Sent();
    EXPECT_EQ(Send("--format confirmation --text Done " + path + "/b/in.txt"), 0) << Sent();
    EXPECT_TRUE(HasEvents(5)) << copy.Output();
}

TEST_F(SendToolTest, AnswersAPortThatPolls) {
    copy.AddPort("Port1",
                 "PortType=HTTP\r\nMessageFormat=10\r\nHTTPGetInterval&=0\r\nPortSetting=127.0.0.1:" +
                     std::to_string(port) + "\r\n[VirtualReceivers]\r\n77=x,Harbour");
    copy.Start();
    EXPECT_EQ(Send("--format virtualreceiver --wrong-check --count 1 listen:" + std::to_string(port)), 0)
        << Sent();
    EXPECT_EQ(Send("--format virtualreceiver --count 5 --glue 2 --number-codes --text T listen:" +
                   std::to_string(port)),
              0)
        << Sent();
    EXPECT_EQ(copy.EventFiles().size(), 5u) << "they are confirmed, so they are stored";
}

TEST_F(SendToolTest, IsAModem) {
    const std::string log = copy.Data().Path() + "/modem.txt";
    const std::string program = std::string(NORDKEEP_BIN_DIR) + "/nordkeep-send";
    const int tool = ::fork();
    if (tool == 0) {
        if (std::freopen(log.c_str(), "w", stdout) == nullptr) ::_exit(127);
        ::execl(program.c_str(), "nordkeep-send", "--format", "gsm", "--count", "12", "--number-codes",
                "--call", "0701", "--text", "Larm", "pty", nullptr);
        ::_exit(127);
    }
    const auto device = [&] {
        const std::string said = copy.Data().Read("modem.txt");
        const std::size_t start = said.find("/dev/");
        return said.find('\n') == std::string::npos ? "" : said.substr(start, said.find('\n') - start);
    };
    ASSERT_TRUE(WaitFor([&] { return !device().empty(); }));
    copy.WriteMainSettings("[SerialPorts]\r\nCOM1=" + device());
    copy.AddPort("Port1",
                 "PortType=RS232\r\nPortNumber=1\r\nMessageFormat=3\r\nPollInterval=1\r\n"
                 "PauseBetweenEachPoll=1");
    copy.Start();
    int status = -1;
    EXPECT_EQ(::waitpid(tool, &status, 0), tool);
    EXPECT_EQ(status, 0) << copy.Data().Read("modem.txt");
    EXPECT_EQ(copy.EventFiles().size(), 13u) << copy.Output();
}

TEST_F(SendToolTest, PlaysATrafficFileToAPortAgain) {
    copy.AddPort("Port1", "PortType=TCPS\r\nMessageFormat=0\r\nPortDescription=Night\r\nPortNumber=" +
                              std::to_string(port));
    copy.WriteMainSettings("ContinousDebugToFile=1\r\n");
    copy.Start();
    const std::string target = " tcp:127.0.0.1:" + std::to_string(port);
    EXPECT_EQ(Send("--count 3 --number-codes" + target), 0) << Sent();
    EXPECT_EQ(copy.EventFiles().size(), 3u);
    copy.Stop();
    const std::string file = "--replay " + copy.Data().Path() + "/LogFiles/*.DBG --fast";
    copy.Start();
    EXPECT_EQ(Send(file + " --port night" + target), 0) << Sent();
    EXPECT_NE(Sent().find("sent 3, answered 3 of 3"), std::string::npos) << Sent();
    EXPECT_EQ(copy.EventFiles().size(), 6u);
    EXPECT_EQ(Send(file + " --port other" + target), 2) << Sent();
}

TEST_F(SendToolTest, EndsWithAStatusThatTellsWhatWasWrong) {
    const std::string target = " tcp:127.0.0.1:" + std::to_string(port);
    EXPECT_EQ(Send("--nosuch" + target), 2);
    EXPECT_NE(Sent().find("--nosuch"), Text::npos) << Sent();
    EXPECT_EQ(Send("--format nosuch" + target), 2);
    EXPECT_NE(Sent().find("nosuch"), Text::npos) << Sent();
    EXPECT_EQ(Send("--count"), 2);
    EXPECT_EQ(Send("tcp"), 2);
    EXPECT_EQ(Send(target), 3) << Sent();
    // A port of a format that the tool does not speak says nothing to it.
    copy.AddPort("Port1", "PortType=TCPS\r\nMessageFormat=6\r\nPortNumber=" + std::to_string(port));
    copy.Start();
    EXPECT_EQ(Send("--timeout 300" + target), 4) << Sent();
    EXPECT_EQ(Send("--version"), 0);
    EXPECT_EQ(Sent(), "nordkeep-send " NORDKEEP_VERSION "\n");
}

}  // namespace
}  // namespace nordkeep
