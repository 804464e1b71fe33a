#include "ports/formats/SiaData.h"

#include "runtime/Fields.h"

#include <algorithm>

namespace nordkeep {
namespace {

bool IsUpper(char c) {
    return c >= 'A' && c <= 'Z';
}
bool IsLower(char c) {
    return c >= 'a' && c <= 'z';
}
bool IsAlpha(char c) {
    return IsUpper(c) || IsLower(c);
}
bool IsOneOf(char c, TextView characters) {
    return characters.find(c) != TextView::npos;
}

template <class Test>
std::size_t CountWhile(TextView text, const Test& test) {
    return static_cast<std::size_t>(std::find_if_not(text.begin(), text.end(), test) - text.begin());
}

/// The letters that say what a modifier is about.
TextView KindOf(TextView modifier) {
    return modifier.substr(0, CountWhile(modifier, IsAlpha));
}

class Parser {
 public:
    Parser(const cSIAEvent& start, TextView data, SiaForm form) : event_(start), rest_(data), form_(form) {}

    std::vector<cSIAEvent> Run() {
        TakeLeadingNumber();
        while (!rest_.empty() && TakeItem()) {
        }
        if (!rest_.empty()) event_.error = kInvalidSiaFormat;
        event_.modifiers.insert(event_.modifiers.end(), pending_.begin(), pending_.end());
        events_.push_back(std::move(event_));
        return std::move(events_);
    }

 private:
    bool TakeItem() {
        return TakeSeparator() || TakeMarkedText() || TakeStarred() || TakeDashedText() || TakeModifier() ||
               TakeListenIn() || TakeCode();
    }

    TextView Take(std::size_t count) {
        const TextView taken = rest_.substr(0, count);
        rest_.remove_prefix(taken.size());
        return taken;
    }
    void AddZone(TextView text) { event_.zone.append(text).append(" "); }

    void TakeLeadingNumber() {
        const std::size_t digits = CountWhile(rest_, IsDigit);
        if (digits > 0 && IsOneOf(event_.m_BlockType, "XVI&L")) event_.modifiers.emplace_back(Take(digits));
    }

    bool TakeSeparator() {
        if (rest_.front() != '/') return false;
        needsSeparator_ = false;
        Take(1);
        return true;
    }

    bool TakeMarkedText() {
        if (rest_.front() != '^') return false;
        Take(1);
        AddZone(Take(rest_.find('^')));
        Take(1);
        TakeUnit();
        return true;
    }

    /// Two letters behind the text of a code that say what the text is. They are no code: one would need a
    /// separator there.
    void TakeUnit() {
        if (!needsSeparator_) return;
        const bool isUnit = CountWhile(rest_.substr(0, 2), IsUpper) == 2;
        const TextView behind = rest_.substr(isUnit ? 2 : 0);
        if (isUnit && (behind.empty() || IsOneOf(behind.front(), "/\\*^"))) Take(2);
    }

    bool TakeStarred() {
        if (form_ != SiaForm::Brackets || rest_.front() != '*') return false;
        Take(1);
        if (TakeValue() || TakeQuoted()) return true;
        const TextView text = Take(rest_.find_first_of("*/\\"));
        if (!text.empty()) AddZone(text);
        return true;
    }

    /// A measured value with its unit of two letters.
    bool TakeValue() {
        constexpr std::size_t kLongestValue = 6;
        const std::size_t length = CountWhile(rest_, [](char c) { return IsDigit(c) || IsOneOf(c, ",.-"); });
        const TextView unit = rest_.substr(length, 2);
        const TextView behind = rest_.substr(length + unit.size());
        const bool isValue = length >= 1 && length <= kLongestValue && CountWhile(unit, IsAlpha) == 2;
        if (!isValue || (!behind.empty() && !IsOneOf(behind.front(), "/\\*^"))) return false;
        AddZone(Take(length + 2));
        return true;
    }

    /// A text in quotes; the unit behind it says nothing.
    bool TakeQuoted() {
        if (!rest_.starts_with('\'')) return false;
        const std::size_t end = rest_.find('\'', 1);
        if (end == TextView::npos) return false;
        const TextView text = Take(end + 1).substr(1, end - 1);
        if (!text.empty()) AddZone(text);
        Take(CountWhile(rest_.substr(0, 2), [](char c) { return !IsOneOf(c, "/\\*^"); }));
        return true;
    }

    bool TakeDashedText() {
        constexpr TextView kDash = " - ";
        if (!IsOneOf(event_.m_BlockType, "ON") || !rest_.starts_with(kDash)) return false;
        Take(kDash.size());
        AddZone(Take(rest_.find_first_of("/^*")));
        return true;
    }

    bool TakeModifier() {
        if (rest_.size() < 2 || !IsAlpha(rest_[0]) || !IsLower(rest_[1])) return false;
        const std::size_t value =
            CountWhile(rest_.substr(2), [](char c) { return IsDigit(c) || IsOneOf(c, ":-"); });
        AddModifier(Take(2 + value));
        needsSeparator_ = false;
        return true;
    }

    /// How long the panel stays on the line for listening in.
    bool TakeListenIn() {
        const std::size_t digits = rest_.front() == 'L' ? CountWhile(rest_.substr(1), IsDigit) : 0;
        if (digits == 0) return false;
        AddModifier(Take(1 + digits));
        return true;
    }

    void AddModifier(TextView modifier) {
        (event_.code.empty() ? event_.modifiers : pending_).emplace_back(modifier);
    }

    bool TakeCode() {
        const bool isCode = rest_.size() >= 2 && IsUpper(rest_[0]) && IsUpper(rest_[1]);
        if (!isCode || needsSeparator_ || events_.size() >= kMostSiaEvents) return false;
        if (!event_.code.empty()) BeginNextEvent();
        const auto isAddress = [](char c) { return IsDigit(c) || (c >= 'A' && c <= 'F'); };
        event_.code = Take(2 + CountWhile(rest_.substr(2), isAddress));
        needsSeparator_ = true;
        return true;
    }

    void BeginNextEvent() {
        cSIAEvent next{.m_AccountId = event_.m_AccountId, .m_BlockType = event_.m_BlockType};
        std::ranges::copy_if(event_.modifiers, std::back_inserter(next.modifiers),
                             [this](const Text& modifier) { return !IsReplaced(modifier); });
        next.modifiers.insert(next.modifiers.end(), pending_.begin(), pending_.end());
        pending_.clear();
        events_.push_back(std::move(event_));
        event_ = std::move(next);
    }

    bool IsReplaced(const Text& modifier) const {
        return std::ranges::any_of(pending_,
                                   [&](const Text& pending) { return KindOf(pending) == KindOf(modifier); });
    }

    cSIAEvent event_;
    TextView rest_;
    SiaForm form_;
    std::vector<Text> pending_{};  // behind a code: for the next one
    std::vector<cSIAEvent> events_{};
    bool needsSeparator_ = false;
};

}  // namespace

std::vector<cSIAEvent> ParseSiaData(const cSIAEvent& start, TextView data, SiaForm form) {
    // Empty blocks of these types only steer the line between panel and receiver.
    if (data.empty() && IsDigit(start.m_BlockType)) return {};
    return Parser(start, data, form).Run();
}

}  // namespace nordkeep
