#pragma once

#include "platform/Text.h"

namespace nordkeep {

/// "baud,parity,data bits,stop bits"; parts may be left away from the end. True also for no setting at all.
bool IsSerialSetting(TextView text);

}  // namespace nordkeep
