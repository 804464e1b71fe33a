#include "store/EventFile.h"
#include "tests/app/RunningCopy.h"

#include <gtest/gtest.h>

namespace nordkeep {
namespace {

/// A server with one port, and a client, each a process on a folder of its own.
class NetworkTest : public ::testing::Test {
 protected:
    NetworkTest() {
        const std::string port = "NetworkPort=" + std::to_string(networkPort) + "\r\n";
        server.Data().Write("Settings\\Nordkeep.INI",
                            "[General]\r\nLanguage=044\r\n[NetWork]\r\nClientAddresses=127.0.0.1\r\n" + port);
        server.Data().Write("Settings\\Town.IDCode", "FORMAT=1,6,0,0,7,2\r\n100001;Bakery;\r\n");
        server.AddPort(
            "Port1",
            "PortType=TCPS\r\nBindSocketToAddress=127.0.0.1\r\nPortNumber=" + std::to_string(alarmPort),
            "Robofon=Town");
        client.Data().Write("Settings\\Nordkeep.INI",
                            "[General]\r\nLanguage=044\r\n[NetWork]\r\nServerAddress=127.0.0.1\r\n"
                            "NetworkReconnectInterval=200\r\n" +
                                port);
    }
    void Alarm() {
        Caller caller(alarmPort);
        caller.Send(RobofonTelegram("10000101"));
        EXPECT_EQ(caller.Receive(1), "\x06");
    }

    int networkPort = FreePort();
    int alarmPort = FreePort();
    RunningCopy server{};
    RunningCopy client{};
};

TEST_F(NetworkTest, ClientFollowsItsServerThroughARestart) {
    server.Start();
    Alarm();
    client.StartWithScreen();
    EXPECT_TRUE(client.WaitForOutput("Nordkeep started"));
    EXPECT_TRUE(server.WaitForOutput("Client connected: 127.0.0.1"));
    server.Kill();
    EXPECT_TRUE(client.WaitForOutput("The connection to the server is lost"));
    server.Start();
    EXPECT_TRUE(client.WaitForOutput("is connected to server", 2)) << server.Output() << client.Output();
    Alarm();
    EXPECT_EQ(server.EventFiles().size(), 2u);
    EXPECT_FALSE(FolderExists(client.Data().Resolve("Data"))) << "a client stores nothing";
    EXPECT_EQ(server.Stop(), 0);
    EXPECT_TRUE(client.WaitForOutput("The connection to the server is lost", 2)) << "and it goes on trying";
    EXPECT_EQ(client.Stop(), 0);
}

TEST_F(NetworkTest, StrangersAreRefusedAndAMissingServerEndsTheClient) {
    client.StartWithScreen();
    EXPECT_TRUE(client.WaitForOutput("Could not connect to the server"));
    server.Data().Write("Settings\\Nordkeep.INI",
                        "[General]\r\nLanguage=044\r\n[NetWork]\r\nClientAddresses=10.0.0.1\r\n"
                        "NetworkPort=" +
                            std::to_string(networkPort) + "\r\n");
    server.Start();
    Caller stranger(networkPort);
    EXPECT_TRUE(stranger.IsClosedByPeer());
    EXPECT_TRUE(server.WaitForOutput("Connection refused, the address is not allowed: 127.0.0.1"));
}

}  // namespace
}  // namespace nordkeep
