#include "ports/formats/XmlGateways.h"

#include "runtime/Dates.h"

#include <array>

namespace nordkeep {
namespace {

// More documents wait for the next step, so that one chunk cannot hold up the other lines.
constexpr int kDocumentsInOneStep = 64;

constexpr const char* kHead = "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>";

const std::array kRows = {kXmlNameRow<XmlGatewaySettings>};

/// A complete document and what becomes of it.
struct Document {
    const XmlElement element;
    XmlNames names;
    OleDate now;

    Text Get(TextView name) const { return GetXmlElement(element.inner, name, names); }
};

/// The elements of a LarmTelegram that a format takes as ID code and as text.
struct MiniForm {
    int labelText;
    Protocol protocol;
    const char* codeElement;
    const char* textElement;
};

constexpr MiniForm kSosAccess = {2228, Protocol::SOSXMLMini, "LarmId", "TillaggsInfo"};
constexpr MiniForm kAptus = {2229, Protocol::AptusXMLMini, "TillaggsInfo", "LarmId"};

/// The first element of this name; none when it holds nothing, which then stops the line until the purge.
std::optional<XmlElement> FindDocument(TextView text, TextView name, XmlNames names) {
    const auto element = FindXmlElement(text, name, names);
    return element && !element->inner.empty() ? element : std::nullopt;
}

void HandleMini(TelegramStep& step, const Document& document, const MiniForm& form) {
    step.events.push_back({.event = {.AlarmTime = document.now,
                                     .DefaultType = TypeNumber(document.Get("LarmTyp")),
                                     .DefaultAlarmCode = document.Get(form.codeElement),
                                     .ExtraText = document.Get(form.textElement),
                                     .Originator = document.Get("Anvandare"),
                                     .TranslationNumberToUse = form.protocol},
                           .labelTexts = {form.labelText}});
    step.reply += "<larmtelegramkvittens><larmid>" + document.Get("LarmId") +
                  "</larmid><status>0</status></larmtelegramkvittens>";
}

Text Reply(const Text& name, const Document& document, bool hasTime) {
    Text reply = kHead + ("<" + name + "><reference>" + document.Get("Reference")) +
                 "</reference><status>0</status><info>OK</info>";
    // The milliseconds are no measure: the far end only wants three digits there.
    if (hasTime)
        reply += "<arrivaltime>" + FormatDate(document.now, "YYYY-MM-DD HH:NN:SS") + ".666</arrivaltime>";
    return reply + "</" + name + ">";
}

void HandleAlarmRequest(TelegramStep& step, const Document& document) {
    constexpr int kLabel = 2225;
    step.events.push_back({.event = {.AlarmTime = document.now,
                                     .DefaultType = TypeNumber(document.Get("EventCode")),
                                     .DefaultAlarmCode = document.Get("TransmitterCode"),
                                     .ExtraText = document.Get("EventText"),
                                     .Originator = document.Get("Authentication"),
                                     .TranslationNumberToUse = Protocol::SOSXMLv4,
                                     .XMLDocument = Text(document.element.inner)},
                           .labelTexts = {kLabel}});
    // Senders that write their names as the protocol was published want the time as well.
    step.reply += Reply("alarmresponse", document, document.names == XmlNames::IgnoreCase);
}

void HandlePing(TelegramStep& step, const Document& document) {
    step.reply += Reply("pingresponse", document, true);
}

/// The password is not looked at, so that there is no new one to be had.
void HandleNewAuthentication(TelegramStep& step, const Document& document) {
    step.reply += Reply("requestnewauthenticationresponse", document, true);
}

using Handler = void (*)(TelegramStep&, const Document&);

struct Found {
    XmlElement element;
    Handler handle = nullptr;
};

struct Request {
    const char* name;
    Handler handle;
    bool isOfPublishedForm = false;  // known only where names count in any case
};
constexpr Request kRequests[] = {{"AlarmRequest", &HandleAlarmRequest},
                                 {"PingRequest", &HandlePing},
                                 {"RequestNewAuthentication", &HandleNewAuthentication, true}};

/// The complete request that starts first.
std::optional<Found> FindRequest(TextView text, XmlNames names) {
    std::optional<Found> first;
    for (const Request& request : kRequests) {
        if (request.isOfPublishedForm && names != XmlNames::IgnoreCase) continue;
        const auto element = FindDocument(text, request.name, names);
        if (element && (!first || element->start < first->element.start))
            first.emplace(Found{*element, request.handle});
    }
    return first;
}

/// Runs `handle` over the complete documents at the front. `find` gives the first one.
template <class Find, class Handle>
TelegramStep HandleDocuments(TextView received, const Find& find, const Handle& handle) {
    TelegramStep step;
    auto found = find(received);
    for (int i = 0; found && i < kDocumentsInOneStep; ++i) {
        handle(step, *found);
        step.consumed += found->element.end;
        found = find(received.substr(step.consumed));
    }
    step.isTraffic = step.consumed > 0;
    // One reply closes the line; with more documents waiting it is not the last one.
    step.closesLine = step.isTraffic && !found;
    return step;
}

XmlNames NamesOf(const XmlGatewaySettings& settings) {
    return settings.XmlNamesIgnoreCase ? XmlNames::IgnoreCase : XmlNames::Exact;
}

TelegramStep NextMiniStep(TextView received, const MiniForm& form, XmlNames names, OleDate now) {
    const auto find = [names](TextView text) -> std::optional<Found> {
        const auto element = FindDocument(text, "LarmTelegram", names);
        return element ? std::optional(Found{*element}) : std::nullopt;
    };
    return HandleDocuments(received, find, [&](TelegramStep& step, const Found& found) {
        HandleMini(step, {found.element, names, now}, form);
    });
}

}  // namespace

std::span<const SettingRow<XmlGatewaySettings>> XmlGatewaySettingRows() {
    return kRows;
}

TelegramStep NextSosAccessMiniStep(TextView received, const XmlGatewaySettings& settings, OleDate now) {
    return NextMiniStep(received, kSosAccess, NamesOf(settings), now);
}

TelegramStep NextAptusMiniStep(TextView received, const XmlGatewaySettings& settings, OleDate now) {
    return NextMiniStep(received, kAptus, NamesOf(settings), now);
}

TelegramStep NextSosAccessV4Step(TextView received, const XmlGatewaySettings& settings, OleDate now) {
    const XmlNames names = NamesOf(settings);
    const auto find = [names](TextView text) { return FindRequest(text, names); };
    return HandleDocuments(received, find, [&](TelegramStep& step, const Found& found) {
        const Document document{found.element, names, now};
        found.handle(step, document);
    });
}

}  // namespace nordkeep
