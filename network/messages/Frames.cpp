#include "network/messages/Frames.h"

namespace nordkeep {

Text FrameOf(Message message, TextView payload) {
    Text frame(1, static_cast<char>(message));
    frame.reserve(payload.size() + 5);
    for (int shift = 24; shift >= 0; shift -= 8) frame += static_cast<char>(payload.size() >> shift & 0xFF);
    return frame.append(payload);
}

std::size_t FrameBuffer::PayloadLength() const {
    std::size_t length = 0;
    for (const char byte : Rest().substr(1, 4)) length = length << 8 | static_cast<unsigned char>(byte);
    return length;
}

bool FrameBuffer::IsTooLong() const {
    return Rest().size() >= kHeader && PayloadLength() > kLongestPayload;
}

std::optional<Frame> FrameBuffer::Next() {
    if (Rest().size() < kHeader || IsTooLong()) return std::nullopt;
    const std::size_t length = PayloadLength();
    if (Rest().size() < kHeader + length) return std::nullopt;
    Frame frame{.number = static_cast<std::uint8_t>(Rest().front()),
                .payload = Text(Rest().substr(kHeader, length))};
    DropFront(kHeader + length);
    return frame;
}

// Many small frames in one arrival must not move the rest of it once for each.
void FrameBuffer::DropFront(std::size_t count) {
    start_ += count;
    if (start_ == bytes_.size()) return Clear();
    if (start_ < bytes_.size() / 2) return;
    bytes_.erase(0, start_);
    start_ = 0;
}

void FrameBuffer::Clear() {
    Text().swap(bytes_);
    start_ = 0;
}

}  // namespace nordkeep
