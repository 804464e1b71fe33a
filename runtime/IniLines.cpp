#include "runtime/IniLines.h"

#include "runtime/Fields.h"

namespace nordkeep {
namespace {

constexpr std::size_t kLongestValue = 2047;
constexpr TextView kByteOrderMark = "\xEF\xBB\xBF";

TextView WithoutQuotes(TextView value) {
    const bool isQuoted =
        value.size() >= 2 && value.front() == value.back() && (value.front() == '"' || value.front() == '\'');
    return isQuoted ? value.substr(1, value.size() - 2) : value;
}

Text NameOf(std::size_t section, TextView key) {
    return std::to_string(section).append(" ").append(UpperCase(key));
}

}  // namespace

IniLines::IniLines(TextView content) {
    if (content.starts_with(kByteOrderMark)) content.remove_prefix(kByteOrderMark.size());
    int number = 0;
    for (const TextView line : Lines(content)) TakeLine(line, ++number);
}

void IniLines::TakeLine(TextView line, int number) {
    const TextView trimmed = TrimBlanksAndTabs(line);
    if (trimmed.empty() || trimmed.front() == ';') return;
    const std::size_t equals = line.find('=');
    if (trimmed.front() == '[' && trimmed.find(']') != TextView::npos) {
        BeginSection(trimmed, number);
    } else if (trimmed.front() == '[' || equals == TextView::npos) {
        strays_.push_back({number, trimmed});
    } else {
        TakeEntry(line, equals, number);
    }
}

void IniLines::BeginSection(TextView trimmed, int number) {
    const std::size_t end = trimmed.find(']');
    Section section{.name = TrimBlanksAndTabs(trimmed.substr(1, end - 1)), .line = number};
    section.behind = TrimBlanksAndTabs(trimmed.substr(end + 1));
    const auto [known, isNew] = bySection_.try_emplace(UpperCase(section.name), sections_.size());
    if (!isNew) section.sameNameOn = sections_[known->second].line;
    sections_.push_back(section);
}

void IniLines::TakeEntry(TextView line, std::size_t equals, int number) {
    const TextView value = WithoutQuotes(TrimBlanksAndTabs(line.substr(equals + 1)));
    Entry entry{.line = number,
                .key = TrimBlanksAndTabs(line.substr(0, equals)),
                .value = value.substr(0, kLongestValue),
                .isCut = value.size() > kLongestValue};
    if (!sections_.empty()) {
        entry.section = sections_.size() - 1;
        const auto [known, isNew] = byKey_.try_emplace(NameOf(entry.section, entry.key), entries_.size());
        if (!isNew) entry.sameKeyOn = entries_[known->second].line;
    }
    entries_.push_back(entry);
}

const IniLines::Section* IniLines::FindSection(TextView name) const {
    const auto known = bySection_.find(UpperCase(name));
    return known == bySection_.end() ? nullptr : &sections_[known->second];
}

const IniLines::Entry* IniLines::Find(TextView section, TextView key) const {
    const auto known = bySection_.find(UpperCase(section));
    if (known == bySection_.end()) return nullptr;
    const auto entry = byKey_.find(NameOf(known->second, key));
    return entry == byKey_.end() ? nullptr : &entries_[entry->second];
}

TextView IniLines::ValueOf(TextView section, TextView key, TextView byDefault) const {
    const Entry* entry = Find(section, key);
    return entry ? entry->value : byDefault;
}

int IniLines::LineOf(TextView section, TextView key) const {
    if (const Entry* entry = Find(section, key)) return entry->line;
    const Section* known = FindSection(section);
    return known ? known->line : 0;
}

bool IniLines::Counts(const Entry& entry) const {
    return entry.section != Entry::kNoSection && entry.sameKeyOn == 0 &&
           sections_[entry.section].sameNameOn == 0;
}

std::vector<const IniLines::Entry*> IniLines::EntriesOf(TextView section) const {
    std::vector<const Entry*> found;
    for (const Entry& entry : entries_) {
        if (Counts(entry) && EqualsNoCase(sections_[entry.section].name, section)) found.push_back(&entry);
    }
    return found;
}

}  // namespace nordkeep
