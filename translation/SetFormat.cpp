#include "translation/SetFormat.h"

#include "runtime/Fields.h"
#include "translation/SetText.h"

#include <algorithm>

namespace nordkeep {
namespace {

constexpr TextView kLineEnd = "\r\n";

/// What a directive says as its file has it; empty when its line is not needed.
Text FormatLine(const SetDirectives& directives) {
    const auto isNone = [](const PartPlace& part) { return part.length == 0; };
    if (std::ranges::all_of(directives.parts, isNone)) return {};
    Text line = "FORMAT=";
    // Group and zone are named only where there are any.
    const bool hasMore = !isNone(directives.parts[3]) || !isNone(directives.parts[4]);
    for (std::size_t part = 0; part < (hasMore ? directives.parts.size() : 3); ++part) {
        const PartPlace& place = directives.parts[part];
        if (part > 0) line += ',';
        line += isNone(place) ? "0,0" : std::to_string(place.start) + "," + std::to_string(place.length);
    }
    return line;
}

Text PaddingLine(const SetDirectives& directives) {
    if (directives.paddingCount < 1) return {};
    return "PADDING=" + std::to_string(directives.paddingCount) + "," +
           std::to_string(directives.paddingCharacter);
}

Text ZeroTrimLine(const SetDirectives& directives) {
    return directives.zeroTrim ? "ZEROTRIM=" + std::to_string(*directives.zeroTrim) : Text();
}

/// A directive: its keyword, and its line in a set's file.
struct Directive {
    TextView keyword{};
    Text (*line)(const SetDirectives& directives);
};
constexpr Directive kDirectives[] = {
    {"FORMAT=", &FormatLine}, {"PADDING=", &PaddingLine}, {"ZEROTRIM=", &ZeroTrimLine}};

bool IsOf(TextView line, TextView keyword) {
    return EqualsNoCase(TrimBlanks(line).substr(0, keyword.size()), keyword);
}

}  // namespace

PartPlace PlaceOf(const TelegramFormat& f, CodePart part) {
    switch (part) {
        case CodePart::IdCode:
            return {f.m_IdCode_Format_StartPos, f.m_IdCode_Format_Length};
        case CodePart::Priority:
            return {f.m_Prio_Format_StartPos, f.m_Prio_Format_Length};
        case CodePart::TypeCode:
            return {f.m_TypeCode_Format_StartPos, f.m_TypeCode_Format_Length};
        case CodePart::Group:
            return {f.m_Group_Format_StartPos, f.m_Group_Format_Length};
        case CodePart::Zone:
            break;
    }
    return {f.m_Zone_Format_StartPos, f.m_Zone_Format_Length};
}

SetDirectives DirectivesOf(TextView content) {
    const IdCodeFile file = ReadIdCodeFile(content);
    SetDirectives directives;
    for (int part = 0; part < kCodeParts; ++part)
        directives.parts[static_cast<std::size_t>(part)] = PlaceOf(file.format, static_cast<CodePart>(part));
    directives.paddingCount = file.format.m_Padding_Count;
    if (directives.paddingCount > 0) directives.paddingCharacter = file.format.m_Padding_Character;
    directives.zeroTrim = file.zeroTrim;
    return directives;
}

Text WithDirectives(TextView content, const SetDirectives& directives) {
    const SetDirectives present = DirectivesOf(content);
    std::vector<SetLine> lines = IdCodeLines(content);
    for (const Directive& directive : kDirectives) {
        const Text wanted = directive.line(directives);
        if (wanted == directive.line(present)) continue;
        // Of two lines of a kind the first is the directive, and stands in front of all rows.
        const auto known = std::ranges::find_if(
            lines, [&](const SetLine& line) { return !line.isRow && IsOf(line.text, directive.keyword); });
        if (known == lines.end()) {
            const auto firstRow = std::ranges::find_if(lines, &SetLine::isRow);
            lines.insert(firstRow, {false, wanted});
        } else if (wanted.empty()) {
            lines.erase(known);
        } else {
            known->text = wanted;
        }
    }
    Text text;
    for (const SetLine& line : lines) text.append(line.text).append(kLineEnd);
    return text;
}

}  // namespace nordkeep
