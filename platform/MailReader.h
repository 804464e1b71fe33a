#pragma once

#include "platform/Text.h"

#include <optional>

namespace nordkeep {

/// A mail taken apart. Nothing is converted between character sets yet.
struct MailParts {
    // Header fields as they stand, on one line.
    Text from{};
    Text to{};
    Text subject{};

    Text body{};  // of the part that counts, without its transfer encoding
    Text charset{};
    bool isHtml = false;
    bool wasEncoded = false;  // in base64 or quoted-printable
};

/// Takes a mail apart. Its body is the first part of plain text, else the first of any text; what is attached
/// is no body. Of a mail that is no text the whole counts. None without a header and a body.
MailParts TakeMailApart(TextView bytes);

/// UTF-8 of a text in any character set that the system knows, without a byte order mark; what cannot be read
/// becomes "?". None for an unknown set.
std::optional<std::string> Utf8FromCharset(TextView bytes, TextView charset);

}  // namespace nordkeep
