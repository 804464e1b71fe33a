#include "ports/dc09/Dc09Events.h"

#include "ports/formats/SiaData.h"
#include "runtime/Fields.h"
#include "runtime/Protocol.h"

#include <algorithm>

namespace nordkeep {
namespace {

constexpr int kTextSia = 2211;
constexpr int kTextContactId = 2011;
constexpr std::size_t kSiaAccountWidth = 6;
constexpr std::size_t kContactIdAccountWidth = 4;
constexpr const char* kContactIdMark = "18";  // the message type that stands behind the account
constexpr const char* kFailureCode = "350";
constexpr const char* kRoutineTest = "1602";
constexpr const char* kNoGroupAndZone = "00000";

Text FilledUp(TextView account, std::size_t width) {
    return Text(account.size() < width ? width - account.size() : 0, '0').append(account);
}

Text ReceiverLine(const Dc09Head& head) {
    if (head.receiver.empty() && head.prefix.empty()) return {};
    const auto orNone = [](const Text& number) { return number.empty() ? Text("0") : number; };
    return orNone(head.receiver) + ":" + orNone(head.prefix);
}

/// What of a message may be shown and kept: what has been sent, in plain text.
Text RawOf(const Dc09Head& head, const Dc09Body& body) {
    return Dc09HeadText(head) + body.data + "]";
}

/// The account in front of the data; empty when there is none.
TextView AccountOf(TextView data) {
    return data.starts_with('#') ? data.substr(1, data.find('|') - 1) : TextView();
}

/// What stands behind the account of the data.
TextView BehindAccount(TextView data) {
    const std::size_t bar = data.find('|');
    return data.starts_with('#') && bar != TextView::npos ? data.substr(bar + 1) : data;
}

/// "1131 01 009" without its blanks; empty for another form.
Text ContactIdDigits(TextView data) {
    constexpr std::size_t kDigits = 1 + 3 + 2 + 3;
    Text digits(data);
    std::erase(digits, ' ');
    const bool isForm = digits.size() == kDigits && TextView("136").find(digits.front()) != TextView::npos &&
                        std::ranges::all_of(digits, [](char c) { return HexDigit(c) >= 0; });
    return isForm ? digits : Text();
}

DecodedEvent OwnEvent(const Text& account, const Text& text, const SiaSettings& settings, OleDate now) {
    DecodedEvent decoded;
    IncomingEvent& event = decoded.event;
    event.AlarmTime = now;
    event.ProtocolType = kOwnProtocol;
    event.DefaultType = settings.SIADecodeErrorType;
    event.ObjectID = FilledUp(account, kSiaAccountWidth);
    event.TranslationNumberToUse = Protocol::SIA;
    event.SIASuffixText = text;
    return decoded;
}

}  // namespace

std::vector<DecodedEvent> Dc09SiaEvents(const Dc09Head& head, const Dc09Body& body,
                                        const SiaSettings& settings, OleDate now) {
    const Text account = body.data.starts_with('#') ? Text() : "#" + head.account + "|";
    std::vector<DecodedEvent> events = DecodeSIABlock({.text = "[" + account + body.data + "]",
                                                       .form = SiaForm::Brackets,
                                                       .eventTime = now,
                                                       .receiverLine = ReceiverLine(head),
                                                       .link = body.link},
                                                      settings, now);
    if (!events.empty()) return events;
    // Somebody wanted to say something.
    events.push_back(OwnEvent(head.account, kInvalidSiaFormat, settings, now));
    events.back().event.LineCardNumber = ReceiverLine(head);
    events.back().event.RawAlarmCode = RawOf(head, body);
    return events;
}

DecodedEvent Dc09ContactIdEvent(const Dc09Head& head, const Dc09Body& body, const SiaSettings& settings,
                                OleDate now) {
    const TextView inData = AccountOf(body.data);
    const Text account = inData.empty() ? head.account : Text(inData);
    const Text digits = ContactIdDigits(BehindAccount(body.data));
    DecodedEvent decoded;
    if (digits.empty()) {
        decoded = OwnEvent(account, kInvalidSiaFormat, settings, now);
    } else {
        decoded.labelTexts = {kTextContactId};
        decoded.event.AlarmTime = now;
        decoded.event.DefaultAlarmCode = FilledUp(account, kContactIdAccountWidth) + kContactIdMark + digits;
        decoded.event.TranslationNumberToUse = Protocol::ContactID;
    }
    decoded.event.LineCardNumber = ReceiverLine(head);
    decoded.event.RawAlarmCode = RawOf(head, body);
    decoded.event.URL = body.link;
    return decoded;
}

DecodedEvent Dc09Complaint(const Dc09Head& head, const Text& text, const SiaSettings& settings, OleDate now) {
    DecodedEvent decoded = OwnEvent(head.account, text, settings, now);
    decoded.event.LineCardNumber = ReceiverLine(head);
    decoded.event.RawAlarmCode = Dc09HeadText(head);
    decoded.event.IsSignOfLife = false;
    return decoded;
}

DecodedEvent Dc09Silence(const Text& account, Protocol protocol, bool isOver, const Text& text, OleDate now) {
    DecodedEvent decoded;
    IncomingEvent& event = decoded.event;
    event.AlarmTime = now;
    event.ExtraText = text;
    event.TranslationNumberToUse = protocol;
    event.IsSignOfLife = isOver;
    if (protocol == Protocol::ContactID) {
        decoded.labelTexts = {kTextContactId};
        event.DefaultAlarmCode = FilledUp(account, kContactIdAccountWidth) + kContactIdMark +
                                 (isOver ? "3" : "1") + kFailureCode + kNoGroupAndZone;
    } else {
        decoded.labelTexts = {kTextSia};
        event.DefaultAlarmCode = isOver ? "YK" : "YC";
        event.ObjectID = FilledUp(account, kSiaAccountWidth);
        event.SIABlockType = "N";
    }
    return decoded;
}

IncomingEvent Dc09SignOfLife(const Text& account, Protocol protocol, OleDate now) {
    IncomingEvent event;
    event.AlarmTime = now;
    event.TranslationNumberToUse = protocol;
    if (protocol == Protocol::ContactID) {
        event.DefaultAlarmCode =
            FilledUp(account, kContactIdAccountWidth) + kContactIdMark + kRoutineTest + kNoGroupAndZone;
    } else {
        event.DefaultAlarmCode = "RP";
        event.ObjectID = FilledUp(account, kSiaAccountWidth);
        event.SIABlockType = "N";
    }
    return event;
}

}  // namespace nordkeep
