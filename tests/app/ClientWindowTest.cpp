#include "store/EventFile.h"
#include "tests/app/NetworkCopies.h"
#include "tests/app/ProtocolClient.h"

#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>

namespace nordkeep {
namespace {

/// A virtual screen with a window manager, until the end of the scope.
class VirtualScreen {
 public:
    VirtualScreen() {
        int ends[2];
        if (pipe(ends) != 0) return;
        const std::string end = std::to_string(ends[1]);
        screen_ = Start({"Xvfb", "-displayfd", end, "-screen", "0", "1280x900x24", "-nolisten", "tcp"});
        close(ends[1]);
        std::string number;
        for (char digit = 0; read(ends[0], &digit, 1) == 1 && digit != '\n';) number += digit;
        close(ends[0]);
        if (number.empty()) return;
        display_ = ":" + number;
        manager_ = Start({"openbox"});
    }
    ~VirtualScreen() {
        for (const int pid : {manager_, screen_}) {
            if (pid <= 0) continue;
            kill(pid, SIGTERM);
            waitpid(pid, nullptr, 0);
        }
    }
    VirtualScreen(const VirtualScreen&) = delete;
    VirtualScreen& operator=(const VirtualScreen&) = delete;

    const std::string& Display() const { return display_; }
    /// Runs a command of xdotool; true when it succeeded.
    bool Do(const std::string& command) const {
        return std::system(
                   ("DISPLAY=" + display_ + " timeout 10 xdotool " + command + " >/dev/null 2>&1").c_str()) ==
               0;
    }
    bool HasWindow(const std::string& title) const {
        return Do("search --onlyvisible --name '" + title + "'");
    }
    void Focus(const std::string& title) const {
        Do("search --onlyvisible --name '" + title + "' windowactivate --sync");
    }
    /// Waits until a window of this title has the keys.
    bool AwaitActive(const std::string& title) const {
        return WaitFor([&] {
            return std::system(("DISPLAY=" + display_ +
                                " timeout 10 xdotool getactivewindow getwindowname | grep -q '" + title + "'")
                                   .c_str()) == 0;
        });
    }
    void Keys(const std::string& title, const std::string& keys) const {
        Focus(title);
        Do("key --delay 60 " + keys);
    }
    void Type(const std::string& text) const { Do("type --delay 40 '" + text + "'"); }

 private:
    int Start(std::vector<std::string> words) const {
        const int pid = fork();
        if (pid != 0) return pid;
        if (!display_.empty()) setenv("DISPLAY", display_.c_str(), 1);
        std::vector<char*> pointers;
        for (std::string& word : words) pointers.push_back(word.data());
        pointers.push_back(nullptr);
        execvp(pointers[0], pointers.data());
        _exit(127);
    }

    int screen_ = -1;
    int manager_ = -1;
    std::string display_{};
};

class ClientWindowTest : public NetworkTest {
 protected:
    int StatusOfTheAlarm() const {
        cAlarm alarm;
        ReadFromDisk(server.Data().Read(server.EventFiles().at(0)), 1, alarm);
        return alarm.m_Status;
    }

    VirtualScreen screen{};
};

// From the login to the end of an alarm by keys alone; all of it happens at the server.
TEST_F(ClientWindowTest, AnOperatorHandlesAnAlarmOfTheServer) {
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

// By keys alone, and it is restored at the server, not only on this screen.
TEST_F(ClientWindowTest, TheEndOfSeveralIsTakenBack) {
    ASSERT_FALSE(screen.Display().empty()) << "Xvfb does not run";
    server.Data().Write("Settings\\Users.INI", "[Users]\r\nanna=Anna Berg,AB,secret,1\r\n");
    const Text settings = client.Data().Read("Settings\\Nordkeep.INI");
    client.Data().Write("Settings\\Nordkeep.INI",
                        settings + "AutoLoginUserName=anna\r\nAutoLoginPassword=secret\r\n");
    server.Start();
    Alarms(3);
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
    screen.Do("key ctrl+e");
    ASSERT_TRUE(screen.AwaitActive("^Nordkeep$"));
    screen.Do("key alt+y");
    EXPECT_TRUE(WaitFor([&] { return StatusOfTheAlarm() == kStatusAcknowledged; })) << client.Output();
    screen.Keys("Anna Berg", "ctrl+z");
    EXPECT_TRUE(WaitFor([&] { return StatusOfTheAlarm() == kStatusNew; })) << client.Output();
    EXPECT_TRUE(server.WaitForOutput("End taken back: ")) << server.Output();
}

}  // namespace
}  // namespace nordkeep
