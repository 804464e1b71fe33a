#pragma once

#include "tests/app/ground/RunningCopy.h"

#include <gtest/gtest.h>

namespace nordkeep {

/// A server with one port, and a client, each a process on a folder of its own.
class NetworkTest : public ::testing::Test {
 protected:
    NetworkTest() {
        server.Data().Write(
            "Settings\\Nordkeep.INI",
            "[General]\r\nLanguage=044\r\n[NetWork]\r\nClientAddresses=127.0.0.1\r\n" + PortLine());
        server.Data().Write("Settings\\Town.IDCode", "FORMAT=1,6,0,0,7,2\r\n100001;Bakery;\r\n");
        server.AddPort(
            "Port1",
            "PortType=TCPS\r\nBindSocketToAddress=127.0.0.1\r\nPortNumber=" + std::to_string(alarmPort),
            "Robofon=Town");
        PrepareClient(client);
    }
    Text PortLine() const { return "NetworkPort=" + std::to_string(networkPort) + "\r\n"; }
    void PrepareClient(const RunningCopy& copy) const {
        copy.Data().Write("Settings\\Nordkeep.INI",
                          "[General]\r\nLanguage=044\r\n[NetWork]\r\nServerAddress=127.0.0.1\r\n"
                          "NetworkReconnectInterval=200\r\nLogTraffic=1\r\n" +
                              PortLine());
    }
    void Alarm() const { Alarms(1); }
    /// Sends so many alarms in one go; the count of acknowledged ones.
    std::size_t Alarms(int count) const {
        Caller caller(alarmPort);
        Text burst;
        for (int i = 0; i < count; ++i) burst += RobofonTelegram("10000101");
        caller.Send(burst);
        const Text replies = caller.Receive(static_cast<std::size_t>(count));
        EXPECT_EQ(replies, Text(static_cast<std::size_t>(count), '\x06'));
        return replies.size();
    }

    int networkPort = FreePort();
    int alarmPort = FreePort();
    RunningCopy server{};
    RunningCopy client{};
};

}  // namespace nordkeep
