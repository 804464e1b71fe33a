#include "status/StatusService.h"

#include "runtime/Json.h"
#include "status/EntryJson.h"
#include "status/Metrics.h"
#include "status/StatusPage.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <utility>

namespace nordkeep {
namespace {

constexpr int kTextListens = 3851;
constexpr int kTextExposed = 3852;
constexpr int kTextCannotListen = 3853;
constexpr int kTextNoFile = 3854;

constexpr int kTryMs = 10'000;
constexpr int kWakeMs = 5000;
constexpr std::int64_t kMostEntries = 100'000;
constexpr std::int64_t kUsualEntries = 1000;
constexpr const char* kJsonLines = "application/jsonl; charset=utf-8";

HttpAnswer Refusal(int status, std::string text) {
    return {.status = status, .body = std::move(text)};
}

/// None for what is no whole number from 0 on.
std::optional<std::int64_t> NumberOf(const std::string& text) {
    std::int64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    const bool isWhole = error == std::errc() && end == text.data() + text.size() && number >= 0;
    return isWhole ? std::optional(number) : std::nullopt;
}

/// Takes as long for a wrong text as for the right one.
bool IsSameSecret(std::string_view given, std::string_view secret) {
    unsigned difference = given.size() == secret.size() ? 0 : 1;
    for (std::size_t i = 0; i < given.size() && !secret.empty(); ++i) {
        difference |=
            static_cast<unsigned char>(given[i]) ^ static_cast<unsigned char>(secret[i % secret.size()]);
    }
    return difference == 0;
}

/// As a local time in the form that programs read.
Text TimeText(OleDate time) {
    if (time.IsNever()) return {};
    const CivilTime c = time.Civil();
    char text[32];
    std::snprintf(text, sizeof text, "%04d-%02d-%02dT%02d:%02d:%02d", c.year, c.month, c.day, c.hour,
                  c.minute, c.second);
    return text;
}

std::string LineJson(const LineStatus& line) {
    JsonObject json;
    json.Add("port", line.name).Add("description", line.description).Add("kind", line.kind);
    json.Add("state", TextView(line.state)).Add("stateText", line.stateText).Add("open", line.isOpen);
    json.Add("since", TimeText(line.since)).Add("lastTraffic", TimeText(line.lastTraffic));
    json.Add("telegramsToday", line.telegramsToday).Add("refusedToday", line.refusedToday);
    return json.Take();
}

}  // namespace

void StatusService::TellOnce(int text, const Text& behind) {
    const Text told = needs_.language.GetLanguageText(text) + behind;
    if (told == std::exchange(told_, told)) return;
    needs_.log.WriteSysLog(told, text == kTextListens ? LogKind::Information : LogKind::Failure);
}

void StatusService::Open() {
    sinceTryMs_ = 0;
    if (needs_.settings.Port != 0) Listen();
}

bool StatusService::Listen() {
    const StatusSettings& settings = needs_.settings;
    const Text place = settings.Address + ":" + std::to_string(settings.Port);
    if (IsExposed(settings)) {
        TellOnce(kTextExposed, place);
        return false;
    }
    HttpListening listening{.address = ToUtf8(settings.Address), .port = settings.Port};
    const auto read = [&](const Text& name, std::string& pem) {
        if (name.empty()) return true;
        const std::optional<Text> bytes = ReadFile(needs_.dataFolder.ResolveSetting(name));
        if (!bytes) TellOnce(kTextNoFile, name);
        pem = bytes.value_or("");
        return bytes.has_value();
    };
    if (!read(settings.TlsCertificate, listening.certificate) || !read(settings.TlsKey, listening.key))
        return false;
    if (listening.certificate.empty() != listening.key.empty()) {
        TellOnce(kTextNoFile, listening.key.empty() ? "TlsKey" : "TlsCertificate");
        return false;
    }
    if (!needs_.server.Open(listening, *this)) {
        TellOnce(kTextCannotListen, place + ": " + FromUtf8(needs_.server.LastError()));
        return false;
    }
    TellOnce(kTextListens, place);
    return true;
}

void StatusService::Tick(int intervalMs) {
    if (needs_.settings.Port == 0) return;
    if (!needs_.server.IsOpen()) {
        sinceTryMs_ += intervalMs;
        if (sinceTryMs_ >= kTryMs) Open();
        return;
    }
    sinceWakeMs_ += intervalMs;
    const std::int64_t id = needs_.journal ? needs_.journal->LastId() : 0;
    if (id == seenId_ && sinceWakeMs_ < kWakeMs) return;
    seenId_ = id;
    sinceWakeMs_ = 0;
    needs_.server.Wake();
}

bool StatusService::IsAllowed(const HttpRequest& request) const {
    constexpr std::string_view kBearer = "Bearer ";
    const std::string token = ToUtf8(needs_.settings.Token);
    if (token.empty()) return true;
    const std::string_view given(request.authorization);
    return given.starts_with(kBearer) && IsSameSecret(given.substr(kBearer.size()), token);
}

HttpAnswer StatusService::Answer(const HttpRequest& request) {
    struct Known {
        std::string_view path;
        Route route;
    };
    static constexpr Known kRoutes[] = {
        {"/", &StatusService::Page},
        {"/healthz", &StatusService::Health},
        {"/readyz", &StatusService::Readiness},
        {"/metrics", &StatusService::Metrics},
        {"/v1/events", &StatusService::Events},
        {"/v1/entries", &StatusService::Entries},
        {"/v1/events/stream", &StatusService::Stream},
        {"/v1/alarms", &StatusService::Alarms},
        {"/v1/ports", &StatusService::Ports},
        {"/v1/summary", &StatusService::Summary},
    };
    if (!IsAllowed(request)) {
        // A browser cannot send a token by itself: the page, which holds no data, comes with the refusal and
        // asks for it.
        HttpAnswer answer = request.path == "/" ? Page(request) : Refusal(401, "a token is needed\n");
        answer.status = 401;
        return answer;
    }
    const auto known =
        std::ranges::find_if(kRoutes, [&](const Known& each) { return each.path == request.path; });
    return known == std::end(kRoutes) ? Refusal(404, "not here\n") : (this->*known->route)(request);
}

HttpAnswer StatusService::Page(const HttpRequest&) {
    return {.contentType = "text/html; charset=utf-8", .body = std::string(kStatusPage)};
}

HttpAnswer StatusService::Health(const HttpRequest&) {
    return {.body = "ok\n"};
}

HttpAnswer StatusService::Readiness(const HttpRequest&) {
    const StatusFacts facts = needs_.source.Facts();
    if (facts.notReady.empty()) return {.body = "ready\n"};
    std::string reasons;
    for (const std::string& reason : facts.notReady) reasons.append(reason).append("\n");
    return Refusal(503, reasons);
}

HttpAnswer StatusService::Metrics(const HttpRequest&) {
    return {.contentType = "text/plain; version=0.0.4; charset=utf-8",
            .body = MetricsText(needs_.source.Facts(), needs_.events.CountsByStatus(), needs_.times,
                                needs_.clock.Now())};
}

HttpAnswer StatusService::Events(const HttpRequest& request) {
    return Lines(request, &EntryJson);
}

HttpAnswer StatusService::Entries(const HttpRequest& request) {
    return Lines(request, &RowJson);
}

HttpAnswer StatusService::Lines(const HttpRequest& request, EntryLines::Form form) {
    const std::string after = request.Query("after");
    const std::string limit = request.Query("limit");
    const auto from = after.empty() ? std::optional<std::int64_t>(0) : NumberOf(after);
    const auto most = limit.empty() ? std::optional(kUsualEntries) : NumberOf(limit);
    if (!from || !most || *most == 0) return Refusal(400, "after and limit are whole numbers\n");
    if (!needs_.journal || !needs_.journal->IsOpen()) return Refusal(503, "no journal\n");
    HttpAnswer answer{.contentType = kJsonLines};
    answer.pieces = std::make_unique<EntryLines>(
        *needs_.journal, *from, static_cast<std::size_t>(std::min(*most, kMostEntries)), form);
    return answer;
}

HttpAnswer StatusService::Stream(const HttpRequest& request) {
    if (!needs_.journal || !needs_.journal->IsOpen()) return Refusal(503, "no journal\n");
    // Who comes again says what was read last, and that is newer than the address.
    const std::string asked = request.lastEventId.empty() ? request.Query("after") : request.lastEventId;
    const auto from = asked.empty() ? std::optional(needs_.journal->LastId()) : NumberOf(asked);
    if (!from) return Refusal(400, "after is a whole number\n");
    HttpAnswer answer{.contentType = "text/event-stream; charset=utf-8"};
    answer.pieces = std::make_unique<EntryStream>(*needs_.journal, needs_.clock, *from);
    return answer;
}

HttpAnswer StatusService::Alarms(const HttpRequest&) {
    if (!needs_.journal) return Refusal(503, "a client: ask its server\n");
    HttpAnswer answer{.contentType = kJsonLines};
    answer.pieces = std::make_unique<AlarmLines>(*needs_.journal, needs_.events);
    return answer;
}

HttpAnswer StatusService::Ports(const HttpRequest&) {
    HttpAnswer answer{.contentType = kJsonLines};
    for (const LineStatus& line : needs_.source.Facts().lines)
        answer.body.append(LineJson(line)).append("\n");
    return answer;
}

// What the page shows besides alarms and lines.
HttpAnswer StatusService::Summary(const HttpRequest&) {
    const StatusFacts facts = needs_.source.Facts();
    HttpAnswer answer{.contentType = kJsonLines};
    JsonObject head;
    head.Add("newest", needs_.journal ? needs_.journal->LastId() : 0);
    head.Add("ready", facts.notReady.empty()).Add("clients", static_cast<std::int64_t>(facts.clients));
    answer.body = head.Take() + "\n";
    for (const Text& condition : facts.conditions)
        answer.body.append(JsonObject().Add("condition", condition).Take()).append("\n");
    return answer;
}

}  // namespace nordkeep
