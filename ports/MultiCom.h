#pragma once

#include "ports/SiaDecoding.h"
#include "ports/XmlText.h"

namespace nordkeep {

struct MultiComSettings {
    int MultiComBehaviour = 0;  // 0: the event code chooses; otherwise only area alarms make events
    bool XmlNamesIgnoreCase = false;
};

std::span<const SettingRow<MultiComSettings>> MultiComSettingRows();

/// The events of an XML document that an RSM-02 frame has brought. `frame` has what the frame itself says:
/// time, caller, receiver line, speech.
std::vector<DecodedEvent> DecodeMultiCom(TextView document, const IncomingEvent& frame,
                                         const MultiComSettings& settings, const SiaSettings& sia);

}  // namespace nordkeep
