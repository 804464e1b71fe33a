#include "ports/mail/HtmlText.h"

#include "runtime/Fields.h"

#include <algorithm>
#include <array>
#include <utility>

namespace nordkeep {
namespace {

using Bytes = std::string_view;

constexpr std::size_t kLongestEntity = 10;
constexpr char32_t kLastCodePoint = 0x10FFFF;

constexpr std::array<std::pair<Bytes, Bytes>, 16> kEntities = {{{"amp", "&"},
                                                                {"lt", "<"},
                                                                {"gt", ">"},
                                                                {"quot", "\""},
                                                                {"apos", "'"},
                                                                {"nbsp", " "},
                                                                {"aring", "\xC3\xA5"},
                                                                {"auml", "\xC3\xA4"},
                                                                {"ouml", "\xC3\xB6"},
                                                                {"Aring", "\xC3\x85"},
                                                                {"Auml", "\xC3\x84"},
                                                                {"Ouml", "\xC3\x96"},
                                                                {"eacute", "\xC3\xA9"},
                                                                {"uuml", "\xC3\xBC"},
                                                                {"ndash", "\xE2\x80\x93"},
                                                                {"deg", "\xC2\xB0"}}};

/// Behind these, and in front of them, a new line begins.
constexpr std::array<Bytes, 16> kBlocks = {"P",  "DIV", "BR", "TR", "LI", "UL", "OL",         "TABLE",
                                           "H1", "H2",  "H3", "H4", "H5", "H6", "BLOCKQUOTE", "TITLE"};
/// What stands in these nobody reads.
constexpr std::array<Bytes, 4> kHidden = {"SCRIPT", "STYLE", "HEAD", "TEMPLATE"};

void AppendUtf8(std::string& out, char32_t code) {
    const auto tail = [&](int shift) { out += static_cast<char>(0x80 | (code >> shift & 0x3F)); };
    if (code < 0x80) {
        out += static_cast<char>(code);
    } else if (code < 0x800) {
        out += static_cast<char>(0xC0 | code >> 6);
        tail(0);
    } else if (code < 0x10000) {
        out += static_cast<char>(0xE0 | code >> 12);
        tail(6);
        tail(0);
    } else {
        out += static_cast<char>(0xF0 | code >> 18);
        tail(12);
        tail(6);
        tail(0);
    }
}

/// The character of "#228" or "#xE4"; 0 for none.
char32_t CodePointOf(Bytes name) {
    if (!name.starts_with('#') || name.size() < 2) return 0;
    const bool isHex = name[1] == 'x' || name[1] == 'X';
    char32_t code = 0;
    for (const char c : name.substr(isHex ? 2 : 1)) {
        const int digit = HexDigit(c);
        if (digit < 0 || (!isHex && digit > 9)) return 0;
        code = code * (isHex ? 16 : 10) + static_cast<char32_t>(digit);
        if (code > kLastCodePoint) return 0;
    }
    return code == 0xA0 ? U' ' : code;
}

class Reader {
 public:
    explicit Reader(Bytes page) : rest_(page) {}

    std::string Run() {
        while (!rest_.empty()) {
            if (rest_.front() == '<') {
                TakeTag();
            } else if (rest_.front() == '&') {
                TakeEntity();
            } else {
                AddCharacter(rest_.front());
                rest_.remove_prefix(1);
            }
        }
        BeginLine();
        return std::move(text_);
    }

 private:
    /// Runs of blanks and line ends are one blank.
    void AddCharacter(char c) {
        const bool isBlank = c == ' ' || c == '\t' || c == '\r' || c == '\n';
        if (!isBlank) {
            line_ += c;
        } else if (!line_.empty() && line_.back() != ' ') {
            line_ += ' ';
        }
    }

    void BeginLine() {
        while (line_.ends_with(' ')) line_.pop_back();
        if (!line_.empty()) text_ += line_ + "\r\n";
        line_.clear();
    }

    void TakeTag() {
        if (rest_.starts_with("<!--")) return SkipBehind("-->");
        const std::size_t end = rest_.find('>');
        const bool isTag = end != Bytes::npos && rest_.size() > 1 &&
                           (rest_[1] == '/' || rest_[1] == '!' || rest_[1] == '?' ||
                            (UpperCase(rest_[1]) >= 'A' && UpperCase(rest_[1]) <= 'Z'));
        if (!isTag) {
            line_ += '<';
            return rest_.remove_prefix(1);
        }
        const Bytes inside = rest_.substr(1, end - 1);
        const bool isEnd = inside.starts_with('/');
        const Bytes behindSlash = inside.substr(isEnd ? 1 : 0);
        const Text name = UpperCase(behindSlash.substr(0, behindSlash.find_first_of(" \t\r\n/")));
        rest_.remove_prefix(end + 1);
        if (std::ranges::count(kBlocks, Bytes(name)) > 0) BeginLine();
        if (!isEnd && std::ranges::count(kHidden, Bytes(name)) > 0) SkipHidden("</" + name);
    }

    void SkipHidden(const Text& endTag) {
        const std::size_t at = FindNoCase(rest_, endTag);
        rest_.remove_prefix(std::min(at, rest_.size()));
    }

    void SkipBehind(Bytes mark) {
        const std::size_t at = rest_.find(mark);
        rest_.remove_prefix(at == Bytes::npos ? rest_.size() : at + mark.size());
    }

    void TakeEntity() {
        const std::size_t end = rest_.substr(0, kLongestEntity + 2).find(';');
        const Bytes name = end == Bytes::npos ? Bytes() : rest_.substr(1, end - 1);
        const auto* const known = std::ranges::find(kEntities, name, &std::pair<Bytes, Bytes>::first);
        const char32_t code = CodePointOf(name);
        if (known != kEntities.end()) {
            known->second == " " ? AddCharacter(' ') : void(line_ += known->second);
        } else if (code != 0) {
            code == U' ' ? AddCharacter(' ') : AppendUtf8(line_, code);
        } else {
            line_ += '&';
            return rest_.remove_prefix(1);
        }
        rest_.remove_prefix(end + 1);
    }

    Bytes rest_;
    std::string text_{};
    std::string line_{};
};

}  // namespace

std::string TextOfHtml(std::string_view utf8) {
    return Reader(utf8).Run();
}

}  // namespace nordkeep
