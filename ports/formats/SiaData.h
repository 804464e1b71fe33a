#pragma once

#include "ports/formats/SiaDecoding.h"

namespace nordkeep {

/// One decoded SIA event.
struct cSIAEvent {
    Text m_AccountId{};
    char m_BlockType = 0;
    std::vector<Text> modifiers{};
    Text code{};    // event code with its address
    Text m_Text{};  // of an ASCII block
    Text zone{};    // each part with a blank behind it
    Text error{};
};

/// Said of data that do not keep to the format.
inline constexpr const char* kInvalidSiaFormat = "Invalid SIA format!";
/// More events than this in one message are nobody's alarms.
inline constexpr std::size_t kMostSiaEvents = 256;

/// The events of a block that lists event codes. `start` gives account and block type.
///
/// A modifier (such as "ri1" or "ti10:15") in front of a code counts for that code and the following ones
/// until another of its kind replaces it; behind the last code it belongs to that code. Where the data leave
/// the format, the event is kept with an error text and the rest of the block is left alone.
std::vector<cSIAEvent> ParseSiaData(const cSIAEvent& start, TextView data, SiaForm form);

}  // namespace nordkeep
