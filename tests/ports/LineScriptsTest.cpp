#include "tests/ports/LineScript.h"

#include <gtest/gtest.h>

#include <set>

namespace nordkeep {
namespace {

const Text kPage = NORDKEEP_SOURCE_DIR "/docs/protocols.md";
const Text kCases = NORDKEEP_SOURCE_DIR "/tests/data/ports/";

class Cases : public ::testing::TestWithParam<const char*> {};

TEST_P(Cases, ComeOutAsWritten) {
    const std::vector<Script> scripts = ReadCases(kCases + GetParam());
    EXPECT_GE(scripts.size(), 5u);
    for (const Script& script : scripts) {
        SCOPED_TRACE(script.place);
        Play(script);
    }
}

INSTANTIATE_TEST_SUITE_P(, Cases,
                         ::testing::Values("googol.txt", "rsm02.txt", "multicom.txt", "export.txt", "xml.txt",
                                           "surgard.txt", "dc09.txt"));

TEST(ProtocolsPage, TellsTheTruth) {
    std::set<MessageFormat> formats;
    for (const Script& script : ReadPage(kPage)) {
        SCOPED_TRACE(script.place);
        Play(script);
        formats.insert(script.format);
    }
    EXPECT_EQ(formats.size(), 11u) << "each format of a line has an example";
}

TEST(ProtocolsPage, HoldsHoweverTheStreamIsCutOrGlued) {
    std::map<MessageFormat, std::vector<Text>> byFormat;
    for (const Script& script : ReadPage(kPage)) {
        SCOPED_TRACE(script.place);
        ScriptWorld world(script);
        ExpectSameHoweverCut(world.FreshDecoder(), script.Stream(), kScriptNow);
        const bool isPlain = script.Values("setting").empty() && script.Values("centre").empty();
        if (isPlain && !script.Stream().empty()) byFormat[script.format].push_back(script.Stream());
    }
    for (const auto& [format, streams] : byFormat) {
        SCOPED_TRACE(NameOf(format));
        Script plain;
        plain.format = format;
        ScriptWorld world(plain);
        // A call that goes on ringing is one event, and so is a message that is sent again.
        const bool hasRepeats = format == MessageFormat::GSM || format == MessageFormat::SiaDc09;
        if (!hasRepeats) ExpectPairsAsOneByOne(world.FreshDecoder(), streams, kScriptNow);
        std::vector<Text> parts = streams;
        for (const char* tag : {"<AlarmRequest>", "</AlarmRequest>", "</PingRequest>", "<LarmTelegram>"}) {
            parts.emplace_back(tag);
        }
        ExpectWithstands(world.FreshDecoder(), parts);
    }
}

}  // namespace
}  // namespace nordkeep
