#include "tests/app/ground/RunningCopy.h"

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <algorithm>
#include <filesystem>

namespace nordkeep {
namespace {

namespace fs = std::filesystem;

struct Ran {
    std::string output{};
    int status = 0;
};

/// Runs the program in a shell that has no screen for it; standard error comes with standard output.
Ran RunProgram(const std::string& arguments) {
    const std::string command = std::string(NORDKEEP_BIN_DIR) + "/nordkeep " + arguments + " 2>&1";
    FILE* pipe = popen(command.c_str(), "r");
    Ran ran;
    char buffer[512];
    while (const std::size_t got = fread(buffer, 1, sizeof buffer, pipe)) ran.output.append(buffer, got);
    ran.status = WEXITSTATUS(pclose(pipe));
    return ran;
}

Ran RunCheck(const std::string& folder) {
    return RunProgram("--check \"/PATH:" + folder + "\"");
}

/// Every name, size and time below a folder.
std::vector<std::string> Everything(const std::string& folder) {
    std::vector<std::string> all;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        const FileStamp stamp = StampOf(entry.path().string());
        all.push_back(entry.path().string() + " " + std::to_string(stamp.size) + " " +
                      std::to_string(stamp.modifiedNs));
    }
    std::ranges::sort(all);
    return all;
}

std::string PortLines(int number) {
    return "PortType=TCPS\r\nBindSocketToAddress=127.0.0.1\r\nPortNumber=" + std::to_string(number) + "\r\n";
}

TEST(CheckCommand, PrintsALineForEachFindingAndCountsThem) {
    TempFolder data;
    data.Write("Settings\\Nordkeep.INI",
               "[General]\r\nLanguage=046\r\nMaxAlarmDay=9\r\nJournalDays=9 dagar\r\n");
    const auto before = Everything(data.Path());
    const Ran wrong = RunCheck(data.Path());
    EXPECT_EQ(wrong.output,
              "Settings/Nordkeep.INI:3: error: \"MaxAlarmDay\" är ingen nyckel i avsnittet General och läses "
              "inte - menas \"MaxAlarmDays\"?\n"
              "Settings/Nordkeep.INI:4: warning: JournalDays ska vara ett tal, \"9 dagar\" läses som 9\n"
              "1 errors, 1 warnings\n");
    EXPECT_EQ(wrong.status, 1);
    EXPECT_EQ(Everything(data.Path()), before) << "a check changes nothing";
    data.Write("Settings\\Nordkeep.INI", "[General]\r\nLanguage=044\r\nJournalDays=9 days\r\n");
    EXPECT_EQ(RunCheck(data.Path()).status, 0) << "warnings are no errors";
    EXPECT_EQ(RunCheck(data.Path() + "/none").status, 2);
    EXPECT_FALSE(FolderExists(data.Path() + "/none"));
    EXPECT_EQ(RunCheck(data.Path() + "/Settings/Nordkeep.INI").status, 2) << "a file is no folder";
}

// The rest is missing in the lists of every workstation, and nobody would know why.
TEST(CheckCommand, TellsOfObjectsThatWorkstationsDoNotSee) {
    TempFolder data;
    Text objects = "FORMAT=1,6,0,0,7,2\r\n";
    for (int i = 0; i < 32'768; ++i) objects += std::to_string(100'000 + i) + ";House\r\n";
    data.Write("Settings\\Town.IDCode", objects);
    const auto main = [](const Text& clients) {
        return "[General]\r\nLanguage=044\r\n[NetWork]\r\nClientAddresses=" + clients + "\r\n";
    };
    data.Write("Settings\\Nordkeep.INI", main(""));
    EXPECT_EQ(RunCheck(data.Path()).output.find("Town.IDCode"), std::string::npos);
    data.Write("Settings\\Nordkeep.INI", main("127.0.0.1"));
    const std::string output = RunCheck(data.Path()).output;
    EXPECT_NE(output.find("Town.IDCode:32769: warning: 32768 objects, workstations see the first 32767 only"),
              std::string::npos)
        << output;
}

TEST(CheckCommand, RunsBesideARunningCopy) {
    RunningCopy copy;
    copy.WriteMainSettings();
    copy.AddPort("Port1", PortLines(FreePort()), "Robofon=Missing");
    copy.Start();
    EXPECT_TRUE(copy.WaitForOutput("Port opened"));
    const Ran ran = RunCheck(copy.Data().Path());
    EXPECT_NE(ran.output.find("Settings/Missing.IDCode\n1 errors, 0 warnings\n"), std::string::npos)
        << ran.output;
    EXPECT_EQ(ran.status, 1);
    EXPECT_EQ(copy.Stop(), 0);
}

TEST(CheckCommand, RefusesAnUnknownOptionBeforeAnythingIsTouched) {
    TempFolder data;
    for (const char* option : {"--chekc", "-x", "-platform"}) {
        const Ran ran =
            RunProgram(std::string(option) + " /RunAsService \"/PATH:" + data.Path() + "/new\" offscreen");
        EXPECT_EQ(ran.output, "nordkeep: unknown option " + std::string(option) + ", see --help\n");
        EXPECT_EQ(ran.status, 2) << option;
    }
    EXPECT_TRUE(Everything(data.Path()).empty());
    EXPECT_EQ(RunProgram("-V").output, RunProgram("--version").output);
    EXPECT_EQ(RunProgram("-h").output, RunProgram("--help").output);
    EXPECT_NE(RunProgram("-h").output.find("--check"), std::string::npos);
}

TEST(RunningCheck, TellsTheLogWhatItFindsAtTheStartAndAtAReload) {
    RunningCopy copy;
    copy.WriteMainSettings("AutoReloadTranslations=5\r\nJournalDays=9 days");
    copy.AddPort("Port1", PortLines(FreePort()), "Robofon=A");
    copy.Data().Write("Settings\\A.IDCode", "FORMAT=1,6\r\n100001;Bakery;abc;;\r\n");
    copy.Start();
    EXPECT_TRUE(copy.WaitForOutput(" 1 Settings/A.IDCode:2: Alive test 1: \"abc\""));
    EXPECT_TRUE(copy.WaitForOutput(" 3 Settings/Nordkeep.INI:"));
    copy.Data().Write("Settings\\A.IDCode", "FORMAT=1,6\r\n100001;Bakery;30;;\r\nrubbish\r\n");
    EXPECT_TRUE(copy.WaitForOutput("Settings/A.IDCode:3: The row has no \";\""));
    EXPECT_EQ(copy.Stop(), 0);
}

TEST(RunningCheck, TellsTheFirstFiftyAndHowManyMore) {
    RunningCopy copy;
    copy.WriteMainSettings();
    copy.AddPort("Port1", PortLines(FreePort()), "Robofon=A");
    Text rows = "FORMAT=1,6\r\n";
    for (int i = 0; i < 70; ++i) rows += "rubbish " + std::to_string(i) + "\r\n";
    copy.Data().Write("Settings\\A.IDCode", rows);
    copy.Start();
    EXPECT_TRUE(copy.WaitForOutput("and 20 more findings"));
    EXPECT_EQ(copy.Output().find("A.IDCode:52:"), std::string::npos);
    EXPECT_EQ(copy.Stop(), 0);
}

TEST(Refusals, APortWithoutANumberIsNotOpened) {
    RunningCopy copy;
    const int number = FreePort();
    copy.WriteMainSettings();
    copy.AddPort("Port1", "PortType=TCPS\r\nPortNumber=abc\r\n");
    copy.AddPort("Port2", "PortType=UDP\r\nMessageFormat=2\r\nPortNumber=70000\r\n");
    copy.AddPort("Port3", "PortType=SMTP\r\nMessageFormat=11\r\n");
    copy.AddPort("Port4", PortLines(number));
    copy.Start();
    EXPECT_TRUE(copy.WaitForOutput("Port opened: 'Port4' (PortSettings = 0:" + std::to_string(number)));
    EXPECT_TRUE(copy.WaitForOutput("PortNumber \"0\" is no number from 1 to 65535"));
    EXPECT_TRUE(copy.WaitForOutput("PortNumber \"70000\" is no number from 1 to 65535"));
    for (const char* port : {"'Port1'", "'Port2'", "'Port3'"})
        EXPECT_EQ(copy.Output().find(std::string("Port opened: ") + port), std::string::npos) << port;
    EXPECT_EQ(copy.Stop(), 0);
}

TEST(Refusals, ACopyThatOpensNoPortSaysSo) {
    RunningCopy copy;
    copy.Start();
    EXPECT_TRUE(copy.WaitForOutput(" 1 No port is open - no alarms are received"));
    EXPECT_TRUE(copy.WaitForOutput("There is no port yet."));
    EXPECT_EQ(copy.Stop(), 0);
}

TEST(Refusals, AServiceDoesNotStartOnAnotherFolder) {
    TempFolder data;
    data.Write("file", "");
    const Ran ran = RunProgram("/RunAsService \"/PATH:" + data.Path() + "/file/below\"");
    EXPECT_EQ(ran.status, 1);
    EXPECT_EQ(std::ranges::count(ran.output, '\n'), 1) << ran.output;
    EXPECT_NE(ran.output.find(data.Path() + "/file/below"), std::string::npos);
}

}  // namespace
}  // namespace nordkeep
