#include "ports/formats/CallerIdentity.h"

#include "runtime/Fields.h"
#include "runtime/Protocol.h"

#include <array>

namespace nordkeep {
namespace {

constexpr int kTextCaller = 2214;

constexpr SettingScope kPort = SettingScope::Port;
const std::array kRows = {
    SettingRow<CallSettings>{"General", "ParseCLIDasProtocol", kPort, &CallSettings::ParseCLIDasProtocol},
    SettingRow<CallSettings>{"General", "CLIdTranslatedSIAAliveTestType", kPort,
                             &CallSettings::CLIdTranslatedSIAAliveTestType},
    SettingRow<CallSettings>{"General", "CLIdTranslatedContactIDAliveTestType", kPort,
                             &CallSettings::CLIdTranslatedContactIDAliveTestType},
    SettingRow<CallSettings>{"General", "CLIdTranslatedDefaultAliveTestType", kPort,
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

void TakeObject(DecodedEvent& decoded, const CallSettings& settings, const KnownCaller& caller) {
    const Protocol protocol = caller.protocol;
    const Text& type = TypeOf(protocol, settings);
    const Text mark = protocol == Protocol::SIA ? "#" : "";
    decoded.labelTexts = {};
    IncomingEvent& event = decoded.event;
    event.ProtocolType = kOwnProtocol;
    event.DefaultType = LeadingInt16(type);
    event.DefaultAlarmCode = mark + caller.idCode + type;
    event.ObjectID = caller.idCode;
    event.TranslationNumberToUse = protocol;
    event.SpecificTranslationToUse = caller.set;
    event.ForcedTypeCode = type;
}

}  // namespace

std::span<const SettingRow<CallSettings>> CallSettingRows() {
    return kRows;
}

void MakeCall(DecodedEvent& decoded, const CallSettings& settings, const CallerBook& callers) {
    if (settings.ParseCLIDasProtocol) return TakeNumberAsCode(decoded, settings);
    const auto caller = callers.FindCaller(decoded.event.Originator);
    if (caller) TakeObject(decoded, settings, *caller);
}

}  // namespace nordkeep
