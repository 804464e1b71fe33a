#include "runtime/Dates.h"
#include "runtime/Fields.h"
#include "translation/AliveTestSchedule.h"
#include "translation/IdCodeFile.h"
#include "translation/SetCheck.h"
#include "translation/SetText.h"
#include "translation/TypeCodeFile.h"

#include <gtest/gtest.h>

#include <fstream>

namespace nordkeep {
namespace {

/// docs/translation-files.md: its examples by their kind, and the rows of its tables.
struct Document {
    std::vector<std::pair<Text, Text>> examples{};
    std::vector<std::vector<Text>> rows{};
};

std::vector<Text> CellsOf(TextView row) {
    std::vector<Text> cells;
    for (const Text& piece : Split(row.substr(1), '|')) cells.emplace_back(TrimBlanks(piece));
    cells.pop_back();
    return cells;
}

Document ReadDocument() {
    std::ifstream file(NORDKEEP_SOURCE_DIR "/docs/translation-files.md");
    Document document;
    bool isInside = false;
    for (std::string utf8; std::getline(file, utf8);) {
        const Text line = FromUtf8(utf8);
        if (line.starts_with("```")) {
            isInside = !isInside;
            if (isInside) document.examples.emplace_back(line.substr(3), Text());
        } else if (isInside) {
            document.examples.back().second += line + "\r\n";
        } else if (line.starts_with("| ")) {
            document.rows.push_back(CellsOf(line));
        }
    }
    return document;
}

Text ExampleOf(const Document& document, TextView kind) {
    for (const auto& [name, text] : document.examples) {
        if (name == kind) return text;
    }
    return {};
}

/// The rows behind the heading whose first cell this is.
std::vector<std::vector<Text>> TableOf(const Document& document, TextView heading, std::size_t width) {
    std::vector<std::vector<Text>> found;
    bool isInside = false;
    for (const std::vector<Text>& row : document.rows) {
        if (row.size() != width) {
            isInside = false;
        } else if (row[0] == heading) {
            isInside = true;
        } else if (isInside && !row[0].starts_with("---")) {
            found.push_back(row);
        }
    }
    return found;
}

TEST(SetDocument, ShowsFilesThatAreSound) {
    const Document document = ReadDocument();
    ASSERT_EQ(document.examples.size(), 3u);
    const Language language;
    Findings findings(language);
    FileFindings file(findings, "example");
    const Text objects = ExampleOf(document, "idcode");
    IdCodeCheck check(objects, {}, file);
    while (check.Continue()) {
    }
    CheckTypeCodes(ExampleOf(document, "typecode"), file);
    CheckDataCodes(ExampleOf(document, "datacode"), file);
    for (const Finding& finding : findings.All()) ADD_FAILURE() << finding.line << " " << finding.sentence;
    EXPECT_EQ(ReadIdCodeFile(objects).rows.size(), 3u);
    EXPECT_EQ(ReadTypeCodeFile(ExampleOf(document, "typecode")).size(), 4u);
}

TEST(SetDocument, TellsWhatIsCutOutOfATelegram) {
    const Document document = ReadDocument();
    const Text objects = ExampleOf(document, "idcode");
    const IdCodeFile file = ReadIdCodeFile(objects);
    const auto table = TableOf(document, "Alarm code", 4);
    EXPECT_GE(table.size(), 4u);
    const auto orNone = [](const Text& text) { return text.empty() ? Text("none") : text; };
    for (const std::vector<Text>& row : table) {
        const Text idCode(
            Substring(row[0], file.format.m_IdCode_Format_StartPos, file.format.m_IdCode_Format_Length));
        const Text type(
            Substring(row[0], file.format.m_TypeCode_Format_StartPos, file.format.m_TypeCode_Format_Length));
        Text name;
        for (const IdCodeRow& object : file.rows) {
            if (object.IdCode() == idCode) name = object.objectName;
        }
        EXPECT_EQ(idCode, row[1]) << row[0];
        EXPECT_EQ(orNone(type), row[2]) << row[0];
        EXPECT_EQ(orNone(name), row[3]) << row[0];
    }
}

TEST(SetDocument, TellsTheDeadlinesOfSchedules) {
    const auto table = TableOf(ReadDocument(), "Schedule", 3);
    EXPECT_GE(table.size(), 6u);
    for (const std::vector<Text>& row : table) {
        EXPECT_EQ(FlawOf(row[0]), ScheduleFlaw::None) << row[0];
        const OleDate next = NextDeadline(row[0], ParseDateTime(row[1]).value(), AliveTestPace::Minutes);
        EXPECT_EQ(FormatDate(next, "YYYY-MM-DD HH:NN:SS"), row[2]) << row[0] << " at " << row[1];
    }
}

TEST(SetDocument, ShowsWhatTheEditorWrites) {
    const auto rows = TableOf(ReadDocument(), "Before", 2);
    ASSERT_FALSE(rows.empty());
    const auto plain = [](const Text& cell) { return cell.substr(1, cell.size() - 2); };
    for (const auto& row : rows) {
        std::vector<Text> values = ValuesOfObject(plain(row[0]));
        values[kObjectName] = ValuesOfObject(plain(row[1]))[kObjectName];
        EXPECT_EQ(ObjectRow(values, plain(row[0])), plain(row[1]));
    }
}

}  // namespace
}  // namespace nordkeep
