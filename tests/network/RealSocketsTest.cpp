#include "platform/posix/SystemClock.h"
#include "platform/qt/Application.h"
#include "platform/qt/QtEventLoop.h"
#include "platform/qt/QtSockets.h"
#include "tests/network/ClientWorld.h"

#include <QtCore/QCoreApplication>

#include <gtest/gtest.h>

namespace nordkeep {
namespace {

/// Made before the first socket.
struct WithApplication : public ::testing::Test {
    WithApplication() {
        static int argc = 1;
        static char name[] = "test_network";
        static char* argv[] = {name, nullptr};
        static const auto application = MakeCoreApplication(argc, argv);
    }
};

/// A server and its clients on the loopback address.
class RealSocketsTest : public WithApplication {
 protected:
    RealSocketsTest() {
        server.network.NetworkPort = 0;  // any
        EXPECT_TRUE(server.slots.Listen());
        // The listener is the first socket that the server has made.
        server.network.NetworkPort = sockets.listener->LocalPort();
    }

    bool Until(const std::function<bool()>& condition) {
        const std::int64_t end = clock.MonotonicMs() + 10'000;
        while (!condition() && clock.MonotonicMs() < end) loop.SleepAndPump(1);
        return condition();
    }
    std::unique_ptr<ClientWorld> NewClient() {
        auto client = std::make_unique<ClientWorld>(clock, loop, sockets);
        client->network.ServerAddress = "127.0.0.1";
        client->network.NetworkPort = server.network.NetworkPort;
        client->network.NetworkReconnectInterval = 10;
        return client;
    }

    /// Remembers the first socket, the listener.
    class Sockets : public SocketFactory {
     public:
        std::unique_ptr<Winsock> NewSocket(SocketKind kind) override {
            auto socket = qt_.NewSocket(kind);
            if (listener == nullptr) listener = socket.get();
            return socket;
        }
        Winsock* listener = nullptr;

     private:
        QtSockets qt_{};
    };

    QtEventLoop loop{};
    SystemClock clock{};
    Sockets sockets{};
    ServerWorld server{clock, loop, sockets};
};

TEST_F(RealSocketsTest, ClientsFollowTheirServerAndComeBack) {
    for (int i = 0; i < 500; ++i) server.Raise("event" + std::to_string(i));
    auto one = NewClient();
    auto two = NewClient();
    ASSERT_EQ(one->Start().failure, "");
    ASSERT_EQ(two->Start().failure, "");
    EXPECT_EQ(one->store.Events().Count(), 500u);
    EXPECT_EQ(one->translations.Sets().size(), 1u);

    cAlarm& alarm = *one->store.Events().Find(one->store.Events().Next(0));
    alarm.m_Status = kStatusAcknowledged;
    one->store.Update(alarm);
    EXPECT_TRUE(Until(
        [&] { return two->store.FindAlarmByKey(alarm.m_FilePointer)->m_Status == kStatusAcknowledged; }));

    const Text picture(3'000'000, 'p');
    server.folder.Write("Maps\\big.bmp", picture);
    EXPECT_TRUE(one->remote.ReadBinaryFile("Maps\\big.bmp") == picture);

    server.slots.Shutdown();
    EXPECT_TRUE(Until([&] { return one->link.IsConnectionLost(); }));
    one->session.Tick(10);
    EXPECT_EQ(one->session.State(), LinkState::Lost);
    server.Raise("meanwhile");
    ASSERT_TRUE(server.slots.Listen());
    one->session.Tick(10);
    EXPECT_EQ(one->session.State(), LinkState::Connected);
    EXPECT_EQ(one->store.Events().Count(), 501u);
}

TEST_F(RealSocketsTest, WhoIsNotAllowedGetsNothing) {
    server.network.ClientAddresses = "10.0.0.1";
    auto client = NewClient();
    client->network.NetworkTimeout = 2000;
    EXPECT_NE(client->Start().failure, "");
    EXPECT_TRUE(Until([&] { return server.HasLogged("notallowed 127.0.0.1"); }));
    EXPECT_EQ(server.slots.ConnectedCount(), 0);
}

}  // namespace
}  // namespace nordkeep
