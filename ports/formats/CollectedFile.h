#pragma once

#include "ports/formats/TelegramStep.h"
#include "runtime/Protocol.h"

#include <optional>

namespace nordkeep {

/// The event of a line of a file that another program drops for the system. Of a line with too few fields it
/// has what there is, and the line itself as its text.
using FileLineDecoder = DecodedEvent (*)(TextView line, int confirmationPrio, OleDate now);

/// A message that the dispatcher confirms: kind|..|..|sender|text, up to five fields of text.
DecodedEvent DecodeConfirmationLine(TextView line, int confirmationPrio, OleDate now);
/// An event of another program: kind|date|time|code|..|type|priority|text|sender. A blank or unreadable date
/// is today, such a time is now.
DecodedEvent DecodeFileLine(TextView line, int confirmationPrio, OleDate now);

/// A format that comes in files.
struct FileForm {
    const char* workName;  // the file's name while it is being taken in
    FileLineDecoder decode;
    std::size_t lastNeeded;  // the fields of a sound line go so far at least
    std::size_t textField;   // where a line that is too long is cut
};
/// None for a format that does not.
std::optional<FileForm> FileFormOf(MessageFormat format);

/// Where a file is being read.
struct FilePlace {
    TextView file{};
    std::size_t start = 0;
    bool isWhole = false;  // a last line without an end is a line, and not one that is still being written
};

/// Lines of a file from one place on, and where the next ones begin.
struct FileStep {
    TelegramStep step{};
    std::size_t next = 0;
    bool isLast = false;           // there are no more lines
    std::vector<Text> badLines{};  // those whose events are not all that they should be
};
/// Takes some lines at and behind the place. Lines end at a line feed; empty ones are skipped.
FileStep NextFileStep(const FilePlace& place, const FileForm& form, int confirmationPrio, OleDate now);

}  // namespace nordkeep
