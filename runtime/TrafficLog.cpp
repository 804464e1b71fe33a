#include "runtime/TrafficLog.h"

#include "runtime/Dates.h"
#include "runtime/Fields.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

namespace nordkeep {
namespace {

constexpr int kIdleLimitMs = 10000;

constexpr std::array<std::pair<char, TextView>, 12> kControlNames = {{{1, "SOH"},
                                                                      {2, "STX"},
                                                                      {3, "ETX"},
                                                                      {4, "EOT"},
                                                                      {5, "ENQ"},
                                                                      {6, "ACK"},
                                                                      {7, "BEL"},
                                                                      {13, "CR"},
                                                                      {21, "NAK"},
                                                                      {27, "ESC"},
                                                                      {30, "RS"},
                                                                      {31, "US"}}};

Text ControlName(char c) {
    for (const auto& [code, name] : kControlNames) {
        if (code == c) return Text(name);
    }
    return std::to_string(static_cast<int>(c));
}

/// The byte that stands between "<" and ">"; none when that is no notation.
std::optional<char> ByteOfName(TextView name) {
    for (const auto& [code, known] : kControlNames) {
        if (EqualsNoCase(known, name)) return code;
    }
    if (!IsNumeric(name) || LeadingNumber(name) > 255) return std::nullopt;
    return static_cast<char>(LeadingNumber(name));
}

void AppendReadable(Text& out, char c) {
    if (static_cast<unsigned char>(c) >= 32) {
        out += c;
    } else {
        out.append("<").append(ControlName(c)).append(">");
    }
}

void AppendHex(Text& out, char c) {
    constexpr TextView kHex = "0123456789ABCDEF";
    const auto byte = static_cast<unsigned char>(c);
    out += kHex[byte >> 4];
    out += kHex[byte & 15];
    out += ' ';
}

}  // namespace

Text ReadableBytes(TextView bytes, bool isHex) {
    Text readable;
    readable.reserve(bytes.size() * 3);
    for (const char c : bytes) {
        if (isHex) {
            AppendHex(readable, c);
        } else {
            AppendReadable(readable, c);
        }
    }
    return readable;
}

Text BytesOfReadable(TextView readable) {
    Text bytes;
    for (std::size_t at = 0; at < readable.size();) {
        const std::size_t end = readable[at] == '<' ? readable.find('>', at) : TextView::npos;
        const auto byte =
            end == TextView::npos ? std::nullopt : ByteOfName(readable.substr(at + 1, end - at - 1));
        bytes += byte.value_or(readable[at]);
        at = byte ? end + 1 : at + 1;
    }
    return bytes;
}

Text PlainLine(TextView text) {
    Text plain(text);
    std::ranges::replace_if(
        plain, [](char c) { return static_cast<unsigned char>(c) < 32 && c != '\t'; }, '?');
    return plain;
}

void TrafficLog::Configure(const TrafficLogSettings& settings, Role role) {
    settings_ = settings;
    folder_ = PlaceOfLog(LogKind::Information, role == Role::Client).folder;
}

void TrafficLog::WriteTrafficLog(TextView bytes, TrafficDirection direction, TextView port) {
    if (bytes.empty()) return;
    if (listener_) listener_(bytes, direction, port);
    if (!settings_.isOn) return;
    const OleDate now = clock_.Now();
    Text line = FormatDate(now, "HH:NN:SS") + " " + Text(port);
    line += direction == TrafficDirection::Sent ? " -> " : " <- ";
    line.append(ReadableBytes(bytes, settings_.isHex)).append("\r\n");
    file_.Append(folder_ + FormatDate(now, "YYYY-MM-DD") + ".DBG", line);
    idleMs_ = 0;
}

void TrafficLog::AddIdleTime(int ms) {
    if (!file_.IsOpen()) return;
    idleMs_ += ms;
    if (idleMs_ > kIdleLimitMs) Close();
}

void TrafficLog::Close() {
    file_.Close();
    idleMs_ = 0;
}

}  // namespace nordkeep
