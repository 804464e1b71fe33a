#include "ports/formats/VirtualReceiver.h"

#include "ports/formats/XmlText.h"
#include "runtime/Protocol.h"

#include <array>

namespace nordkeep {
namespace {

constexpr int kTextLabel = 2226;
constexpr int kMostFailures = 10;

constexpr SettingScope kPort = SettingScope::Port;
const std::array kRows = {
    SettingRow<PollSettings>{"General", "HTTPGetInterval&", kPort, &PollSettings::HTTPGetInterval, 0,
                             2'000'000},
    SettingRow<PollSettings>{"General", "HTTPTimeout", kPort, &PollSettings::HTTPTimeout, 0, 2'000'000},
    SettingRow<PollSettings>{"General", "HTTPPolls", kPort, &PollSettings::HTTPPolls},
    SettingRow<PollSettings>{"General", "HTTPCAFile", kPort, &PollSettings::HTTPCAFile},
};

bool StandsInUrl(char c) {
    constexpr TextView kMarks = "-._~:/?[]@!$&'()*+,;=%";
    const bool isLetter = (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
    return isLetter || (c >= '0' && c <= '9') || kMarks.find(c) != TextView::npos;
}

Text EncodeUrl(TextView url) {
    constexpr TextView kHex = "0123456789ABCDEF";
    Text encoded;
    for (const char c : url) {
        const auto code = static_cast<unsigned char>(c);
        if (StandsInUrl(c)) {
            encoded += c;
        } else {
            encoded += {'%', kHex[code >> 4], kHex[code & 15]};
        }
    }
    return encoded;
}

bool StartsWith(TextView text, TextView start) {
    return EqualsNoCase(text.substr(0, start.size()), start);
}

Text WithoutLineEnds(TextView text) {
    return ReplaceAll(ReplaceAll(text, "\n", ""), "\r", "");
}

/// The usual answer of a receiver without events. Only so many characters count, however the words are
/// spaced.
bool IsQueueEmpty(TextView reply) {
    constexpr std::size_t kCompared = 23;
    const Text start = ReplaceAll(WithoutLineEnds(reply.substr(0, kCompared)), " ", "");
    return EqualsNoCase(start, "ERROR:EVENTQUEUEEMPTY");
}

void HandleRocipXml(TelegramStep& step, TextView text, OleDate now) {
    const auto find = [](TextView in) { return FindXmlElement(in, "rocip100", XmlNames::Exact); };
    for (auto element = find(text); element; element = find(text)) {
        const auto get = [&](TextView name) { return GetXmlElement(element->inner, name, XmlNames::Exact); };
        step.events.push_back({.event = {.AlarmTime = now,
                                         .DefaultType = TypeNumber(get("EventCode")),
                                         .DefaultAlarmCode = get("site"),
                                         .ExtraText = get("EventText"),
                                         .TranslationNumberToUse = Protocol::VirtualReceiver,
                                         .XMLDocument = Text(element->inner)},
                               .labelTexts = {kTextLabel}});
        text.remove_prefix(element->end);
    }
}

void ReadEvents(PollReply& result, TextView reply, cVirtualReceiver& receiver, OleDate now) {
    constexpr TextView kElement = "<rocip100>";
    result.eventNumber = LeadingInt32(reply.substr(4));
    HandleRocipXml(result.step, reply, now);
    receiver.m_GotData = true;
    receiver.m_FailureCount = 0;
    const std::size_t lastStart = reply.rfind(kElement);
    result.isCut = lastStart != TextView::npos && reply.find("</rocip100>", lastStart) == TextView::npos;
}

void CountFailure(cVirtualReceiver& receiver) {
    if (receiver.m_EventNumber == 0 || ++receiver.m_FailureCount < kMostFailures) return;
    receiver.m_EventNumber = receiver.m_FailureCount = 0;
}

}  // namespace

std::span<const SettingRow<PollSettings>> PollSettingRows() {
    return kRows;
}

Text CsidOf(TextView line) {
    return Text(line.substr(0, line.find('=')));
}

cVirtualReceiver ReceiverOf(TextView line) {
    const std::size_t equals = line.find('=');
    const TextView value = equals == TextView::npos ? TextView() : line.substr(equals + 1);
    return {.m_CSID = CsidOf(line),
            .m_Password = GetField(value, 0, ","),
            .m_Description = GetField(value, 1, ",")};
}

Text PassInput(const cVirtualReceiver& receiver) {
    return "CSID" + receiver.m_CSID + "Event" + std::to_string(receiver.m_EventNumber) + "Pass" +
           receiver.m_Password;
}

Text PollUrl(TextView service, const cVirtualReceiver& receiver, TextView pass) {
    return EncodeUrl(Text(service) + "?csid=CSID" + receiver.m_CSID +
                     "&event=" + std::to_string(receiver.m_EventNumber) + "&pass=" + Text(pass));
}

bool IsPollReply(TextView reply) {
    return EqualsNoCase(reply.substr(0, 6), "ERROR:") || reply.starts_with("OK:");
}

PollReply ReadPollReply(TextView reply, cVirtualReceiver& receiver, OleDate now) {
    PollReply result{.step = {.isTraffic = true}};
    if (StartsWith(reply, "ERROR:") && !IsQueueEmpty(reply)) {
        result.error = WithoutLineEnds(reply.substr(6));
        receiver.m_EventNumber = 0;
    } else if (StartsWith(reply, "OK:[")) {
        ReadEvents(result, reply, receiver, now);
    } else if (StartsWith(reply, "OK:")) {
        CountFailure(receiver);
    }
    return result;
}

}  // namespace nordkeep
