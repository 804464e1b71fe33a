#pragma once

#include "runtime/SettingRow.h"

namespace nordkeep {

/// Swedish letters of a 7-bit national set, on the codes of [ ] \ { } |, to Windows-1252.
Text Dos7ToLatin1(TextView text);
/// Swedish letters, u with dots and the degree sign of the 8-bit DOS set to Windows-1252.
Text Dos8ToLatin1(TextView text);
/// Runs of blanks become one.
Text CollapseSpaces(TextView text);

/// Which clean-up a port wants for the free text of its telegrams.
struct TextCleaning {
    bool DOS7bitASCIItoISOLatin1 = false;
    bool DOS8bitASCIItoISOLatin1 = false;
    bool AdjustTabAndSpace = false;
    int TextCrLfReplaceCharacter = 32;  // 0 to 255; stands for a line feed inside a message
};

std::span<const SettingRow<TextCleaning>> TextCleaningRows();

/// The character of a code that a setting names; `otherwise` for what is none of 0 to 255.
char CharacterOf(int code, char otherwise);

/// The DOS conversions that are on.
Text ConvertLetters(TextView text, const TextCleaning& cleaning);
/// Tabs to blanks and runs of blanks to one, when that is on.
Text AdjustBlanks(TextView text, const TextCleaning& cleaning);
/// All of it: letters, no carriage returns, line feeds replaced, no blanks at the ends, blanks adjusted.
Text CleanText(TextView text, const TextCleaning& cleaning);

}  // namespace nordkeep
