#include "tests/app/ground/NetworkCopies.h"
#include "tests/app/ground/ProtocolClient.h"

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdlib>
#include <map>
#include <random>
#include <thread>

namespace nordkeep {
namespace {

/// A server with several clients at once, all of them processes.
class ClientsTest : public NetworkTest {
 protected:
    ClientsTest() {
        for (const RunningCopy& copy : clients) PrepareClient(copy);
    }
    /// How often a client's traffic log names a message.
    static std::size_t Heard(const RunningCopy& copy, const std::string& message) {
        std::size_t found = 0;
        for (const Text& name : ListFiles(copy.Data().Resolve("LogFiles_Client"))) {
            const Text log = copy.Data().Read("LogFiles_Client\\" + name);
            for (std::size_t at = log.find(" " + message + "\r\n"); at != Text::npos;
                 at = log.find(" " + message + "\r\n", at + 1))
                ++found;
        }
        return found;
    }

    std::array<RunningCopy, 3> clients{};
};

TEST_F(ClientsTest, ThreeFollowAServerThatIsKilledUnderLoad) {
    server.Start();
    for (RunningCopy& copy : clients) copy.StartWithScreen();
    EXPECT_TRUE(server.WaitForOutput("Client connected: 127.0.0.1", 3));
    std::size_t stored = 0;
    for (int round = 1; round <= 2; ++round) {
        std::jthread load([this] {
            const Caller caller(alarmPort);
            do {
                caller.Send(RobofonTelegram("10000101"));
            } while (caller.Receive(1) == "\x06");
        });
        EXPECT_TRUE(WaitFor([&] { return server.EventFiles().size() > stored + 100; }));
        server.Kill();
        load.join();
        for (RunningCopy& copy : clients)
            EXPECT_TRUE(copy.WaitForOutput("The connection to the server is lost", round));
        server.Start();
        stored = server.EventFiles().size();
        for (RunningCopy& copy : clients)
            EXPECT_TRUE(copy.WaitForOutput("is connected to server", round + 1)) << copy.Output();
    }
    for (RunningCopy& copy : clients) {
        EXPECT_TRUE(WaitFor([&] { return Heard(copy, "INITIALEVENT") >= stored; }))
            << Heard(copy, "INITIALEVENT") << " of " << stored;
    }
    const std::size_t before = Heard(clients[0], "NEWEVENT");
    Alarms(20);
    EXPECT_TRUE(WaitFor([&] { return Heard(clients[0], "NEWEVENT") == before + 20; }));
}

TEST_F(ClientsTest, AStoppedOneHoldsUpNobody) {
    server.Start();
    for (RunningCopy& copy : clients) copy.StartWithScreen();
    EXPECT_TRUE(server.WaitForOutput("Client connected: 127.0.0.1", 3));
    for (RunningCopy& copy : clients) EXPECT_TRUE(WaitFor([&] { return Heard(copy, "CLOSEPENDING") >= 2; }));
    ASSERT_EQ(kill(clients[0].Pid(), SIGSTOP), 0);
    for (int i = 0; i < 10; ++i) Alarms(100);
    for (std::size_t i : {1u, 2u})
        EXPECT_TRUE(WaitFor([&] { return Heard(clients[i], "NEWEVENT") == 1000; }));
    ASSERT_EQ(kill(clients[0].Pid(), SIGCONT), 0);
    EXPECT_TRUE(WaitFor([&] { return Heard(clients[0], "NEWEVENT") == 1000; })) << "and it catches up";
}

TEST_F(ClientsTest, WhatOperatorsDidSurvivesKills) {
    std::mt19937 random(2);
    std::map<std::int64_t, int> status;  // by file pointer, as told and answered
    Text comment;
    const char* wanted = std::getenv("NORDKEEP_KILL_ROUNDS");
    const int rounds = wanted ? std::atoi(wanted) : 8;
    for (int round = 0; round < rounds; ++round) {
        server.Start();
        const ProtocolClient desk(networkPort);
        Alarms(5);
        desk.Send(9);
        for (const WireFrame& frame : desk.Until(4)) {
            if (frame.number != 6) continue;
            const std::int64_t pointer = LongAt(frame.payload, 0);
            const auto known = status.find(pointer);
            if (known != status.end()) {
                EXPECT_EQ(IntegerAt(frame.payload, 6), known->second) << pointer;
                if (known->second == 5) continue;
            }
            const int next = random() % 2 == 0 ? 5 : 1;
            Text changed = frame.payload;
            changed[7] = static_cast<char>(next);
            desk.Send(7, changed);
            status[pointer] = next;
        }
        comment += "Round " + std::to_string(round) + "\r\n";
        desk.Send(19, WireBytes().Short("Comments\\Note.TXT").LongText(comment).Bytes());
        desk.Send(20, WireBytes().Short("Comments\\Note.TXT").Bytes());
        EXPECT_GT(LongAt(desk.Wait(20).payload, 0), 0);
        server.Kill();
    }
    EXPECT_EQ(status.size(), static_cast<std::size_t>(rounds) * 5);
    EXPECT_EQ(server.Data().Read("Comments\\Note.TXT").find(comment), 0u);
    server.Start();
    const ProtocolClient desk(networkPort);
    desk.Send(9);
    std::size_t seen = 0;
    for (const WireFrame& frame : desk.Until(4)) {
        if (frame.number == 6) seen += status.at(LongAt(frame.payload, 0)) == IntegerAt(frame.payload, 6);
    }
    EXPECT_EQ(seen, status.size());
}

}  // namespace
}  // namespace nordkeep
