#include "ports/formats/CollectedFile.h"

#include "ports/formats/XmlText.h"
#include "runtime/Dates.h"
#include "runtime/Fields.h"

#include <algorithm>

namespace nordkeep {
namespace {

// More lines wait for the next turn of the loop, so that a large file cannot hold up the receiver lines.
constexpr int kLinesInOneStep = 64;
constexpr std::size_t kLongestLine = 8192;

bool HasFields(TextView line, std::size_t highest) {
    return static_cast<std::size_t>(std::ranges::count(line, '|')) >= highest;
}

int NumberOrNone(const Text& field) {
    return TrimBlanks(field).empty() ? -1 : TypeNumber(field);
}

OleDate TimeOf(const Text& date, const Text& time, OleDate now) {
    const auto day = ParseDateTime(date);
    const auto moment = TrimBlanks(time).empty() ? std::nullopt : ParseDateTime("2000-01-01 " + time);
    const int second = moment.value_or(now).SecondOfDay();
    if (!day && !moment) return now;
    return day.value_or(now).Midnight().PlusMilliseconds(second * 1000LL);
}

}  // namespace

std::optional<DecodedEvent> DecodeConfirmationLine(TextView line, int confirmationPrio, OleDate now) {
    constexpr std::size_t kFirstOfText = 4;
    constexpr std::size_t kLastOfText = 8;
    if (!HasFields(line, kFirstOfText)) return std::nullopt;
    Text text = GetField(line, kFirstOfText, "|");
    for (std::size_t i = kFirstOfText + 1; i <= kLastOfText && HasFields(line, i); ++i) {
        text += '|' + GetField(line, i, "|");
    }
    return DecodedEvent{.event = {.AlarmTime = now,
                                  .ProtocolType = kOwnProtocol,
                                  .DefaultPrio = confirmationPrio,
                                  .ExtraText = text,
                                  .Originator = GetField(line, 3, "|"),
                                  .IsAConfirmationSMS = true,
                                  .RawAlarmCode = Text(line)}};
}

std::optional<DecodedEvent> DecodeFileLine(TextView line, int, OleDate now) {
    constexpr std::size_t kCode = 3;
    if (!HasFields(line, kCode)) return std::nullopt;
    const auto field = [line](std::size_t number) { return GetField(line, number, "|"); };
    return DecodedEvent{.event = {.AlarmTime = TimeOf(field(1), field(2), now),
                                  .ProtocolType = "File",
                                  .DefaultPrio = NumberOrNone(field(6)),
                                  .DefaultType = NumberOrNone(field(5)),
                                  .DefaultAlarmCode = field(kCode),
                                  .ExtraText = field(7),
                                  .Originator = field(8),
                                  .TranslationNumberToUse = Protocol::FILE,
                                  .RawAlarmCode = Text(line)}};
}

std::optional<FileForm> FileFormOf(MessageFormat format) {
    if (format == MessageFormat::TorvexConfirmationFile)
        return FileForm{"NordkeepTorvex.$$$", &DecodeConfirmationLine};
    if (format == MessageFormat::NordkeepFile) return FileForm{"NordkeepFile.$$$", &DecodeFileLine};
    return std::nullopt;
}

FileStep NextFileStep(TextView file, std::size_t start, FileLineDecoder decode, int confirmationPrio,
                      OleDate now) {
    FileStep result{.step = {.isTraffic = start == 0}, .next = start};
    for (int i = 0; i < kLinesInOneStep && result.next < file.size(); ++i) {
        const std::size_t end = std::min(file.find(bytes::LF, result.next), file.size());
        Text line(file.substr(result.next, end - result.next));
        result.next = std::min(end + 1, file.size());
        std::erase(line, bytes::CR);
        if (TrimBlanks(line).empty()) continue;
        auto event = line.size() > kLongestLine ? std::nullopt : decode(line, confirmationPrio, now);
        if (event) {
            result.step.events.push_back(std::move(*event));
        } else {
            result.badLines.push_back(line.substr(0, kLongestLine));
        }
    }
    return result;
}

}  // namespace nordkeep
