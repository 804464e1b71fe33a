#pragma once

#include "platform/Text.h"
#include "translation/Translate.h"

#include <optional>
#include <vector>

namespace nordkeep {

/// One row of an .IDCode file, an object. The views point into the content that was read.
struct IdCodeRow {
    Text key{};  // the first field, upper case: ID code, and "/" with the caller's number when it has one
    TextView objectName{};
    TextView schedule{};
    TextView mapName{};
    TextView exportAlarmCode{};
    TextView exportProtocol{};
    TextView customer{};
    bool matchCallerToAccept = true;
    bool matchCallerForAliveTest = false;
    TextView resetIdCode{};
    TextView schedule2{};

    bool HasCaller() const { return key.find('/') != Text::npos; }
    Text IdCode() const;
    Text Caller() const;
};

/// The content of an .IDCode file.
///
/// Lines are trimmed; an empty one and one that begins with ";" say nothing. FORMAT=, PADDING= and ZEROTRIM=
/// are directives where they stand first; a second one of a kind is an object, like every other line. What
/// is longer than a line can be is cut.
struct IdCodeFile {
    TelegramFormat format{};
    std::optional<int> zeroTrim{};  // none leaves it to the settings
    std::vector<IdCodeRow> rows{};
};
IdCodeFile ReadIdCodeFile(TextView content);

/// An object out of its row, which is trimmed.
IdCodeRow ReadIdCodeRow(TextView row);

/// Tells the directives of a file from its rows: each is one only the first time.
class IdCodeDirectives {
 public:
    /// True when the row, which is trimmed, is a directive.
    bool Take(TextView row);
    const TelegramFormat& Format() const { return format_; }
    /// None leaves it to the settings.
    const std::optional<int>& ZeroTrim() const { return zeroTrim_; }

 private:
    TelegramFormat format_{};
    std::optional<int> zeroTrim_{};
    bool hasFormat_ = false;
    bool hasPadding_ = false;
};

/// Place of a set's file below the data folder.
Text IdCodeFileName(TextView set);

}  // namespace nordkeep
