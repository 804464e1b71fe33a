#include "platform/qt/QtSerial.h"

#include "platform/qt/QtSerialLine.h"

namespace nordkeep {

std::unique_ptr<MSComm> QtSerial::NewLine() {
    return std::make_unique<QtSerialLine>();
}

}  // namespace nordkeep
