#include "app/CentreCheck.h"
#include "runtime/DefaultFiles.h"
#include "runtime/Fields.h"
#include "tests/doubles/TempFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <map>

namespace nordkeep {
namespace {

namespace fs = std::filesystem;

const fs::path kSource = NORDKEEP_SOURCE_DIR;
const fs::path kMistakes = kSource / "tests/data/mistakes";

struct Expected {
    Text file{};
    int line = 0;
    Text severity{};
    Text words{};
};

/// "case|file|line|severity|words" by case.
std::map<Text, std::vector<Expected>> ReadTable() {
    std::map<Text, std::vector<Expected>> table;
    const Text content = ReadFile(kMistakes / "table.txt").value_or("");
    for (const TextView line : Lines(content)) {
        const std::vector<Text> cells = Split(line, '|');
        if (cells.size() == 5)
            table[cells[0]].push_back({cells[1], LeadingInt32(cells[2]), cells[3], cells[4]});
    }
    return table;
}

/// A folder in a file's place, and the other way round, is a mistake too.
void CopyOver(const fs::path& from, const fs::path& to) {
    fs::create_directories(to);
    for (const fs::directory_entry& entry : fs::directory_iterator(from)) {
        const fs::path target = to / entry.path().filename();
        if (fs::exists(target) && entry.is_directory() != fs::is_directory(target)) fs::remove_all(target);
        entry.is_directory()
            ? CopyOver(entry.path(), target)
            : (void)fs::copy_file(entry.path(), target, fs::copy_options::overwrite_existing);
    }
    const Text without = ReadFile(from / "without.txt").value_or("");
    for (const TextView gone : Lines(without)) fs::remove(to / gone);
    fs::remove(to / "without.txt");
}

void KeepPasswordsPrivate(const TempFolder& centre) {
    const fs::path users = centre.Path() + "/Settings/Users.INI";
    if (fs::exists(users)) fs::permissions(users, fs::perms::owner_read | fs::perms::owner_write);
}

std::vector<Finding> Check(const NativePath& folder) {
    const FileTree data(folder);
    const FileTree program(NORDKEEP_BIN_DIR);
    Language language;
    EXPECT_TRUE(language.Load(program, "044"));
    CentreCheck check(data, program, language);
    while (check.Continue()) {
    }
    return check.Result().All();
}

Text TextOf(const Finding& finding) {
    return finding.file + ":" + std::to_string(finding.line) +
           (finding.severity == Severity::Error ? ": error: " : ": warning: ") + finding.sentence;
}

bool Fits(const Finding& finding, const Expected& expected) {
    return finding.file == expected.file && finding.line == expected.line &&
           (finding.severity == Severity::Error) == (expected.severity == "error") &&
           finding.sentence.find(expected.words) != Text::npos;
}

TEST(Mistakes, AreFoundEachOnItsLineAndNothingElseIs) {
    const auto table = ReadTable();
    EXPECT_GE(table.size(), 60u);
    for (const auto& [name, all] : table) {
        SCOPED_TRACE(name);
        TempFolder centre;
        CopyOver(kMistakes / "sound", centre.Path());
        CopyOver(kMistakes / name, centre.Path());
        if (name != "users-open-to-others") KeepPasswordsPrivate(centre);
        std::vector<Finding> found = Check(centre.Path());
        for (const Expected& expected : all) {
            const auto fits = [&](const Finding& finding) { return Fits(finding, expected); };
            const auto at = std::ranges::find_if(found, fits);
            EXPECT_TRUE(at != found.end()) << expected.file << ":" << expected.line << ": " << expected.words;
            if (at != found.end()) found.erase(at);
        }
        for (const Finding& finding : found) ADD_FAILURE() << "too much: " << TextOf(finding);
    }
}

TEST(Mistakes, HaveAllTheirFoldersInTheTable) {
    const auto table = ReadTable();
    for (const fs::directory_entry& entry : fs::directory_iterator(kMistakes)) {
        const Text name = entry.path().filename();
        const bool isCase = entry.is_directory() && name != "sound";
        EXPECT_TRUE(!isCase || table.contains(name)) << name;
    }
}

TEST(Mistakes, AreNotSeenInASoundCentreTheDemonstrationAndANewInstallation) {
    TempFolder sound;
    CopyOver(kMistakes / "sound", sound.Path());
    KeepPasswordsPrivate(sound);
    TempFolder demo;
    CopyOver(kSource / "sample", demo.Path());
    TempFolder fresh;
    PrepareSettingsFolder(FileTree(NORDKEEP_BIN_DIR), fresh.Tree());
    EXPECT_TRUE(fresh.Exists("Settings\\Default.IDCode"));
    TempFolder empty;
    for (const TempFolder* centre : {&sound, &demo, &fresh, &empty}) {
        for (const Finding& finding : Check(centre->Path())) ADD_FAILURE() << TextOf(finding);
    }
}

TEST(Mistakes, AreToldInBothLanguagesWithAllTheirParts) {
    TempFolder centre;
    CopyOver(kMistakes / "sound", centre.Path());
    CopyOver(kMistakes / "object-code-too-long", centre.Path());
    KeepPasswordsPrivate(centre);
    const FileTree program(NORDKEEP_BIN_DIR);
    Language swedish;
    ASSERT_TRUE(swedish.Load(program, "046"));
    CentreCheck check(centre.Tree(), program, swedish);
    while (check.Continue()) {
    }
    ASSERT_EQ(check.Result().Count(), 1u);
    EXPECT_EQ(ToUtf8(check.Result().All()[0].sentence),
              "Koden \"1000021\" har 7 tecken, men FORMAT skär ut 6: objektet hittas aldrig");
}

}  // namespace
}  // namespace nordkeep
