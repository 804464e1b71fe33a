#include "console/editors/UserFormat.h"

#include "console/editors/FieldList.h"
#include "network/UsersCheck.h"
#include "platform/Passwords.h"
#include "runtime/Fields.h"

#include <algorithm>

namespace nordkeep {
namespace {

constexpr int kCaption = 4850;
constexpr int kCaptionEmpty = 4851;
constexpr int kFirstCaption = 4852;
constexpr int kFirstHelp = 4858;
constexpr int kFirstLevel = 4864;
constexpr int kLevels = 3;
constexpr int kCaptionNotAlike = 4867;

enum Value : std::size_t { kName, kFullName, kInitials, kLevel, kPassword, kAgain, kValues };

// Typed twice alike, it is kept as a hash; what stands there already stays as it is.
Text PasswordOf(const RowFormat::Values& values, const Text& before) {
    const Text& typed = values[kPassword];
    if (typed != values[kAgain] || typed == before) return before;
    if (typed.empty() || IsPasswordHash(typed)) return typed;
    // Each hash has a salt of its own, and what was typed before goes with every later key.
    if (IsPasswordHash(before) && IsHashOf(before, ToUtf8(typed))) return before;
    const std::optional<std::string> hash = MakePasswordHash(ToUtf8(typed));
    return hash ? Text(*hash) : typed;
}

}  // namespace

int UserFormat::Caption() const {
    return kCaption;
}

int UserFormat::EmptyText() const {
    return kCaptionEmpty;
}

Text UserFormat::FileOf(const Text&) const {
    return "Settings\\Users.INI";
}

std::vector<DescribedGroup> UserFormat::Groups() const {
    const auto field = [](Value value, const char* name, ControlKind control) {
        const int number = static_cast<int>(value);
        return ListedField{name, control, kFirstCaption + number, kFirstHelp + number};
    };
    ListedField level = field(kLevel, "Level", ControlKind::Choice);
    for (int number = 0; number < kLevels; ++number)
        level.choices.push_back(
            {.value = std::to_string(number), .caption = {.number = kFirstLevel + number, .own = {}}});
    return {FieldGroup(
        0, {field(kName, "User", ControlKind::Words), field(kFullName, "FullName", ControlKind::Words),
            field(kInitials, "Initials", ControlKind::Words), level,
            field(kPassword, "Password", ControlKind::Password),
            field(kAgain, "PasswordAgain", ControlKind::Password)})};
}

std::vector<RowFormat::Column> UserFormat::Columns() const {
    return {{kName, 160}, {kFullName, 260}, {kInitials, 90}, {kLevel, 240}};
}

RowFormat::Values UserFormat::ValuesOf(const FileItem& row) const {
    const IniPair pair = PairOf(row.text);
    const std::vector<Text> fields = Split(pair.value, ',');
    const auto field = [&fields](std::size_t number) {
        return number < fields.size() ? Text(TrimBlanksAndTabs(fields[number])) : Text();
    };
    return {pair.key, field(0), field(1), field(3), field(2), field(2)};
}

FileItem UserFormat::ItemOf(const Values& values, const FileItem& before) const {
    FileItem item = before;
    item.section = "Users";
    const Text password = PasswordOf(values, ValuesOf(before)[kPassword]);
    item.text = LineOfPair(
        {values[kName], values[kFullName] + "," + values[kInitials] + "," + password + "," + values[kLevel]});
    return item;
}

Text UserFormat::FitValue(const DescribedKey& key, Text value) const {
    if (key.control == ControlKind::Password) return value;
    std::ranges::replace(value, ',', ' ');
    return key.key == "User" ? FitKey(std::move(value)) : value;
}

Text UserFormat::FaultOf(std::size_t field, const Values& values) const {
    const bool isAlike = values[kPassword] == values[kAgain];
    return field == kAgain && !isAlike ? captions_(kCaptionNotAlike) : Text();
}

// A search is not to tell who has which password.
Text UserFormat::TextToSearch(const FileItem& row) const {
    const Values values = ValuesOf(row);
    return values[kName] + " " + values[kFullName] + " " + values[kInitials];
}

RowFormat::Values UserFormat::NewValues() const {
    return {"", "", "", "1", "", ""};
}

std::optional<std::size_t> UserFormat::FieldOf(int number) const {
    switch (number) {
        case 2:
            return kInitials;
        case 3:
            return kPassword;
        case 4:
            return kLevel;
        default:
            return std::nullopt;
    }
}

void UserFormat::Check(TextView content, FileFindings& findings) const {
    CheckUsers(content, findings);
}

}  // namespace nordkeep
