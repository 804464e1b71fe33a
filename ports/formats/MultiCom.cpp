#include "ports/formats/MultiCom.h"

#include "ports/formats/TelegramFields.h"
#include "runtime/Fields.h"
#include "runtime/Protocol.h"

#include <algorithm>
#include <array>

namespace nordkeep {
namespace {

constexpr int kTextArea = 2232;
constexpr int kTextContactId = 2234;
constexpr int kTextOther = 2235;
constexpr int kTextHasLink = 2238;

const std::array kRows = {
    SettingRow<MultiComSettings>{"General", "MultiComBehaviour", SettingScope::Port,
                                 &MultiComSettings::MultiComBehaviour, -32768, 32767},
    kXmlNameRow<MultiComSettings>,
};

struct Elements {
    Text transmCode;
    Text alarmType;
    Text eventCode;
    Text eventText;
    Text transmArea;
    Text addInfo;
    Text link;
};

/// The first web address, up to the next "|".
Text LinkIn(const Text& addInfo) {
    const std::size_t start = std::min(addInfo.find("http://"), addInfo.find("https://"));
    if (start == Text::npos) return {};
    return addInfo.substr(start, addInfo.find('|', start) - start);
}

Elements Read(const MultiComTelegram& telegram, XmlNames names) {
    const Text request = GetXmlElement(telegram.document, "AlarmRequest", names);
    const auto get = [&](TextView name) { return GetXmlElement(request, name, names); };
    // The additional information may stand behind the request.
    const Text addInfo = GetXmlElement(telegram.text, "AddInfo", names);
    return {get("TransmCode"), get("AlarmType"), get("EventCode"), get("EventText"),
            get("TransmArea"), addInfo,          LinkIn(addInfo)};
}

Text WithoutLast(TextView text) {
    return Text(text.substr(0, text.empty() ? 0 : text.size() - 1));
}

/// Type and data of a block that is written in hexadecimal digits with its length and its check.
Text BlockOfHex(const Text& digits) {
    const Text block = HexToBytes(digits);
    return block.empty() ? Text() : WithoutLast(block.substr(1));
}

class Decoding {
 public:
    Decoding(const MultiComTelegram& telegram, const MultiComSettings& settings)
        : telegram_(telegram),
          elements_(Read(telegram, settings.XmlNamesIgnoreCase ? XmlNames::IgnoreCase : XmlNames::Exact)) {}

    std::vector<DecodedEvent> ByEventCode(const SiaSettings& sia) const {
        if (elements_.eventCode == "831") return {ContactIdEvent()};
        if (elements_.eventCode == "832") return SiaEvents(sia);
        if (elements_.eventCode == "833") return {RobofonEvent()};
        return {DocumentEvent(kTextOther, elements_.eventCode)};
    }

    std::vector<DecodedEvent> AreaAlarms() const {
        const bool isArea = elements_.eventCode == "001" || elements_.eventCode == "065";
        if (!isArea || elements_.transmArea.empty() || elements_.alarmType.empty()) return {};
        return {DocumentEvent(kTextArea, elements_.alarmType)};
    }

 private:
    DecodedEvent NewEvent(int labelText, Protocol protocol) const {
        DecodedEvent decoded{.event = telegram_.common, .labelTexts = {labelText}};
        if (!elements_.link.empty()) decoded.labelTexts[1] = kTextHasLink;
        decoded.event.TranslationNumberToUse = protocol;
        decoded.event.RawAlarmCode = telegram_.document;
        decoded.event.URL = elements_.link;
        return decoded;
    }

    DecodedEvent ContactIdEvent() const {
        DecodedEvent decoded = NewEvent(kTextContactId, Protocol::ContactID);
        decoded.event.ExtraText = WithoutLast(elements_.addInfo);
        decoded.event.DefaultAlarmCode = elements_.transmCode + "/" + decoded.event.ExtraText;
        return decoded;
    }

    std::vector<DecodedEvent> SiaEvents(const SiaSettings& sia) const {
        const Text parts = WithoutLast(elements_.addInfo);
        const Text blocks = BlockOfHex(GetField(parts, 0, "#")) + "\\" + BlockOfHex(GetField(parts, 1, "#"));
        return DecodeSIABlock({.text = "[#" + elements_.transmCode + "|" + blocks + "]",
                               .form = SiaForm::Brackets,
                               .eventTime = telegram_.common.AlarmTime,
                               .sender = telegram_.common.Originator,
                               .receiverLine = telegram_.common.LineCardNumber,
                               .isFollowedBySpeech = telegram_.common.MessageIsFollowedBySpeech,
                               .link = elements_.link},
                              sia, telegram_.now);
    }

    DecodedEvent RobofonEvent() const {
        DecodedEvent decoded = NewEvent(kTextOther, Protocol::Robofon);
        decoded.event.ExtraText = elements_.addInfo;
        decoded.event.Originator = elements_.transmCode;
        return decoded;
    }

    DecodedEvent DocumentEvent(int labelText, const Text& type) const {
        DecodedEvent decoded = NewEvent(labelText, Protocol::MultiComXML);
        decoded.event.DefaultType = TypeNumber(type);
        decoded.event.DefaultAlarmCode = elements_.transmCode;
        decoded.event.ExtraText = elements_.eventText;
        decoded.event.XMLDocument = telegram_.document;
        return decoded;
    }

    const MultiComTelegram& telegram_;
    Elements elements_;
};

}  // namespace

std::span<const SettingRow<MultiComSettings>> MultiComSettingRows() {
    return kRows;
}

std::vector<DecodedEvent> DecodeMultiCom(const MultiComTelegram& telegram, const MultiComSettings& settings,
                                         const SiaSettings& sia) {
    const Decoding decoding(telegram, settings);
    return settings.MultiComBehaviour == 0 ? decoding.ByEventCode(sia) : decoding.AreaAlarms();
}

}  // namespace nordkeep
