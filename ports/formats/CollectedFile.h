#pragma once

#include "ports/formats/TelegramStep.h"
#include "runtime/Protocol.h"

#include <optional>

namespace nordkeep {

/// What a line of a file is worth that another program drops for the system: its event, or none for a line
/// that cannot be one.
using FileLineDecoder = std::optional<DecodedEvent> (*)(TextView line, int confirmationPrio, OleDate now);

/// A message that the dispatcher confirms: kind|..|..|sender|text, up to five fields of text.
std::optional<DecodedEvent> DecodeConfirmationLine(TextView line, int confirmationPrio, OleDate now);
/// An event of another program: kind|date|time|code|..|type|priority|text|sender. A blank or unreadable date
/// is today, such a time is now.
std::optional<DecodedEvent> DecodeFileLine(TextView line, int confirmationPrio, OleDate now);

/// A format that comes in files.
struct FileForm {
    const char* workName;  // the file's name while it is being taken in
    FileLineDecoder decode;
};
/// None for a format that does not.
std::optional<FileForm> FileFormOf(MessageFormat format);

/// Lines of a file from one place on, and where the next ones begin.
struct FileStep {
    TelegramStep step{};
    std::size_t next = 0;
    std::vector<Text> badLines{};
};
/// Takes some lines at and behind `start`. Lines end at a line feed or at the end of the file; empty ones are
/// skipped.
FileStep NextFileStep(TextView file, std::size_t start, FileLineDecoder decode, int confirmationPrio,
                      OleDate now);

}  // namespace nordkeep
