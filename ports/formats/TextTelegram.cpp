#include "ports/formats/TextTelegram.h"

#include "ports/formats/TelegramFields.h"
#include "runtime/Protocol.h"

#include <algorithm>
#include <array>

namespace nordkeep {
namespace {

constexpr const char* kLabel = "Text";

constexpr SettingScope kPort = SettingScope::Port;
const std::array kRows = {
    SettingRow<TextTelegramSettings>{"General", "WrapWithSTXETX", kPort,
                                     &TextTelegramSettings::WrapWithSTXETX},
    SettingRow<TextTelegramSettings>{"General", "RequireNumericIdCode", kPort,
                                     &TextTelegramSettings::RequireNumericIdCode},
};

/// Form feeds, tabs and carriage returns never belong to a message.
Text WithoutLayout(TextView text) {
    Text kept;
    std::ranges::copy_if(text, std::back_inserter(kept),
                         [](char c) { return c != bytes::FF && c != '\t' && c != bytes::CR; });
    return kept;
}

Text OnOneLine(TextView text, char lineFeedBecomes) {
    Text line(text);
    std::replace(line.begin(), line.end(), bytes::LF, lineFeedBecomes);
    return Text(TrimBlanks(line));
}

IncomingEvent MakeEvent(const Text& message, const TextTelegramSettings& settings, OleDate now) {
    const CodeAndText parts = SplitCode(message, !settings.RequireNumericIdCode);
    const char lineFeedBecomes = CharacterOf(settings.cleaning.TextCrLfReplaceCharacter, ' ');
    return {.AlarmTime = now,
            .ProtocolType = kLabel,
            .DefaultAlarmCode = OnOneLine(parts.code, lineFeedBecomes),
            .ExtraText = OnOneLine(parts.text, lineFeedBecomes),
            .TranslationNumberToUse = Protocol::PlainText,
            .RawAlarmCode = message};
}

TelegramStep MessageStep(TextView raw, std::size_t consumed, const TextTelegramSettings& settings,
                         OleDate now) {
    const Text bare = WithoutLayout(raw);
    const Text message = AdjustBlanks(ConvertLetters(TrimBlanks(bare), settings.cleaning), settings.cleaning);
    TelegramStep step{.consumed = consumed, .isTraffic = true};
    if (!message.empty()) step.events.push_back({MakeEvent(message, settings, now)});
    return step;
}

TelegramStep NextWrapped(TextView received, const TextTelegramSettings& settings, OleDate now) {
    const std::size_t end = received.find(bytes::ETX);
    if (end == TextView::npos) return {};
    const std::size_t start = received.find(bytes::STX);
    if (start == TextView::npos) return {.consumed = received.size()};
    if (start > 0) return {.consumed = start};
    return MessageStep(received.substr(1, end - 1), end + 1, settings, now);
}

}  // namespace

std::span<const SettingRow<TextTelegramSettings>> TextTelegramSettingRows() {
    return kRows;
}

TelegramStep NextTextStep(TextView received, const TextTelegramSettings& settings, OleDate now) {
    if (received.empty()) return {};
    if (settings.WrapWithSTXETX) return NextWrapped(received, settings, now);
    const std::size_t end = received.find(bytes::LF);
    if (end == TextView::npos) return {};
    return MessageStep(received.substr(0, end), end + 1, settings, now);
}

}  // namespace nordkeep
