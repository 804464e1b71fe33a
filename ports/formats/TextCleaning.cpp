#include "ports/formats/TextCleaning.h"

#include <algorithm>
#include <array>
#include <utility>

namespace nordkeep {
namespace {

using Letter = std::pair<unsigned char, unsigned char>;

constexpr std::array<Letter, 6> kDos7 = {
    {{'[', 0xC4}, {']', 0xC5}, {'\\', 0xD6}, {'{', 0xE4}, {'}', 0xE5}, {'|', 0xF6}}};

constexpr std::array<Letter, 8> kDos8 = {
    {{142, 0xC4}, {143, 0xC5}, {153, 0xD6}, {132, 0xE4}, {134, 0xE5}, {148, 0xF6}, {248, 0xB0}, {129, 0xFC}}};

template <std::size_t N>
Text Mapped(TextView text, const std::array<Letter, N>& letters) {
    Text mapped(text);
    for (char& c : mapped) {
        const auto* found = std::find_if(letters.begin(), letters.end(), [c](const Letter& letter) {
            return letter.first == static_cast<unsigned char>(c);
        });
        if (found != letters.end()) c = static_cast<char>(found->second);
    }
    return mapped;
}

constexpr SettingScope kPort = SettingScope::Port;
const std::array kRows = {
    SettingRow<TextCleaning>{"General", "DOS7bitASCIItoISOLatin1", kPort,
                             &TextCleaning::DOS7bitASCIItoISOLatin1},
    SettingRow<TextCleaning>{"General", "DOS8bitASCIItoISOLatin1", kPort,
                             &TextCleaning::DOS8bitASCIItoISOLatin1},
    SettingRow<TextCleaning>{"General", "AdjustTabAndSpace", kPort, &TextCleaning::AdjustTabAndSpace},
    SettingRow<TextCleaning>{"General", "TextCrLfReplaceCharacter", kPort,
                             &TextCleaning::TextCrLfReplaceCharacter},
};

}  // namespace

std::span<const SettingRow<TextCleaning>> TextCleaningRows() {
    return kRows;
}

char CharacterOf(int code, char otherwise) {
    return code < 0 || code > 255 ? otherwise : static_cast<char>(code);
}

Text Dos7ToLatin1(TextView text) {
    return Mapped(text, kDos7);
}

Text Dos8ToLatin1(TextView text) {
    return Mapped(text, kDos8);
}

Text CollapseSpaces(TextView text) {
    Text collapsed;
    for (const char c : text) {
        if (c != ' ' || collapsed.empty() || collapsed.back() != ' ') collapsed += c;
    }
    return collapsed;
}

Text ConvertLetters(TextView text, const TextCleaning& cleaning) {
    Text converted(text);
    if (cleaning.DOS7bitASCIItoISOLatin1) converted = Dos7ToLatin1(converted);
    if (cleaning.DOS8bitASCIItoISOLatin1) converted = Dos8ToLatin1(converted);
    return converted;
}

Text AdjustBlanks(TextView text, const TextCleaning& cleaning) {
    Text adjusted(text);
    if (!cleaning.AdjustTabAndSpace) return adjusted;
    std::replace(adjusted.begin(), adjusted.end(), '\t', ' ');
    return CollapseSpaces(adjusted);
}

Text CleanText(TextView text, const TextCleaning& cleaning) {
    Text cleaned = ConvertLetters(text, cleaning);
    std::erase(cleaned, '\r');
    std::replace(cleaned.begin(), cleaned.end(), '\n', CharacterOf(cleaning.TextCrLfReplaceCharacter, ' '));
    return AdjustBlanks(TrimBlanks(cleaned), cleaning);
}

}  // namespace nordkeep
