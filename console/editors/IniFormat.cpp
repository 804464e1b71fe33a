#include "console/editors/IniFormat.h"

#include "console/editors/ContentCheck.h"
#include "console/setup/SetupValues.h"
#include "runtime/Fields.h"
#include "runtime/IniText.h"

#include <algorithm>
#include <set>

namespace nordkeep {
namespace {

bool IsComment(TextView line) {
    const TextView trimmed = TrimBlanksAndTabs(line);
    return trimmed.empty() || trimmed.front() == ';';
}

/// The name of the section that the line begins.
std::optional<Text> SectionOf(TextView line) {
    const TextView trimmed = TrimBlanksAndTabs(line);
    const std::size_t end = trimmed.find(']');
    if (!trimmed.starts_with('[') || end == TextView::npos) return std::nullopt;
    return Text(trimmed.substr(1, end - 1));
}

}  // namespace

IniPair PairOf(TextView line) {
    const std::size_t equals = line.find('=');
    if (equals == TextView::npos) return {};
    const Text key(TrimBlanksAndTabs(line.substr(0, equals)));
    const IniText one("[x]\r\n" + Text(line) + "\r\n");
    return {key, one.Value("x", key).value_or(Text())};
}

Text LineOfPair(const IniPair& pair) {
    return Text(TrimBlanksAndTabs(pair.key)) + "=" + ValueInFile(pair.value);
}

Text FitKey(Text key) {
    std::ranges::replace(key, '=', '-');
    const std::size_t first = key.find_first_not_of("[; \t");
    return first == Text::npos ? Text() : key.substr(first);
}

// Of equal sections the first counts; rows of another one would do nothing.
std::vector<FileItem> IniFormat::Items(TextView content) const {
    std::vector<FileItem> items;
    std::set<Text> seen;
    Text section;
    bool isTaken = false;
    for (const TextView line : Lines(content)) {
        FileItem item{.text = Text(line)};
        if (auto name = SectionOf(line)) {
            section = *std::move(name);
            isTaken = seen.insert(UpperCase(section)).second && TakesSection(section);
        } else {
            item.isRow = isTaken && !IsComment(line) && line.find('=') != TextView::npos;
        }
        item.section = section;
        items.push_back(std::move(item));
    }
    return items;
}

std::vector<FileItem> IniFormat::FrameFor(const std::vector<FileItem>& items, const FileItem& row) const {
    const auto isThere = std::ranges::any_of(
        items, [&](const FileItem& item) { return EqualsNoCase(item.section, row.section); });
    if (isThere) return {};
    return {{.section = row.section, .text = "[" + row.section + "]"}};
}

/// Behind the last line of its section that says something.
std::size_t IniFormat::PlaceFor(const std::vector<FileItem>& items, const FileItem& row) const {
    std::size_t place = 0;
    bool isInside = false;
    for (std::size_t at = 0; at < items.size(); ++at) {
        const bool isSame = EqualsNoCase(items[at].section, row.section);
        if (isInside && !isSame) break;
        isInside = isSame;
        if (isSame && !TrimBlanksAndTabs(items[at].text).empty()) place = at + 1;
    }
    return place;
}

std::unique_ptr<RowCheck> IniFormat::NewCheck(const Text&, TextView content) const {
    return std::make_unique<ContentCheck>(
        language_, content, [this](TextView text, FileFindings& findings) { Check(text, findings); });
}

}  // namespace nordkeep
