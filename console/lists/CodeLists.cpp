#include "console/lists/CodeLists.h"

#include "runtime/Fields.h"

namespace nordkeep {
namespace {

constexpr int kTextFirstTypeHeading = 3220;
constexpr int kTextFirstDataCodeHeading = 3224;

/// Calls `take` with the section, the key and the value of each entry of a settings text.
template <class Take>
void ForEachEntry(TextView file, Take&& take) {
    Text section;
    for (const TextView raw : Lines(file)) {
        const TextView line = TrimBlanksAndTabs(raw);
        if (line.starts_with('[')) {
            const std::size_t end = line.find(']');
            section = Text(line.substr(1, end == TextView::npos ? TextView::npos : end - 1));
        } else if (const std::size_t at = line.find('='); at != TextView::npos && !line.starts_with(';')) {
            take(section, TrimBlanksAndTabs(line.substr(0, at)), TrimBlanksAndTabs(line.substr(at + 1)));
        }
    }
}

}  // namespace

Text TextTable::Heading(int column) const {
    return column >= 0 && column < columns_ ? captions_(firstHeading_ + column) : Text();
}

Text TextTable::SourceCell(int source, int column) const {
    const Line& line = lines_[static_cast<std::size_t>(source)];
    const auto place = static_cast<std::size_t>(column);
    return place < line.size() ? line[place] : Text();
}

void TextTable::Show(std::vector<Line> lines) {
    Renew([&] { lines_ = std::move(lines); });
}

TypeList::TypeList(const Translations& translations, const Captions& captions)
    : TextTable(captions, kTextFirstTypeHeading, 4), translations_(translations) {}

void TypeList::ShowSet(const Text& set) {
    std::vector<Line> lines;
    const cTranslate* found = set.empty() ? nullptr : translations_.Find(set);
    if (found) {
        for (const cTypeCode& type : found->m_TypeCodes) {
            lines.push_back(
                {type.m_TypeCode, std::to_string(type.m_Prio), type.m_Name, type.m_ResetTypeCode});
        }
    }
    Show(std::move(lines));
}

DataCodeList::DataCodeList(const Captions& captions) : TextTable(captions, kTextFirstDataCodeHeading, 5) {}

void DataCodeList::ShowFile(TextView file) {
    std::vector<Line> lines;
    ForEachEntry(file, [&](const Text& section, TextView key, TextView value) {
        lines.push_back(
            {section, Text(key), GetField(value, 0, ";"), GetField(value, 1, ";"), GetField(value, 2, ";")});
    });
    Show(std::move(lines));
}

Text DataCodeFileOf(const Text& set) {
    return "Settings\\" + set + ".DataCode";
}

std::vector<DataCodeEntry> EventCodesOf(TextView file) {
    std::vector<DataCodeEntry> codes;
    ForEachEntry(file, [&](const Text& section, TextView key, TextView value) {
        if (EqualsNoCase(section, "Event")) codes.push_back({Text(key), GetField(value, 0, ";")});
    });
    return codes;
}

}  // namespace nordkeep
