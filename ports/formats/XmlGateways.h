#pragma once

#include "ports/formats/TelegramStep.h"
#include "ports/formats/XmlText.h"
#include "runtime/Protocol.h"
#include "runtime/SharedSettings.h"

namespace nordkeep {

struct XmlGatewaySettings : XmlNameSettings {};

std::span<const SettingRow<XmlGatewaySettings>> XmlGatewaySettingRows();

/// All complete documents at the front of what a line of format "SOS Access XML (Mini)" or "Aptus XML (Mini)"
/// has received, with one reply for all. The line is to be closed behind the reply.
TelegramStep NextSosAccessMiniStep(TextView received, const XmlGatewaySettings& settings, OleDate now);
TelegramStep NextAptusMiniStep(TextView received, const XmlGatewaySettings& settings, OleDate now);
/// The same for format "SOS Access XML (V4)": alarm requests and pings.
TelegramStep NextSosAccessV4Step(TextView received, const XmlGatewaySettings& settings, OleDate now);

}  // namespace nordkeep
