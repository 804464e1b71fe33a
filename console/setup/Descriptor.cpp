#include "console/setup/Descriptor.h"

#include <array>
#include <utility>

namespace nordkeep {
namespace {

constexpr int kHighestText = 99999;
constexpr int kMostKeys = 2000;

template <class Value>
struct Word {
    const char* word;
    Value value;
};

constexpr std::array kControls = {Word<ControlKind>{"text", ControlKind::Words},
                                  Word<ControlKind>{"template", ControlKind::Template},
                                  Word<ControlKind>{"list", ControlKind::List},
                                  Word<ControlKind>{"priorities", ControlKind::Priorities},
                                  Word<ControlKind>{"number", ControlKind::Number},
                                  Word<ControlKind>{"choice", ControlKind::Choice},
                                  Word<ControlKind>{"switch", ControlKind::Switch},
                                  Word<ControlKind>{"color", ControlKind::Color},
                                  Word<ControlKind>{"colorpair", ControlKind::ColorPair},
                                  Word<ControlKind>{"font", ControlKind::Font},
                                  Word<ControlKind>{"printer", ControlKind::Printer},
                                  Word<ControlKind>{"file", ControlKind::File},
                                  Word<ControlKind>{"folder", ControlKind::Folder},
                                  Word<ControlKind>{"sound", ControlKind::Sound},
                                  Word<ControlKind>{"columns", ControlKind::Columns},
                                  Word<ControlKind>{"password", ControlKind::Password},
                                  Word<ControlKind>{"language", ControlKind::Language}};

constexpr std::array kScopes = {Word<SettingScope>{"workstation", SettingScope::Workstation},
                                Word<SettingScope>{"centre", SettingScope::Centre},
                                Word<SettingScope>{"port", SettingScope::Port}};

constexpr std::array kTimes = {Word<AppliesWhen>{"now", AppliesWhen::Now},
                               Word<AppliesWhen>{"reopen", AppliesWhen::Reopen},
                               Word<AppliesWhen>{"restart", AppliesWhen::Restart}};

template <class Words, class Value>
bool TakeWord(const Words& words, TextView text, Value& value) {
    for (const auto& row : words) {
        if (!EqualsNoCase(text, row.word)) continue;
        value = row.value;
        return true;
    }
    return false;
}

/// Takes the text up to the separator off the front; all of it when there is none.
TextView TakeField(TextView& line, char separator) {
    const std::size_t end = line.find(separator);
    const TextView field = line.substr(0, end);
    line.remove_prefix(end == TextView::npos ? line.size() : end + 1);
    return TrimBlanksAndTabs(field);
}

bool TakeWording(TextView text, Wording& wording) {
    if (text.size() >= 2 && text.front() == '"' && text.back() == '"') {
        wording.own = Text(text.substr(1, text.size() - 2));
        return true;
    }
    wording.number = LeadingInt32(text);
    return IsNumeric(text) && wording.number <= kHighestText;
}

/// An end of "low..high"; one that is left open stays as it is.
bool TakeLimit(TextView text, int& limit) {
    if (text.empty()) return true;
    const TextView digits = text.substr(text.front() == '-' ? 1 : 0);
    if (!IsNumeric(digits)) return false;
    limit = LeadingInt32(text);
    return true;
}

bool TakeLimits(TextView text, DescribedKey& key) {
    if (text.empty()) return true;
    const std::size_t dots = text.find("..");
    if (dots == TextView::npos) return false;
    return TakeLimit(text.substr(0, dots), key.low) && TakeLimit(text.substr(dots + 2), key.high) &&
           key.low <= key.high;
}

bool TakeChoices(TextView text, DescribedKey& key) {
    while (!text.empty()) {
        TextView choice = TakeField(text, ',');
        if (choice.find('=') == TextView::npos) return false;
        DescribedChoice made{.value = Text(TakeField(choice, '='))};
        if (!TakeWording(choice, made.caption)) return false;
        key.choices.push_back(std::move(made));
    }
    return !key.choices.empty();
}

bool TakeControl(TextView text, DescribedKey& key) {
    if (!TakeWord(kControls, TakeField(text, ' '), key.control)) return false;
    if (key.control == ControlKind::Number) return TakeLimits(TrimBlanksAndTabs(text), key);
    if (key.control == ControlKind::Choice) return TakeChoices(TrimBlanksAndTabs(text), key);
    return text.empty();
}

bool IsSame(const DescribedKey& key, const KeyName& name) {
    return (key.scope == SettingScope::Port) == name.isOfPort && EqualsNoCase(key.key, name.key) &&
           EqualsNoCase(key.section, name.section);
}

KeyName NameOf(const DescribedKey& key) {
    return {key.section, key.key, key.scope == SettingScope::Port};
}

class Reader {
 public:
    SetupDescriptor Read(TextView bytes) {
        int number = 0;
        for (const TextView line : Lines(bytes)) {
            ++number;
            const TextView text = TrimBlanksAndTabs(line);
            if (text.empty() || text.front() == ';') continue;
            if (TakeLine(text)) continue;
            made_.fault = {number, Text(text.substr(0, kMostShown))};
            break;
        }
        if (made_.pages.empty() && !made_.fault) made_.fault = {number, Text()};
        return std::move(made_);
    }

