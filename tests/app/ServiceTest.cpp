#include "app/start/ServiceUnit.h"
#include "tests/app/ground/RunningCopy.h"
#include "tests/app/ground/ServiceManager.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>

namespace nordkeep {
namespace {

TEST(Service, TellsTheServiceManagerHowItIs) {
    Manager manager;
    RunningCopy copy;
    const int port = FreePort();
    copy.WriteMainSettings();
    copy.AddPort("Port1",
                 "PortType=TCPS\r\nBindSocketToAddress=127.0.0.1\r\nPortNumber=" + std::to_string(port));
    copy.AddPort("Port2", "PortType=RS232\r\nPortNumber=9\r\n");
    copy.Start();
    EXPECT_TRUE(manager.Hears("STATUS=Ports open: 1/2, new alarms: 0\n"));
    EXPECT_TRUE(manager.Heard().starts_with("READY=1\n")) << manager.Heard();
    // No translation sets, and no line COM9.
    EXPECT_TRUE(manager.Hears("STATUS=Ports open: 1/2, new alarms: 0. 3 faults in "));
    manager.Forget();
    for (int i = 0; i < 4; ++i) {
        EXPECT_TRUE(manager.Hears("WATCHDOG=1\n"));
        manager.Forget();
    }
    Caller caller(port);
    caller.Send(RobofonTelegram("10000101"));
    EXPECT_TRUE(manager.Hears("STATUS=Ports open: 1/2, new alarms: 1. 3 faults in "));
    EXPECT_EQ(copy.Stop(), 0);
    EXPECT_TRUE(manager.Hears("STOPPING=1\n"));
}

/// What the tool says of a unit, with its exit status behind it.
std::string Analyze(const std::string& words) {
    FILE* pipe = popen(("systemd-analyze " + words + " 2>&1; echo status $?").c_str(), "r");
    std::string output;
    char buffer[512];
    while (const std::size_t got = fread(buffer, 1, sizeof buffer, pipe)) output.append(buffer, got);
    pclose(pipe);
    return output;
}

TEST(Service, MakesNothingThatOtherAccountsMayRead) {
    RunningCopy copy;
    copy.WriteMainSettings();
    const int port = FreePort();
    copy.AddPort("Port1",
                 "PortType=TCPS\r\nBindSocketToAddress=127.0.0.1\r\nPortNumber=" + std::to_string(port));
    copy.Start();
    const Caller caller(port);
    caller.Send(RobofonTelegram("10000101"));
    EXPECT_EQ(caller.Receive(1), "\x06");
    EXPECT_EQ(copy.Stop(), 0);
    for (const auto& entry : std::filesystem::recursive_directory_iterator(copy.Data().Path() + "/Data")) {
        using std::filesystem::perms;
        const perms mode = entry.status().permissions();
        EXPECT_EQ(mode & perms::others_all, perms::none) << entry.path();
        EXPECT_EQ(mode & perms::group_write, perms::none) << entry.path();
    }
}

TEST(Service, WritesLinesAsTheSystemsLogWantsThem) {
    RunningCopy copy;
    copy.WriteMainSettings();
    copy.AddPort("Port1", "PortType=TCPS\r\nPortNumber=none");
    ::setenv("JOURNAL_STREAM", "8:1234", 1);
    copy.Start();
    ::unsetenv("JOURNAL_STREAM");
    EXPECT_TRUE(copy.WaitForOutput("<3>"));
    EXPECT_EQ(copy.Stop(), 0);
    std::istringstream lines(copy.Output());
    for (std::string line; std::getline(lines, line);)
        EXPECT_TRUE(line.starts_with("<3>") || line.starts_with("<4>") || line.starts_with("<6>")) << line;
}

TEST(Service, UnitIsSoundAndConfined) {
    if (std::system("command -v systemd-analyze >/dev/null") != 0) GTEST_SKIP() << "no systemd-analyze";
    TempFolder units;
    const std::string unit = units.Path() + "/nordkeep.service";
    for (const char* folder :
         {"/srv/alarm data/100%", "/var/lib/nordkeep", "/var/lib/private/nordkeep", ""}) {
        units.Write("nordkeep.service", ServiceUnitText("/usr/bin/true", folder));
        EXPECT_EQ(Analyze("verify --man=no " + unit), "status 0\n") << units.Read("nordkeep.service");
        // The threshold is in tenths; the tool fails above it.
        const std::string report = Analyze("security --offline=true --threshold=24 --no-pager " + unit);
        EXPECT_NE(report.find("status 0"), std::string::npos) << folder << "\n" << report;
    }
}

TEST(Service, UnitRunsUnderTheAccountThatHasTheData) {
    const auto holds = [](const std::string& folder, const std::string& lines) {
        return ServiceUnitText("/opt/nordkeep/nordkeep", folder).find(lines) != std::string::npos;
    };
    TempFolder owned;
    ASSERT_EQ(::chown(owned.Path().c_str(), 65'534, 65'534), 0);
    EXPECT_TRUE(holds(owned.Path(), "\nUser=nobody\nGroup=nogroup\n"));
    EXPECT_TRUE(holds(owned.Path(), "\nPrivateTmp=no\n"));
    EXPECT_TRUE(holds("/srv/none",
                      "\nUser=root\nGroup=root\nStateDirectory=nordkeep\nReadWritePaths=\"/srv/none\"\n"));
    EXPECT_TRUE(holds("/var/lib/private/a b", "\nDynamicUser=yes\nUser=nordkeep\nStateDirectory=\"a b\"\n"));
    EXPECT_TRUE(holds("/var/lib/private/a b", "\"/PATH:/var/lib/a b\""));
    EXPECT_TRUE(holds("/home/anna/data", "\nProtectHome=read-only\nPrivateTmp=yes\n"));
    EXPECT_TRUE(holds("", "\nReadWritePaths=\"/opt/nordkeep\"\n"));
}

TEST(Service, ShippedUnitsAreSoundAndConfinedAsWell) {
    if (std::system("command -v systemd-analyze >/dev/null") != 0) GTEST_SKIP() << "no systemd-analyze";
    const std::string shipped = std::string(NORDKEEP_BIN_DIR) + "/../units/";
    TempFolder units;
    for (const char* name : {"nordkeep.service", "nordkeep@.service"}) {
        std::ifstream file(shipped + name, std::ios::binary);
        Text unit{std::istreambuf_iterator<char>(file), {}};
        EXPECT_EQ(unit.find("@COMMAND@"), Text::npos);
        EXPECT_NE(unit.find("/nordkeepd\" /RunAsService \"/PATH:"), Text::npos) << unit;
        // Where it is not installed yet, another program stands in for it.
        unit.replace(unit.find("ExecStart=") + 10, unit.find(" /RunAs") - unit.find("ExecStart=") - 10,
                     "/usr/bin/true");
        units.Write(name, unit);
        const std::string path = units.Path() + "/" + name;
        EXPECT_EQ(Analyze("verify --man=no " + path), "status 0\n") << unit;
        const std::string report = Analyze("security --offline=true --threshold=24 --no-pager " + path);
        EXPECT_NE(report.find("status 0"), std::string::npos) << report;
    }
}

TEST(Service, ProgramForServicesNeedsNothingOfADesktop) {
    FILE* pipe = popen("ldd " NORDKEEP_BIN_DIR "/nordkeepd", "r");
    std::string libraries;
    char buffer[512];
    while (const std::size_t got = fread(buffer, 1, sizeof buffer, pipe)) libraries.append(buffer, got);
    EXPECT_EQ(pclose(pipe), 0);
    EXPECT_NE(libraries.find("libQt6Core"), std::string::npos);
    for (const char* library : {"Qt6Gui", "Qt6Widgets", "Qt6PrintSupport", "Qt6Svg", "libX11", "libxcb",
                                "libGL", "libEGL", "fontconfig", "freetype", "libcups"})
        EXPECT_EQ(libraries.find(library), std::string::npos) << library;
}

TEST(Service, ProgramForServicesIsOneWithoutASwitch) {
    RunningCopy copy;
    const int port = FreePort();
    copy.UseProgram("nordkeepd");
    copy.WriteMainSettings();
    copy.AddPort("Port1",
                 "PortType=TCPS\r\nBindSocketToAddress=127.0.0.1\r\nPortNumber=" + std::to_string(port));
    copy.StartAsItIs();
    const Caller caller(port);
    caller.Send(RobofonTelegram("10000101"));
    EXPECT_EQ(caller.Receive(1), "\x06");
    EXPECT_EQ(copy.Stop(), 0);
    EXPECT_NE(copy.Output().find("Stand-alone, Service"), std::string::npos) << copy.Output();
}

}  // namespace
}  // namespace nordkeep
