#include "translation/SetFormat.h"

#include <gtest/gtest.h>

namespace nordkeep {
namespace {

TEST(SetFormat, ChangesOneDirectiveAndLeavesAllElse) {
    const Text content = "; a\r\nformat = x\r\nFormat=1, 6 ,0,0,7,2\r\nPADDING=8,48\r\n1;x\r\n; b";
    SetDirectives directives = DirectivesOf(content);
    EXPECT_EQ(directives.parts[0], (PartPlace{1, 6}));
    EXPECT_EQ(directives.paddingCharacter, '0');
    EXPECT_EQ(WithDirectives(content, directives),
              "; a\r\nFormat=1, 6 ,0,0,7,2\r\nPADDING=8,48\r\nformat = x\r\n1;x\r\n; b\r\n")
        << "what is not changed stays as it was written";
    directives.parts[2].length = 3;
    directives.paddingCount = 0;
    directives.zeroTrim = 0;
    EXPECT_EQ(WithDirectives(content, directives),
              "; a\r\nFORMAT=1,6,0,0,7,3\r\nZEROTRIM=0\r\nformat = x\r\n1;x\r\n; b\r\n");
}

TEST(SetFormat, WhatIsWrittenReadsAsTheSame) {
    SetDirectives directives;
    directives.parts = {PartPlace{3, 4}, {1, 0}, {7, 3}, {10, 2}, {12, 3}};
    directives.paddingCount = 12;
    directives.paddingCharacter = 'A';
    directives.zeroTrim = 1;
    EXPECT_EQ(DirectivesOf(WithDirectives("", directives)), directives);
    EXPECT_EQ(WithDirectives("1;x\r\n", SetDirectives{}), "1;x\r\n");
}

}  // namespace
}  // namespace nordkeep
