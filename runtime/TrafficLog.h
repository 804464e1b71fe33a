#pragma once

#include "platform/Clock.h"
#include "platform/KeptFiles.h"
#include "runtime/Role.h"
#include "runtime/SysLog.h"

#include <functional>

namespace nordkeep {

enum class TrafficDirection : int { Received = 1, Sent = 2 };

/// How received and sent bytes are written to the traffic file.
struct TrafficLogSettings {
    bool isOn = false;   // ContinousDebugToFile
    bool isHex = false;  // ContinousDebugFormatAsHex
};

/// The bytes of a telegram as a person reads them: control characters as "<STX>", or two hexadecimal digits
/// and a blank for each byte.
Text ReadableBytes(TextView bytes, bool isHex);
/// The bytes of a text in the first of these notations: "<STX>" and "<13>" are one byte each, and what is
/// neither stands for itself.
Text BytesOfReadable(TextView readable);

/// A text that stays one line wherever it is shown: characters below 32, which could steer a terminal or end
/// the line, become "?". Tabs stay.
Text PlainLine(TextView text);

/// The raw bytes of all ports in one file a day. The file stays open between writes.
class TrafficLog {
 public:
    TrafficLog(const FileTree& dataFolder, const Clock& clock) : clock_(clock), file_(dataFolder) {}

    /// Gets all bytes of all ports, whether or not they go to the file. One listener; empty for none.
    using Listener = std::function<void(TextView bytes, TrafficDirection direction, TextView port)>;

    void Configure(const TrafficLogSettings& settings, Role role);
    void SetListener(Listener listener) { listener_ = std::move(listener); }
    void WriteTrafficLog(TextView bytes, TrafficDirection direction, TextView port);
    /// Adds to the time without traffic and closes the file when that is above 10 s.
    void AddIdleTime(int ms);
    void Close();
    bool IsOpen() const { return file_.IsOpen(); }

 private:
    const Clock& clock_;
    TrafficLogSettings settings_{};
    Listener listener_{};
    Text folder_ = "LogFiles\\";
    AppendingFile file_;
    int idleMs_ = 0;
};

}  // namespace nordkeep
