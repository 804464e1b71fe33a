#pragma once

#include "platform/OleDate.h"
#include "platform/Text.h"

#include <cstdint>
#include <utility>

namespace nordkeep {

/// The longest text of a ShortString, in characters.
inline constexpr std::size_t kLongestShortString = 32767;

/// Builds the payload of a message field by field. Numbers are big-endian. Writer and reader have the same
/// operations, so that one list of a message's fields serves both.
class PayloadWriter {
 public:
    void Integer(int value);
    /// A flag goes as 0 or -1.
    void Flag(bool value) { Integer(value ? -1 : 0); }
    /// The format carries no number below 0; such a one goes as 0.
    void Long(std::int32_t value);
    /// Cut at kLongestShortString.
    void ShortString(TextView text);
    void LongString(TextView text);
    /// Whole seconds.
    void DateTime(OleDate date);

    const Text& Bytes() const { return bytes_; }
    Text Take() { return std::move(bytes_); }

 private:
    Text bytes_{};
};

/// Reads the fields of a payload and never past its end: a missing field is 0, empty or never, and a text
/// whose length is too long takes what is left.
class PayloadReader {
 public:
    explicit PayloadReader(TextView payload) : rest_(payload) {}

    void Integer(int& value);
    void Flag(bool& value);
    void Long(std::int32_t& value);
    void ShortString(Text& text);
    void LongString(Text& text);
    void DateTime(OleDate& date);

    bool IsAtEnd() const { return rest_.empty(); }
    /// The payload has ended before the last field that was asked for.
    bool HasRunOut() const { return hasRunOut_; }

 private:
    TextView Bytes(std::size_t count);
    std::uint32_t Number(std::size_t width);
    void String(std::int64_t length, Text& text);

    TextView rest_;
    bool hasRunOut_ = false;
};

}  // namespace nordkeep