 private:
    static constexpr std::size_t kMostShown = 60;

    bool TakeLine(TextView line) {
        const TextView kind = TakeField(line, ';');
        if (EqualsNoCase(kind, "Page")) return TakePage(line);
        if (EqualsNoCase(kind, "Group")) return TakeGroup(line);
        if (EqualsNoCase(kind, "Key")) return TakeKey(line);
        return EqualsNoCase(kind, "Hide") && TakeHidden(line);
    }
    bool TakePage(TextView line) {
        DescribedPage page{.name = Text(TakeField(line, ';'))};
        const bool isWorded = TakeWording(TakeField(line, ';'), page.caption);
        const TextView mark = TrimBlanksAndTabs(line);
        page.isHidden = EqualsNoCase(mark, "hidden");
        if (page.name.empty() || !isWorded || (!mark.empty() && !page.isHidden)) return false;
        made_.pages.push_back(std::move(page));
        return true;
    }
    bool TakeGroup(TextView line) {
        DescribedGroup group;
        if (made_.pages.empty() || !TakeWording(TrimBlanksAndTabs(line), group.caption)) return false;
        made_.pages.back().groups.push_back(std::move(group));
        return true;
    }
    bool TakeKey(TextView line) {
        DescribedKey key{.section = Text(TakeField(line, ';')), .key = Text(TakeField(line, ';'))};
        const bool isRead = TakeControl(TakeField(line, ';'), key) &&
                            TakeWording(TakeField(line, ';'), key.caption) &&
                            TakeWording(TakeField(line, ';'), key.help) &&
                            TakeWord(kScopes, TakeField(line, ';'), key.scope) &&
                            TakeWord(kTimes, TakeField(line, ';'), key.when);
        if (!isRead || key.section.empty() || key.key.empty() || made_.pages.empty()) return false;
        if (made_.pages.back().groups.empty() || ++keys_ > kMostKeys) return false;
        if (FindKey(made_, NameOf(key))) return false;
        key.byDefault = Text(line);
        made_.pages.back().groups.back().keys.push_back(std::move(key));
        return true;
    }
    bool TakeHidden(TextView line) {
        KeyName name{.section = Text(TakeField(line, ';')), .key = Text(TakeField(line, ';'))};
        SettingScope scope{};
        if (name.key.empty() || !TakeWord(kScopes, TrimBlanksAndTabs(line), scope)) return false;
        name.isOfPort = scope == SettingScope::Port;
        made_.hidden.push_back(std::move(name));
        return true;
    }

    SetupDescriptor made_{};
    int keys_ = 0;
};

bool IsHidden(const SetupDescriptor& descriptor, const DescribedKey& key) {
    for (const KeyName& name : descriptor.hidden) {
        if (IsSame(key, name)) return true;
    }
    return false;
}

DescribedPage& PageFor(SetupDescriptor& own, const DescribedPage& delivered) {
    for (DescribedPage& page : own.pages) {
        if (EqualsNoCase(page.name, delivered.name)) return page;
    }
    own.pages.push_back({.name = delivered.name, .caption = delivered.caption});
    return own.pages.back();
}

}  // namespace

SetupDescriptor ParseDescriptor(TextView bytes) {
    return Reader().Read(bytes);
}

const DescribedKey* FindKey(const SetupDescriptor& descriptor, const KeyName& name) {
    for (const DescribedPage& page : descriptor.pages) {
        for (const DescribedGroup& group : page.groups) {
            for (const DescribedKey& key : group.keys) {
                if (IsSame(key, name)) return &key;
            }
        }
    }
    return nullptr;
}

SetupDescriptor Complete(SetupDescriptor own, const SetupDescriptor& delivered) {
    for (const DescribedPage& page : delivered.pages) {
        for (const DescribedGroup& group : page.groups) {
            DescribedGroup added{.caption = group.caption};
            for (const DescribedKey& key : group.keys) {
                if (!FindKey(own, NameOf(key)) && !IsHidden(own, key)) added.keys.push_back(key);
            }
            if (!added.keys.empty()) PageFor(own, page).groups.push_back(std::move(added));
        }
    }
    return own;
}

}  // namespace nordkeep
