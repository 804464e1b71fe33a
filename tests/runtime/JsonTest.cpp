#include "runtime/Json.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace nordkeep {
namespace {

TEST(Json, WritesOneFlatObjectInUtf8) {
    JsonObject json;
    json.Add("a", "\"\\\n\x01\xE5").Add("b", 7).Add("c", 0.1).Add("d", true).Add("e", std::nan(""));
    EXPECT_EQ(json.Take(),
              "{\"a\":\"\\\"\\\\\\u000a\\u0001\xC3\xA5\",\"b\":7,\"c\":0.1,\"d\":true,\"e\":null}");
    EXPECT_EQ(JsonObject().Take(), "{}");
}

TEST(Json, ReadsBackEveryByteAndEveryBit) {
    Text all;
    for (int c = 0; c < 256; ++c) all += static_cast<char>(c);
    const double third = 1.0 / 3;
    const auto members = ReadJsonObject(JsonObject().Add("t", all).Add("d", third).Add("n", -5).Take());
    ASSERT_TRUE(members);
    EXPECT_EQ(members->String("t"), all);
    EXPECT_EQ(members->Number("d"), third);
    EXPECT_EQ(members->Integer("n"), -5);
    EXPECT_TRUE(std::isnan(members->Number("t")));
    EXPECT_EQ(members->Integer("none"), 0);
}

TEST(Json, ReadsWhatOthersWriteAndRefusesWhatIsNoObject) {
    const auto members = ReadJsonObject(" { \"a\" : \"x\\/\\u20ac\\t\" , \"b\" : 1.5e3 } ");
    ASSERT_TRUE(members);
    EXPECT_EQ(members->String("a"), "x/?\t");
    EXPECT_EQ(members->Number("b"), 1500);
    for (const char* text : {"", "{", "}", "{}x", "{\"a\"}", "{\"a\":}", "{\"a\":1,}", "{\"a\":\"x}",
                             "{\"a\":\"\\u00g1\"}", "{\"a\":\"\\", "{a:1}", "{\"a\":[1]}", "null"})
        EXPECT_FALSE(ReadJsonObject(text)) << text;
}

}  // namespace
}  // namespace nordkeep
