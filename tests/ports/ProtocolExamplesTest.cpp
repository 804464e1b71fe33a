// Decodes the worked examples of docs/protocols.md, so that the page stays true.

#include "ports/LineFormat.h"
#include "runtime/Fields.h"
#include "tests/doubles/TempFolder.h"
#include "tests/ports/Decoding.h"

#include <gtest/gtest.h>

#include <map>
#include <set>

namespace nordkeep {
namespace {

const OleDate kNow = OleDate::FromCivil({2025, 11, 21, 6, 5, 4});

/// One line of an example: a word and what follows it.
struct Line {
    Text word;
    Text value;
};

struct Example {
    MessageFormat format{};
    int atLine = 0;
    std::vector<Line> lines{};

    Text Bytes(const Text& word) const {
        Text bytes;
        for (const Line& line : lines) {
            if (line.word == word) bytes += FromHex(line.value.substr(0, line.value.find('|')));
        }
        return bytes;
    }
    std::vector<Text> Values(const Text& word) const {
        std::vector<Text> values;
        for (const Line& line : lines) {
            if (line.word == word) values.push_back(line.value);
        }
        return values;
    }
};

std::vector<Example> ReadExamples() {
    const Text fence = "```telegram ";
    const Text page = ReadFile(NORDKEEP_SOURCE_DIR "/docs/protocols.md").value_or("");
    std::vector<Example> examples;
    bool isInside = false;
    int number = 0;
    for (const TextView line : Lines(page)) {
        ++number;
        if (line.starts_with(fence)) {
            examples.push_back({ParseMessageFormat(LeadingInt32(line.substr(fence.size()))).value(), number});
            isInside = true;
        } else if (line == "```") {
            isInside = false;
        } else if (isInside) {
            const std::size_t blank = line.find(' ');
            examples.back().lines.push_back(
                {Text(line.substr(0, blank)), Text(TrimBlanks(line.substr(std::min(blank, line.size()))))});
        }
    }
    return examples;
}

/// A line with the settings of an example.
class ExampleLine {
 public:
    explicit ExampleLine(const Example& example) {
        const auto write = [&](const Text& file, const Text& word) {
            Text content = "[General]\r\n";
            for (const Text& value : example.Values(word)) content += value + "\r\n";
            folder_.Write("Settings\\" + file, content);
        };
        write("PortX.ini", "setting");
        write("Nordkeep.INI", "centre");
        language_.LoadFrom("1059=1059\r\n1060=1060\r\n1095=1095\r\n");
    }

    std::unique_ptr<LineFormat> NewFormat(MessageFormat format) {
        return MakeLineFormat(
            format, {.files = files_, .language = language_, .portName = "PortX", .exports = &queues_});
    }
    NewDecoder FreshDecoder(MessageFormat format) {
        return [this, format]() -> Decoder {
            const std::shared_ptr<LineFormat> line = NewFormat(format);
            return [line](TextView received, OleDate now) { return line->Next(received, now); };
        };
    }
    ExportQueues& Queues() { return queues_; }

 private:
    TempFolder folder_{};
    Settings files_{folder_.Tree()};
    Language language_{};
    ExportQueues queues_{};
};

/// Everything a line does while an example is played to it.
struct Played {
    std::vector<Text> facts{};
    Text replies{};
    Text sent{};
    Text rest{};
};

Played Play(const Example& example) {
    ExampleLine world(example);
    const std::unique_ptr<LineFormat> line = world.NewFormat(example.format);
    const Decoder decoder = [&](TextView received, OleDate now) { return line->Next(received, now); };
    Played played;
    for (const Line& l : example.lines) {
        if (l.word == "receive") {
            const Decoded decoded =
                Decode(decoder, {played.rest + FromHex(l.value.substr(0, l.value.find('|')))}, kNow);
            played.facts.insert(played.facts.end(), decoded.facts.begin(), decoded.facts.end());
            played.replies += decoded.replies;
            played.rest = decoded.rest;
        } else if (l.word == "tick") {
            const std::int64_t second = LeadingNumber(l.value);
            played.sent += line->Service({.now = kNow, .monotonicMs = second * 1000, .canSend = true}).reply;
        } else if (l.word == "queue") {
            world.Queues().ExportTelegram(GetField(l.value, 0, " "), GetField(l.value, 1, " "));
        }
    }
    return played;
}

TEST(ProtocolExamples, DoWhatThePageSays) {
    const std::set<Text> words = {"setting", "centre", "receive", "answer", "event", "tick", "send", "queue"};
    std::set<MessageFormat> formats;
    for (const Example& example : ReadExamples()) {
        SCOPED_TRACE("docs/protocols.md:" + std::to_string(example.atLine));
        for (const Line& line : example.lines) EXPECT_TRUE(words.contains(line.word)) << line.word;
        const Played played = Play(example);
        EXPECT_EQ(played.facts, example.Values("event"));
        EXPECT_EQ(Shown(played.replies), Shown(example.Bytes("answer")));
        EXPECT_EQ(Shown(played.sent), Shown(example.Bytes("send")));
        EXPECT_EQ(played.rest, "");
        formats.insert(example.format);
    }
    EXPECT_EQ(formats.size(), 9u) << "each telegram format has an example";
}

TEST(ProtocolExamples, StayTheSameHoweverTheyAreCutOrGlued) {
    std::map<MessageFormat, std::vector<Text>> byFormat;
    Example withoutSettings;
    for (const Example& example : ReadExamples()) {
        SCOPED_TRACE("docs/protocols.md:" + std::to_string(example.atLine));
        const Text stream = example.Bytes("receive");
        ExampleLine world(example);
        ExpectSameHoweverCut(world.FreshDecoder(example.format), stream, kNow);
        const bool isPlain = example.Values("setting").empty() && example.Values("centre").empty();
        if (isPlain && !stream.empty()) byFormat[example.format].push_back(stream);
    }
    for (const auto& [format, streams] : byFormat) {
        SCOPED_TRACE(NameOf(format));
        ExampleLine world(withoutSettings);
        ExpectPairsAsOneByOne(world.FreshDecoder(format), streams, kNow);
    }
}

}  // namespace
}  // namespace nordkeep
