#include "app/settings/KnownSettings.h"
#include "runtime/Fields.h"

#include <gtest/gtest.h>

#include <fstream>
#include <map>

namespace nordkeep {
namespace {

/// "file section key" to the default, as the code has it.
using Keys = std::map<Text, Text>;

/// Families of keys, such as COM1 and COM2, are told in prose.
Keys KeysOfTheTables() {
    Keys keys;
    for (const KnownSetting& known : KnownSettings().All()) {
        const char* file = known.scope == SettingScope::Port ? "port " : "main ";
        if (!known.isFamily) keys.emplace(file + known.section + " " + known.key, known.byDefault);
    }
    return keys;
}

/// The cells of a row "| a | b |".
std::vector<Text> Cells(const Text& row) {
    std::vector<Text> cells;
    std::size_t start = 2;
    for (std::size_t end = row.find(" |", start); end != Text::npos; end = row.find(" |", start)) {
        cells.push_back(row.substr(start, end - start));
        start = end + 3;
    }
    return cells;
}

/// The same of the document: rows "| section | `key` | default | ..." below a heading that names the file.
Keys KeysOfTheDocument() {
    Keys keys;
    std::ifstream file(NORDKEEP_SOURCE_DIR "/docs/settings.md");
    Text prefix;
    for (Text line; std::getline(file, line);) {
        if (line.starts_with("## ")) prefix = line.find("Port") != Text::npos ? "port " : "main ";
        if (!line.starts_with("| ") || line.find('`') == Text::npos) continue;
        const std::vector<Text> cells = Cells(line);
        const Text key = ReplaceAll(cells.at(1), "`", "");
        const Text byDefault = ReplaceAll(ReplaceAll(cells.at(2), "\\|", "|"), "`", "");
        keys[prefix + cells.at(0) + " " + key] = byDefault == "empty" ? Text() : byDefault;
    }
    return keys;
}

TEST(SettingsDocument, HasNoKeyThatTwoTablesTellDifferently) {
    EXPECT_EQ(KnownSettings().Contradictions(), std::vector<Text>());
}

TEST(SettingsDocument, TellsEveryKeyAndItsDefault) {
    const Keys tables = KeysOfTheTables();
    const Keys document = KeysOfTheDocument();
    EXPECT_GT(tables.size(), 100u);
    for (const auto& [key, byDefault] : tables) {
        if (std::getenv("NORDKEEP_LIST_SETTINGS"))
            std::printf("KEY\t%s\t%s\n", key.c_str(), byDefault.c_str());
        EXPECT_TRUE(document.contains(key)) << key;
        if (!document.contains(key)) continue;
        EXPECT_EQ(document.at(key), byDefault) << key;
    }
    for (const auto& [key, byDefault] : document)
        EXPECT_TRUE(tables.contains(key)) << key << " is in no table";
}

}  // namespace
}  // namespace nordkeep
