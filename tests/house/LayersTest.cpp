#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;
using Folders = std::set<std::string>;

/// What one folder may include.
struct Layer {
    Folders uses{};
    Folders only{};  // headers; of a folder named here nothing else
    Folders may{};   // qt, system, threads
};

Folders WordsOf(const std::string& text) {
    std::istringstream words(text);
    return {std::istream_iterator<std::string>(words), {}};
}

// The table of CMakeLists.txt, as the configuration wrote it down.
std::map<std::string, Layer> ReadLayers() {
    std::map<std::string, Layer> layers;
    std::ifstream file(NORDKEEP_LAYERS_FILE);
    for (std::string line; std::getline(file, line);) {
        std::istringstream fields(line);
        std::string folder, uses, only, may;
        std::getline(fields, folder, '|');
        std::getline(fields, uses, '|');
        std::getline(fields, only, '|');
        std::getline(fields, may, '|');
        layers[folder] = {WordsOf(uses), WordsOf(only), WordsOf(may)};
    }
    return layers;
}

const std::map<std::string, Layer> kLayers = ReadLayers();

std::string FolderOf(const std::string& include) {
    return fs::path(include).parent_path().string();
}

bool MayInclude(const std::string& folder, const std::string& header) {
    const std::string target = FolderOf(header);
    if (target == folder) return true;
    const Layer& layer = kLayers.at(folder);
    if (!layer.uses.contains(target)) return false;
    const auto isOfTarget = [&](const std::string& named) { return FolderOf(named) == target; };
    return std::ranges::none_of(layer.only, isOfTarget) || layer.only.contains(header);
}

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

TEST(Layers, EveryIncludeFollowsAnArrow) {
    std::size_t seen = 0;
    for (const auto& [folder, layer] : kLayers) {
        for (const Include& include : IncludesOf(folder)) {
            if (!include.isOwn) continue;
            ++seen;
            EXPECT_TRUE(MayInclude(folder, include.text))
                << folder << "/" << include.file << " includes " << include.text;
        }
    }
    EXPECT_GT(seen, 1000u) << "the test looks in the wrong place";
}

TEST(Layers, NoArrowsMakeACircle) {
    for (const auto& [folder, layer] : kLayers) {
        for (const std::string& used : layer.uses) {
            const auto other = kLayers.find(used);
            EXPECT_TRUE(other == kLayers.end() || !other->second.uses.contains(folder))
                << folder << " and " << used << " may include each other";
        }
    }
}

TEST(Layers, QtAndTheSystemStayInTheirFolders) {
    const std::regex systemHeader(
        R"(^(sys/|netinet/|arpa/|unistd\.h|fcntl\.h|termios\.h|signal\.h|poll\.h))");
    for (const auto& [folder, layer] : kLayers) {
        for (const Include& include : IncludesOf(folder)) {
            if (include.isOwn) continue;
            const bool isQt = include.text.starts_with("Q") || include.text.starts_with("Qt");
            EXPECT_TRUE(!isQt || layer.may.contains("qt"))
                << folder << "/" << include.file << " includes <" << include.text << ">";
            EXPECT_TRUE(!std::regex_search(include.text, systemHeader) || layer.may.contains("system"))
                << folder << "/" << include.file << " includes <" << include.text << ">";
        }
    }
}

TEST(Layers, ThreadsAndTheirBrokerStayInOneFolder) {
    const std::regex guarded(R"(^(thread|mutex|condition_variable|future|pthread\.h|amqp.*\.h)$)");
    for (const auto& [folder, layer] : kLayers) {
        for (const Include& include : IncludesOf(folder)) {
            EXPECT_TRUE(layer.may.contains("threads") || !std::regex_match(include.text, guarded))
                << folder << "/" << include.file << " includes <" << include.text << ">";
        }
    }
}

TEST(Layers, NoFolderIsLeftOut) {
    for (const auto& entry : fs::recursive_directory_iterator(NORDKEEP_SOURCE_DIR)) {
        const std::string relative = fs::relative(entry.path(), NORDKEEP_SOURCE_DIR).string();
        const std::string top = relative.substr(0, relative.find('/'));
        const Folders outside = {"build", "bench", "tools", "packaging", "cmake", ".git"};
        const std::string folder = FolderOf(relative);
        if (outside.contains(top) || entry.path().extension() != ".cpp") continue;
        EXPECT_TRUE(folder == "tests/doubles" || kLayers.contains(folder)) << relative;
    }
}

// A folder that grows past what one can look over holds two subjects.
TEST(Layers, NoRoomIsOverfull) {
    constexpr int kMostFiles = 56;
    std::map<std::string, int> files;
    for (const auto& [folder, layer] : kLayers) {
        for (const auto& entry : fs::directory_iterator(fs::path(NORDKEEP_SOURCE_DIR) / folder))
            if (entry.is_regular_file()) ++files[folder];
    }
    for (const auto& [folder, count] : files) EXPECT_LE(count, kMostFiles) << folder;
}

}  // namespace
