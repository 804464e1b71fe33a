#include "console/setup/LineKinds.h"

#include "runtime/Fields.h"

#include <algorithm>

namespace nordkeep {
namespace {

/// Keys, separated by blanks.
using Keys = TextView;

constexpr Keys kAlways =
    "PortDescription PortType MessageFormat PortSetting DefaultPrio PortDisable TestTelegramInterval "
    "TestTelegramAlarmCode TestTelegramRestoreCode ClosePortIfTorvexIsLost "
    "ClosePortWhenNoNetworkClientsAreConnected ReopenInterval CLIdTranslatedSIAAliveTestTypeReset "
    "CLIdTranslatedContactIDAliveTestTypeReset CLIdTranslatedDefaultAliveTestTypeReset";
constexpr Keys kCleaning =
    "AdjustTabAndSpace DOS7bitASCIItoISOLatin1 DOS8bitASCIItoISOLatin1 TextCrLfReplaceCharacter";

constexpr TextView kDc09 = "DC09";
constexpr Keys kOfDc09 = "TimeBehind TimeAhead RequireEncryption OnlyKnownAccounts Receiver";
constexpr TextView kMaxCallers = "MaxCallers";

struct KeysOfType {
    PortType type;
    Keys keys;
};
constexpr KeysOfType kOfTypes[] = {
    {PortType::RS232, "PortNumber AutoPurgeBufferTime Handshaking"},
    {PortType::TCPC, "PortNumber AutoPurgeBufferTime"},
    {PortType::TCPS, "PortNumber AutoPurgeBufferTime BindSocketToAddress MaxCallers"},
    {PortType::UDP, "PortNumber AutoPurgeBufferTime BindSocketToAddress"},
    {PortType::HTTP, "HTTPGetInterval& HTTPTimeout HTTPPolls HTTPCAFile"},
    {PortType::POP3,
     "PortNumber POP3Interval POP3User POP3Password POP3MaxMessages POP3ConnectionTimeout POP3TLS "
     "POP3CAFile"},
    {PortType::SMTP, "PortNumber BindSocketToAddress SMTPWelcomeMessage"},
};

struct KeysOfFormat {
    MessageFormat format;
    Keys keys;
    bool cleansText;
    std::vector<Protocol> protocols;
};

const std::vector<KeysOfFormat>& Formats() {
    using enum MessageFormat;
    using P = Protocol;
    static const std::vector<KeysOfFormat> formats = {
        {Robofon,
         "TimeStampFromRBM DefaultSIAPrioN DefaultSIAPrioO",
         false,
         {P::Robofon,    P::ContactID, P::SIA,        P::AdemcoExpress, P::AntennaRBM,
          P::Electrolux, P::Ericsson,  P::EricssonTT, P::Futura,        P::L400,
          P::L400Speak,  P::LA100,     P::LFS4,       P::Linjefel,      P::Multidrop,
          P::P100,       P::Pensionar, P::STT,        P::Scancom,       P::Stentofon}},
        {GoogolT1,
         "TimeStampFromRBM GoogolTextLimit GoogolTextIsAlarmCode SetTimeInterval DefaultSIAPrioN "
         "DefaultSIAPrioO",
         true,
         {P::Googol, P::PlainText, P::Robofon, P::SIA, P::ContactID, P::SMS, P::LA100, P::P100,
          P::SOSAccess}},
        {PlainText, "WrapWithSTXETX RequireNumericIdCode", true, {P::PlainText}},
        {GSM,
         "CommandTimeout InitInterval PollInterval MinSIMIndex MaxSIMIndex EmptyLocationsToPoll "
         "PauseBetweenEachPoll SMSCNumber PIN InitString FO VP PID DCS CharSet SMSCrLfReplaceCharacter "
         "ParseNumericIDCodeFieldUsingSpace UseSenderAsIDCode IA5toISOLatin1 DefaultCountryCode "
         "DefaultTorvexAckSMSPrio",
         true,
         {P::SMS}},
        {RSM02,
         "TimeStampFromRBM SMSCrLfReplaceCharacter ParseNumericIDCodeFieldUsingSpace MultiComBehaviour "
         "XmlNamesIgnoreCase ParseCLIDasProtocol UseSenderAsIDCode DefaultSIAPrioN DefaultSIAPrioO "
         "CLIdTranslatedSIAAliveTestType CLIdTranslatedContactIDAliveTestType "
         "CLIdTranslatedDefaultAliveTestType CLIdUnknownIDCodeAliveTestType CLIdUnknownIDCodeAliveTestPrio",
         true,
         {P::Robofon, P::ContactID,  P::SIA,       P::CLID,     P::SMS,         P::Ademco,   P::AdemcoExpress,
          P::Antenna, P::Electrolux, P::Ericsson,  P::Franklin, P::Futura,      P::HEP100,   P::HEP100Raw,
          P::L400,    P::L400RBM,    P::L400Speak, P::LA100,    P::MultiComXML, P::Nordkeep, P::P100,
          P::STT,     P::Scancom,    P::TM2TAM2,   P::TMA2}},
        {RobofonExport,
         "RBM600ExportTestTelegramInterval RBM600ExportRetries RBM600ExportTimeout",
         false,
         {}},
        {SOSAccessMini, "XmlNamesIgnoreCase", false, {P::SOSXMLMini}},
        {AptusMini, "XmlNamesIgnoreCase", false, {P::AptusXMLMini}},
        {TorvexConfirmationFile, "DefaultTorvexAckSMSPrio", false, {P::FILE}},
        {SOSAccessV4, "XmlNamesIgnoreCase", false, {P::SOSXMLv4}},
        {VirtualReceiver, "", false, {P::VirtualReceiver}},
        {Mail, "ParseNumericIDCodeFieldUsingSpace SubjectFilter MailParsingRule", false, {P::MAIL}},
        {NordkeepFile, "", false, {P::FILE}},
        {SurGardMLR2,
         "MLR2QualifierAsNumber DefaultSIAPrioN DefaultSIAPrioO",
         false,
         {P::ContactID, P::SIA, P::Robofon}},
        {SiaDc09, "DefaultSIAPrioN DefaultSIAPrioO", false, {P::SIA, P::ContactID}},
    };
    return formats;
}

const KeysOfFormat* Find(MessageFormat format) {
    const auto found = std::ranges::find(Formats(), format, &KeysOfFormat::format);
    return found == Formats().end() ? nullptr : &*found;
}

bool Holds(Keys keys, TextView key) {
    const std::vector<Text> all = Split(keys, ' ');
    return std::ranges::any_of(all, [key](const Text& one) { return EqualsNoCase(one, key); });
}

}  // namespace

bool ReadsKey(const LineKind& kind, TextView section, TextView key) {
    const bool isDc09 = kind.format == MessageFormat::SiaDc09;
    if (EqualsNoCase(section, kDc09)) {
        return isDc09 &&
               (Holds(kOfDc09, key) || (kind.type == PortType::TCPS && EqualsNoCase(key, kMaxCallers)));
    }
    // Such a line has its own number.
    if (isDc09 && EqualsNoCase(key, kMaxCallers)) return false;
    if (Holds(kAlways, key)) return true;
    for (const KeysOfType& row : kOfTypes) {
        if (kind.type == row.type && Holds(row.keys, key)) return true;
    }
    const KeysOfFormat* format = kind.format ? Find(*kind.format) : nullptr;
    return format && (Holds(format->keys, key) || (format->cleansText && Holds(kCleaning, key)));
}

bool IsCommonKey(TextView section, TextView key) {
    return EqualsNoCase(section, "General") && Holds(kAlways, key);
}

bool NeedsNumber(PortType type) {
    return type == PortType::RS232 || type == PortType::TCPC || type == PortType::TCPS ||
           type == PortType::UDP || type == PortType::SMTP;
}

std::vector<Protocol> ProtocolsOf(MessageFormat format) {
    const KeysOfFormat* found = Find(format);
    return found ? found->protocols : std::vector<Protocol>();
}

}  // namespace nordkeep
