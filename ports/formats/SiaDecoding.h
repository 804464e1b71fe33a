#pragma once

#include "ports/formats/TelegramStep.h"
#include "runtime/SharedSettings.h"

namespace nordkeep {

/// Settings of the whole centre that bear on SIA messages.
struct SiaSettings : SiaErrorSettings {
    bool SIAAsciiBlockAsSeparateEvent = true;  // otherwise a text goes into the event in front of it
    int WaitForMLR2SIAASCIIBlockTimeout = 0;   // seconds that an event waits for its text; 0 or less: none
};

std::span<const SettingRow<SiaSettings>> SiaSettingRows();

/// The two ways in which receivers write blocks.
enum class SiaForm {
    Lengths,  // length, type, data, check
    Brackets  // [#account|type data\type data]
};

/// One SIA message and what its receiver says about it.
struct SiaMessage {
    Text text{};
    SiaForm form = SiaForm::Brackets;
    OleDate eventTime{};
    Text sender{};
    Text receiverLine{};
    bool isFollowedBySpeech = false;
    Text link{};
};

/// The events of a message: first those for blocks of no known type, then one for each event code.
std::vector<DecodedEvent> DecodeSIABlock(const SiaMessage& message, const SiaSettings& settings, OleDate now);

}  // namespace nordkeep
