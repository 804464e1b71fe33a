#include "tests/app/ground/RunningCopy.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>

namespace nordkeep {
namespace {

/// The built program and transmitters that know nothing of it.
class Dc09Test : public ::testing::Test {
 protected:
    Dc09Test() { copy.WriteMainSettings(); }

    void AddPort(const std::string& more = {}) {
        copy.AddPort("Port1", "PortType=TCPS\r\nMessageFormat=109\r\nPortNumber=" + std::to_string(port) +
                                  "\r\n" + more);
    }
    static std::string Words(const std::string& words) {
        return "python3 " NORDKEEP_SOURCE_DIR "/tests/data/dc09_client.py " + words;
    }
    int Run(const std::string& words) const {
        const std::string command = Words(words) + " >" + copy.Data().Path() + "/client.txt 2>&1";
        const int status = std::system(command.c_str());
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
    std::string Told() const { return copy.Data().Read("client.txt"); }
    /// All event files, one behind the other.
    Text Events() const {
        Text all;
        for (const Text& file : copy.EventFiles()) all += copy.Data().Read(file);
        return all;
    }
    long CountEvents(const std::string& part) const {
        const std::vector<Text> files = copy.EventFiles();
        return std::ranges::count_if(
            files, [&](const Text& file) { return copy.Data().Read(file).find(part) != Text::npos; });
    }
    bool WaitForEvent(const std::string& part) const {
        return WaitFor([&] { return CountEvents(part) == 1; });
    }

    int port = FreePort();
    RunningCopy copy{};
};

TEST_F(Dc09Test, AnswersAsTheStandardHasIt) {
    const char* const keys =
        "[DC09Accounts]\r\n"
        "AE1284=30313233343536373839616263646566\r\nAE1285=30313233343536373839616263646566\r\n"
        "AE1924=303132333435363738396162636465663031323334353637\r\n"
        "AE1925=303132333435363738396162636465663031323334353637\r\n"
        "AE2564=3031323334353637383961626364656630313233343536373839616263646566\r\n"
        "AE2565=3031323334353637383961626364656630313233343536373839616263646566\r\n";
    const int udp = FreePort();
    AddPort(keys);
    copy.AddPort("Port2",
                 "PortType=UDP\r\nMessageFormat=109\r\nPortNumber=" + std::to_string(udp) + "\r\n" + keys);
    copy.Start();
    EXPECT_EQ(Run("talk " + std::to_string(port) + " " + std::to_string(udp)), 0) << Told() << copy.Output();
    EXPECT_EQ(CountEvents("geo:45.20333,-12.56833"), 6) << copy.Output();
    copy.Stop();
    const std::string all = copy.Output() + Events();
    EXPECT_EQ(all.find("3132333435363738"), std::string::npos) << "a key is told to nobody";
    EXPECT_EQ(all.find("0123456789abcdef"), std::string::npos);
}

TEST_F(Dc09Test, TellsSilenceAndReturnOnceEachAndBeginsAnewBehindAKill) {
    AddPort("[DC09Accounts]\r\n1234=,2\r\n");
    copy.Start();
    EXPECT_TRUE(WaitForEvent("\\NYC")) << copy.Output();
    copy.Kill();
    copy.Start();
    EXPECT_TRUE(WaitFor([&] { return CountEvents("\\NYC") == 2; })) << copy.Output();
    EXPECT_EQ(Run("say " + std::to_string(port) + " '\"NULL\"0001#1234[]'"), 0) << Told();
    EXPECT_TRUE(WaitForEvent("\\NYK")) << copy.Output();
    EXPECT_TRUE(WaitFor([&] { return CountEvents("\\NYC") == 3; })) << copy.Output();
}

TEST_F(Dc09Test, ServesTwoThousandPanels) {
    AddPort("[DC09]\r\nMaxCallers=2000\r\n");
    copy.Start();
    EXPECT_EQ(Run("many " + std::to_string(port) + " 2000 200 5"), 0) << Told();
    EXPECT_GE(CountEvents("Nri1BA"), 500) << Told() << "a slow machine sends fewer, and none is lost";
}

TEST_F(Dc09Test, LosesNothingAcknowledgedThroughKills) {
    AddPort();
    copy.Start();
    const std::string noted = copy.Data().Path() + "/noted";
    const pid_t sender = ::fork();
    if (sender == 0) {
        ::execlp("/bin/sh", "sh", "-c",
                 ("exec " + Words("insist " + std::to_string(port) + " " + noted)).c_str(), nullptr);
        ::_exit(127);
    }
    const auto lines = [&] {
        const Text text = copy.Data().Read("noted");
        return std::ranges::count(text, '\n');
    };
    for (int round = 1; round <= 4; ++round) {
        const auto before = lines();
        EXPECT_TRUE(WaitFor([&] { return lines() >= before + 50; })) << copy.Output();
        copy.Kill();
        copy.Start();
    }
    copy.Data().Write("noted.stop", "");
    int status = 0;
    ::waitpid(sender, &status, 0);
    EXPECT_EQ(status, 0);
    const Text all = Events();
    const Text text = copy.Data().Read("noted");
    long missing = 0;
    for (std::size_t at = 0; at + 9 <= text.size(); at += 9)
        missing += all.find(text.substr(at, 8)) == std::string::npos;
    EXPECT_EQ(missing, 0);
    EXPECT_GE(lines(), 200);
}

}  // namespace
}  // namespace nordkeep
