#include "runtime/Findings.h"

#include "runtime/Fields.h"

#include <algorithm>
#include <array>
#include <map>
#include <numeric>
#include <utility>

namespace nordkeep {
namespace {

constexpr int kTextIsMeant = 3791;

constexpr std::size_t kLongestPart = 120;
constexpr std::size_t kLongestWord = 40;

Text FitToPrint(TextView part) {
    Text fit(part.substr(0, kLongestPart));
    if (part.size() > kLongestPart) fit += "...";
    const auto isControl = [](char c) { return static_cast<unsigned char>(c) < 32 || c == 127; };
    std::ranges::replace_if(fit, isControl, ' ');
    return fit;
}

/// Letters added, left out, changed or swapped with their neighbour between two words in upper case.
std::size_t Distance(TextView a, TextView b) {
    using Row = std::array<std::size_t, kLongestWord + 1>;
    Row before{};
    Row last{};
    Row now{};
    std::iota(last.begin(), last.end(), std::size_t{0});
    for (std::size_t i = 1; i <= a.size(); ++i) {
        now[0] = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const bool isSame = a[i - 1] == b[j - 1];
            now[j] = std::min({last[j] + 1, now[j - 1] + 1, last[j - 1] + (isSame ? 0 : 1)});
            const bool isSwapped = i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1];
            if (isSwapped) now[j] = std::min(now[j], before[j - 2] + 1);
        }
        before = last;
        last = now;
    }
    return last[b.size()];
}

Text WithoutDigits(TextView sentence) {
    Text kept(sentence);
    std::erase_if(kept, IsDigit);
    return kept;
}

}  // namespace

void Findings::Add(TextView file, int line, Severity severity, int text,
                   std::initializer_list<TextView> parts) {
    ++(severity == Severity::Error ? errors_ : warnings_);
    if (IsFull()) return;
    std::vector<Text> fit;
    for (const TextView part : parts) fit.push_back(FitToPrint(part));
    const std::vector<TextView> views(fit.begin(), fit.end());
    all_.push_back({Text(file), line, severity, FillPlaces(language_.GetLanguageText(text), views), field_});
}

void Findings::SuggestForLast(TextView word) {
    if (all_.empty() || errors_ + warnings_ != all_.size()) return;
    const std::array<TextView, 1> words = {word};
    all_.back().sentence += FillPlaces(language_.GetLanguageText(kTextIsMeant), words);
}

std::vector<Finding> Findings::Take() {
    errors_ = 0;
    warnings_ = 0;
    return std::exchange(all_, {});
}

void Findings::Sort() {
    std::ranges::stable_sort(all_, [](const Finding& a, const Finding& b) {
        const int byFile = CompareNoCase(a.file, b.file);
        return byFile != 0 ? byFile < 0 : a.line < b.line;
    });
}

FileFindings::FileFindings(Findings& findings, TextView path) : findings_(findings), path_(path) {
    std::ranges::replace(path_, '\\', '/');
}

void FileFindings::UnknownWord(int line, int text, Parts parts, TextView nearest) {
    Add(line, nearest.empty() ? Severity::Warning : Severity::Error, text, parts);
    if (!nearest.empty()) findings_.SuggestForLast(nearest);
}

std::vector<Finding> AddedErrors(const std::vector<Finding>& before, const std::vector<Finding>& now) {
    std::map<Text, int> known;
    for (const Finding& finding : before) {
        if (finding.severity == Severity::Error) ++known[WithoutDigits(finding.sentence)];
    }
    std::vector<Finding> added;
    for (const Finding& finding : now) {
        if (finding.severity == Severity::Error && --known[WithoutDigits(finding.sentence)] < 0)
            added.push_back(finding);
    }
    return added;
}

TextView NearestWord(TextView word, const std::vector<TextView>& candidates) {
    const Text wanted = UpperCase(word.substr(0, kLongestWord + 1));
    if (wanted.empty() || wanted.size() > kLongestWord) return {};
    // One slip in a short word, two in a long one.
    std::size_t nearest = wanted.size() <= 5 ? 2 : 3;
    TextView found;
    for (const TextView candidate : candidates) {
        if (candidate.empty() || candidate.size() > kLongestWord) continue;
        const std::size_t longer = std::max(candidate.size(), wanted.size());
        if (longer - std::min(candidate.size(), wanted.size()) >= nearest) continue;
        const std::size_t distance = Distance(wanted, UpperCase(candidate));
        if (distance >= nearest) continue;
        nearest = distance;
        found = candidate;
    }
    return found;
}

}  // namespace nordkeep
