#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <string>

// Manual and completion, made by the build from the option tables and the documents.
namespace {

namespace fs = std::filesystem;
const fs::path kPapers = fs::path(NORDKEEP_BIN_DIR).parent_path() / "papers";

std::string Said(const std::string& command) {
    FILE* pipe = popen(("{ " + command + "\n} 2>&1").c_str(), "r");
    std::string output;
    char buffer[4096];
    while (const std::size_t got = fread(buffer, 1, sizeof buffer, pipe)) output.append(buffer, got);
    pclose(pipe);
    return output;
}

bool IsThere(const std::string& program) {
    return Said("command -v " + program + " >/dev/null && echo yes") == "yes\n";
}

TEST(Manual, EveryPageIsWithoutAWarning) {
    if (!IsThere("man")) GTEST_SKIP() << "skipped: no man";
    int pages = 0;
    for (const auto& page : fs::directory_iterator(kPapers / "man")) {
        const std::string path = page.path().string();
        EXPECT_EQ(Said("man --warnings -E UTF-8 -l -Tutf8 -Z '" + path + "' >/dev/null"), "") << path;
        const std::string text = Said("MANWIDTH=100 man -E UTF-8 -l '" + path + "'");
        EXPECT_NE(text.find("NAME\n"), std::string::npos) << path;
        EXPECT_EQ(text.find("@OPTIONS@"), std::string::npos) << path;
        ++pages;
    }
    EXPECT_GE(pages, 7);
}

TEST(Manual, HasEveryKeyAndEveryOption) {
    if (!IsThere("man")) GTEST_SKIP() << "skipped: no man";
    const auto has = [](const std::string& page, const std::string& text) {
        return Said("MANWIDTH=100 man -E UTF-8 -l '" + (kPapers / "man" / page).string() + "'").find(text) !=
               std::string::npos;
    };
    EXPECT_TRUE(has("nordkeep.ini.5", "AlarmSoundFile [General]"));
    EXPECT_TRUE(has("nordkeep.ini.5", "SubjectFilter"));
    EXPECT_TRUE(has("nordkeepd.8", "/FORCEDISABLEPORTS"));
    EXPECT_TRUE(has("nordkeep-send.1", "--number-codes"));
}

// What a menu and a software centre read.
TEST(MenuEntry, IsAsTheDesktopWantsIt) {
    if (!IsThere("appstreamcli") || !IsThere("desktop-file-validate"))
        GTEST_SKIP() << "skipped: no appstream";
    EXPECT_EQ(Said("desktop-file-validate " NORDKEEP_SOURCE_DIR "/packaging/nordkeep.desktop"), "");
    const std::string said =
        Said("appstreamcli validate --no-net --no-color " +
             (kPapers / "com.corvane.nordkeep.metainfo.xml").string() + "; echo status $?");
    EXPECT_NE(said.find("status 0"), std::string::npos) << said;
}

/// What bash offers behind these words, of which the last one is being written.
std::string Offered(const std::string& program, const std::string& words) {
    const std::string line = program + " " + words;
    std::string function = "_" + program;
    for (char& c : function) c = c == '-' ? '_' : c;
    return Said("exec bash -c 'source " + (kPapers / program).string() +
                ".bash; compopt() { :; }; COMP_LINE=\"" + line +
                "\"; COMP_POINT=${#COMP_LINE}; COMP_WORDS=(" + line +
                "); COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); " + function + "; echo ${COMPREPLY[@]}'");
}

TEST(Completion, OffersWhatTheProgramsKnow) {
    EXPECT_EQ(Offered("nordkeep", "/MA"), "/MAXIMIZE\n");
    EXPECT_EQ(Offered("nordkeepd", "--ch"), "--check\n");
    EXPECT_EQ(Offered("nordkeepd", "/PATH:/us"), "/usr\n");
    EXPECT_EQ(Offered("nordkeep-send", "--format dc09"), "dc09 dc09cid dc09null\n");
    EXPECT_EQ(Offered("nordkeep-send", "--num"), "--number-codes\n");
    EXPECT_EQ(Offered("nordkeep-export", "--o"), "--once\n");
}

TEST(Completion, IsReadByZsh) {
    if (!IsThere("zsh")) GTEST_SKIP() << "skipped: no zsh";
    for (const char* program : {"nordkeep", "nordkeepd", "nordkeep-send", "nordkeep-export", "NKCopy"}) {
        const std::string path = (kPapers / ("_" + std::string(program))).string();
        EXPECT_EQ(Said("zsh -n '" + path + "'"), "");
        // Read as a completion, and run, in a shell without a line editor: what is wrong with it is said.
        EXPECT_EQ(Said("zsh -fc 'autoload -U compinit; fpath=(" + kPapers.string() +
                       " $fpath); compinit -D -u; "
                       "[[ ${_comps[" +
                       program + "]} == _" + program + " ]] || echo not found'"),
                  "");
    }
}

}  // namespace
