#pragma once

#include "ports/formats/Rsm02.h"

namespace nordkeep {

/// The last frame of a text, and the text of all its frames.
struct Rsm02Telegram {
    char classCode = 0;
    OleDate time{};
    Text receiverLine{};
    bool isFollowedBySpeech = false;
    Text text{};
};

/// The events of a complete text; none for a class that carries none.
std::vector<DecodedEvent> DecodeRsm02Text(const Rsm02Telegram& telegram, const Rsm02Line& line, OleDate now);

}  // namespace nordkeep
