#include "tests/app/ground/Listener.h"
#include "tests/app/ground/RunningCopy.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <thread>

namespace nordkeep {
namespace {

using Clock = std::chrono::steady_clock;

/// Runs a program until the end of the scope.
class Background {
 public:
    explicit Background(std::vector<std::string> words) : pid_(fork()) {
        if (pid_ != 0) return;
        std::vector<char*> pointers;
        for (std::string& word : words) pointers.push_back(word.data());
        pointers.push_back(nullptr);
        execv(pointers[0], pointers.data());
        _exit(127);
    }
    ~Background() {
        kill(pid_, SIGTERM);
        waitpid(pid_, nullptr, 0);
    }
    Background(const Background&) = delete;
    Background& operator=(const Background&) = delete;

 private:
    int pid_;
};

/// One good line among lines, services and a modem that hang, stall or shout.
class WorstCaseTest : public ::testing::Test {
 protected:
    WorstCaseTest() {
        copy.Data().Write("Settings\\Town.IDCode", "FORMAT=1,6,0,0,7,2\r\n100001;Bakery;\r\n");
        copy.WriteMainSettings("[SerialPorts]\r\nCOM1=" + modem);
        AddTcp("Port1", good, 0);
        AddTcp("Port2", noisy, 0);
        AddTcp("Port3", xml, 9);
        AddTcp("Port4", slow, 13);
        copy.AddPort(
            "Port5",
            "PortType=HTTP\r\nMessageFormat=10\r\nHTTPGetInterval&=1\r\nPortSetting=http://127.0.0.1:" +
                std::to_string(web.Port()) + "/\r\n[VirtualReceivers]\r\n1=secret,Gate");
        copy.AddPort("Port6",
                     "PortType=POP3\r\nMessageFormat=11\r\nPOP3Interval=1000\r\nPortSetting=127.0.0.1\r\n"
                     "POP3User=a\r\nPOP3Password=b\r\nPortNumber=" +
                         std::to_string(mailbox.Port()));
        copy.AddPort("Port7",
                     "PortType=RS232\r\nMessageFormat=3\r\nPortSetting=9600,N,8,1\r\nPortNumber=1\r\n"
                     "PollInterval=1000\r\nInitInterval=1000\r\nReopenInterval=1");
        AddTcp("Port8", smtp, 11, "SMTP");
    }
    void AddTcp(const Text& name, int port, int format, const Text& type = "TCPS") const {
        copy.AddPort(name,
                     "PortType=" + type + "\r\nBindSocketToAddress=127.0.0.1\r\nMessageFormat=" +
                         std::to_string(format) + "\r\nPortNumber=" + std::to_string(port),
                     "Robofon=Town");
    }

    int good = FreePort();
    int noisy = FreePort();
    int xml = FreePort();
    int slow = FreePort();
    int smtp = FreePort();
    Listener web{};
    Listener mailbox{};
    RunningCopy copy{};
    std::string modem = copy.Data().Path() + "/modem";
};

TEST_F(WorstCaseTest, NoLineHoldsUpAnother) {
    const Background silentModem({std::string(NORDKEEP_BIN_DIR) + "/nordkeep-send", "--quiet", "--silent",
                                  "--format", "gsm", "pty:" + modem});
    ASSERT_TRUE(WaitFor([&] { return access(modem.c_str(), F_OK) == 0; }));
    copy.Start();
    const Caller sender(good);
    ASSERT_TRUE(sender.IsConnected());
    // The mail server greets, and then says nothing more; the web service says nothing at all.
    const Visitor fetcher = mailbox.Accept();
    const Visitor poller = web.Accept();
    EXPECT_TRUE(copy.WaitForOutput("Port opened: 'Port7'"));
    const Caller stalled(smtp);
    stalled.Send("HELO x\r\nMAIL FROM:<a@b>\r\nRCPT TO:<c@d>\r\nDATA\r\nSubject: half a m");
    const Caller half(slow);
    half.Send("5011 1812");
    const Caller noise(noisy);
    const Caller document(xml);
    std::jthread shouting([&](std::stop_token stop) {
        const Text garbage(1 << 16, '\x02');
        while (!stop.stop_requested()) {
            noise.Send(garbage);
            document.Send("<AlarmRequest>" + Text(1 << 14, 'x'));
            half.Send("0");
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
        }
    });
    // Far above what is promised, so that a busy machine fails nothing; a line that waits for another one
    // would take seconds.
    constexpr std::chrono::milliseconds kBound{1500};
    std::chrono::nanoseconds worst{};
    for (int i = 0; i < 60; ++i) {
        const auto begin = Clock::now();
        sender.Send(RobofonTelegram("10000101"));
        ASSERT_EQ(sender.Receive(1), "\x06") << copy.Output();
        worst = std::max(worst, std::chrono::nanoseconds(Clock::now() - begin));
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }
    shouting.request_stop();
    const auto worstMs = std::chrono::duration_cast<std::chrono::milliseconds>(worst).count();
    RecordProperty("worst_ms", static_cast<int>(worstMs));
    std::printf("worst time to the ACK beside lines that hang: %ld ms\n", static_cast<long>(worstMs));
    EXPECT_LT(worst, kBound);
    EXPECT_EQ(copy.Output().find("stood still"), std::string::npos) << copy.Output();
}

}  // namespace
}  // namespace nordkeep
