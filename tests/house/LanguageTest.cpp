#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <regex>
#include <set>
#include <string>

namespace {

namespace fs = std::filesystem;
using Texts = std::map<int, std::string>;

std::string Read(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

Texts ReadLanguage(const std::string& number) {
    Texts texts;
    const std::string content = Read(fs::path(NORDKEEP_SOURCE_DIR) / "languages" / ("NK_Lang." + number));
    const std::regex line("([0-9]+)=([^\r\n]*)\r\n");
    for (std::sregex_iterator at(content.begin(), content.end(), line), end; at != end; ++at) {
        texts.emplace(std::stoi((*at)[1]), (*at)[2]);
    }
    return texts;
}

/// Numbers of texts that the sources name: constants with "Text" in their name, and the four-digit label and
/// status columns of tables.
std::set<int> NumbersInSources() {
    std::set<int> numbers;
    const std::regex constant(R"(k\w*Text\w* = (\d+);)");
    const std::regex column(R"([ ,{](1049|105[0-2]|2[0-2]\d\d)\b)");
    const std::regex heading(R"(\b(9[1-4]\d|98\d)\b)");
    for (const char* folder :
         {"runtime", "store", "translation", "pipeline", "ports", "network", "console", "app"}) {
        for (const auto& entry : fs::directory_iterator(fs::path(NORDKEEP_SOURCE_DIR) / folder)) {
            if (entry.path().extension() != ".cpp") continue;
            const std::string source = Read(entry.path());
            const bool hasHeadings = entry.path().filename() == "AlarmText.cpp";
            for (const std::regex& pattern : {constant, hasHeadings ? heading : column}) {
                for (std::sregex_iterator at(source.begin(), source.end(), pattern), end; at != end; ++at) {
                    numbers.insert(std::stoi((*at)[1]));
                }
            }
        }
    }
    return numbers;
}

TEST(LanguageFiles, HoldEveryNumberThatTheSourcesUse) {
    const Texts english = ReadLanguage("044");
    const Texts swedish = ReadLanguage("046");
    const std::set<int> used = NumbersInSources();
    EXPECT_GT(used.size(), 100u) << "the test looks in the wrong place";
    for (const int number : used) {
        EXPECT_TRUE(english.contains(number)) << number;
        EXPECT_TRUE(swedish.contains(number)) << number;
    }
}

TEST(LanguageFiles, AgreeOnNumbersAndOnTheBlanksThatJoinTexts) {
    const Texts english = ReadLanguage("044");
    const Texts swedish = ReadLanguage("046");
    EXPECT_GT(english.size(), 300u);
    for (const auto& [number, text] : english) {
        ASSERT_TRUE(swedish.contains(number)) << number;
        const std::string& other = swedish.at(number);
        EXPECT_FALSE(text.empty()) << number;
        EXPECT_EQ(text.front() == ' ', other.front() == ' ') << number;
        EXPECT_EQ(text.back() == ' ', other.back() == ' ') << number;
        EXPECT_EQ(text.find('=') == std::string::npos, true) << number;
    }
    EXPECT_EQ(english.size(), swedish.size());
}

}  // namespace
