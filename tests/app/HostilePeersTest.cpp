#include "runtime/Fields.h"
#include "store/EventFile.h"
#include "tests/app/ground/NetworkCopies.h"
#include "tests/app/ground/ProtocolClient.h"

#include <algorithm>
#include <fstream>
#include <memory>
#include <random>

namespace nordkeep {
namespace {

using namespace std::string_literals;

/// Memory of a process that is in use now, or has been at most, in MB.
int MemoryOf(int pid, const std::string& figure) {
    std::ifstream status("/proc/" + std::to_string(pid) + "/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with(figure + ":")) return std::stoi(line.substr(figure.size() + 1)) / 1024;
    }
    return -1;
}

/// A server, one client that behaves, and peers that do not.
class HostilePeersTest : public NetworkTest {
 protected:
    /// The good client gets in when a slot is free.
    std::unique_ptr<ProtocolClient> Join() const {
        std::unique_ptr<ProtocolClient> joined;
        WaitFor([&] {
            joined = std::make_unique<ProtocolClient>(networkPort);
            joined->Send(23);
            return joined->Next().number == 23;
        });
        return joined;
    }
    /// An alarm is acknowledged, and reaches the client.
    void ExpectService(const ProtocolClient& guest) const {
        ASSERT_EQ(Alarms(1), 1u) << server.Output();
        EXPECT_EQ(guest.Wait(8).number, 8) << server.Output();
        guest.Send(0);
    }
    std::size_t LinesAboutPeers() const {
        const std::string output = server.Output();
        std::size_t found = 0;
        for (const TextView line : Lines(output)) found += line.find("127.0.0.1") != TextView::npos;
        return found;
    }
};

TEST_F(HostilePeersTest, CostLittleAndHoldUpNobody) {
    server.Start();
    const auto guest = Join();
    ExpectService(*guest);
    const int before = MemoryOf(server.Pid(), "VmRSS");

    for (int round = 0; round < 50; ++round) {
        const Caller endless(networkPort);
        endless.Send("\x07\x04\0\0\x01"s);  // one byte above 64 MiB
        EXPECT_TRUE(endless.IsClosedByPeer());
    }
    EXPECT_TRUE(server.WaitForOutput("frame too long"));
    ExpectService(*guest);

    std::mt19937 random(5);
    for (int round = 0; round < 20; ++round) {
        Text garbage;
        for (int i = 0; i < 100'000; ++i) garbage += static_cast<char>(random());
        Caller(networkPort).Send(garbage);
        if (round % 5 == 0) ExpectService(*guest);
    }

    std::vector<std::unique_ptr<Caller>> burst;
    for (int i = 0; i < 200; ++i) burst.push_back(std::make_unique<Caller>(networkPort));
    ExpectService(*guest);
    EXPECT_TRUE(burst.back()->IsClosedByPeer()) << "all slots are taken";
    burst.clear();

    // Peers that begin a large frame and say nothing more.
    for (int i = 0; i < 7; ++i) {
        burst.push_back(std::make_unique<Caller>(networkPort));
        burst.back()->Send("\x13\x03\xFF\xFF\xFF"s + Text(1 << 20, 'x'));
    }
    ExpectService(*guest);

    EXPECT_LT(MemoryOf(server.Pid(), "VmRSS"), before + 100);
    EXPECT_LT(MemoryOf(server.Pid(), "VmHWM"), before + 100);
    // One address is told at most sixty times in a minute.
    EXPECT_LT(LinesAboutPeers(), 200u);
    EXPECT_EQ(server.Output().find("stood still"), std::string::npos) << server.Output();
    EXPECT_EQ(server.Stop(), 0);
}

TEST_F(HostilePeersTest, SilentOnesLoseTheirSlots) {
    server.Data().Write("Settings\\Nordkeep.INI",
                        "[General]\r\nLanguage=044\r\n[NetWork]\r\nClientAddresses=127.0.0.1\r\n"
                        "NetworkKeepAliveInterval=1000\r\n" +
                            PortLine());
    server.Start();
    std::vector<std::unique_ptr<Caller>> silent;
    for (int i = 0; i < 8; ++i) silent.push_back(std::make_unique<Caller>(networkPort));
    ASSERT_TRUE(server.WaitForOutput("Client connected", 8)) << server.Output();
    ExpectService(*Join());
}

TEST_F(HostilePeersTest, SevenGetEverythingBesideOneThatTakesNothing) {
    server.Start();
    std::vector<std::unique_ptr<ProtocolClient>> guests;
    for (int i = 0; i < 8; ++i) guests.push_back(Join());
    for (int i = 0; i < 10; ++i) ASSERT_EQ(Alarms(100), 100u);
    for (std::size_t i = 1; i < guests.size(); ++i) {
        int events = 0;
        while (events < 1000) {
            const WireFrame frame = guests[i]->Next();
            ASSERT_NE(frame.number, -1) << "client " << i << " after " << events;
            events += frame.number == 8;
        }
    }
}

/// Puts event files in the place where the server loads them from.
void PutEvents(const RunningCopy& copy, int count, std::size_t textLength) {
    cAlarm alarm;
    alarm.m_AlarmCodeToStore = Text(textLength, 'x');
    alarm.m_ArrivedTime = alarm.m_TimeStamp = OleDate::FromCivil({2026, 3, 10, 9, 8, 7});
    copy.Data().MakeFolders("Data\\Events");
    const Text bytes = EventBytes(alarm, 0, 0);
    for (int i = 1; i <= count; ++i) {
        const NativePath path = copy.Data().Path() + "/Data/Events/A" + Digits(i, 7) + ".eve";
        std::ofstream(path, std::ios::binary) << bytes;
    }
}

// The records themselves take 150 MB. A sanitizer puts a zone around each of their texts, and keeps up to 256
// MB of what has been freed.
#ifdef __SANITIZE_ADDRESS__
constexpr int kMostMegabytes = 1000;
#else
constexpr int kMostMegabytes = 500;
#endif

TEST_F(HostilePeersTest, AHealthyClientThatReadsLateGetsALargeStore) {
    constexpr int kEvents = 50'000;
    PutEvents(server, kEvents, 1500);  // more than may wait unsent at once
    server.Data().Write("Settings\\Nordkeep.INI",
                        "[General]\r\nLanguage=044\r\nMaxAlarms=0\r\nMaxAlarmDays=0\r\n[NetWork]\r\n"
                        "ClientAddresses=127.0.0.1\r\n" +
                            PortLine());
    server.Start();
    const auto guest = Join();
    guest->Send(9);
    guest->Send(0);
    // The sender is served while the client lets its bytes wait.
    ASSERT_EQ(Alarms(100), 100u);
    EXPECT_LT(MemoryOf(server.Pid(), "VmHWM"), kMostMegabytes);
    const auto frames = guest->Until(4);
    EXPECT_EQ(frames.back().number, 4) << server.Output();
    EXPECT_GE(std::ranges::count(frames, 6, &WireFrame::number), kEvents);
    auto heard = std::count_if(frames.begin(), frames.end(), [](const auto& f) { return f.number == 8; });
    for (; heard < 100; ++heard) ASSERT_EQ(guest->Wait(8).number, 8);
#if !defined(__SANITIZE_ADDRESS__)
    EXPECT_EQ(server.Output().find("stood still"), std::string::npos) << server.Output();
#endif
}

}  // namespace
}  // namespace nordkeep
