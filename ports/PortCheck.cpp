#include "ports/PortCheck.h"

#include "pipeline/XmlFieldMap.h"
#include "ports/Dc09Check.h"
#include "ports/FieldMap.h"
#include "ports/PortList.h"
#include "ports/lines/SerialSetting.h"
#include "runtime/Dates.h"
#include "runtime/Fields.h"
#include "translation/IdCodeFile.h"
#include "translation/SetRows.h"

#include <algorithm>
#include <array>

namespace nordkeep {
namespace {

constexpr int kTextUnknownType = 3808;
constexpr int kTextUnknownFormat = 3809;
constexpr int kTextNotTogether = 3810;
constexpr int kTextNoPortNumber = 3811;
constexpr int kTextTaken = 3812;
constexpr int kTextTooMany = 3813;
constexpr int kTextTooManyOfType = 3814;
constexpr int kTextNoSetFile = 3815;
constexpr int kTextNoSets = 3816;
constexpr int kTextNoInterface = 3818;
constexpr int kTextBehindEmpty = 3830;
constexpr int kTextNotWritable = 3848;
constexpr int kTextNotRead = 5195;
constexpr int kTextOtherSection = 3792;

constexpr const char* kGeneral = "General";
constexpr const char* kTranslate = "Translate";
constexpr const char* kDc09 = "DC09";
constexpr const char* kReceivers = "VirtualReceivers";
constexpr const char* kSerialPorts = "SerialPorts";
constexpr int kHighestPort = 65535;
constexpr int kHighestLine = 999;

std::vector<Text> FieldMapSections() {
    std::vector<Text> sections;
    for (const FieldMapRow& row : kFieldMaps) {
        for (const char* moment : {kBeforeTranslation, kAfterTranslation})
            sections.push_back(Text(row.section) + moment);
    }
    return sections;
}

std::vector<TextView> OtherSections() {
    static const std::vector<Text> kMaps = FieldMapSections();
    std::vector<TextView> sections = {kTranslate, kReceivers, kDc09Accounts};
    sections.insert(sections.end(), kMaps.begin(), kMaps.end());
    return sections;
}

std::vector<TextView> ProtocolKeys() {
    std::vector<TextView> keys;
    for (int number = 0; number < kProtocolCount; ++number) keys.push_back(ProtocolKey(ProtocolOf(number)));
    return keys;
}

std::optional<Protocol> ProtocolOfKey(TextView key) {
    for (int number = 0; number < kProtocolCount; ++number) {
        if (EqualsNoCase(ProtocolKey(ProtocolOf(number)), key)) return ProtocolOf(number);
    }
    return std::nullopt;
}

Text Joined(const std::vector<TextView>& words) {
    Text joined;
    for (const TextView word : words) joined.append(joined.empty() ? "" : ", ").append(word);
    return joined;
}

Text KnownFormats() {
    Text numbers;
    for (const MessageFormat format : MessageFormats()) {
        numbers += (numbers.empty() ? "" : ", ") + std::to_string(static_cast<int>(format));
    }
    return numbers;
}

/// Four numbers from 0 to 255.
bool IsAddress(TextView text) {
    const std::vector<Text> parts = Split(text, '.');
    return parts.size() == 4 && std::ranges::all_of(parts, [](const Text& part) {
               return IsNumeric(part) && part.size() <= 3 && LeadingNumber(part) <= 255;
           });
}

/// Everybody's address, and the machine's own ones that need no interface of their own.
bool IsAlwaysThere(TextView address) {
    return address == "0.0.0.0" || address.starts_with("127.");
}

bool IsEverywhere(TextView address) {
    return address.empty() || address == "0.0.0.0";
}

bool IsSocket(PortType type) {
    return type == PortType::TCPS || type == PortType::UDP || type == PortType::SMTP;
}

bool NeedsHost(PortType type) {
    return type == PortType::TCPC || type == PortType::POP3;
}

bool IsNothing(TextView setting) {
    return TrimBlanks(setting).empty() || TrimBlanks(setting) == "0";
}

/// The key that means the same for this kind of line: one that is written nearly so, or that ends alike, as
/// HTTPTimeout and POP3ConnectionTimeout do.
TextView NearestKey(TextView key, const std::vector<TextView>& candidates) {
    constexpr std::size_t kFewest = 6;
    if (const TextView nearest = NearestWord(key, candidates); !nearest.empty()) return nearest;
    TextView best;
    std::size_t longest = kFewest - 1;
    for (const TextView candidate : candidates) {
        std::size_t same = 0;
        while (same < std::min(key.size(), candidate.size()) &&
               UpperCase(key[key.size() - same - 1]) == UpperCase(candidate[candidate.size() - same - 1]))
            ++same;
        if (same <= longest || 2 * same < candidate.size()) continue;
        longest = same;
        best = candidate;
    }
    return best;
}

Text FolderOf(TextView path) {
    const std::size_t separator = path.find_last_of("\\/");
    return Text(separator == TextView::npos ? "." : path.substr(0, separator + 1));
}

}  // namespace

PortCheck::PortCheck(const PortSurroundings& around) : around_(around) {
    if (!TrimBlanks(around_.main.ValueOf("NetWork", "ClientAddresses")).empty())
        ClaimMain("NetWork", "NetworkPort", "17666", "TCP ");
    if (around_.main.ValueOf("Torvex", "Address").empty()) ClaimMain("Torvex", "Port", "-1", "TCP ");
    ClaimMain(kGeneral, "RelayPort", "-1", "COM");
}

void PortCheck::ClaimMain(TextView section, TextView key, TextView byDefault, TextView what) {
    const int number = LeadingInt32(around_.main.ValueOf(section, key, byDefault));
    if (number < 1) return;
    claims_.push_back({Text(what) + std::to_string(number), {}, Text(section) + " " + Text(key)});
}

TextView PortCheck::Port::Value(TextView key, TextView byDefault) const {
    return TrimBlanks(lines.ValueOf(kGeneral, key, byDefault));
}

void PortCheck::Check(const Text& portName, TextView content, FileFindings& findings) {
    if (!CheckContent(content, findings)) return;
    const IniLines lines(content);
    CheckIniForm(lines, findings);
    CheckKeys(lines, {.known = around_.known, .isOfPort = true, .otherSections = OtherSections()}, findings);
    Port port{.name = portName, .lines = lines, .findings = findings};
    if (EqualsNoCase(port.Value("PortType"), "NONE")) return;
    CheckSets(port);
    CheckFieldMaps(port);
    CheckDc09Accounts(lines, findings);
    CheckDisable(port);
    if (!CheckKind(port) || !CheckPlace(port)) return;
    CheckReadKeys(port);
    CheckLine(port);
}

// A key that another kind of line reads looks right, and does nothing here.
void PortCheck::CheckReadKeys(const Port& port) {
    if (!around_.readsKey) return;
    const auto isRead = [&](TextView section, TextView key) {
        return around_.readsKey(port.type, port.format, section, key);
    };
    std::vector<TextView> read;
    for (const KnownSetting& known : around_.known.All()) {
        if (known.scope == SettingScope::Port && isRead(known.section, known.key)) read.push_back(known.key);
    }
    for (const IniLines::Section& section : port.lines.Sections()) {
        for (const IniLines::Entry* entry : port.lines.EntriesOf(section.name)) {
            const bool isKnown = around_.known.Find(true, section.name, entry->key) != nullptr;
            if (section.sameNameOn != 0 || !isKnown || isRead(section.name, entry->key)) continue;
            const TextView elsewhere = EqualsNoCase(section.name, kGeneral) ? kDc09 : kGeneral;
            if (around_.known.Find(true, elsewhere, entry->key) && isRead(elsewhere, entry->key)) {
                port.findings.Warning(entry->line, kTextOtherSection, {entry->key, elsewhere});
                continue;
            }
            port.findings.Warning(entry->line, kTextNotRead,
                                  {entry->key, UpperCase(port.Value("PortType")), NameOf(port.format)});
            const TextView nearest = NearestKey(entry->key, read);
            if (!nearest.empty()) port.findings.All().SuggestForLast(nearest);
        }
    }
}

bool PortCheck::CheckKind(Port& port) {
    if (port.lines.Find(kGeneral, "PortType") == nullptr) {
        port.findings.Error(0, kTextNeeded, {"PortType"});
        return false;
    }
    const TextView word = port.Value("PortType");
    const int number = LeadingInt32(port.Value("MessageFormat", "0"));
    const auto type = ParsePortType(word);
    const auto format = ParseMessageFormat(number);
    if (!type) {
        port.findings.Error(port.Line("PortType"), kTextUnknownType, {word, Joined(PortTypeWords())});
        const TextView nearest = NearestWord(word, PortTypeWords());
        if (!nearest.empty()) port.findings.All().SuggestForLast(nearest);
    }
    if (!format) {
        port.findings.Error(port.Line("MessageFormat"), kTextUnknownFormat,
                            {port.Value("MessageFormat"), KnownFormats()});
    }
    if (!type || !format) return false;
    port.type = *type;
    port.format = *format;
    if (GoTogether(*type, *format)) return true;
    const Text named = std::to_string(number) + " (" + Text(NameOf(*format)) + ")";
    port.findings.Error(port.Line("MessageFormat"), kTextNotTogether, {UpperCase(word), named});
    return false;
}

bool PortCheck::CheckPlace(const Port& port) {
    if (++ports_ > kMostPorts) {
        port.findings.Error(0, kTextTooMany, {std::to_string(kMostPorts)});
        return false;
    }
    if (++slots_[port.type] <= SlotLimit(port.type)) return true;
    port.findings.Error(0, kTextTooManyOfType,
                        {std::to_string(SlotLimit(port.type)), UpperCase(port.Value("PortType"))});
    return false;
}

void PortCheck::CheckLine(const Port& port) {
    switch (port.type) {
        case PortType::RS232:
            return CheckSerial(port);
        case PortType::FILE:
            return CheckFile(port);
        case PortType::HTTP:
            return CheckPolling(port);
        default:
            CheckNetwork(port);
    }
    if (port.type == PortType::POP3) CheckMail(port);
}

void PortCheck::CheckNetwork(const Port& port) {
    CheckNumber(port, kHighestPort);
    CheckAddress(port);
    if (NeedsHost(port.type) && IsNothing(port.Value("PortSetting")))
        port.findings.Error(port.Line("PortSetting"), kTextNeeded, {"PortSetting"});
    const int number = LeadingInt32(port.Value("PortNumber"));
    if (!IsSocket(port.type) || number < 1 || number > kHighestPort) return;
    const Text what = (port.type == PortType::UDP ? "UDP " : "TCP ") + std::to_string(number);
    Take(port, "PortNumber", {what, Text(port.Value("BindSocketToAddress")), port.name});
}

void PortCheck::CheckNumber(const Port& port, int most) {
    const int number = LeadingInt32(port.Value("PortNumber"));
    if (number >= 1 && number <= most) return;
    port.findings.Error(port.Line("PortNumber"), kTextNoPortNumber,
                        {port.Value("PortNumber"), std::to_string(most)});
}

void PortCheck::CheckAddress(const Port& port) {
    const TextView address = port.Value("BindSocketToAddress");
    if (address.empty() || port.type == PortType::TCPC) return;
    const int line = port.Line("BindSocketToAddress");
    // An address of the longer kind is left to the system.
    if (!IsAddress(address)) {
        if (address.find(':') != TextView::npos) return;
        return port.findings.Error(line, kTextNotUnderstood,
                                   {"BindSocketToAddress", address, "192.168.1.10"});
    }
    if (IsAlwaysThere(address) || std::ranges::count(around_.addresses, address) > 0) return;
    port.findings.Error(line, kTextNoInterface, {address});
}

void PortCheck::CheckSerial(const Port& port) {
    CheckNumber(port, kHighestLine);
    const int number = LeadingInt32(port.Value("PortNumber"));
    if (number < 1 || number > kHighestLine) return;
    const Text line = "COM" + std::to_string(number);
    const Text device = "/dev/ttyS" + std::to_string(number - 1);
    // One that SerialPorts names is looked for where it is named.
    if (!around_.main.Find(kSerialPorts, line) && !MayBeADevice(device, around_.rightsOf))
        port.findings.Error(port.Line("PortNumber"), kTextFileMissing, {line, device});
    const TextView setting = port.Value("PortSetting");
    if (!IsSerialSetting(setting))
        port.findings.Error(port.Line("PortSetting"), kTextNotUnderstood,
                            {"PortSetting", setting, "9600,N,8,1"});
    Take(port, "PortNumber", {line, {}, port.name});
}

void PortCheck::CheckFile(const Port& port) {
    const TextView path = port.Value("PortSetting");
    const int line = port.Line("PortSetting");
    if (path.substr(path.find_last_of("\\/") + 1).find('.') == TextView::npos)
        return port.findings.Error(line, kTextNotUnderstood, {"PortSetting", path, "Alarms.txt"});
    const FileRights folder = around_.rightsOf(FolderOf(path));
    if (!folder.isFolder) {
        port.findings.Error(line, kTextFileMissing, {"PortSetting", FolderOf(path)});
    } else if (!folder.mayWrite) {
        port.findings.Error(line, kTextNotWritable, {FolderOf(path)});
    }
    Take(port, "PortSetting", {UpperCase(path), {}, port.name});
}

void PortCheck::CheckMail(const Port& port) {
    for (const char* key : {"POP3User", "POP3Password"}) {
        if (port.Value(key).empty()) port.findings.Warning(port.Line(key), kTextNeeded, {key});
    }
    const TextView file = port.Value("POP3CAFile");
    if (!file.empty() && !around_.rightsOf(file).isThere)
        port.findings.Error(port.Line("POP3CAFile"), kTextFileMissing, {"POP3CAFile", file});
}

void PortCheck::CheckPolling(const Port& port) {
    const Text url = UpperCase(port.Value("PortSetting"));
    const bool isUrl = url.starts_with("HTTP://") || url.starts_with("HTTPS://");
    if (!isUrl)
        port.findings.Error(port.Line("PortSetting"), kTextNotUnderstood,
                            {"PortSetting", port.Value("PortSetting"), "http://192.168.1.10:8080/"});
    const TextView file = port.Value("HTTPCAFile");
    if (!file.empty() && !around_.rightsOf(file).isThere)
        port.findings.Error(port.Line("HTTPCAFile"), kTextFileMissing, {"HTTPCAFile", file});
    if (port.lines.EntriesOf(kReceivers).empty())
        port.findings.Warning(port.Line("PortSetting"), kTextNeeded, {"[VirtualReceivers]"});
}

void PortCheck::CheckDisable(const Port& port) {
    const TextView until = port.Value("PortDisable");
    if (until.empty() || WholeNumber(until) == 0 || ParseDateTime(until)) return;
    port.findings.Error(port.Line("PortDisable"), kTextNotUnderstood,
                        {"PortDisable", until, "2026-12-24 12:00:00"});
}

void PortCheck::CheckSets(const Port& port) {
    bool isAnyNamed = false;
    for (const IniLines::Entry* entry : port.lines.EntriesOf(kTranslate)) {
        isAnyNamed = isAnyNamed || !TrimBlanks(entry->value).empty();
        if (const auto protocol = ProtocolOfKey(entry->key)) {
            CheckSetList(port, *entry, *protocol);
        } else {
            port.findings.UnknownWord(entry->line, kTextUnknownKey, {entry->key, kTranslate},
                                      NearestWord(entry->key, ProtocolKeys()));
        }
    }
    const auto format = ParseMessageFormat(LeadingInt32(port.Value("MessageFormat", "0")));
    const bool needsNone =
        format == MessageFormat::RobofonExport || format == MessageFormat::TorvexConfirmationFile;
    if (!isAnyNamed && !needsNone) port.findings.Warning(port.lines.LineOf(kTranslate, ""), kTextNoSets);
}

void PortCheck::CheckSetList(const Port& port, const IniLines::Entry& entry, Protocol protocol) {
    bool isOver = false;
    for (const Text& piece : Split(entry.value, ',')) {
        const TextView name = TrimBlanks(piece);
        if (isOver && !name.empty()) return port.findings.Error(entry.line, kTextBehindEmpty);
        isOver = isOver || name.empty();
        if (isOver) continue;
        sets_[UpperCase(name)].push_back(protocol);
        if (IsSetName(name) && around_.isSetThere(name)) continue;
        Text file = IdCodeFileName(name);
        std::ranges::replace(file, '\\', '/');
        port.findings.Error(entry.line, kTextNoSetFile, {name, file});
    }
}

void PortCheck::CheckFieldMaps(const Port& port) {
    for (const Text& section : FieldMapSections()) {
        for (const IniLines::Entry* entry : port.lines.EntriesOf(section)) {
            const std::vector<TextView> keys = FieldMapKeys();
            const auto isThis = [entry](TextView key) { return EqualsNoCase(key, entry->key); };
            if (std::ranges::any_of(keys, isThis)) continue;
            port.findings.UnknownWord(entry->line, kTextUnknownKey, {entry->key, section},
                                      NearestWord(entry->key, keys));
        }
    }
}

void PortCheck::Take(const Port& port, TextView key, Claim claim) {
    const auto isTaken = [&claim](const Claim& other) {
        if (other.what != claim.what) return false;
        return IsEverywhere(other.address) || IsEverywhere(claim.address) || other.address == claim.address;
    };
    const auto taken = std::ranges::find_if(claims_, isTaken);
    if (taken != claims_.end()) port.findings.Error(port.Line(key), kTextTaken, {claim.what, taken->owner});
    claims_.push_back(std::move(claim));
}

bool MayBeADevice(TextView path, const std::function<FileRights(TextView path)>& rightsOf) {
    if (rightsOf(path).isThere) return true;
    return !path.starts_with("/dev/") && rightsOf(FolderOf(path)).isFolder;
}

void CheckSerialDevices(const IniLines& main, const std::function<FileRights(TextView path)>& rightsOf,
                        FileFindings& findings) {
    std::map<Text, Text> owners;
    for (const IniLines::Entry* entry : main.EntriesOf(kSerialPorts)) {
        const Text device(TrimBlanks(entry->value));
        if (device.empty()) {
            findings.Error(entry->line, kTextNeeded, {entry->key});
        } else if (!device.starts_with('/')) {
            findings.Error(entry->line, kTextNotUnderstood,
                           {entry->key, device, "/dev/serial/by-id/usb-FTDI_FT232R-if00-port0"});
        } else if (!MayBeADevice(device, rightsOf)) {
            findings.Error(entry->line, kTextFileMissing, {entry->key, device});
        } else if (const auto [owner, isNew] = owners.try_emplace(device, entry->key); !isNew) {
            findings.Error(entry->line, kTextTaken, {device, owner->second});
        }
    }
}

}  // namespace nordkeep
