#include "runtime/IniText.h"

#include "runtime/Fields.h"

namespace nordkeep {
namespace {

constexpr std::size_t kLongestValue = 2047;
constexpr TextView kByteOrderMark = "\xEF\xBB\xBF";
constexpr TextView kLineEnd = "\r\n";

TextView WithoutQuotes(TextView value) {
    const bool isQuoted =
        value.size() >= 2 && value.front() == value.back() && (value.front() == '"' || value.front() == '\'');
    return isQuoted ? value.substr(1, value.size() - 2) : value;
}

Text CutValue(TextView raw) {
    return Text(WithoutQuotes(TrimBlanksAndTabs(raw)).substr(0, kLongestValue));
}

/// Place of the line end at or behind `from`, and the place behind it.
std::pair<std::size_t, std::size_t> LineEnd(TextView text, std::size_t from) {
    const std::size_t end = text.find_first_of("\r\n", from);
    if (end == TextView::npos) return {text.size(), text.size()};
    const bool isPair = text[end] == '\r' && end + 1 < text.size() && text[end + 1] == '\n';
    return {end, end + (isPair ? 2 : 1)};
}

/// The body of a section of a server's text: from the CR LF of its header up to the next CR LF and "[".
TextView BodyInText(TextView text, TextView section) {
    Text header = "[";
    header.append(section).append("]").append(kLineEnd);
    const std::size_t found = FindNoCase(text, header);
    if (found == TextView::npos) return {};
    const std::size_t start = found + header.size() - kLineEnd.size();
    const std::size_t end = text.find("\r\n[", start);
    return text.substr(start, end == TextView::npos ? end : end - start);
}

}  // namespace

IniText::IniText(Text content) : content_(std::move(content)) {
    const TextView text = content_;
    std::size_t at = text.substr(0, kByteOrderMark.size()) == kByteOrderMark ? kByteOrderMark.size() : 0;
    while (at < text.size()) {
        const auto [end, behind] = LineEnd(text, at);
        ReadLine(text.substr(at, end - at), at, behind);
        at = behind;
    }
}

void IniText::ReadLine(TextView line, std::size_t lineStart, std::size_t behindLineEnd) {
    const TextView trimmed = TrimBlanksAndTabs(line);
    if (trimmed.empty()) return;
    if (trimmed.front() == '[' && trimmed.find(']') != TextView::npos) {
        const TextView name = TrimBlanksAndTabs(trimmed.substr(1, trimmed.find(']') - 1));
        // A second section of a name is kept apart, so that its keys do not reach the first.
        bySection_.try_emplace(UpperCase(name), sections_.size());
        sections_.emplace_back();
    }
    if (sections_.empty()) return;
    Section& section = sections_.back();
    section.insertAt = behindLineEnd;
    const std::size_t equals = line.find('=');
    if (trimmed.front() == ';' || trimmed.front() == '[' || equals == TextView::npos) return;
    const TextView key = TrimBlanksAndTabs(line.substr(0, equals));
    section.byKey.try_emplace(UpperCase(key), section.entries.size());
    section.entries.push_back(
        {Text(key), lineStart, lineStart + line.size(), CutValue(line.substr(equals + 1))});
}

const IniText::Section* IniText::Find(TextView section) const {
    const auto found = bySection_.find(UpperCase(section));
    return found == bySection_.end() ? nullptr : &sections_[found->second];
}

std::optional<Text> IniText::Value(TextView section, TextView key) const {
    const Section* found = Find(section);
    if (found == nullptr) return std::nullopt;
    const auto entry = found->byKey.find(UpperCase(key));
    if (entry == found->byKey.end()) return std::nullopt;
    return found->entries[entry->second].value;
}

std::vector<Text> IniText::Keys(TextView section) const {
    std::vector<Text> keys;
    if (const Section* found = Find(section)) {
        for (const Entry& entry : found->entries) keys.push_back(entry.key);
    }
    return keys;
}

Text IniText::WithValue(TextView section, TextView key, TextView value) const {
    Text changed = content_;
    const Section* found = Find(section);
    const auto entry = found ? found->byKey.find(UpperCase(key)) : decltype(found->byKey.end()){};
    if (found && entry != found->byKey.end()) {
        const Entry& old = found->entries[entry->second];
        return changed.replace(old.lineStart, old.lineEnd - old.lineStart, old.key + "=" + Text(value));
    }
    Text added;
    const std::size_t at = found ? found->insertAt : changed.size();
    const bool needsLineEnd = at > 0 && changed[at - 1] != '\n' && changed[at - 1] != '\r';
    if (needsLineEnd) added += kLineEnd;
    if (!found) added.append("[").append(section).append("]").append(kLineEnd);
    added.append(key).append("=").append(value).append(kLineEnd);
    return changed.insert(at, added);
}

std::optional<TextView> IniText::Overwrite(TextView section, TextView key, TextView value) {
    const auto found = bySection_.find(UpperCase(section));
    if (found == bySection_.end()) return std::nullopt;
    Section& in = sections_[found->second];
    const auto entry = in.byKey.find(UpperCase(key));
    if (entry == in.byKey.end()) return std::nullopt;
    Entry& old = in.entries[entry->second];
    const Text line = old.key + "=" + Text(value);
    if (line.size() != old.lineEnd - old.lineStart) return std::nullopt;
    content_.replace(old.lineStart, line.size(), line);
    old.value = CutValue(value);
    return TextView(content_).substr(old.lineStart, line.size());
}

Text ReadIniFromText(TextView text, TextView section, TextView key, TextView byDefault) {
    const TextView body = BodyInText(text, section);
    Text wanted(kLineEnd);
    wanted.append(key).append("=");
    const std::size_t found = FindNoCase(body, wanted);
    if (found == TextView::npos) return Text(byDefault);
    const std::size_t start = found + kLineEnd.size();
    const std::size_t end = body.find(kLineEnd, start);
    const TextView line = body.substr(start, end == TextView::npos ? end : end - start);
    return Text(TrimBlanks(GetField(line, 1, "=")));
}

Text ListIniKeysFromText(TextView text, TextView section) {
    const TextView body = BodyInText(text, section);
    if (body.empty()) return {};
    Text keys;
    for (const TextView line : Lines(body)) {
        const std::size_t equals = line.find('=');
        if (equals == TextView::npos || line.front() == ';') continue;
        keys.append(TrimBlanks(line.substr(0, equals))).push_back('\0');
    }
    keys.push_back('\0');
    return keys;
}

}  // namespace nordkeep
