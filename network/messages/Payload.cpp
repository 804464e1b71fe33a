#include "network/messages/Payload.h"

#include <algorithm>
#include <limits>

namespace nordkeep {
namespace {

void AppendBigEndian(Text& bytes, std::uint32_t value, int width) {
    for (int shift = 8 * (width - 1); shift >= 0; shift -= 8)
        bytes += static_cast<char>(value >> shift & 0xFF);
}

}  // namespace

void PayloadWriter::Integer(int value) {
    AppendBigEndian(bytes_, static_cast<std::uint32_t>(value), 2);
}

void PayloadWriter::Long(std::int32_t value) {
    AppendBigEndian(bytes_, static_cast<std::uint32_t>(std::max(value, 0)), 4);
}

void PayloadWriter::ShortString(TextView text) {
    const TextView carried = text.substr(0, kLongestShortString);
    Integer(static_cast<int>(carried.size()));
    bytes_.append(carried);
}

void PayloadWriter::LongString(TextView text) {
    const TextView carried = text.substr(0, std::numeric_limits<std::int32_t>::max());
    Long(static_cast<std::int32_t>(carried.size()));
    bytes_.append(carried);
}

void PayloadWriter::DateTime(OleDate date) {
    const CivilTime civil = date.Civil();
    for (const int number : {civil.year, civil.month, civil.day, civil.hour, civil.minute, civil.second})
        Integer(number);
}

TextView PayloadReader::Bytes(std::size_t count) {
    hasRunOut_ = hasRunOut_ || count > rest_.size();
    const TextView bytes = rest_.substr(0, count);
    rest_.remove_prefix(bytes.size());
    return bytes;
}

// Half a number is no number.
std::uint32_t PayloadReader::Number(std::size_t width) {
    const TextView bytes = Bytes(width);
    std::uint32_t value = 0;
    if (bytes.size() < width) return value;
    for (const char byte : bytes) value = value << 8 | static_cast<unsigned char>(byte);
    return value;
}

void PayloadReader::Integer(int& value) {
    value = static_cast<std::int16_t>(Number(2));
}

void PayloadReader::Flag(bool& value) {
    value = Number(2) != 0;
}

void PayloadReader::Long(std::int32_t& value) {
    value = static_cast<std::int32_t>(Number(4));
}

void PayloadReader::String(std::int64_t length, Text& text) {
    text = Bytes(static_cast<std::size_t>(std::max<std::int64_t>(length, 0)));
}

void PayloadReader::ShortString(Text& text) {
    int length = 0;
    Integer(length);
    String(length, text);
}

void PayloadReader::LongString(Text& text) {
    std::int32_t length = 0;
    Long(length);
    String(length, text);
}

// A date that is not there whole is never, not a day of the year 0.
void PayloadReader::DateTime(OleDate& date) {
    CivilTime civil;
    const bool isWhole = rest_.size() >= 12;
    for (int* number : {&civil.year, &civil.month, &civil.day, &civil.hour, &civil.minute, &civil.second})
        Integer(*number);
    date = isWhole ? OleDate::FromCivil(civil) : OleDate();
    if (date.IsNever()) date = OleDate();
}

}  // namespace nordkeep
