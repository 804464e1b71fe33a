#pragma once

#include "platform/Text.h"

#include <optional>
#include <span>
#include <vector>

namespace nordkeep {

enum class PortType : int { RS232 = 0, TCPC = 1, TCPS = 2, FILE = 3, UDP = 4, HTTP = 5, POP3 = 6, SMTP = 7 };

enum class MessageFormat : int {
    Robofon = 0,
    GoogolT1 = 1,
    PlainText = 2,
    GSM = 3,
    RSM02 = 4,
    RobofonExport = 5,
    SOSAccessMini = 6,
    AptusMini = 7,
    TorvexConfirmationFile = 8,
    SOSAccessV4 = 9,
    VirtualReceiver = 10,
    Mail = 11,
    NordkeepFile = 12,
    SurGardMLR2 = 13,
    SiaDc09 = 109
};

/// Protocol numbers: which translation sets of the port apply to an event.
enum class Protocol : int {
    Nordkeep = 0,
    Robofon = 1,
    Futura = 2,
    L400 = 3,
    Franklin = 4,
    LFS4 = 5,
    Ericsson = 6,
    Multidrop = 7,
    SIA = 8,
    Antenna = 9,
    P100 = 10,
    Electrolux = 11,
    ContactID = 12,
    L400Speak = 13,
    EricssonTT = 14,
    Pensionar = 15,
    Stentofon = 16,
    SMS = 17,
    Googol = 18,
    LA100 = 19,
    SOSAccess = 20,
    PlainText = 21,
    Ademco = 22,
    CLID = 23,
    SOSXMLMini = 24,
    AntennaRBM = 25,
    STT = 26,
    L400RBM = 27,
    Scancom = 28,
    TMA2 = 29,
    AptusXMLMini = 30,
    Linjefel = 31,
    AdemcoExpress = 32,
    SOSXMLv4 = 33,
    VirtualReceiver = 34,
    TM2TAM2 = 35,
    HEP100 = 36,
    HEP100Raw = 37,
    FILE = 38,
    MAIL = 39,
    MultiComXML = 40
};

/// How many protocol numbers there are.
inline constexpr int kProtocolCount = 41;

/// What the codes of a protocol are, as far as the intake treats them in a way of their own.
enum class ProtocolClass {
    Codes,
    Texts,      // messages that people have written
    SIA,        // data codes of letters
    ContactID,  // data codes of digits, with a qualifier
};

/// The number of a protocol in records and settings.
constexpr int NumberOf(Protocol protocol) {
    return static_cast<int>(protocol);
}
/// The protocol of a number from outside. A number without one stays what it is: it has no key and no sets.
constexpr Protocol ProtocolOf(int number) {
    return static_cast<Protocol>(number);
}
constexpr bool IsKnown(Protocol protocol) {
    return NumberOf(protocol) >= 0 && NumberOf(protocol) < kProtocolCount;
}
/// The key of a protocol in the section Translate of a port's settings; empty for a number without one.
TextView ProtocolKey(Protocol protocol);
ProtocolClass ClassOf(Protocol protocol);

/// The type that a word of a settings file names, in any case; none for any other word.
std::optional<PortType> ParsePortType(TextView word);
/// None for a number that is no format's.
std::optional<MessageFormat> ParseMessageFormat(int number);
/// The name of a format as the logs show it.
TextView NameOf(MessageFormat format);
/// What carries a line and what it means, "TCPS 17601, Robofon (RBM600)"; a number below 1 is left out.
Text LineKindText(TextView type, int number, std::optional<MessageFormat> format);
/// The words for all port types, in their order.
std::vector<TextView> PortTypeWords();
/// The numbers of all formats, in their order.
std::span<const MessageFormat> MessageFormats();
/// Whether telegrams of this format can come on this kind of line; no other pair is ever opened.
bool GoTogether(PortType type, MessageFormat format);
/// How many ports of a type can run: 16 serial lines, 8 of every other type.
int SlotLimit(PortType type);

}  // namespace nordkeep
