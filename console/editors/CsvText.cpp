#include "console/editors/CsvText.h"

#include <algorithm>

namespace nordkeep {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view kSeparators = ",;\t";

/// The one that the first line has most of.
char SeparatorOf(std::string_view text) {
    const std::string_view first = text.substr(0, text.find_first_of("\r\n"));
    return *std::ranges::max_element(
        kSeparators, {}, [first](char separator) { return std::ranges::count(first, separator); });
}

class CsvReader {
 public:
    explicit CsvReader(std::string_view text) : text_(text), separator_(SeparatorOf(text)) {}

    CsvTable Read() {
        line_.number = 1;
        for (std::size_t at = 0; at < text_.size(); ++at) Take(at);
        EndLine();
        table_.openQuoteOn = isQuoted_ ? quoteOn_ : 0;
        return std::move(table_);
    }

 private:
    void Take(std::size_t& at) {
        const char c = text_[at];
        const bool isPair = at + 1 < text_.size() && text_[at + 1] == c;
        if (c == '\n') ++number_;
        if (isQuoted_ && c == '"' && isPair) {
            value_ += text_[++at];
        } else if (isQuoted_) {
            c == '"' ? void(isQuoted_ = false) : value_.push_back(c);
        } else if (c == '"' && value_.empty()) {
            isQuoted_ = true;
            quoteOn_ = number_;
        } else if (c == separator_) {
            EndValue();
        } else if (c == '\n') {
            EndLine();
        } else if (c != '\r') {
            value_ += c;
        }
    }
    void EndValue() {
        line_.values.push_back(std::move(value_));
        value_.clear();
    }
    void EndLine() {
        EndValue();
        const bool isEmpty = std::ranges::all_of(line_.values, &std::string::empty);
        if (!isEmpty) table_.lines.push_back(std::move(line_));
        line_ = {.number = number_, .values = {}};
    }

    std::string_view text_;
    char separator_;
    CsvTable table_{};
    CsvTable::Line line_{};
    std::string value_{};
    int number_ = 1;
    int quoteOn_ = 0;
    bool isQuoted_ = false;
};

}  // namespace

CsvTable ReadCsv(std::string_view utf8) {
    if (utf8.starts_with(kByteOrderMark)) utf8.remove_prefix(kByteOrderMark.size());
    return CsvReader(utf8).Read();
}

std::string CsvLine(const std::vector<Text>& values) {
    std::string line;
    for (const Text& value : values) {
        if (&value != &values.front()) line += ',';
        const bool needsQuotes = value.find_first_of("\",;\t\r\n") != Text::npos;
        if (needsQuotes) line += '"';
        for (const char c : ToUtf8(value)) {
            if (c == '"') line += '"';
            line += c;
        }
        if (needsQuotes) line += '"';
    }
    return line + "\r\n";
}

}  // namespace nordkeep
