#include "runtime/Json.h"

#include <array>
#include <charconv>
#include <cmath>
#include <limits>

namespace nordkeep {
namespace {

constexpr const char* kHex = "0123456789abcdef";

void AppendEscaped(std::string& json, char character) {
    const auto code = static_cast<unsigned char>(character);
    json.append("\\u00");
    json += kHex[code >> 4];
    json += kHex[code & 15];
}

/// Reads one JSON text from its front; every step is false at what does not belong there.
class Reader {
 public:
    explicit Reader(std::string_view json) : rest_(json) {}

    bool Skip(char expected) {
        SkipBlanks();
        if (rest_.empty() || rest_.front() != expected) return false;
        rest_.remove_prefix(1);
        return true;
    }

    bool IsAtEnd() {
        SkipBlanks();
        return rest_.empty();
    }

    std::optional<Text> Value() {
        SkipBlanks();
        if (!rest_.empty() && rest_.front() == '"') return String();
        const std::size_t end = std::min(rest_.find_first_of(",}{[] \t\r\n"), rest_.size());
        if (end == 0 || (end < rest_.size() && (rest_[end] == '{' || rest_[end] == '['))) return std::nullopt;
        const Text word(rest_.substr(0, end));
        rest_.remove_prefix(end);
        return word;
    }

    std::optional<Text> String() {
        if (!Skip('"')) return std::nullopt;
        std::string utf8;
        while (!rest_.empty() && rest_.front() != '"') {
            if (!TakeCharacter(utf8)) return std::nullopt;
        }
        if (!Skip('"')) return std::nullopt;
        return FromUtf8(utf8);
    }

 private:
    void SkipBlanks() { rest_.remove_prefix(std::min(rest_.find_first_not_of(" \t\r\n"), rest_.size())); }

    bool TakeCharacter(std::string& utf8) {
        const char first = rest_.front();
        rest_.remove_prefix(1);
        if (first != '\\') {
            utf8 += first;
            return true;
        }
        if (rest_.empty()) return false;
        const char kind = rest_.front();
        rest_.remove_prefix(1);
        constexpr std::string_view kShort = "\"\\/bfnrt";
        constexpr std::string_view kMeant = "\"\\/\b\f\n\r\t";
        if (const std::size_t place = kShort.find(kind); place != std::string_view::npos) {
            utf8 += kMeant[place];
            return true;
        }
        return kind == 'u' && TakeCodePoint(utf8);
    }

    // What is written here needs no code point above 255; others come from elsewhere and become "?".
    bool TakeCodePoint(std::string& utf8) {
        unsigned code = 0;
        const std::string_view digits = rest_.substr(0, 4);
        const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), code, 16);
        if (error != std::errc() || end != digits.data() + 4) return false;
        rest_.remove_prefix(4);
        if (code < 0x80) {
            utf8 += static_cast<char>(code);
        } else if (code < 0x800) {
            utf8 += static_cast<char>(0xC0 | code >> 6);
            utf8 += static_cast<char>(0x80 | (code & 0x3F));
        } else {
            utf8 += '?';
        }
        return true;
    }

    std::string_view rest_;
};

}  // namespace

void AppendJsonText(std::string& json, TextView text) {
    json += '"';
    std::size_t plain = 0;
    const auto flush = [&](std::size_t end) {
        if (end > plain) json += ToUtf8(text.substr(plain, end - plain));
        plain = end + 1;
    };
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        const bool isControl = static_cast<unsigned char>(c) < 32 || c == 127;
        if (!isControl && c != '"' && c != '\\') continue;
        flush(i);
        if (isControl) {
            AppendEscaped(json, c);
        } else {
            (json += '\\') += c;
        }
    }
    flush(text.size());
    json += '"';
}

void JsonObject::Begin(std::string_view name) {
    if (json_.size() > 1) json_ += ',';
    json_ += '"';
    json_.append(name).append("\":");
}

JsonObject& JsonObject::Add(std::string_view name, TextView text) {
    Begin(name);
    AppendJsonText(json_, text);
    return *this;
}

JsonObject& JsonObject::Add(std::string_view name, std::int64_t number) {
    Begin(name);
    json_ += std::to_string(number);
    return *this;
}

JsonObject& JsonObject::Add(std::string_view name, double number) {
    Begin(name);
    std::array<char, 40> digits{};
    const auto [end, error] = std::to_chars(digits.data(), digits.data() + digits.size(), number);
    json_ += error == std::errc() && std::isfinite(number) ? std::string(digits.data(), end) : "null";
    return *this;
}

JsonObject& JsonObject::AddNull(std::string_view name) {
    Begin(name);
    json_ += "null";
    return *this;
}

JsonObject& JsonObject::Add(std::string_view name, bool flag) {
    Begin(name);
    json_ += flag ? "true" : "false";
    return *this;
}

std::string JsonObject::Take() {
    json_ += '}';
    return std::move(json_);
}

const Text& JsonMembers::String(std::string_view name) const {
    static const Text kNone;
    const auto found = values_.find(name);
    return found == values_.end() ? kNone : found->second;
}

std::int64_t JsonMembers::Integer(std::string_view name) const {
    const Text& value = String(name);
    std::int64_t number = 0;
    std::from_chars(value.data(), value.data() + value.size(), number);
    return number;
}

double JsonMembers::Number(std::string_view name) const {
    const Text& value = String(name);
    double number = 0;
    const auto [end, error] = std::from_chars(value.data(), value.data() + value.size(), number);
    const bool isNumber = error == std::errc() && end == value.data() + value.size() && !value.empty();
    return isNumber ? number : std::numeric_limits<double>::quiet_NaN();
}

std::optional<JsonMembers> ReadJsonObject(std::string_view json) {
    Reader reader(json);
    JsonMembers members;
    if (!reader.Skip('{')) return std::nullopt;
    if (!reader.Skip('}')) {
        do {
            std::optional<Text> name = reader.String();
            if (!name || !reader.Skip(':')) return std::nullopt;
            std::optional<Text> value = reader.Value();
            if (!value) return std::nullopt;
            members.values_[std::move(*name)] = std::move(*value);
        } while (reader.Skip(','));
        if (!reader.Skip('}')) return std::nullopt;
    }
    return reader.IsAtEnd() ? std::optional(std::move(members)) : std::nullopt;
}

}  // namespace nordkeep
