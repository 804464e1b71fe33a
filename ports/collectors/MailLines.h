#pragma once

#include "ports/formats/ReceivedText.h"

#include <optional>

namespace nordkeep {

/// A line of a mail session, without its end and without carriage returns.
struct MailLine {
    Text text{};
    bool isCut = false;  // it was longer than allowed; the rest is gone
};

/// Cuts what a mail session receives into lines, each complete at its line feed.
class MailLines {
 public:
    void Append(TextView bytes) { received_.Append(bytes); }
    void Clear() { *this = {}; }
    /// The next complete line, of which no more than `longest` bytes are kept.
    std::optional<MailLine> Next(std::size_t longest);

 private:
    ReceivedText received_{};
    std::size_t searched_ = 0;  // no line feed in front of here
    Text begun_{};              // of a line that is longer than allowed
    bool isCut_ = false;
};

}  // namespace nordkeep
