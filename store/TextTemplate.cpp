#include "store/TextTemplate.h"

#include "runtime/Fields.h"

#include <algorithm>
#include <vector>

namespace nordkeep {
namespace {

// Wider than any line; a mistyped width must not fill the memory.
constexpr std::int64_t kWidest = 65535;

enum class Command { None, CutUntil, CutFrom, Replace };

Command CommandOf(TextView name) {
    const auto is = [name](TextView word) { return EqualsNoCase(name, word); };
    if (is("CUTUNTIL") || is("CU")) return Command::CutUntil;
    if (is("CUTFROM") || is("CF")) return Command::CutFrom;
    if (is("REPLACE") || is("R")) return Command::Replace;
    return Command::None;
}

/// A command that waits for the next value; its texts are in upper case.
struct PendingCommand {
    Command command;
    Text text;
    Text replacement;
};

Text ReplaceNoCase(const Text& value, const Text& old, const Text& replacement) {
    // The search goes by the upper-cased value; what is kept is cut from the value itself.
    const Text upper = UpperCase(value);
    Text result;
    std::size_t at = 0;
    for (std::size_t found = upper.find(old); found != Text::npos; found = upper.find(old, at)) {
        result.append(value, at, found - at).append(replacement);
        at = found + old.size();
    }
    return result.append(value, at, Text::npos);
}

Text Replaced(const Text& value, const PendingCommand& c) {
    if (c.text.empty() && value.empty()) return value;
    if (c.text.empty() || c.text == c.replacement) return c.replacement;
    return ReplaceNoCase(value, c.text, c.replacement);
}

Text Applied(const Text& value, const PendingCommand& c) {
    if (c.command == Command::Replace) return Replaced(value, c);
    const std::size_t found = c.text.empty() ? Text::npos : FindNoCase(value, c.text);
    if (found == Text::npos) return value;
    return c.command == Command::CutUntil ? value.substr(found + c.text.size()) : value.substr(0, found);
}

Text InRange(const Text& value, const Text& range) {
    if (range.empty()) return value;
    const std::int64_t from = std::max<std::int64_t>(0, LeadingNumber(GetField(range, 0, "-")));
    const std::int64_t to = std::max(from, LeadingNumber(GetField(range, 1, "-")));
    const auto size = static_cast<std::int64_t>(value.size());
    if (from >= size) return {};
    return value.substr(static_cast<std::size_t>(from),
                        static_cast<std::size_t>(std::min(to, size) - from + 1));
}

Text InWidth(Text value, const Text& width) {
    if (width.empty()) return value;
    return FitWidth(value,
                    static_cast<std::size_t>(std::clamp<std::int64_t>(LeadingNumber(width), 0, kWidest)));
}

std::optional<Text> CharacterOf(TextView name) {
    const std::int64_t code = IsNumeric(name) ? LeadingNumber(name) : 0;
    if (code < 1 || code > 255) return std::nullopt;
    return Text(1, static_cast<char>(code));
}

class Expansion {
 public:
    Expansion(TextView format, const PlaceholderValue& valueOf) : rest_(format), valueOf_(valueOf) {}

    Text Run() {
        while (!rest_.empty()) {
            if (!TakePlaceholder()) TakeCharacters();
        }
        return std::move(out_);
    }

 private:
    /// Everything up to the next bracket, or one bracket that begins no placeholder.
    void TakeCharacters() {
        const std::size_t end = std::min(rest_.find('[', 1), rest_.size());
        out_ += rest_.substr(0, end);
        rest_.remove_prefix(end);
    }

    bool TakePlaceholder() {
        if (rest_.front() != '[') return false;
        const std::size_t end = rest_.substr(0, rest_.find('[', 1)).find(']', 1);
        if (end == TextView::npos) return false;
        if (!TakeInner(rest_.substr(1, end - 1))) return false;
        rest_.remove_prefix(end + 1);
        return true;
    }

    bool TakeInner(TextView inner) {
        const TextView name = inner.substr(0, inner.find(':'));
        if (const Command command = CommandOf(name); command != Command::None) {
            const Text upper = UpperCase(inner);
            pending_.push_back({command, GetField(upper, 1, ":"), GetField(upper, 2, ":")});
            return true;
        }
        std::optional<Text> value = valueOf_(name);
        if (!value) value = CharacterOf(name);
        if (!value) return false;
        Text changed = std::move(*value);
        if (name.size() < inner.size())
            changed = InWidth(InRange(changed, GetField(inner, 1, ":")), GetField(inner, 2, ":"));
        for (const PendingCommand& command : pending_) changed = Applied(changed, command);
        pending_.clear();
        out_ += changed;
        return true;
    }

    TextView rest_;
    const PlaceholderValue& valueOf_;
    std::vector<PendingCommand> pending_{};
    Text out_{};
};

}  // namespace

Text ExpandTemplate(TextView format, const PlaceholderValue& valueOf) {
    return Expansion(format, valueOf).Run();
}

}  // namespace nordkeep
