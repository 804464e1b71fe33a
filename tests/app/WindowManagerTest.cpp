#include "tests/app/ground/Needs.h"
#include "tests/app/ground/NetworkCopies.h"
#include "tests/app/ground/VirtualScreen.h"

#include <thread>

namespace nordkeep {
namespace {

/// What a screen in memory cannot see: which window a real window manager gives the keys to.
class WindowManagerTest : public NetworkTest {
 protected:
    void StartServer(const std::string& general = {}) {
        ASSERT_FALSE(screen.Display().empty()) << "Xvfb does not run";
        server.Data().Write("Settings\\Nordkeep.INI", "[General]\r\nLanguage=044\r\n" + general +
                                                          "[NetWork]\r\nClientAddresses=127.0.0.1\r\n" +
                                                          PortLine());
        server.StartOnDisplay(screen.Display());
        ASSERT_TRUE(server.WaitForOutput("Port opened: 'Port1'")) << server.Output();
        ASSERT_TRUE(WaitFor([&] { return screen.HasWindow("^Nordkeep - "); })) << server.Output();
    }
    static constexpr const char* kMain = "^Nordkeep - ";

    VirtualScreen screen{};
};

// A key opens it, it has the keys, Escape closes it, and the keys are back in the list.
TEST_F(WindowManagerTest, EveryWindowTakesTheKeysAndGivesThemBack) {
    StartServer();
    Alarm();
    struct Opened {
        const char* keys;
        const char* title;
    };
    for (const Opened& opened : {Opened{"F1", "^Keys"}, Opened{"ctrl+h", "^History and reports$"},
                                 Opened{"ctrl+k", "^Find anything$"}, Opened{"Home F2", "Bakery"},
                                 Opened{"ctrl+p", "^Print preview"}}) {
        ASSERT_TRUE(WaitFor([&] {
            screen.Keys(kMain, std::string("ctrl+1 ") + opened.keys);
            ::usleep(700'000);
            return screen.HasWindow(opened.title);
        })) << opened.keys;
        EXPECT_TRUE(screen.AwaitActive(opened.title)) << opened.keys;
        screen.Do("key Escape");
        EXPECT_TRUE(WaitFor([&] { return !screen.HasWindow(opened.title); })) << opened.keys;
        EXPECT_TRUE(screen.AwaitActive(kMain)) << "behind " << opened.keys;
    }
    screen.Keys(kMain, "ctrl+1 Home ctrl+e");
    EXPECT_TRUE(screen.AwaitActive("^Nordkeep$")) << "the question has the keys";
    screen.Do("key Escape");
    EXPECT_TRUE(screen.AwaitActive(kMain));
}

// From the field that finds everything to the card of an object and its history, by keys alone.
TEST_F(WindowManagerTest, FindsAnObjectAndItsPastByKeys) {
    StartServer();
    Alarm();
    screen.Keys(kMain, "ctrl+k");
    ASSERT_TRUE(screen.AwaitActive("^Find anything$"));
    screen.Type("100001");
    ::usleep(300'000);
    screen.Do("key Down Return");
    ASSERT_TRUE(
        WaitFor([&] { return screen.HasWindow("^Object Bakery$") || screen.HasWindow("^Nordkeep - "); }));
    screen.Keys(kMain, "ctrl+k");
    ASSERT_TRUE(screen.AwaitActive("^Find anything$"));
    screen.Type("history");
    screen.Do("key Return");
    ASSERT_TRUE(screen.AwaitActive("^History and reports$"));
    // What there is comes some moments behind the window.
    EXPECT_TRUE(WaitFor([&] {
        if (screen.HasWindow("^Case A[0-9]*$")) return true;
        screen.Do("key Home Return");
        return false;
    })) << "Enter on the alarm shows its case";
}

// Ten seconds of alarms at twenty a second, and not a key of the comment is lost or goes elsewhere.
TEST_F(WindowManagerTest, TypingIsNotDisturbedByAFlood) {
    StartServer("AutoViewComment=1\r\nAlarmPopup=1\r\n");
    Alarm();
    ASSERT_TRUE(WaitFor([&] {
        screen.Keys(kMain, "ctrl+1 Home F2");
        return screen.HasWindow("Bakery");
    }));
    ASSERT_TRUE(screen.AwaitActive("Bakery"));
    const std::string typed = "The owner has been called and comes with the key in ten minutes from now on";
    std::thread flood([this] {
        for (int i = 0; i < 20; ++i) {
            Alarms(10);
            ::usleep(250'000);
        }
    });
    screen.Type(typed);
    flood.join();
    EXPECT_TRUE(screen.AwaitActive("Bakery"));
    screen.Do("key ctrl+s");
    EXPECT_TRUE(WaitFor([&] {
        return server.Data().Read("Comments\\Town\\100001.TXT").find(typed) != Text::npos;
    })) << server.Data().Read("Comments\\Town\\100001.TXT");
    EXPECT_GT(server.EventFiles().size(), 0u);
}

// One key takes the sheet out of the main window and back, from the list as from the sheet.
TEST_F(WindowManagerTest, TheSheetLeavesTheListAndComesBack) {
    StartServer("CommentSheetPlace=1\r\n");
    Alarm();
    // The row comes some moments behind the alarm; until then there is nothing to open.
    const auto leaves = [this] {
        screen.Keys(kMain, "ctrl+1 shift+F6");
        for (int i = 0; i < 100 && !screen.HasWindow("Bakery"); ++i) ::usleep(100'000);
        return screen.HasWindow("Bakery");
    };
    ASSERT_TRUE(WaitFor([&] {
        ::usleep(700'000);
        screen.Keys(kMain, "ctrl+1 Home F2");
        ::usleep(700'000);
        EXPECT_FALSE(screen.HasWindow("Bakery")) << "it stands beside the list";
        return leaves();
    }));
    ASSERT_TRUE(screen.AwaitActive("Bakery"));
    EXPECT_TRUE(WaitFor([&] {
        return server.Data().Read("Settings\\Nordkeep.INI").find("CommentSheetPlace=0") != Text::npos;
    }));
    screen.Do("key shift+F6");
    EXPECT_TRUE(WaitFor([&] { return !screen.HasWindow("Bakery"); }));
    ASSERT_TRUE(screen.AwaitActive(kMain));
    screen.Do("key shift+F6");
    EXPECT_TRUE(screen.AwaitActive("Bakery"));
    screen.Keys(kMain, "ctrl+1 shift+F6");
    EXPECT_TRUE(WaitFor([&] { return !screen.HasWindow("Bakery"); }))
        << "from the list, with the sheet behind";
}

// The screen on which it stood is gone: a smaller one has to show all of it.
TEST_F(WindowManagerTest, AWindowThatStoodOnAnotherScreenComesBackIntoSight) {
    {
        const VirtualScreen wide("2560x900x24");
        server.StartOnDisplay(wide.Display());
        ASSERT_TRUE(WaitFor([&] { return wide.HasWindow(kMain); })) << server.Output();
        wide.Do(
            "search --onlyvisible --name '^Nordkeep - ' windowsize --sync 900 700 windowmove --sync 1500 "
            "100");
        ASSERT_TRUE(WaitFor([&] { return wide.LeftOf(kMain).value_or(0) > 1400; }));
        ASSERT_EQ(server.Stop(), 0);
    }
    server.StartOnDisplay(screen.Display());
    ASSERT_TRUE(WaitFor([&] { return screen.HasWindow(kMain); })) << server.Output();
    const int left = screen.LeftOf(kMain).value_or(-1);
    EXPECT_GE(left, 0);
    EXPECT_LE(left, 1280 - 900 + 8) << "all of it but for the frame";
}

// Without a place among the programs it goes into the tray, from which a click or an alarm fetches it.
TEST_F(WindowManagerTest, AWindowInTheTrayComesBack) {
    NORDKEEP_NEEDS("trayer", "trayer");
    screen.Run({"trayer", "--edge", "bottom", "--align", "left", "--width", "100", "--widthtype", "pixel"});
    ASSERT_TRUE(WaitFor([&] { return screen.HasWindow("^panel$"); }));
    StartServer("ShowInTaskBar=0\r\nAlarmPopup=1\r\n");
    const auto minimise = [this] {
        screen.Do("search --onlyvisible --name '^Nordkeep - ' windowminimize");
        return WaitFor([&] {
            return !screen.Do("search --name '^Nordkeep - ' getwindowgeometry") || !screen.HasWindow(kMain);
        });
    };
    ASSERT_TRUE(minimise());
    screen.Do("mousemove 12 890 click 1");
    EXPECT_TRUE(screen.AwaitActive(kMain)) << "a click on the sign";
    ASSERT_TRUE(minimise());
    Alarm();
    EXPECT_TRUE(WaitFor([&] { return screen.HasWindow(kMain); })) << "an alarm";
}

TEST_F(WindowManagerTest, AMinimisedWindowComesBackForAnAlarm) {
    StartServer("AlarmPopup=1\r\n");
    screen.Do("search --onlyvisible --name '^Nordkeep - ' windowminimize");
    ASSERT_TRUE(WaitFor([&] { return !screen.HasWindow(kMain); }));
    Alarm();
    EXPECT_TRUE(WaitFor([&] { return screen.HasWindow(kMain); })) << server.Output();
}

}  // namespace
}  // namespace nordkeep
