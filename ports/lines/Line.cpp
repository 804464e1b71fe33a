#include "ports/lines/Line.h"

namespace nordkeep {

bool IsLineType(PortType type) {
    return type == PortType::RS232 || type == PortType::TCPC || type == PortType::TCPS ||
           type == PortType::UDP;
}

std::unique_ptr<Line> MakeLine(PortType type, const LineParts& parts, LineListener& listener) {
    switch (type) {
        case PortType::TCPC:
            return MakeTcpClientLine(parts, listener);
        case PortType::TCPS:
            return MakeTcpServerLine(parts, listener);
        case PortType::UDP:
            return MakeUdpLine(parts, listener);
        default:
            return MakeSerialLine(parts, listener);
    }
}

}  // namespace nordkeep
