#include "ports/SetUses.h"
#include "tests/doubles/TempFolder.h"

#include <gtest/gtest.h>

namespace nordkeep {
namespace {

struct SetUsesTest : ::testing::Test {
    SetUsesTest() {
        folder.Write("Settings\\Town.IDCode", "1;x\r\n");
        folder.Write("Settings\\Town.TypeCode", "01;1;Fire;;\r\n");
        folder.Write("Information\\Town\\1.TXT", "what to do");
        folder.Write(
            "Settings\\Port1.ini",
            "[General]\r\nPortType=TCPS\r\n[Translate]\r\nRobofon=Village, TOWN\r\nSIA=Township\r\n");
        folder.Write("Settings\\Port2.ini", "[General]\r\nPortType=UDP\r\n[Translate]\r\nText=Town\r\n");
    }
    TempFolder folder{};
    Settings files{folder.Tree()};
};

TEST_F(SetUsesTest, NamesTheLinesOfASet) {
    const auto uses = UsesOfSet(folder.Tree(), files, "town");
    ASSERT_EQ(uses.size(), 2u);
    EXPECT_EQ(uses[0].port, "Port1");
    EXPECT_EQ(uses[0].protocol, Protocol::Robofon);
    EXPECT_EQ(uses[1].protocol, Protocol::PlainText);
}

TEST_F(SetUsesTest, MovesAllThatBelongsToASet) {
    ASSERT_TRUE(MoveSet(folder.Tree(), files, "Town", "Borough"));
    EXPECT_EQ(folder.Read("Settings\\Borough.IDCode"), "1;x\r\n");
    EXPECT_FALSE(folder.Exists("Settings\\Town.TypeCode"));
    EXPECT_EQ(folder.Read("Information\\Borough\\1.TXT"), "what to do");
    EXPECT_EQ(folder.Read("Settings\\Port1.ini"),
              "[General]\r\nPortType=TCPS\r\n[Translate]\r\nRobofon=Village,Borough\r\nSIA=Township\r\n");
    EXPECT_TRUE(UsesOfSet(folder.Tree(), files, "Town").empty());
}

TEST_F(SetUsesTest, MovesAllOrNothing) {
    folder.Write("Information\\Borough\\2.TXT", "of somebody else");
    EXPECT_FALSE(MoveSet(folder.Tree(), files, "Town", "Borough"));
    EXPECT_TRUE(folder.Exists("Settings\\Town.IDCode"));
    EXPECT_TRUE(folder.Exists("Settings\\Town.TypeCode"));
    EXPECT_EQ(UsesOfSet(folder.Tree(), files, "Town").size(), 2u);
}

}  // namespace
}  // namespace nordkeep
