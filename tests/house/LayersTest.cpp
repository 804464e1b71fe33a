#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;
using Folders = std::set<std::string>;

// Which folder may include which; the same table as in CMakeLists.txt, held against every #include.
const std::map<std::string, Folders> kMayInclude = {
    {"platform", {}},
    {"platform/posix", {"platform"}},
    {"platform/amqp", {"platform"}},
    {"platform/qt", {"platform"}},
    {"runtime", {"platform"}},
    {"store", {"runtime", "platform"}},
    {"translation", {"runtime", "platform"}},
    {"pipeline", {"store", "translation", "runtime", "platform"}},
    {"ports", {"pipeline", "store", "translation", "runtime", "platform"}},
    {"network", {"pipeline", "store", "translation", "runtime", "platform"}},
    {"console", {"network", "ports", "pipeline", "store", "translation", "runtime", "platform"}},
    {"console/views",
     {"console", "platform/qt", "network", "ports", "pipeline", "store", "translation", "runtime",
      "platform"}},
    {"app",
     {"console/views", "console", "network", "ports", "pipeline", "store", "translation", "runtime",
      "platform", "platform/qt", "platform/amqp", "platform/posix"}},
};
const Folders kMayUseQt = {"platform/qt", "console/views", "app"};
const Folders kMayUseTheSystem = {"platform/posix", "platform/qt", "platform/amqp", "app"};

struct Include {
    std::string file;
    std::string text;
    bool isOwn;  // in quotes
};

std::vector<Include> IncludesOf(const std::string& folder) {
    std::vector<Include> includes;
    const std::regex pattern(R"re(^\s*#\s*include\s*(["<])([^">]+)[">])re");
    const fs::path path = fs::path(NORDKEEP_SOURCE_DIR) / folder;
    if (!fs::exists(path)) return includes;
    for (const auto& entry : fs::directory_iterator(path)) {
        if (entry.path().extension() != ".h" && entry.path().extension() != ".cpp") continue;
        std::ifstream file(entry.path());
        for (std::string line; std::getline(file, line);) {
            std::smatch match;
            if (!std::regex_search(line, match, pattern)) continue;
            includes.push_back({entry.path().filename().string(), match[2], match[1] == "\""});
        }
    }
    return includes;
}

std::string FolderOf(const std::string& include) {
    return fs::path(include).parent_path().string();
}

TEST(Layers, EveryIncludeFollowsAnArrow) {
    std::size_t seen = 0;
    for (const auto& [folder, allowed] : kMayInclude) {
        for (const Include& include : IncludesOf(folder)) {
            if (!include.isOwn) continue;
            ++seen;
            const std::string target = FolderOf(include.text);
            EXPECT_TRUE(target == folder || allowed.contains(target))
                << folder << "/" << include.file << " includes " << include.text;
        }
    }
    EXPECT_GT(seen, 100u) << "the test looks in the wrong place";
}

TEST(Layers, QtAndTheSystemStayInTheirFolders) {
    const std::regex systemHeader(
        R"(^(sys/|netinet/|arpa/|unistd\.h|fcntl\.h|termios\.h|signal\.h|poll\.h))");
    for (const auto& [folder, allowed] : kMayInclude) {
        for (const Include& include : IncludesOf(folder)) {
            if (include.isOwn) continue;
            const bool isQt = include.text.starts_with("Q") || include.text.starts_with("Qt");
            EXPECT_TRUE(!isQt || kMayUseQt.contains(folder))
                << folder << "/" << include.file << " includes <" << include.text << ">";
            EXPECT_TRUE(!std::regex_search(include.text, systemHeader) || kMayUseTheSystem.contains(folder))
                << folder << "/" << include.file << " includes <" << include.text << ">";
        }
    }
}

TEST(Layers, ThreadsAndTheirBrokerStayInOneFolder) {
    const std::regex guarded(R"(^(thread|mutex|condition_variable|future|pthread\.h|amqp.*\.h)$)");
    for (const auto& [folder, allowed] : kMayInclude) {
        for (const Include& include : IncludesOf(folder)) {
            EXPECT_TRUE(folder == "platform/amqp" || !std::regex_match(include.text, guarded))
                << folder << "/" << include.file << " includes <" << include.text << ">";
        }
    }
}

TEST(Layers, NoFolderIsLeftOut) {
    for (const auto& entry : fs::recursive_directory_iterator(NORDKEEP_SOURCE_DIR)) {
        const std::string relative = fs::relative(entry.path(), NORDKEEP_SOURCE_DIR).string();
        const std::string top = relative.substr(0, relative.find('/'));
        const Folders outside = {"build", "tests", "bench", "tools", "cmake", ".git"};
        if (outside.contains(top) || entry.path().extension() != ".cpp") continue;
        EXPECT_TRUE(kMayInclude.contains(FolderOf(relative))) << relative;
    }
}

}  // namespace
