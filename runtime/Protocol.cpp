#include "runtime/Protocol.h"

#include <algorithm>
#include <array>
#include <utility>

namespace nordkeep {
namespace {

constexpr std::array<TextView, 8> kPortTypes = {"RS232", "TCPC", "TCPS", "FILE",
                                                "UDP",   "HTTP", "POP3", "SMTP"};

constexpr std::array<MessageFormat, 15> kFormats = {
    MessageFormat::Robofon,       MessageFormat::GoogolT1,        MessageFormat::PlainText,
    MessageFormat::GSM,           MessageFormat::RSM02,           MessageFormat::RobofonExport,
    MessageFormat::SOSAccessMini, MessageFormat::AptusMini,       MessageFormat::TorvexConfirmationFile,
    MessageFormat::SOSAccessV4,   MessageFormat::VirtualReceiver, MessageFormat::Mail,
    MessageFormat::NordkeepFile,  MessageFormat::SurGardMLR2,     MessageFormat::SiaDc09};

constexpr std::array<TextView, kFormats.size()> kFormatNames = {"Robofon (RBM600)",
                                                                "Googol (GoogolT1)",
                                                                "Text",
                                                                "GSM",
                                                                "RSM-02",
                                                                "Robofon (RBM600) Export",
                                                                "SOS Access XML (Mini)",
                                                                "Aptus XML (Mini)",
                                                                "Torvex SMS Confirmation File",
                                                                "SOS Access XML (V4)",
                                                                "Virtual Receiver (ROC)",
                                                                "Mail (POP3/SMTP)",
                                                                "Nordkeep File",
                                                                "Sur-Gard (MLR2-DG)",
                                                                "SIA DC-09"};

struct ProtocolRow {
    Protocol protocol;
    TextView key;
    ProtocolClass itsClass = ProtocolClass::Codes;
};

constexpr std::array<ProtocolRow, kProtocolCount> kProtocols = {{
    {Protocol::Nordkeep, "Nordkeep"},
    {Protocol::Robofon, "Robofon"},
    {Protocol::Futura, "Futura"},
    {Protocol::L400, "L400"},
    {Protocol::Franklin, "Franklin"},
    {Protocol::LFS4, "LFS4"},
    {Protocol::Ericsson, "Ericsson"},
    {Protocol::Multidrop, "Multidrop"},
    {Protocol::SIA, "SIA", ProtocolClass::SIA},
    {Protocol::Antenna, "Antenna"},
    {Protocol::P100, "P100"},
    {Protocol::Electrolux, "Electrolux"},
    {Protocol::ContactID, "ContactID", ProtocolClass::ContactID},
    {Protocol::L400Speak, "L400Speak"},
    {Protocol::EricssonTT, "EricssonTT"},
    {Protocol::Pensionar, "Pensionar"},
    {Protocol::Stentofon, "Stentofon"},
    {Protocol::SMS, "SMS", ProtocolClass::Texts},
    {Protocol::Googol, "Googol", ProtocolClass::Texts},
    {Protocol::LA100, "LA100"},
    {Protocol::SOSAccess, "SOSAccess"},
    {Protocol::PlainText, "Text", ProtocolClass::Texts},
    {Protocol::Ademco, "Ademco"},
    {Protocol::CLID, "CLID"},
    {Protocol::SOSXMLMini, "SOSXMLMini"},
    {Protocol::AntennaRBM, "AntennaRBM"},
    {Protocol::STT, "STT"},
    {Protocol::L400RBM, "L400RBM"},
    {Protocol::Scancom, "Scancom"},
    {Protocol::TMA2, "TMA2"},
    {Protocol::AptusXMLMini, "AptusXMLMini"},
    {Protocol::Linjefel, "Linjefel"},
    {Protocol::AdemcoExpress, "AdemcoExpress"},
    {Protocol::SOSXMLv4, "SOSXMLv4"},
    {Protocol::VirtualReceiver, "VirtualReceiver"},
    {Protocol::TM2TAM2, "TM2-TAM2"},
    {Protocol::HEP100, "HE-P100"},
    {Protocol::HEP100Raw, "HE-P100-RAW"},
    {Protocol::FILE, "FILE"},
    {Protocol::MAIL, "MAIL"},
    {Protocol::MultiComXML, "MultiComXML"},
}};

/// A row is found by its number, so each stands where its number says.
constexpr bool StandInOrder() {
    for (int number = 0; number < kProtocolCount; ++number) {
        if (NumberOf(kProtocols[static_cast<std::size_t>(number)].protocol) != number) return false;
    }
    return true;
}
static_assert(StandInOrder());

const ProtocolRow& RowOf(Protocol protocol) {
    return kProtocols[static_cast<std::size_t>(NumberOf(protocol))];
}

}  // namespace

std::optional<PortType> ParsePortType(TextView word) {
    const TextView trimmed = TrimBlanks(word);
    for (std::size_t i = 0; i < kPortTypes.size(); ++i) {
        if (EqualsNoCase(trimmed, kPortTypes[i])) return static_cast<PortType>(i);
    }
    return std::nullopt;
}

std::optional<MessageFormat> ParseMessageFormat(int number) {
    const auto format = static_cast<MessageFormat>(number);
    return std::ranges::find(kFormats, format) == kFormats.end() ? std::nullopt : std::optional(format);
}

TextView NameOf(MessageFormat format) {
    const auto* const place = std::ranges::find(kFormats, format);
    return place == kFormats.end() ? TextView()
                                   : kFormatNames[static_cast<std::size_t>(place - kFormats.begin())];
}

TextView ProtocolKey(Protocol protocol) {
    return IsKnown(protocol) ? RowOf(protocol).key : TextView();
}

ProtocolClass ClassOf(Protocol protocol) {
    return IsKnown(protocol) ? RowOf(protocol).itsClass : ProtocolClass::Codes;
}

std::vector<TextView> PortTypeWords() {
    return {kPortTypes.begin(), kPortTypes.end()};
}

std::span<const MessageFormat> MessageFormats() {
    return kFormats;
}

bool GoTogether(PortType type, MessageFormat format) {
    using enum MessageFormat;
    switch (type) {
        case PortType::FILE:
            return format == TorvexConfirmationFile || format == NordkeepFile;
        case PortType::HTTP:
            return format == VirtualReceiver;
        case PortType::POP3:
        case PortType::SMTP:
            return format == Mail;
        case PortType::RS232:
        case PortType::TCPC:
            if (format == SiaDc09) return false;
            [[fallthrough]];
        default:
            return format != TorvexConfirmationFile && format != NordkeepFile && format != VirtualReceiver &&
                   format != Mail;
    }
}

int SlotLimit(PortType type) {
    return type == PortType::RS232 ? 16 : 8;
}

Text LineKindText(TextView type, int number, std::optional<MessageFormat> format) {
    Text kind(type);
    if (number > 0) kind += " " + std::to_string(number);
    if (format) kind.append(", ").append(NameOf(*format));
    return kind;
}

}  // namespace nordkeep
