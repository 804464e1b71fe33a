#pragma once

#include "ports/formats/SiaDecoding.h"
#include "ports/formats/XmlText.h"

namespace nordkeep {

struct MultiComSettings : XmlNameSettings {
    int MultiComBehaviour = 0;  // 0: the event code chooses; otherwise only area alarms make events
};

std::span<const SettingRow<MultiComSettings>> MultiComSettingRows();

/// An XML document that RSM-02 frames have brought.
struct MultiComTelegram {
    Text text{};             // all that the frames brought
    Text document{};         // the same without what stands behind it
    IncomingEvent common{};  // what the frames say themselves: time, caller, receiver line, speech
    OleDate now{};
};

std::vector<DecodedEvent> DecodeMultiCom(const MultiComTelegram& telegram, const MultiComSettings& settings,
                                         const SiaSettings& sia);

}  // namespace nordkeep
