#include "tests/app/ground/ProtocolClient.h"

namespace nordkeep {
namespace {

unsigned ByteAt(TextView bytes, std::size_t at) {
    return at < bytes.size() ? static_cast<unsigned char>(bytes[at]) : 0;
}

}  // namespace

WireBytes& WireBytes::Integer(int value) {
    bytes_ += static_cast<char>(value >> 8);
    bytes_ += static_cast<char>(value);
    return *this;
}

WireBytes& WireBytes::Long(std::int64_t value) {
    return Integer(static_cast<int>(value >> 16)).Integer(static_cast<int>(value));
}

WireBytes& WireBytes::Short(TextView text) {
    Integer(static_cast<int>(text.size()));
    bytes_ += text;
    return *this;
}

WireBytes& WireBytes::LongText(TextView text) {
    Long(static_cast<std::int64_t>(text.size()));
    bytes_ += text;
    return *this;
}

WireBytes& WireBytes::Date(OleDate date) {
    const CivilTime civil = date.Civil();
    Integer(civil.year).Integer(civil.month).Integer(civil.day);
    return Integer(civil.hour).Integer(civil.minute).Integer(civil.second);
}

void ProtocolClient::Send(int number, TextView payload) const {
    const Text length = WireBytes().Long(static_cast<std::int64_t>(payload.size())).Bytes();
    caller_.Send(static_cast<char>(number) + length + Text(payload));
}

WireFrame ProtocolClient::Next() const {
    const Text head = caller_.Receive(5);
    if (head.size() < 5) return {};
    const auto length = static_cast<std::size_t>(LongAt(head, 1));
    WireFrame frame{static_cast<int>(ByteAt(head, 0)), caller_.Receive(length)};
    return frame.payload.size() == length ? frame : WireFrame{};
}

std::vector<WireFrame> ProtocolClient::Until(int number) const {
    std::vector<WireFrame> frames;
    do {
        frames.push_back(Next());
    } while (frames.back().number != number && frames.back().number != -1);
    return frames;
}

std::int64_t LongAt(TextView payload, std::size_t at) {
    return (static_cast<std::int64_t>(IntegerAt(payload, at)) << 16) | IntegerAt(payload, at + 2);
}

int IntegerAt(TextView payload, std::size_t at) {
    return static_cast<int>(ByteAt(payload, at) << 8 | ByteAt(payload, at + 1));
}

}  // namespace nordkeep
