#include "ports/formats/CallerIdentity.h"

#include "runtime/Fields.h"
#include "runtime/Protocol.h"

#include <array>

namespace nordkeep {
namespace {

constexpr int kTextCaller = 2214;

constexpr SettingScope kPort = SettingScope::Port;
const std::array kRows = {
    SettingRow<CallSettings>{"General", "ParseCLIDasProtocol", "0", kPort,
                             &CallSettings::ParseCLIDasProtocol},
    SettingRow<CallSettings>{"General", "CLIdTranslatedSIAAliveTestType", "99", kPort,
                             &CallSettings::CLIdTranslatedSIAAliveTestType},
    SettingRow<CallSettings>{"General", "CLIdTranslatedContactIDAliveTestType", "99", kPort,
                             &CallSettings::CLIdTranslatedContactIDAliveTestType},
    SettingRow<CallSettings>{"General", "CLIdTranslatedDefaultAliveTestType", "99", kPort,
                             &CallSettings::CLIdTranslatedDefaultAliveTestType},
};

const Text& TypeOf(Protocol protocol, const CallSettings& settings) {
    if (protocol == Protocol::SIA) return settings.CLIdTranslatedSIAAliveTestType;
    if (protocol == Protocol::ContactID) return settings.CLIdTranslatedContactIDAliveTestType;
    return settings.CLIdTranslatedDefaultAliveTestType;
}

void TakeNumberAsCode(DecodedEvent& decoded, const CallSettings& settings) {
    decoded.event.ProtocolType.clear();
    decoded.labelTexts = {kTextCaller};
    decoded.event.DefaultType = LeadingInt16(settings.CLIdTranslatedDefaultAliveTestType);
    decoded.event.DefaultAlarmCode = decoded.event.Originator;
    decoded.event.TranslationNumberToUse = Protocol::CLID;
}

void TakeObject(DecodedEvent& decoded, const CallSettings& settings, const CallerMatch& match) {
    const Protocol protocol = match.protocol;
    const Text& type = TypeOf(protocol, settings);
    const Text mark = protocol == Protocol::SIA ? "#" : "";
    decoded.labelTexts = {};
    IncomingEvent& event = decoded.event;
    event.ProtocolType = kOwnProtocol;
    event.DefaultType = LeadingInt16(type);
    event.DefaultAlarmCode = mark + match.object->m_IdCode + type;
    event.ObjectID = match.object->m_IdCode;
    event.TranslationNumberToUse = protocol;
    event.SpecificTranslationToUse = match.set;
    event.ForcedTypeCode = type;
}

}  // namespace

std::span<const SettingRow<CallSettings>> CallSettingRows() {
    return kRows;
}

void MakeCall(DecodedEvent& decoded, const CallSettings& settings, const CallerLookup& findCaller) {
    if (settings.ParseCLIDasProtocol) return TakeNumberAsCode(decoded, settings);
    if (!findCaller) return;
    if (const auto match = findCaller(decoded.event.Originator)) TakeObject(decoded, settings, *match);
}

}  // namespace nordkeep
