#include "store/EventFile.h"
#include "tests/app/ground/Needs.h"
#include "tests/app/ground/NetworkCopies.h"
#include "tests/app/ground/ProtocolClient.h"
#include "tests/app/ground/VirtualScreen.h"

#include <unistd.h>

#include <algorithm>

namespace nordkeep {
namespace {

class ClientWindowTest : public NetworkTest {
 protected:
    int StatusOfTheAlarm() const { return StatusIn(server.EventFiles().at(0)); }
    int StatusIn(const Text& file) const {
        cAlarm alarm;
        ReadFromDisk(server.Data().Read(file), 1, alarm);
        return alarm.m_Status;
    }
    bool AreAll(int status) const {
        return std::ranges::all_of(server.EventFiles(),
                                   [&](const Text& file) { return StatusIn(file) == status; });
    }

    VirtualScreen screen{};
};

// From the login to the end of an alarm by keys alone; all of it happens at the server.
TEST_F(ClientWindowTest, AnOperatorHandlesAnAlarmOfTheServer) {
    NORDKEEP_NEEDS("Xvfb", "Xvfb");
    ASSERT_FALSE(screen.Display().empty()) << "Xvfb does not run";
    server.Data().Write("Settings\\Users.INI", "[Users]\r\nanna=Anna Berg,AB,secret,1\r\n");
    Text settings = client.Data().Read("Settings\\Nordkeep.INI");
    client.Data().Write("Settings\\Nordkeep.INI", settings + "ViewLoginFormAutomatically=1\r\n");
    server.Start();
    Alarm();
    client.StartOnDisplay(screen.Display());
    ASSERT_TRUE(WaitFor([&] { return screen.HasWindow("^Log in$"); })) << client.Output();
    // No window is clicked here: the box that opens by itself has the keys, also after a refusal.
    screen.AwaitActive("^Log in$");
    screen.Type("anna");
    screen.Do("key Return");
    screen.Type("wrong");
    screen.Do("key Return");
    ASSERT_TRUE(server.WaitForOutput("'anna'")) << server.Output();
    ASSERT_TRUE(WaitFor([&] { return screen.HasWindow("^Log in$"); }));
    screen.AwaitActive("^Log in$");
    screen.Type("secret");
    screen.Do("key Return");
    ASSERT_TRUE(WaitFor([&] { return screen.HasWindow("Anna Berg"); }));

    screen.Keys("Anna Berg", "ctrl+1 Home F2");
    ASSERT_TRUE(WaitFor([&] { return screen.HasWindow("Bakery"); })) << client.Output();
    screen.Focus("Bakery");
    screen.Type("Called the owner");
    screen.Do("key ctrl+s");
    EXPECT_TRUE(WaitFor([&] {
        return server.Data().Read("Comments\\Town\\100001.TXT").find("Called the owner") != Text::npos;
    })) << client.Output()
        << server.Output();
    EXPECT_TRUE(WaitFor([&] { return StatusOfTheAlarm() == kStatusCommented; }));

    EXPECT_TRUE(WaitFor([&] { return !screen.HasWindow("Bakery"); }));
    screen.Keys("Anna Berg", "ctrl+1 Home F2");
    ASSERT_TRUE(screen.AwaitActive("Bakery"));
    screen.Do("key ctrl+Return");
    EXPECT_TRUE(screen.AwaitActive("^Nordkeep$")) << "the question has the keys";
    screen.Do("key Escape");
    EXPECT_TRUE(screen.AwaitActive("Bakery")) << "and gives them back to the sheet";
    screen.Do("key ctrl+Return");
    EXPECT_TRUE(screen.AwaitActive("^Nordkeep$"));
    screen.Do("key Return");
    EXPECT_TRUE(WaitFor([&] { return StatusOfTheAlarm() == kStatusAcknowledged; })) << client.Output();

    server.Kill();
    EXPECT_TRUE(WaitFor([&] { return screen.HasWindow("DISCONNECTED"); }));
    server.Start();
    EXPECT_TRUE(client.WaitForOutput("is connected to server", 2)) << client.Output();
    EXPECT_TRUE(WaitFor([&] { return !screen.HasWindow("DISCONNECTED"); }));
}

// By keys alone, and it is restored at the server, not only on this screen: all of them, which takes several
// turns of the loop, also when the operator leaves at once.
TEST_F(ClientWindowTest, TheEndOfSeveralIsTakenBack) {
    NORDKEEP_NEEDS("Xvfb", "Xvfb");
    ASSERT_FALSE(screen.Display().empty()) << "Xvfb does not run";
    server.Data().Write("Settings\\Users.INI", "[Users]\r\nanna=Anna Berg,AB,secret,1\r\n");
    const Text settings = client.Data().Read("Settings\\Nordkeep.INI");
    client.Data().Write("Settings\\Nordkeep.INI",
                        settings + "AutoLoginUserName=anna\r\nAutoLoginPassword=secret\r\n");
    server.Start();
    Alarms(150);
    client.StartOnDisplay(screen.Display());
    ASSERT_TRUE(WaitFor([&] { return screen.HasWindow("Anna Berg"); })) << client.Output();
    // The window is there before the server's alarms are in its list.
    ASSERT_TRUE(WaitFor([&] {
        screen.Keys("Anna Berg", "ctrl+1 ctrl+a ctrl+e");
        ::usleep(500'000);
        return screen.HasWindow("^Nordkeep$");
    }));
    ASSERT_TRUE(screen.AwaitActive("^Nordkeep$"));
    screen.Do("key Return");
    ASSERT_TRUE(screen.AwaitActive("Anna Berg"));
    EXPECT_EQ(StatusOfTheAlarm(), kStatusNew) << "Enter is no for several";
    const auto endAll = [&] {
        screen.Keys("Anna Berg", "ctrl+1 ctrl+a ctrl+e");
        ASSERT_TRUE(screen.AwaitActive("^Nordkeep$"));
        screen.Do("key alt+e");
    };
    endAll();
    EXPECT_TRUE(WaitFor([&] { return AreAll(kStatusAcknowledged); })) << client.Output();
    // It is offered with the tick behind the last of them.
    EXPECT_TRUE(WaitFor([&] {
        screen.Keys("Anna Berg", "ctrl+z");
        ::usleep(300'000);
        return AreAll(kStatusNew);
    })) << client.Output();
    EXPECT_TRUE(server.WaitForOutput("End taken back: ")) << server.Output();
    endAll();
    EXPECT_TRUE(WaitFor([&] { return StatusOfTheAlarm() == kStatusAcknowledged; })) << client.Output();
    EXPECT_EQ(client.Stop(), 0);
    EXPECT_TRUE(WaitFor([&] { return AreAll(kStatusAcknowledged); })) << server.Output();
}

}  // namespace
}  // namespace nordkeep
