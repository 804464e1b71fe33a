#pragma once

#include "platform/MSComm.h"

namespace nordkeep {

/// Serial lines of the toolkit's serial port library.
class QtSerial : public SerialFactory {
 public:
    std::unique_ptr<MSComm> NewLine() override;
};

}  // namespace nordkeep
