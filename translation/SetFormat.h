#pragma once

#include "translation/IdCodeFile.h"

#include <array>

namespace nordkeep {

/// The parts that FORMAT cuts out of an alarm code, in the order of its pairs.
enum class CodePart { IdCode, Priority, TypeCode, Group, Zone };
inline constexpr int kCodeParts = 5;

/// Where a part stands, counted from 1. A length of 0 means that there is none.
struct PartPlace {
    int start = 1;
    int length = 0;
    friend bool operator==(const PartPlace&, const PartPlace&) = default;
};
PartPlace PlaceOf(const TelegramFormat& format, CodePart part);

/// The directives of a set as a person fills them in; each is the text behind its keyword.
struct SetDirectives {
    std::array<PartPlace, kCodeParts> parts{};
    int paddingCount = 0;  // 0 for no padding
    int paddingCharacter = '0';
    std::optional<int> zeroTrim{};  // none leaves it to the settings
    friend bool operator==(const SetDirectives&, const SetDirectives&) = default;
};
SetDirectives DirectivesOf(TextView content);

/// The same file with other directives: the line of each stays in its place, a new one comes in front of the
/// first row, and one that says nothing any more goes. Lines whose directive has not changed stay as they
/// are.
Text WithDirectives(TextView content, const SetDirectives& directives);

}  // namespace nordkeep
