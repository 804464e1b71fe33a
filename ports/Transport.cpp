#include "ports/Transport.h"

namespace nordkeep {

std::unique_ptr<Transport> MakeTransport(PortType type, const TransportParts& parts, PortLog& log,
                                         TransportEvents events) {
    switch (type) {
        case PortType::RS232:
            return MakeSerialTransport(parts, log, std::move(events));
        case PortType::TCPC:
            return MakeTcpClientTransport(parts, log, std::move(events));
        case PortType::TCPS:
            return MakeTcpServerTransport(parts, log, std::move(events));
        case PortType::FILE:
            return MakeFileTransport(parts, log, std::move(events));
        case PortType::HTTP:
            return MakeHttpTransport(parts, log, std::move(events));
        case PortType::UDP:
            return MakeUdpTransport(parts, log, std::move(events));
        case PortType::POP3:
            return MakePop3Transport(parts, log, std::move(events));
        case PortType::SMTP:
            return MakeSmtpTransport(parts, log, std::move(events));
        default:
            return nullptr;
    }
}

}  // namespace nordkeep
