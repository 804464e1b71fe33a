#pragma once

#include "ports/PortSettings.h"
#include "ports/TelegramStep.h"

#include <functional>

namespace nordkeep {

/// A format's decoder with its settings bound: looks at the front of the received text.
using Decoder = std::function<TelegramStep(TextView received, OleDate now)>;

/// The decoder of a format with the settings of a port; empty for a format without one.
Decoder MakeDecoder(MessageFormat format, const Settings& files, const Text& portName);

}  // namespace nordkeep
