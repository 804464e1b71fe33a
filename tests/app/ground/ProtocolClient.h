#pragma once

#include "platform/OleDate.h"
#include "tests/app/ground/RunningCopy.h"

#include <cstdint>
#include <optional>

namespace nordkeep {

/// Bytes of a payload, put together by hand so that the program's own writer is not asked.
class WireBytes {
 public:
    WireBytes& Integer(int value);
    WireBytes& Long(std::int64_t value);
    WireBytes& Short(TextView text);
    WireBytes& LongText(TextView text);
    WireBytes& Date(OleDate date);
    const Text& Bytes() const { return bytes_; }

 private:
    Text bytes_{};
};

/// One message as it stood on the wire.
struct WireFrame {
    int number = -1;
    Text payload{};
};

/// A client of the tests' own on a server's port.
class ProtocolClient {
 public:
    explicit ProtocolClient(int port) : caller_(port) {}

    void Send(int number, TextView payload = {}) const;
    /// The next message; number -1 when none comes within half a minute or the server has closed.
    WireFrame Next() const;
    /// Everything up to and with the next message of this number.
    std::vector<WireFrame> Until(int number) const;
    /// The next message of this number; others before it are passed over.
    WireFrame Wait(int number) const { return Until(number).back(); }

 private:
    Caller caller_;
};

/// The number at a place of a payload.
std::int64_t LongAt(TextView payload, std::size_t at);
int IntegerAt(TextView payload, std::size_t at);

}  // namespace nordkeep
