#pragma once

#include "console/lists/AgeText.h"
#include "console/lists/Captions.h"
#include "console/lists/OperatorRights.h"
#include "platform/OleDate.h"

#include <array>

namespace nordkeep {

/// What the right part of the status bar counts.
struct StatusFigures {
    std::size_t unacked = 0;
    std::array<int, 4> byPriority{};  // of them: 1, 2, 3, others
    std::size_t acked = 0;
    int inService = 0;          // objects
    OleDate oldestUnhandled{};  // when it came; never without one
    OleDate now{};
    OperatorRights rights{};
    Text fullName{};
};
struct StatusTexts {
    Text unacked{};
    Text byPriority{};  // "1: 4   2: 0   3: 13"
    Text acked{};
    Text inService{};  // empty without an object in service
    Text oldest{};     // empty without an unhandled alarm
    Text user{};       // empty but on a client
    Text clock{};
    bool isOverdue = false;  // the oldest has waited for more than a minute
    friend bool operator==(const StatusTexts&, const StatusTexts&) = default;
};
StatusTexts StatusTextsOf(const Captions& captions, const StatusFigures& figures);

/// What the window's title tells beside the name of the program.
struct TitleParts {
    OperatorRights rights{};
    int clients = 0;  // connected to a server
    Text server{};    // of a client
    Text fullName{};
};
Text TitleOf(const Captions& captions, const TitleParts& parts);

/// The icon in the system's tray, by shape.
enum class TrayState { Idle, NewAlarms, NoContact };
struct Tray {
    TrayState state = TrayState::Idle;
    std::size_t count = 0;
    friend bool operator==(const Tray&, const Tray&) = default;
};

}  // namespace nordkeep
