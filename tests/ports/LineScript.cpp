#include "tests/ports/LineScript.h"

#include "ports/collectors/GsmModem.h"
#include "ports/formats/Crc16.h"

namespace nordkeep {
namespace {

/// Text in which \xNN is a byte.
Text Unescaped(TextView text) {
    Text bytes;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool isEscape = text.substr(i, 2) == "\\x";
        bytes += isEscape ? FromHex(text.substr(i + 2, 2)) : Text(1, text[i]);
        if (isEscape) i += 3;
    }
    return bytes;
}

/// Cuts the next blank-separated word.
Text TakeWord(TextView& text) {
    const std::size_t end = std::min(text.find(' '), text.size());
    const Text word(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
    return word;
}

char TakeByte(TextView& text) {
    return FromHex(TakeWord(text)).at(0);
}

Text TwoBytes(unsigned number) {
    return {static_cast<char>(number >> 8), static_cast<char>(number & 255)};
}

Text T1Frame(TextView fields) {
    Text frame = "\x01" + TakeWord(fields);
    frame += TakeByte(fields) + Text(2, '\0');
    Text data(9, '\0');
    data += TakeByte(fields);
    data += TakeByte(fields);
    data += Unescaped(fields);
    frame += static_cast<char>(data.size()) + data;
    return frame + TwoBytes(CRC16(frame));
}

Text RsmFrame(TextView fields) {
    const Text classCode = TakeWord(fields);
    const char bits = TakeByte(fields);
    const char line = TakeByte(fields);
    const Text text = Unescaped(fields);
    const Text inner = Text(2, '\0') + static_cast<char>(15 + text.size()) + "P\x18\x05\x11\x0D\x2D" + line +
                       classCode + bits + Text(1, '\0') + text;
    unsigned sum = 0;
    for (const char c : inner) sum += static_cast<unsigned char>(c);
    return "\x02" + inner + TwoBytes(sum) + "\x03";
}

/// The bytes that a line of a script stands for; none for a word that stands for none.
std::optional<Text> BytesOf(const ScriptLine& line) {
    if (line.word == "receive" || line.word == "answer" || line.word == "send") {
        return FromHex(line.value.substr(0, line.value.find('|')));
    }
    if (line.word == "in" || line.word == "out") return Unescaped(line.value);
    if (line.word == "t1") return T1Frame(line.value);
    if (line.word == "rsm") return RsmFrame(line.value);
    return std::nullopt;
}

bool ComesIn(const ScriptLine& line) {
    return line.word == "receive" || line.word == "in" || line.word == "t1" || line.word == "rsm";
}

ScriptLine ParseLine(TextView line) {
    ScriptLine parsed;
    parsed.word = TakeWord(line);
    parsed.value = TrimBlanks(line);
    return parsed;
}

/// What a modem says, as far as it is no answer to a command.
class ModemFormat final : public LineFormat {
 public:
    explicit ModemFormat(const GsmSettings& settings) : lines_("PortX", settings.sms) {}
    TelegramStep Next(TextView received, const LineClock& clock) override {
        return lines_.Take(received, clock.now);
    }
    TelegramStep Due(const ServiceTick&) override { return {}; }

 private:
    ModemLines lines_;
};

/// A script being played. What the line has done is kept until the script has named it.
class Player {
 public:
    explicit Player(const Script& script) : script_(script), world_(script), format_(world_.NewFormat()) {}

    void Run() {
        for (const ScriptLine& line : script_.lines) {
            if (!Do(line) && !Expect(line)) ADD_FAILURE() << "unknown word " << line.word;
        }
        ExpectNothingMore("the end");
        ExpectCount("rest", received_.size());
        for (const auto& [word, count] : counts_) {
            if (!script_.Values(word).empty()) ExpectCount(word, count);
        }
    }

 private:
    bool Do(const ScriptLine& line) {
        const bool isAct =
            ComesIn(line) || line.word == "tick" || line.word == "queue" || line.word == "finish";
        if (!isAct) return false;
        ExpectNothingMore(line.word + " " + line.value);
        if (ComesIn(line)) Receive(*BytesOf(line));
        if (line.word == "queue")
            world_.Queues().ExportTelegram(GetField(line.value, 0, " "), GetField(line.value, 1, " "));
        if (line.word == "tick") Tick(LeadingNumber(line.value) * 1000);
        if (line.word == "finish") Note(format_->Due({.now = kScriptNow, .isProgramEnding = true}));
        return true;
    }

    bool Expect(const ScriptLine& line) {
        if (line.word == "answer" || line.word == "out" || line.word == "send") {
            const Text bytes = *BytesOf(line);
            EXPECT_EQ(Shown(replies_.substr(0, bytes.size())), Shown(bytes));
            replies_.erase(0, bytes.size());
            return true;
        }
        if (line.word == "event") return ExpectFirst(facts_, line.value);
        if (line.word == "note") return ExpectFirst(notes_, line.value);
        return counts_.contains(line.word) || line.word == "rest" || line.word == "setting" ||
               line.word == "centre" || line.word == "caller";
    }

    static bool ExpectFirst(std::vector<Text>& happened, const Text& expected) {
        EXPECT_EQ(happened.empty() ? "(nothing)" : happened.front(), expected);
        if (!happened.empty()) happened.erase(happened.begin());
        return true;
    }

    void ExpectNothingMore(const Text& moment) {
        EXPECT_EQ(Shown(replies_), "") << "before " << moment;
        EXPECT_EQ(facts_, std::vector<Text>{}) << "before " << moment;
        EXPECT_EQ(notes_, std::vector<Text>{}) << "before " << moment;
    }

    void ExpectCount(const Text& word, std::size_t count) {
        const std::vector<Text> values = script_.Values(word);
        EXPECT_EQ(std::to_string(count), values.empty() ? "0" : values.front()) << word;
    }

    void Receive(const Text& bytes) {
        received_ += bytes;
        for (TelegramStep step = format_->Next(received_, Clock()); step.consumed > 0;
             step = format_->Next(received_, Clock())) {
            ASSERT_LE(step.consumed, received_.size());
            received_.erase(0, step.consumed);
            Note(step);
        }
    }

    LineClock Clock() const { return {.now = kScriptNow, .utc = kScriptUtc, .monotonicMs = tickedMs_}; }

    void Tick(std::int64_t atMs) {
        Note(format_->Due({.now = kScriptNow,
                           .monotonicMs = atMs,
                           .tickMs = static_cast<int>(atMs - tickedMs_),
                           .isOpen = true,
                           .canSend = true}));
        tickedMs_ = atMs;
    }

    void Note(const TelegramStep& step) {
        replies_ += step.reply;
        for (const DecodedEvent& event : step.events) facts_.push_back(Facts(event, kScriptNow));
        for (const DecoderNote& note : step.notes)
            notes_.push_back(std::to_string(note.text) + " " + note.tail);
        counts_["traffic"] += step.isTraffic;
        counts_["closes"] += step.closesLine;
    }

    const Script& script_;
    ScriptWorld world_;
    std::unique_ptr<LineFormat> format_;
    Text received_{};
    Text replies_{};
    std::vector<Text> facts_{};
    std::vector<Text> notes_{};
    std::map<Text, std::size_t> counts_{{"traffic", 0}, {"closes", 0}};
    std::int64_t tickedMs_ = 0;
};

}  // namespace

std::vector<Text> Script::Values(TextView word) const {
    std::vector<Text> values;
    for (const ScriptLine& line : lines) {
        if (line.word == word) values.push_back(line.value);
    }
    return values;
}

Text Script::Stream() const {
    Text stream;
    for (const ScriptLine& line : lines) {
        if (ComesIn(line)) stream += *BytesOf(line);
    }
    return stream;
}

std::vector<Script> ReadPage(const Text& path) {
    const Text fence = "```telegram ";
    std::vector<Script> scripts;
    const Text page = ReadFile(path).value_or("");
    bool isInside = false;
    int number = 0;
    for (const TextView line : Lines(page)) {
        ++number;
        if (line.starts_with(fence)) {
            const auto format = ParseMessageFormat(LeadingInt32(line.substr(fence.size())));
            scripts.push_back({path + ":" + std::to_string(number), format.value()});
            isInside = true;
        } else if (line == "```") {
            isInside = false;
        } else if (isInside) {
            scripts.back().lines.push_back(ParseLine(line));
        }
    }
    return scripts;
}

std::vector<Script> ReadCases(const Text& path) {
    std::vector<Script> scripts;
    const Text content = ReadFile(path).value_or("");
    MessageFormat format{};
    for (const TextView text : Lines(content)) {
        if (text.empty() || text.starts_with('#')) continue;
        const ScriptLine line = ParseLine(text);
        if (line.word == "format") {
            format = ParseMessageFormat(LeadingInt32(line.value)).value();
        } else if (line.word == "case") {
            scripts.push_back({path + ": " + line.value, format});
        } else {
            scripts.back().lines.push_back(line);
        }
    }
    return scripts;
}

ScriptWorld::ScriptWorld(const Script& script) : format_(script.format) {
    const auto write = [&](const Text& file, const Text& start, TextView word) {
        Text content = "[General]\r\n" + start;
        for (const Text& value : script.Values(word)) content += value + "\r\n";
        folder_.Write("Settings\\" + file, content);
    };
    write("PortX.ini", "PortDescription=Line\r\n", "setting");
    write("Nordkeep.INI", "", "centre");
    language_.LoadFrom(
        "1059=1059\r\n1060=1060\r\n1095= lost\r\n5306=5306\r\n5307=5307\r\n5308=5308\r\n"
        "5309=5309 %1\r\n5310=5310\r\n");
    for (const Text& value : script.Values("caller")) {
        const Text number = GetField(value, 0, " ");
        callers_[number] =
            KnownCaller{&set_, GetField(value, 1, " "), ProtocolOf(LeadingInt32(GetField(value, 2, " ")))};
    }
}

std::optional<KnownCaller> ScriptWorld::FindCaller(TextView number) const {
    const auto found = callers_.find(Text(number));
    return found == callers_.end() ? std::nullopt : std::optional(found->second);
}

std::unique_ptr<LineFormat> ScriptWorld::NewFormat() {
    if (format_ == MessageFormat::GSM) return std::make_unique<ModemFormat>(LoadGsmSettings(files_, "PortX"));
    return MakeLineFormat(
        format_,
        {.files = files_, .language = language_, .portName = "PortX", .callers = *this, .exports = queues_});
}

NewDecoder ScriptWorld::FreshDecoder() {
    return [this]() -> Decoder {
        const std::shared_ptr<LineFormat> line = NewFormat();
        return [line](TextView received, OleDate now) {
            return line->Next(received, {.now = now, .utc = kScriptUtc});
        };
    };
}

void Play(const Script& script) {
    Player(script).Run();
}

}  // namespace nordkeep
