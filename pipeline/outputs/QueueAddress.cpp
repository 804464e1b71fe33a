#include "pipeline/outputs/QueueAddress.h"

#include "runtime/Fields.h"

namespace nordkeep {
namespace {

constexpr TextView kUrlStart = "amqp://";
constexpr TextView kDirectTcp = "DIRECT=TCP:";
constexpr TextView kDirectOs = "DIRECT=OS:";
constexpr TextView kPrivate = "PRIVATE$";
constexpr std::size_t kLongestName = 255;  // of a queue and a virtual host, in bytes on the wire

bool StartsWith(TextView text, TextView start) {
    return EqualsNoCase(text.substr(0, start.size()), start);
}

/// UTF-8 of a part of a URL; none for a broken escape. NUL ends a text for the broker's library, so it has no
/// place here.
std::optional<std::string> Unescape(TextView part) {
    std::string plain;
    for (std::size_t at = 0; at < part.size(); ++at) {
        if (part[at] != '%') {
            plain += ToUtf8(part.substr(at, 1));
            continue;
        }
        if (at + 2 >= part.size()) return std::nullopt;
        const int high = HexDigit(part[at + 1]);
        const int low = HexDigit(part[at + 2]);
        if (high < 0 || low < 0) return std::nullopt;
        plain += static_cast<char>(high * 16 + low);
        at += 2;
    }
    if (plain.find('\0') != std::string::npos) return std::nullopt;
    return plain;
}

bool SetPort(QueueAddress& address, TextView digits) {
    address.port = LeadingInt32(digits);
    return IsNumeric(digits) && address.port >= 1 && address.port <= 65535;
}

/// "host", "host:port" or "[IPv6 address]:port".
bool SetHost(QueueAddress& address, TextView place) {
    const bool isBracketed = place.starts_with('[');
    const std::size_t bracket = isBracketed ? place.find(']') : 0;
    if (bracket == TextView::npos) return false;
    const std::size_t colon = place.find(':', bracket);
    const TextView host = place.substr(0, colon);
    if (colon != TextView::npos && !SetPort(address, place.substr(colon + 1))) return false;
    const auto plain = Unescape(isBracketed ? host.substr(1, host.size() - 2) : host);
    if (!plain || plain->empty()) return false;
    address.host = *plain == "." ? "127.0.0.1" : *plain;
    return true;
}

bool SetUser(QueueAddress& address, TextView user) {
    const std::size_t colon = user.find(':');
    const auto name = Unescape(user.substr(0, colon));
    const auto password = colon == TextView::npos ? address.password : Unescape(user.substr(colon + 1));
    if (!name || !password) return false;
    address.user = *name;
    address.password = *password;
    return true;
}

bool SetQueue(QueueAddress& address, TextView path) {
    const std::size_t last = path.rfind('/');
    const auto queue = Unescape(last == TextView::npos ? path : path.substr(last + 1));
    const auto host = Unescape(last == TextView::npos ? TextView() : path.substr(0, last));
    if (!queue || !host) return false;
    address.queue = *queue;
    if (!host->empty()) address.virtualHost = *host;
    return true;
}

std::optional<QueueAddress> ParseUrl(TextView rest) {
    QueueAddress address;
    const std::size_t slash = rest.find('/');
    if (slash == TextView::npos) return std::nullopt;
    TextView place = rest.substr(0, slash);
    if (const std::size_t at = place.rfind('@'); at != TextView::npos) {
        if (!SetUser(address, place.substr(0, at))) return std::nullopt;
        place.remove_prefix(at + 1);
    }
    if (!SetHost(address, place) || !SetQueue(address, rest.substr(slash + 1))) return std::nullopt;
    return address;
}

std::optional<QueueAddress> ParseDirect(TextView rest) {
    QueueAddress address;
    std::vector<Text> parts = Split(rest, '\\');
    if (parts.size() == 3 && EqualsNoCase(parts[1], kPrivate)) parts.erase(parts.begin() + 1);
    if (parts.size() != 2 || !SetHost(address, parts[0])) return std::nullopt;
    address.queue = ToUtf8(parts[1]);
    return address;
}

std::optional<QueueAddress> Parse(TextView name) {
    if (StartsWith(name, kUrlStart)) return ParseUrl(name.substr(kUrlStart.size()));
    if (StartsWith(name, kDirectTcp)) return ParseDirect(name.substr(kDirectTcp.size()));
    if (StartsWith(name, kDirectOs)) return ParseDirect(name.substr(kDirectOs.size()));
    return std::nullopt;
}

}  // namespace

std::optional<QueueAddress> ParseQueueAddress(TextView formatName) {
    auto address = Parse(TrimBlanks(formatName));
    if (!address || address->queue.empty()) return std::nullopt;
    if (address->queue.size() > kLongestName || address->virtualHost.size() > kLongestName)
        return std::nullopt;
    return address;
}

}  // namespace nordkeep
