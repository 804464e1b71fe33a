#include "runtime/Fields.h"
#include "runtime/IniCheck.h"
#include "runtime/IniText.h"
#include "runtime/Language.h"

#include <gtest/gtest.h>

#include <random>

namespace nordkeep {
namespace {

TEST(Language, OneAndSeveralHaveWordsOfTheirOwn) {
    const auto fill = [](TextView pattern, TextView first, TextView second = "9") {
        const TextView values[] = {first, second};
        return FillPlaces(pattern, values);
    };
    EXPECT_EQ(fill("%1 {1:row|rows} of %2", "1"), "1 row of 9");
    EXPECT_EQ(fill("%1 {1:row|rows} of %2", "0"), "0 rows of 9");
    EXPECT_EQ(fill("{2:the last %1|the %2 last %1}", "hour"), "the 9 last hour");
    EXPECT_EQ(fill("%1", "{1:a|b} %2"), "{1:a|b} %2") << "a value is taken as it is";
    for (const char* pattern : {"{1:row", "{1:row}", "{3:row|rows}", "{x|y}", "{", "{1", "{1:a}b|c"})
        EXPECT_EQ(fill(pattern, "1"), pattern);
}

TEST(Findings, SuggestTheWordThatIsMeant) {
    const std::vector<TextView> words = {"PortNumber", "PortSetting", "PortType", "SIA", "SMS", "STT"};
    EXPECT_EQ(NearestWord("PortNumer", words), "PortNumber");
    EXPECT_EQ(NearestWord("portnubmer", words), "PortNumber");
    EXPECT_EQ(NearestWord("PortSettings", words), "PortSetting");
    EXPECT_EQ(NearestWord("SAI", words), "SIA") << "two letters that changed places";
    EXPECT_EQ(NearestWord("SPEED", words), "");
    EXPECT_EQ(NearestWord("", words), "");
    EXPECT_EQ(NearestWord(Text(100'000, 'x'), words), "");
}

TEST(Findings, CountAllAndKeepTheFirstAndAreFitToPrint) {
    Language language;
    language.LoadFrom("3790=<%1> <%2>\r\n");
    Findings findings(language);
    FileFindings file(findings, "Settings\\A.INI");
    file.Error(7, 3790, {"a\r\nb\x1B", Text(1000, 'y')});
    EXPECT_EQ(findings.All()[0].file, "Settings/A.INI");
    EXPECT_EQ(findings.All()[0].sentence, "<a  b > <" + Text(120, 'y') + "...>");
    for (int i = 0; i < 5000; ++i) file.Warning(9, 3790);
    EXPECT_EQ(findings.Errors(), 1u);
    EXPECT_EQ(findings.Warnings(), 5000u);
    EXPECT_EQ(findings.All().size(), Findings::kMostKept);
}

TEST(Findings, StandInTheOrderOfFilesAndLines) {
    const Language language;
    Findings findings(language);
    for (const auto& [path, line] : {std::pair{"b", 2}, {"A", 9}, {"b", 1}, {"a", 3}})
        FileFindings(findings, path).Error(line, 1);
    findings.Sort();
    Text order;
    for (const Finding& finding : findings.All()) order += finding.file + std::to_string(finding.line) + " ";
    EXPECT_EQ(order, "a3 A9 b1 b2 ");
}

/// Whoever says where something stands must read as the program reads.
TEST(IniLines, AgreeWithWhatTheProgramReads) {
    const Text seed =
        "\xEF\xBB\xBFlost=0\r\n[General] x=1\r\nKey = \" a b \"\r\n;Key=2\nkey='3'\r[ Other ]\r\nA=\r\n=b\r\n"
        "[broken\r\nB=1=2\r\n[general]\r\nKey=4\r\n\r\n\tC\t=\t5\t";
    std::mt19937 random(7);
    for (int round = 0; round < 3000; ++round) {
        Text content = seed;
        for (int changes = round == 0 ? 0 : 4; changes > 0; --changes) {
            const std::size_t at = random() % content.size();
            constexpr TextView kLetters = "\r\n[]=;\"' \tKeyGeneral";
            content[at] = kLetters[random() % kLetters.size()];
        }
        const IniText text(content);
        const IniLines lines(content);
        for (const IniLines::Entry& entry : lines.Entries()) {
            if (entry.section == IniLines::Entry::kNoSection) continue;
            const TextView section = lines.Sections()[entry.section].name;
            const auto value = text.Value(section, entry.key);
            if (lines.Counts(entry)) {
                ASSERT_EQ(value, Text(entry.value)) << content;
            }
            ASSERT_EQ(lines.ValueOf(section, entry.key, "none"), value.value_or("none")) << content;
        }
        for (const IniLines::Section& section : lines.Sections()) {
            if (section.sameNameOn != 0) continue;
            for (const Text& key : text.Keys(section.name))
                ASSERT_NE(lines.Find(section.name, key), nullptr) << content << " " << key;
        }
        for (const IniLines::Entry& entry : lines.Entries()) {
            const std::vector<TextView> all = Lines(content);
            ASSERT_NE(all.at(static_cast<std::size_t>(entry.line - 1)).find(entry.key), TextView::npos);
        }
    }
}

TEST(IniCheck, TakesWholeNumbersOnly) {
    for (const TextView good : {"0", " -7 ", "+12", "\t99999"}) EXPECT_TRUE(WholeNumber(good)) << good;
    for (const TextView bad : {"", " ", "1.5", "1 2", "x", "-", "0x10", "5;"})
        EXPECT_FALSE(WholeNumber(bad)) << bad;
}

}  // namespace
}  // namespace nordkeep
