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

constexpr std::size_t kFirstOfConfirmation = 4;
constexpr std::size_t kCodeOfFile = 3;
constexpr std::size_t kTextOfFile = 7;

bool HasFields(TextView line, std::size_t highest) {
    return static_cast<std::size_t>(std::ranges::count(line, '|')) >= highest;
}

int NumberOrNone(const Text& field) {
    return TrimBlanks(field).empty() ? -1 : TypeNumber(field);
}

/// Cut at the end of its text, so that what stands behind stays; at its own end when that is not enough.
Text Shortened(Text line, std::size_t textField) {
    if (line.size() <= kLongestLine) return line;
    const std::size_t excess = line.size() - kLongestLine;
    std::size_t begin = 0;
    for (std::size_t i = 0; i < textField && begin != Text::npos; ++i) {
        begin = line.find('|', begin);
        if (begin != Text::npos) ++begin;
    }
    const std::size_t end = begin == Text::npos ? begin : std::min(line.find('|', begin), line.size());
    if (begin == Text::npos || end - begin < excess) {
        line.resize(kLongestLine);
        return line;
    }
    return line.erase(end - excess, excess);
}

OleDate TimeOf(const Text& date, const Text& time, OleDate now) {
    const auto day = ParseDateTime(date);
    const auto moment = TrimBlanks(time).empty() ? std::nullopt : ParseDateTime("2000-01-01 " + time);
    const int second = moment.value_or(now).SecondOfDay();
    if (!day && !moment) return now;
    return day.value_or(now).Midnight().PlusMilliseconds(second * 1000LL);
}

}  // namespace

DecodedEvent DecodeConfirmationLine(TextView line, int confirmationPrio, OleDate now) {
    constexpr std::size_t kLastOfText = 8;
    Text text = GetField(line, kFirstOfConfirmation, "|");
    // The fields of the text have a meaning each, so a line that has none of them goes into the first one.
    if (!HasFields(line, kFirstOfConfirmation)) text = ReplaceAll(line, "|", " ");
    for (std::size_t i = kFirstOfConfirmation + 1; i <= kLastOfText && HasFields(line, i); ++i) {
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

DecodedEvent DecodeFileLine(TextView line, int, OleDate now) {
    const auto field = [line](std::size_t number) { return GetField(line, number, "|"); };
    return DecodedEvent{.event = {.AlarmTime = TimeOf(field(1), field(2), now),
                                  .ProtocolType = "File",
                                  .DefaultPrio = NumberOrNone(field(6)),
                                  .DefaultType = NumberOrNone(field(5)),
                                  .DefaultAlarmCode = field(kCodeOfFile),
                                  .ExtraText = HasFields(line, kCodeOfFile) ? field(kTextOfFile) : Text(line),
                                  .Originator = field(8),
                                  .TranslationNumberToUse = Protocol::FILE,
                                  .RawAlarmCode = Text(line)}};
}

std::optional<FileForm> FileFormOf(MessageFormat format) {
    if (format == MessageFormat::TorvexConfirmationFile)
        return FileForm{.workName = "NordkeepTorvex.$$$",
                        .decode = &DecodeConfirmationLine,
                        .lastNeeded = kFirstOfConfirmation,
                        .textField = kFirstOfConfirmation};
    if (format == MessageFormat::NordkeepFile)
        return FileForm{.workName = "NordkeepFile.$$$",
                        .decode = &DecodeFileLine,
                        .lastNeeded = kCodeOfFile,
                        .textField = kTextOfFile};
    return std::nullopt;
}

FileStep NextFileStep(const FilePlace& place, const FileForm& form, int confirmationPrio, OleDate now) {
    const TextView file = place.file;
    FileStep result{.step = {.isTraffic = place.start == 0}, .next = place.start};
    for (int i = 0; i < kLinesInOneStep; ++i) {
        const std::size_t end = std::min(file.find(bytes::LF, result.next), file.size());
        result.isLast = result.next >= file.size() || (end == file.size() && !place.isWhole);
        if (result.isLast) break;
        Text line(file.substr(result.next, end - result.next));
        result.next = std::min(end + 1, file.size());
        std::erase(line, bytes::CR);
        if (TrimBlanks(line).empty()) continue;
        const bool isBad = line.size() > kLongestLine || !HasFields(line, form.lastNeeded);
        line = Shortened(std::move(line), form.textField);
        result.step.events.push_back(form.decode(line, confirmationPrio, now));
        if (isBad) result.badLines.push_back(std::move(line));
    }
    return result;
}

}  // namespace nordkeep
