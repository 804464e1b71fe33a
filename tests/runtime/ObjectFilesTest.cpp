#include "runtime/ObjectFiles.h"

#include <gtest/gtest.h>

namespace nordkeep {
namespace {

TEST(ObjectFiles, EachLevelOfASetIsAFolderAndCodesThatLeadElsewhereHaveNoFile) {
    EXPECT_EQ(InformationFile("North/Homes", "12"), "Information\\North\\Homes\\12.TXT");
    EXPECT_EQ(InformationFile("a:b/..", "12"), "Information\\a:b\\_\\12.TXT");
    EXPECT_EQ(TypeInformationFile("A", "12", "31"), "Information\\A\\12\\31.TXT");
    for (const TextView code : {"", ".", "..", "C:x", "1/2", "1\\2"}) {
        EXPECT_EQ(InformationFile("A", code), "") << code;
        EXPECT_EQ(TypeInformationFile("A", code, "31"), "") << code;
        EXPECT_EQ(TypeInformationFile("A", "12", code), "") << code;
    }
    EXPECT_EQ(InformationFile("", "12"), "");
    EXPECT_EQ(CommentFile("A", "1/2"), "Comments\\A\\1_2.TXT");
}

}  // namespace
}  // namespace nordkeep
