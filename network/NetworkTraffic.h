#pragma once

#include "platform/Clock.h"
#include "platform/FileTree.h"
#include "runtime/Role.h"
#include "runtime/TrafficLog.h"

#include <cstdint>

namespace nordkeep {

/// The log of the messages between copies: one line for each, without its content, in one file a day.
class NetworkTraffic {
 public:
    NetworkTraffic(const FileTree& dataFolder, const Clock& clock) : dataFolder_(dataFolder), clock_(clock) {}

    void Configure(bool isOn, Role role);
    void WriteTrafficLine(std::uint8_t number, std::size_t payloadLength, TrafficDirection direction) const;

 private:
    const FileTree& dataFolder_;
    const Clock& clock_;
    bool isOn_ = false;
    Text folder_ = "LogFiles\\";
};

}  // namespace nordkeep
