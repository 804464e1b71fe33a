#include "platform/ChildProcess.h"
#include "tests/app/ground/RunningCopy.h"
#include "tests/app/ground/Shell.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <regex>

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
    EXPECT_TRUE(std::regex_match(RunProgram("--version"),
                                 std::regex("nordkeep " NORDKEEP_VERSION "( \\([0-9a-f]{12}\\))?\n")));
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

/// A folder in front of the search path with a systemctl that notes its words and ends with a status.
class FakeSystemctl {
 public:
    explicit FakeSystemctl(int status) : path_(std::getenv("PATH")) {
        const std::string file = folder_.Path() + "/systemctl";
        WriteFile(file,
                  "#!/bin/sh\necho \"$@\" >>" + folder_.Path() + "/told\nexit " + std::to_string(status));
        std::filesystem::permissions(file, std::filesystem::perms::owner_all);
        setenv("PATH", (folder_.Path() + ":" + path_).c_str(), 1);
        setenv("NORDKEEP_UNIT_FOLDER", folder_.Path().c_str(), 1);
    }
    ~FakeSystemctl() {
        setenv("PATH", path_.c_str(), 1);
        unsetenv("NORDKEEP_UNIT_FOLDER");
    }
    FakeSystemctl(const FakeSystemctl&) = delete;
    FakeSystemctl& operator=(const FakeSystemctl&) = delete;

    Text Told() const { return folder_.Read("told"); }
    Text Unit() const { return folder_.Read("nordkeep.service"); }
    const std::string& UnitFolder() const { return folder_.Path(); }

 private:
    TempFolder folder_{};
    std::string path_;
};

TEST(Start, InstallsAndRemovesTheServiceAndTellsTheServiceManager) {
    const FakeSystemctl systemctl(0);
    TempFolder data;
    data.Write("Settings\\Nordkeep.INI", "[General]\r\nLanguage=044\r\n");
    const std::string path = "\"/PATH:" + data.Path() + "\"";
    int status = 1;
    EXPECT_EQ(RunProgram("/I " + path, &status), "Nordkeep service installation succeeded\n");
    EXPECT_EQ(status, 0);
    const Text unit = systemctl.Unit();
    EXPECT_NE(unit.find("\" /RunAsService \"/PATH:" + data.Path() + "\""), Text::npos) << unit;
    EXPECT_EQ(RunProgram("/U " + path, &status), "Nordkeep service uninstalled successfully\n");
    EXPECT_EQ(RunProgram("/U " + path, &status), "Nordkeep failed to uninstall as service: cannot remove " +
                                                     systemctl.UnitFolder() + "/nordkeep.service\n");
    EXPECT_EQ(status, 1);
    EXPECT_EQ(systemctl.Told(), "daemon-reload\ndaemon-reload\n");
    EXPECT_FALSE(FolderExists(data.Resolve("LogFiles"))) << "a quiet end leaves nothing behind";
}

TEST(Start, SaysWhenTheServiceManagerCannotBeTold) {
    const FakeSystemctl systemctl(1);
    TempFolder data;
    int status = 1;
    const std::string output = RunProgram("/I \"/PATH:" + data.Path() + "\"", &status);
    EXPECT_NE(output.find("run \"systemctl daemon-reload\""), std::string::npos) << output;
    EXPECT_EQ(status, 0) << "the unit is written";
    EXPECT_FALSE(systemctl.Unit().empty());
}

// Programs in bin and all else in share, as packages lay them.
TEST(Start, InstalledCopyWorksInTheFolderOfItsUser) {
    namespace fs = std::filesystem;
    TempFolder prefix;
    const fs::path root = prefix.Path();
    fs::create_directories(root / "bin");
    fs::create_directories(root / "share/nordkeep");
    fs::copy(fs::path(NORDKEEP_BIN_DIR) / "nordkeep", root / "bin/nordkeep");
    for (const auto& entry : fs::directory_iterator(NORDKEEP_BIN_DIR)) {
        const std::string name = entry.path().filename();
        if (name.starts_with("NK_Lang.") || name.find(".Default_") != std::string::npos)
            fs::copy(entry.path(), root / "share/nordkeep" / name);
    }
    ChildProcess program;
    ASSERT_TRUE(program.Start("/usr/bin/env",
                              {"XDG_DATA_HOME=" + (root / "of user").string(), "NORDKEEP_UNATTENDED=1",
                               "QT_QPA_PLATFORM=offscreen", (root / "bin/nordkeep").string()}));
    EXPECT_TRUE(WaitFor([&] { return fs::is_directory(root / "of user/nordkeep/LogFiles"); }));
    program.Stop();
    EXPECT_TRUE(WaitFor([&] { return !program.IsRunning(); }));
    EXPECT_TRUE(fs::exists(root / "of user/nordkeep/Settings/Nordkeep.INI"));
    EXPECT_FALSE(fs::exists(root / "bin/Settings"));
}

// The sanitizers bring checks of their own.
#ifndef __SANITIZE_ADDRESS__
TEST(Start, ProgramsAreLinkedSoThatAFaultInMemoryEndsThem) {
    for (const char* program : {"nordkeep", "nordkeepd", "nordkeep-send", "nordkeep-export", "NKCopy"}) {
        const std::string file = NORDKEEP_BIN_DIR "/" + std::string(program);
        const std::string told = Shell("readelf -hlds " + file).output;
        for (const char* mark : {"DYN (Position-Independent", "GNU_RELRO", "BIND_NOW", "__stack_chk_fail"})
            EXPECT_NE(told.find(mark), std::string::npos) << program << " " << mark;
        EXPECT_EQ(told.find("GNU_STACK      0x000000 RWE"), std::string::npos) << program;
    }
}
#endif

}  // namespace
}  // namespace nordkeep
