#include "console/lists/Captions.h"
#include "tests/doubles/TempFolder.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

namespace nordkeep {
namespace {

Language ReadLanguage(const std::string& number) {
    std::ifstream file(std::string(NORDKEEP_SOURCE_DIR) + "/languages/NK_Lang." + number, std::ios::binary);
    Language language;
    language.LoadFrom(Text{std::istreambuf_iterator<char>(file), {}});
    return language;
}

TEST(Captions, ComeFromTheLanguageFileUnlessItsRowIsMissingOrEmpty) {
    Language language;
    language.LoadFrom("3000=New alarms\r\n3001=\r\n3265=%1 of %2\r\n");
    const Captions captions(language);
    EXPECT_EQ(captions(3000), "New alarms");
    EXPECT_EQ(captions(3001), "Gamla larm");
    EXPECT_EQ(captions(3005), "Karakt\xE4rer");
    EXPECT_EQ(captions(2999), "");
    EXPECT_EQ(captions(3265, {"%2", "7"}), "%2 of 7") << "a value is never read as a pattern";
    EXPECT_EQ(captions(3265, {"1"}), "1 of %2");
}

TEST(Captions, AreAllInBothLanguageFiles) {
    const Language english = ReadLanguage("044");
    const Language swedish = ReadLanguage("046");
    int last = 0;
    for (const BuiltInCaption& caption : BuiltInCaptions()) {
        EXPECT_TRUE(english.Has(caption.number) && swedish.Has(caption.number)) << caption.number;
        EXPECT_GT(caption.number, last);
        last = caption.number;
    }
}

}  // namespace
}  // namespace nordkeep
