#include "console/setup/SetupValues.h"

#include <algorithm>

namespace nordkeep {
namespace {

constexpr TextView kMainFile = "Settings\\Nordkeep.INI";
constexpr TextView kLineEnd = "\r\n";

}  // namespace

Text ValueInFile(TextView value) {
    if (value.empty()) return {};
    const bool hasBlanks = TrimBlanksAndTabs(value) != value;
    const char first = value.front();
    const bool hasQuotes = value.size() > 1 && first == value.back() && (first == '"' || first == '\'');
    if (!hasBlanks && !hasQuotes) return Text(value);
    return Text("\"").append(value).append("\"");
}

bool SetupValues::IsAtServer(SettingScope scope) const {
    return scope == SettingScope::Centre && needs_.state.Rights().IsClient();
}

void SetupValues::Load() {
    if (!IsAtServer(SettingScope::Centre)) return;
    server_.Load(Text(kMainFile));
    serverText_ = IniText(server_.Content() + Text(kLineEnd));
}

Text SetupValues::Value(const DescribedKey& key) const {
    if (!IsAtServer(key.scope)) return needs_.files.ReadIni(key.section, key.key, key.byDefault);
    if (!server_.Exists()) return needs_.files.ReadMainIni(key.section, key.key, key.byDefault);
    return serverText_.Value(key.section, key.key).value_or(key.byDefault);
}

bool SetupValues::CanWrite(SettingScope scope) const {
    const OperatorRights rights = needs_.state.Rights();
    if (!rights.MayEdit()) return false;
    return !IsAtServer(scope) || (rights.MayChange() && server_.Exists() && !server_.IsUnreadable());
}

bool SetupValues::Write(const std::vector<Change>& changes) {
    std::vector<Change> atServer;
    bool isWritten = true;
    for (const Change& change : changes) {
        if (IsAtServer(change.key->scope)) {
            atServer.push_back(change);
        } else {
            isWritten =
                needs_.files.WriteIni(change.key->section, change.key->key, ValueInFile(change.value)) &&
                isWritten;
        }
    }
    return (atServer.empty() || WriteToServer(atServer)) && isWritten;
}

bool SetupValues::WriteToServer(const std::vector<Change>& changes) {
    IniText text = serverText_;
    for (const Change& change : changes) {
        text = IniText(text.WithValue(change.key->section, change.key->key, ValueInFile(change.value)));
    }
    server_.Write(text.Content());
    // The server goes on numbering its alarms in this file: what counts are the values.
    Load();
    return std::ranges::all_of(changes,
                               [this](const Change& change) { return Value(*change.key) == change.value; });
}

}  // namespace nordkeep
