#include "store/EventFile.h"
#include "tests/app/ground/NetworkCopies.h"
#include "tests/app/ground/VirtualScreen.h"

namespace nordkeep {
namespace {

/// The set-up as a person works it: a screen with a window manager, and keys.
class SetUpScreen : public VirtualScreen {
 public:
    /// Pages are counted from 0, in the order in which they stand on the left.
    void ShowPage(int page) const {
        Do("key --delay 60 ctrl+f");
        Do("key --delay 60 Tab Home");
        for (int step = 0; step < page; ++step) Do("key --delay 60 Down");
        ::usleep(300'000);
    }
    void Key(const std::string& keys) const {
        Do("key --delay 60 " + keys);
        ::usleep(200'000);
    }
};

constexpr int kLines = 0;
constexpr int kSets = 1;
constexpr int kObjects = 2;

Text NameOfAlarm(const RunningCopy& copy, std::size_t number, Text* idCode = nullptr) {
    cAlarm alarm;
    ReadFromDisk(copy.Data().Read(copy.EventFiles().at(number)), 1, alarm);
    if (idCode) *idCode = alarm.m_IdCode;
    return alarm.m_TranslatedIDCode;
}

bool WaitLong(const std::function<bool()>& condition) {
    for (int halfMinutes = 0; halfMinutes < 6; ++halfMinutes) {
        if (WaitFor(condition)) return true;
    }
    return false;
}

// Nothing is written by hand here: an empty folder, keys, and then a transmitter that calls and falls silent.
TEST(SetUpByKeys, ACentreMadeFromNothingTakesAnAlarmAndMissesASignOfLife) {
    const SetUpScreen screen;
    ASSERT_FALSE(screen.Display().empty()) << "Xvfb does not run";
    const int port = FreePort();
    RunningCopy copy;
    copy.StartOnDisplay(screen.Display());
    ASSERT_TRUE(WaitFor([&] { return screen.HasWindow("^Set-up$"); })) << copy.Output();
    ASSERT_TRUE(screen.AwaitActive("^Set-up$"));

    screen.ShowPage(kSets);
    screen.Key("alt+n");
    screen.Type("Home");
    screen.Key("alt+a");
    ASSERT_TRUE(WaitFor([&] { return copy.Data().Exists("Settings\\Home.IDCode"); })) << copy.Output();

    screen.ShowPage(kLines);
    screen.Key("alt+n ctrl+a");
    screen.Type("Receiver");
    screen.Key("alt+x ctrl+a");
    screen.Type(std::to_string(port));
    screen.Key("alt+x");
    screen.Key("alt+x");
    screen.Type("Home");
    screen.Key("alt+a");
    ASSERT_TRUE(copy.WaitForOutput("Port opened: 'Port1'")) << copy.Output();

    screen.ShowPage(kObjects);
    screen.Key("alt+s Down");
    screen.Key("alt+n");
    screen.Type("100001");
    screen.Key("Tab Tab");
    screen.Type("Bakery");
    screen.Key("Tab Down");
    screen.Type("1");
    screen.Key("alt+a");
    ASSERT_TRUE(WaitFor([&] {
        return copy.Data().Read("Settings\\Home.IDCode").find("100001;Bakery;1;") != Text::npos;
    })) << copy.Data().Read("Settings\\Home.IDCode");

    const Caller caller(port);
    caller.Send(RobofonTelegram("10000101"));
    EXPECT_EQ(caller.Receive(1), "\x06");
    ASSERT_TRUE(WaitFor([&] { return copy.EventFiles().size() == 1; })) << copy.Output();
    EXPECT_EQ(NameOfAlarm(copy, 0), "Bakery");
    ASSERT_TRUE(WaitLong([&] { return copy.EventFiles().size() == 2; })) << copy.Output();
    Text idCode;
    EXPECT_EQ(NameOfAlarm(copy, 1, &idCode), "Bakery") << "the missed sign of life";
    EXPECT_EQ(idCode, "100001");
    EXPECT_EQ(copy.Stop(), 0) << copy.Output();
}

class SetUpAtClient : public NetworkTest {
 protected:
    void Open(int level) {
        ASSERT_FALSE(screen.Display().empty()) << "Xvfb does not run";
        server.Data().Write("Settings\\Users.INI",
                            "[Users]\r\nanna=Anna Berg,AB,secret," + std::to_string(level) + "\r\n");
        const Text main = server.Data().Read("Settings\\Nordkeep.INI");
        server.Data().Write("Settings\\Nordkeep.INI", "[General]\r\nUseDynamicFormForObjectInfo=1\r\n" +
                                                          main.substr(main.find("Language")));
        const Text settings = client.Data().Read("Settings\\Nordkeep.INI");
        client.Data().Write("Settings\\Nordkeep.INI",
                            settings + "AutoLoginUserName=anna\r\nAutoLoginPassword=secret\r\n");
        server.Start();
        client.StartOnDisplay(screen.Display());
        ASSERT_TRUE(WaitFor([&] { return screen.HasWindow("Anna Berg"); })) << client.Output();
        screen.Focus("Anna Berg");
        screen.Key("alt+e");
        screen.Key("Up");
        screen.Key("Return");
    }
    SetUpScreen screen{};
};

// All of it is written at the server, by the file service, and taken in there.
TEST_F(SetUpAtClient, SomebodyOfLevelTwoEditsTheServersObjectsAndInformation) {
    Open(2);
    ASSERT_TRUE(WaitFor([&] { return screen.HasWindow("^Set-up$"); })) << client.Output();
    screen.AwaitActive("^Set-up$");
    screen.ShowPage(kObjects);
    screen.Key("alt+f");
    ASSERT_TRUE(screen.AwaitActive("^Information: Bakery")) << client.Output();
    screen.Type("Anna Berg");
    screen.Key("ctrl+s");
    EXPECT_TRUE(WaitFor([&] {
        return server.Data().Read("Information\\Town\\100001.TXT") == "Contact1=Anna Berg\r\n";
    })) << server.Data().Read("Information\\Town\\100001.TXT");
    screen.Key("Escape");
    ASSERT_TRUE(screen.AwaitActive("^Set-up$"));

    screen.Focus("^Set-up$");
    screen.Key("alt+n");
    screen.Type("100002");
    screen.Key("Tab Tab");
    screen.Type("Pump");
    screen.Key("alt+a");
    EXPECT_TRUE(WaitFor([&] {
        return server.Data().Read("Settings\\Town.IDCode").find("100002;Pump;") != Text::npos;
    })) << client.Output();
    EXPECT_TRUE(server.WaitForOutput("Settings\\Town.IDCode")) << server.Output();

    screen.Key("ctrl+f");
    screen.Key("Escape");
    EXPECT_TRUE(WaitFor([&] { return !screen.HasWindow("^Set-up$"); })) << "nothing is left to be applied";
    const Caller caller(alarmPort);
    caller.Send(RobofonTelegram("10000201"));
    EXPECT_EQ(caller.Receive(1), "\x06");
    ASSERT_TRUE(WaitFor([&] { return server.EventFiles().size() == 1; })) << server.Output();
    EXPECT_EQ(NameOfAlarm(server, 0), "Pump") << "the server has taken it in";
}

TEST_F(SetUpAtClient, SomebodyOfLevelTwoMakesAndEditsTheServersLines) {
    Open(2);
    ASSERT_TRUE(WaitFor([&] { return screen.HasWindow("^Set-up$"); })) << client.Output();
    screen.AwaitActive("^Set-up$");
    const int port = FreePort();
    screen.ShowPage(kLines);
    screen.Key("alt+n ctrl+a");
    screen.Type("Annex");
    screen.Key("alt+x ctrl+a");
    screen.Type(std::to_string(port));
    screen.Key("alt+x");
    screen.Key("alt+x");
    screen.Type("Town");
    screen.Key("alt+a");
    ASSERT_TRUE(server.WaitForOutput("Port opened: 'Port2'")) << server.Output() << client.Output();
    EXPECT_FALSE(client.Data().Exists("Settings\\Port2.ini"));
    const Caller annex(port);
    annex.Send(RobofonTelegram("10000101"));
    EXPECT_EQ(annex.Receive(1), "\x06");

    // Its name is the first field of the other line; what the file has beside it stays.
    screen.ShowPage(kLines);
    screen.Key("Tab ctrl+Home Return ctrl+a");
    screen.Type("Gate");
    screen.Key("alt+a");
    EXPECT_TRUE(WaitFor([&] {
        return server.Data().Read("Settings\\Port1.ini").find("PortDescription=Gate") != Text::npos;
    })) << client.Output();
    EXPECT_NE(server.Data().Read("Settings\\Port1.ini").find("Robofon=Town"), Text::npos);
    EXPECT_TRUE(server.WaitForOutput("Port opened: 'Port1'", 2)) << server.Output();
    Alarm();
}

}  // namespace
}  // namespace nordkeep
