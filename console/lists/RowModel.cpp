#include "console/lists/RowModel.h"

#include "runtime/Fields.h"

#include <algorithm>
#include <array>

namespace nordkeep {
namespace {

/// Letters with accents that sort with their plain letter, and the letters behind z.
struct Folding {
    char upper;
    TextView sorted;
};
constexpr Folding kFoldings[] = {
    {'\xC5', "[1"}, {'\xC4', "[2"}, {'\xC6', "[2"}, {'\xD6', "[3"}, {'\xD8', "[3"}, {'\xC0', "A"},
    {'\xC1', "A"},  {'\xC2', "A"},  {'\xC3', "A"},  {'\xC7', "C"},  {'\xC8', "E"},  {'\xC9', "E"},
    {'\xCA', "E"},  {'\xCB', "E"},  {'\xCC', "I"},  {'\xCD', "I"},  {'\xCE', "I"},  {'\xCF', "I"},
    {'\xD1', "N"},  {'\xD2', "O"},  {'\xD3', "O"},  {'\xD4', "O"},  {'\xD5', "O"},  {'\xD9', "U"},
    {'\xDA', "U"},  {'\xDB', "U"},  {'\xDC', "U"},  {'\xDD', "Y"},  {'\xDF', "SS"},
};

/// Signs sort before digits, and these before letters.
Text PlainKey(char character) {
    const char upper = UpperCase(character);
    const bool isLetter = (upper >= 'A' && upper <= 'Z') || static_cast<unsigned char>(upper) >= 0xC0;
    return isLetter ? Text(1, upper) : Text(1, '\x01') + upper;
}

using FoldingTable = std::array<Text, 256>;

FoldingTable MakeTable() {
    FoldingTable table;
    for (int code = 0; code < 256; ++code) {
        table[static_cast<std::size_t>(code)] = PlainKey(static_cast<char>(code));
    }
    for (const Folding& folding : kFoldings) {
        table[static_cast<unsigned char>(folding.upper)] = Text(folding.sorted);
        for (int code = 0; code < 256; ++code) {
            const char character = static_cast<char>(code);
            if (character != folding.upper && UpperCase(character) == folding.upper) {
                table[static_cast<std::size_t>(code)] = Text(folding.sorted);
            }
        }
    }
    return table;
}

/// A number sorts by its length without leading zeros, then by its digits.
void AppendNumber(Text& key, TextView digits) {
    const std::size_t first = std::min(digits.find_first_not_of('0'), digits.size());
    const TextView number = digits.substr(first);
    key += '0';
    key += static_cast<char>(std::min<std::size_t>(number.size(), 255));
    key += number;
}

}  // namespace

void Sorting::Click(int clicked) {
    const bool isSame = clicked == column;
    direction = !isSame || direction == SortDirection::None ? SortDirection::Ascending
                : direction == SortDirection::Ascending     ? SortDirection::Descending
                                                            : SortDirection::None;
    column = direction == SortDirection::None ? -1 : clicked;
}

Text Printable(Text text) {
    for (char& character : text) {
        if (static_cast<unsigned char>(character) < 32 || character == 127) character = ' ';
    }
    return text;
}

Text CollationKey(TextView text) {
    static const FoldingTable kTable = MakeTable();
    Text key;
    key.reserve(text.size() + 4);
    for (std::size_t at = 0; at < text.size();) {
        std::size_t end = at;
        while (end < text.size() && IsDigit(text[end])) ++end;
        if (end > at) {
            AppendNumber(key, text.substr(at, end - at));
            at = end;
        } else {
            key += kTable[static_cast<unsigned char>(text[at++])];
        }
    }
    return key;
}

}  // namespace nordkeep
