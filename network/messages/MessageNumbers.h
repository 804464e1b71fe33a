#pragma once

#include "platform/Text.h"

#include <cstdint>

namespace nordkeep {

/// Both sides speak this version, or the client ends.
inline constexpr std::int32_t kProtocolVersion = 2;

/// What a frame is about; the number on the wire.
enum class Message : std::uint8_t {
    KeepAlive = 0,
    Translation = 2,
    PortTree = 3,
    ClosePending = 4,
    InitialData = 5,
    InitialEvent = 6,
    OldEvent = 7,
    NewEvent = 8,
    AllEvents = 9,
    SendToTorvex = 10,
    RemovePortTree = 11,
    RemoveTranslations = 12,
    ResetAliveTestTimer = 13,
    SetServiceMode = 14,
    UpdateIdCode = 15,
    Login = 16,
    Logout = 17,
    ReadTextFile = 18,
    WriteTextFile = 19,
    FileDateTimeStamp = 20,
    ScanForFiles = 21,
    ReadBinaryFile = 22,
    ProtocolVersion = 23,
    MakeDir = 24,
    // From here on only between copies that have told each other that they know them.
    Extensions = 30,
    Lines = 31,
    Conditions = 32,
    ServiceReason = 33,
    History = 34,
    Report = 35,
    Handover = 36,
    Accounts = 37,
    ServerIsShuttingDown = 99,
};

/// The highest number of those that only some copies know.
inline constexpr std::int32_t kHighestExtension = static_cast<std::int32_t>(Message::Accounts);

/// The name in the traffic log; "Unknown (n)" for a number that is no message.
Text MessageName(std::uint8_t number);

}  // namespace nordkeep
