#include "ports/collectors/Collector.h"

namespace nordkeep {

std::unique_ptr<Collector> MakeCollector(PortType type, MessageFormat format, const CollectorParts& parts) {
    const bool isMail = format == MessageFormat::Mail;
    if (type == PortType::FILE) return MakeFileCollector(format, parts);
    if (type == PortType::HTTP && format == MessageFormat::VirtualReceiver) return MakeHttpCollector(parts);
    if (type == PortType::POP3 && isMail) return MakePop3Collector(parts);
    if (type == PortType::SMTP && isMail) return MakeSmtpCollector(parts);
    return nullptr;
}

}  // namespace nordkeep
