#pragma once

#include "network/messages/MessageNumbers.h"
#include "platform/Text.h"

#include <optional>

namespace nordkeep {

/// The longest payload that either side takes; a longer one is announced only by somebody who is no copy of
/// this program.
inline constexpr std::size_t kLongestPayload = 64 << 20;

/// One message as it stands in the stream: its number, the length of the payload as 32 bits big-endian, the
/// payload.
Text FrameOf(Message message, TextView payload);

struct Frame {
    std::uint8_t number = 0;  // can be one that is no Message
    Text payload{};
};

/// Cuts the frames out of what a connection delivers. A frame has left the buffer before it is handed out,
/// so its handler can wait and let more arrive.
class FrameBuffer {
 public:
    void Append(TextView bytes) { bytes_.append(bytes); }
    /// The next complete frame; none when more bytes are needed or IsTooLong.
    std::optional<Frame> Next();
    /// The next frame announces more than kLongestPayload: the connection is not to be read any further.
    bool IsTooLong() const;
    void Clear();

 private:
    static constexpr std::size_t kHeader = 5;

    TextView Rest() const { return TextView(bytes_).substr(start_); }
    std::size_t PayloadLength() const;
    void DropFront(std::size_t count);

    Text bytes_{};
    std::size_t start_ = 0;  // what stands before has been handed out
};

}  // namespace nordkeep
