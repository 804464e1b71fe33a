#include "tests/doubles/RobofonTelegram.h"
#include "tests/ports/PortWorld.h"

#include <cstdio>

namespace nordkeep {
namespace {

/// Two ports of format 0 that listen, the second one's number as given.
class PortRenewalTest : public PortWorld {
 protected:
    PortRenewalTest() {
        folder.MakeFolders("LogFiles");
        language.LoadFrom("3789=Taken in: \n3850=Not sent: \n");
        Write("Port1", 4001);
        Write("Port2", 4002);
        ports.Discover(parts);
        Tick();
    }
    void Write(const Text& name, int number) {
        folder.Write("Settings\\" + name + ".ini",
                     "[General]\r\nPortType=TCPS\r\nPortNumber=" + std::to_string(number) + "\r\n");
    }
    void Tick() {
        time.Advance(1000);
        ports.Tick(1000, conditions);
    }
    /// What listens on a number; none when nothing does.
    FakeWinsock* Listener(int number) {
        for (FakeWinsock* socket : sockets.made) {
            if (socket->localPort == number && socket->state == SocketState::Listening) return socket;
        }
        return nullptr;
    }
    /// Calls a port; the socket that has accepted.
    FakeWinsock& Call(int number) {
        std::vector<FakeWinsock*> before;
        const auto isConnected = [](const FakeWinsock* each) {
            return each->state == SocketState::Connected;
        };
        std::ranges::copy_if(sockets.made, std::back_inserter(before), isConnected);
        Listener(number)->CallIn();
        for (FakeWinsock* socket : sockets.made) {
            if (isConnected(socket) && std::ranges::find(before, socket) == before.end()) return *socket;
        }
        throw std::runtime_error("nobody accepts");
    }
};

TEST_F(PortRenewalTest, ALineThatExportsNoMoreIsSentNothingAndSaysWhatItHadLeft) {
    const auto write = [&](const Text& format) {
        folder.Write("Settings\\Port1.ini",
                     "[General]\r\nPortType=TCPS\r\nPortNumber=4001\r\nMessageFormat=" + format + "\r\n");
        EXPECT_EQ(ports.Renew(parts), true);
        Tick();
    };
    write("5");
    exports.ExportTelegram("1234", "11");
    exports.ExportTelegram("1235", "11");
    write("5\r\nPortDescription=still exports");
    EXPECT_EQ(LinesWith("Not sent: "), 0u) << "taken over";
    write("0");
    EXPECT_EQ(LinesWith("Not sent: 2 (Port1)"), 1u);
    exports.ExportTelegram("1236", "11");
    write("5");
    write("0");
    EXPECT_EQ(LinesWith("Not sent: "), 1u) << "nothing was queued meanwhile";
}

TEST_F(PortRenewalTest, ReopensWhatHasChangedAndNothingElse) {
    FakeWinsock& caller = Call(4001);
    EXPECT_EQ(ports.Renew(parts), false) << "nothing has changed";
    Write("Port2", 4003);
    Write("Port3", 4004);
    EXPECT_EQ(ports.Renew(parts), true);
    Tick();
    EXPECT_EQ(Listener(4002), nullptr);
    EXPECT_NE(Listener(4003), nullptr);
    EXPECT_NE(Listener(4004), nullptr);
    EXPECT_EQ(LinesWith("Taken in: "), 2u);
    caller.Arrive(RobofonTelegram("12340001"));
    commit.Commit();
    EXPECT_EQ(caller.sent, "\x06") << "the others never noticed";

    RemoveFile(folder.Resolve("Settings\\Port3.ini"));
    folder.Write("Settings\\Port2.ini", "[General]\r\nPortType=NONE\r\n");
    EXPECT_EQ(ports.Renew(parts), true);
    Tick();
    EXPECT_EQ(Listener(4003), nullptr);
    EXPECT_EQ(Listener(4004), nullptr);
    EXPECT_EQ(ports.Ports().size(), 1u);
    EXPECT_EQ(ports.Renew(parts), false);
}

TEST_F(PortRenewalTest, ADiskThatHasGoneTakesNoLineWithIt) {
    ASSERT_EQ(::rename(folder.Resolve("Settings").c_str(), folder.Resolve("Elsewhere").c_str()), 0);
    EXPECT_EQ(ports.Renew(parts), false);
    EXPECT_NE(Listener(4001), nullptr);
}

TEST_F(PortRenewalTest, AnswersWhatWasSentBeforeTheLineIsClosed) {
    FakeWinsock& caller = Call(4002);
    caller.Arrive(RobofonTelegram("12340001"));
    EXPECT_EQ(caller.sent, "");
    Write("Port2", 4003);
    EXPECT_EQ(ports.Renew(parts), true);
    EXPECT_EQ(caller.sent, "\x06");
    Tick();
    Call(4003).Arrive(RobofonTelegram("12340002"));
    EXPECT_EQ(intake.events.size(), 2u);
}

// A port that ends or is made may look through all of them, and a full house has no room beside it.
TEST_F(PortRenewalTest, APlaceIsNeverEmptyAndAFullHouseIsRenewed) {
    for (int i = 3; i <= 20; ++i) Write("Port" + std::to_string(i), 4000 + i);
    EXPECT_EQ(ports.Renew(parts), true);
    ASSERT_EQ(ports.Ports().size(), 20u);
    bool isAnyEmpty = false;
    log.SetRowListener([&](const LogRow&) {
        isAnyEmpty |= std::ranges::any_of(ports.Ports(), [](const auto& port) { return port == nullptr; });
    });
    Write("Port2", 4102);
    folder.Write("Settings\\Port1.ini", "[General]\r\nPortType=NONE\r\n");
    Write("Port5", 4105);
    EXPECT_EQ(ports.Renew(parts), true);
    EXPECT_FALSE(isAnyEmpty);
    Tick();
    EXPECT_NE(Listener(4102), nullptr);
    EXPECT_NE(Listener(4105), nullptr);
    EXPECT_EQ(ports.Ports().size(), 19u);
    log.SetRowListener([](const LogRow&) {});
}

TEST_F(PortRenewalTest, WaitsWhileAPortIsInTheMiddleOfSomething) {
    Write("Port2", 4003);
    std::optional<bool> inTheMiddle = true;
    lines.clear();
    log.SetRowListener([&](const LogRow&) { inTheMiddle = ports.Renew(parts); });
    Write("Port1", 4001);
    folder.Write("Settings\\Port1.ini", "[General]\r\nPortType=TCPS\r\nPortNumber=4001\r\nPortDisable=0\r\n");
    Tick();
    EXPECT_EQ(inTheMiddle, std::nullopt) << "a walk over the ports must not lose its place";
    log.SetRowListener([](const LogRow&) {});
    EXPECT_EQ(ports.Renew(parts), true);
}

}  // namespace
}  // namespace nordkeep
