#include "tests/app/RunningCopy.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

namespace nordkeep {
namespace {

std::string RunProgram(const std::string& arguments, int* status = nullptr) {
    // Nobody is there to answer what it shows, whatever the screen.
    const std::string command =
        "NORDKEEP_UNATTENDED=1 " + std::string(NORDKEEP_BIN_DIR) + "/nordkeep " + arguments + " 2>&1";
    FILE* pipe = popen(command.c_str(), "r");
    std::string output;
    char buffer[512];
    while (const std::size_t got = fread(buffer, 1, sizeof buffer, pipe)) output.append(buffer, got);
    const int result = pclose(pipe);
    if (status) *status = WEXITSTATUS(result);
    return output;
}

TEST(Start, AnswersInATerminal) {
    EXPECT_EQ(RunProgram("--version"), "nordkeep " NORDKEEP_VERSION "\n");
    EXPECT_NE(RunProgram("--help").find("/RunAsService"), std::string::npos);
}

TEST(Start, MakesANewInstallationFromTheTemplates) {
    RunningCopy copy;
    copy.Start({"/NOSUCH"});
    EXPECT_TRUE(copy.WaitForOutput("unknown switch /NOSUCH"));
    EXPECT_EQ(copy.Stop(), 0);
    for (const char* file : {"Settings\\Nordkeep.INI", "Settings\\Default.IDCode",
                             "Settings\\Default.TypeCode", "Settings\\Default.DataCode"}) {
        EXPECT_TRUE(copy.Data().Exists(file)) << file;
    }
    for (const char* path : {"Data\\Events", "LogFiles", "AlarmFiles", "Information", "Comments", "Maps"}) {
        EXPECT_TRUE(FolderExists(copy.Data().Resolve(path))) << path;
    }
    RemoveFile(copy.Data().Resolve("Settings\\Default.IDCode"));
    copy.Start();
    EXPECT_EQ(copy.Stop(), 0);
    EXPECT_FALSE(copy.Data().Exists("Settings\\Default.IDCode")) << "what was deleted stays deleted";
}

TEST(Start, ServiceTakesAnyLanguageRatherThanNone) {
    RunningCopy copy;
    copy.Data().Write("Settings\\Nordkeep.INI",
                      "[General]\r\nLanguage=999\r\nrubbish \xFF\x00\r\n[broken\r\n");
    copy.Start();
    EXPECT_TRUE(copy.WaitForOutput("No language has been chosen"));
    EXPECT_EQ(copy.Stop(), 0);
    EXPECT_EQ(copy.Data().Read("Settings\\Nordkeep.INI").find("Language=044"), Text::npos);
}

TEST(Start, SecondCopyOnTheSameFolderEnds) {
    RunningCopy copy;
    copy.Start();
    int status = 0;
    const std::string output = RunProgram("\"/PATH:" + copy.Data().Path() + "\"", &status);
    EXPECT_NE(output.find("already running"), std::string::npos) << output;
    EXPECT_EQ(status, 1);
    EXPECT_EQ(copy.Stop(), 0);
}

TEST(Start, CarriesOldNamesForwardAndOverwritesNothing) {
    RunningCopy copy;
    copy.Data().Write("Settings\\NORDSET.INI", "[General]\r\nLanguage=046\r\n");
    copy.Data().Write("Settings\\Templates\\Nordset_X.txt", "old");
    copy.Start();
    EXPECT_TRUE(copy.WaitForOutput("Nordkeep startat"));
    EXPECT_EQ(copy.Stop(), 0);
    EXPECT_TRUE(copy.Data().Exists("Settings\\Templates\\Nordkeep_X.txt"));
    EXPECT_FALSE(copy.Data().Exists("Settings\\Default.IDCode")) << "an old installation gets no defaults";
}

TEST(Start, InstallsAndRemovesTheService) {
    TempFolder units;
    setenv("NORDKEEP_UNIT_FOLDER", units.Path().c_str(), 1);
    TempFolder data;
    data.Write("Settings\\Nordkeep.INI", "[General]\r\nLanguage=044\r\n");
    int status = 1;
    EXPECT_EQ(RunProgram("/I \"/PATH:" + data.Path() + "\"", &status),
              "Nordkeep service installation succeeded\n");
    EXPECT_EQ(status, 0);
    const Text unit = units.Read("nordkeep.service");
    EXPECT_NE(unit.find("\" /RunAsService \"/PATH:" + data.Path() + "\""), Text::npos) << unit;
    EXPECT_EQ(RunProgram("/U \"/PATH:" + data.Path() + "\"", &status),
              "Nordkeep service uninstalled successfully\n");
    EXPECT_EQ(RunProgram("/U \"/PATH:" + data.Path() + "\"", &status),
              "Nordkeep failed to uninstall as service\n");
    EXPECT_EQ(status, 1);
    unsetenv("NORDKEEP_UNIT_FOLDER");
    EXPECT_FALSE(FolderExists(data.Resolve("LogFiles"))) << "a quiet end leaves nothing behind";
}

}  // namespace
}  // namespace nordkeep
