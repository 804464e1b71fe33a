#include "app/MainFileCheck.h"

#include "app/settings/KnownSettings.h"
#include "console/lists/ListColumns.h"
#include "pipeline/ForwarderCheck.h"
#include "ports/PortCheck.h"
#include "runtime/Fields.h"
#include "store/TemplateCheck.h"

#include <algorithm>

namespace nordkeep {
namespace {

constexpr int kTextOutOfRange = 3802;
constexpr int kTextKeyOpen = 5248;
constexpr const char* kGeneral = "General";

/// Numbers that outside their range are set to something else than its end.
struct OddNumber {
    const char* key;
    int low;
    int high;
    int used;
};
constexpr OddNumber kOddNumbers[] = {
    {"AutoAckResetEvents", 0, 4, 0},
    {"SystemTimerInterval", 10, 65535, 100},
};

/// A file that an encrypted connection needs.
struct CertificateKey {
    const char* section;
    const char* key;
};
constexpr CertificateKey kCertificateKeys[] = {
    {"NetWork", "TlsCAFile"},      {"NetWork", "TlsCertificate"}, {"NetWork", "TlsKey"},
    {"Status", "TlsCertificate"},  {"Status", "TlsKey"},          {"Mqtt", "CAFile"},
    {"Mqtt", "ClientCertificate"}, {"Mqtt", "ClientKey"},
};

bool IsColor(TextView text) {
    const TextView digits = TrimBlanks(text);
    return digits.size() == 6 && std::ranges::all_of(digits, [](char c) { return HexDigit(c) >= 0; });
}

}  // namespace

void MainFileCheck::Run() {
    CheckIniForm(lines_, findings_);
    CheckKeys(lines_, {.known = KnownSettings()}, findings_);
    CheckLanguage();
    CheckColors();
    CheckOddNumbers();
    CheckFiles();
    CheckCertificates();
    CheckDevices();
    CheckTemplates(lines_, findings_);
    CheckForwarders(lines_, findings_);
    for (const TextView list : {kUnackedSection, kAckedSection}) CheckColumns(lines_, list, findings_);
}

void MainFileCheck::CheckLanguage() {
    const Text number = Value("Language");
    if (number.empty()) return;
    const Text file = "NK_Lang." + number;
    if (IsSafeComponent(file) && StampOf(programFolder_.Resolve(file)).Exists()) return;
    findings_.Error(LineOf("Language"), kTextFileMissing, {"Language", file});
}

void MainFileCheck::CheckColors() {
    for (const IniLines::Entry* entry : lines_.EntriesOf(kGeneral)) {
        if (!EqualsNoCase(entry->key.substr(0, 11), "ColorState_")) continue;
        const Text pair(TrimBlanks(entry->value));
        if (pair.empty() || (IsColor(GetField(pair, 0, ";")) && IsColor(GetField(pair, 1, ";")))) continue;
        findings_.Error(entry->line, kTextNotUnderstood, {entry->key, pair, "8C1D00;FFFFFF"});
    }
}

void MainFileCheck::CheckOddNumbers() {
    for (const OddNumber& odd : kOddNumbers) {
        const auto number = WholeNumber(Value(odd.key));
        if (!number || (*number >= odd.low && *number <= odd.high)) continue;
        findings_.Warning(
            LineOf(odd.key), kTextOutOfRange,
            {odd.key, std::to_string(odd.low), std::to_string(odd.high), std::to_string(odd.used)});
    }
}

void MainFileCheck::CheckFiles() {
    const int sound = LeadingInt32(Value("AlarmSound"));
    if (sound == 2 || sound == 3) {
        CheckFile("AlarmSoundFile", Value("AlarmSoundFile"));
        for (const char* key : {"AlarmSoundFile1", "AlarmSoundFile2", "AlarmSoundFile3"}) {
            if (const Text file = Text(TrimBlanks(Value(key))); !file.empty()) CheckFile(key, file);
        }
    }
    for (const char* key : {"AlarmPictures", "SpeechPictures"}) {
        for (const Text& piece : Split(Value(key), ',')) {
            if (TrimBlanks(piece).empty()) break;
            CheckFile(key, TrimBlanks(piece));
        }
    }
    const TextView folders = lines_.ValueOf("NetWork", "RemoteFileFolders");
    for (const Text& piece : Split(folders, ';')) {
        const TextView folder = TrimBlanks(piece);
        if (!folder.empty() && !RightsOf(dataFolder_.ResolveSetting(folder)).isFolder)
            findings_.Error(lines_.LineOf("NetWork", "RemoteFileFolders"), kTextFileMissing,
                            {"RemoteFileFolders", folder});
    }
}

void MainFileCheck::CheckFile(TextView key, TextView path, TextView section) {
    const int line = lines_.LineOf(section, key);
    if (path.empty()) return findings_.Error(line, kTextNeeded, {key});
    if (!RightsOf(dataFolder_.ResolveSetting(path)).isThere)
        findings_.Error(line, kTextFileMissing, {key, path});
}

void MainFileCheck::CheckCertificates() {
    const bool isLinkSecured = LeadingInt32(lines_.ValueOf("NetWork", "Tls")) != 0;
    for (const CertificateKey& file : kCertificateKeys) {
        const TextView path = TrimBlanks(lines_.ValueOf(file.section, file.key));
        const bool isNeeded = isLinkSecured && TextView(file.section) == "NetWork";
        if (path.empty() && !isNeeded) continue;
        CheckFile(file.key, path, file.section);
        const bool isKey = TextView(file.key).ends_with("Key");
        if (isKey && RightsOf(dataFolder_.ResolveSetting(path)).mayOthersRead)
            findings_.Warning(lines_.LineOf(file.section, file.key), kTextKeyOpen, {path});
    }
}

void MainFileCheck::CheckDevices() {
    CheckSerialDevices(
        lines_, [this](TextView path) { return RightsOf(dataFolder_.ResolveSetting(path)); }, findings_);
    const int relay = LeadingInt32(Value("RelayPort"));
    const int printer = LeadingInt32(Value("PrinterPort"));
    const Text com = "COM" + std::to_string(relay);
    const Text lpt = "LPT" + std::to_string(printer);
    // A line that SerialPorts names is looked for where it is named.
    if (relay > 0 && !lines_.Find("SerialPorts", com))
        CheckDevice("RelayPort", com, "/dev/ttyS" + std::to_string(relay - 1));
    if (printer > 0)
        CheckDevice("PrinterPort", lpt,
                    lines_.ValueOf("PrinterPorts", lpt, "/dev/lp" + std::to_string(printer - 1)));
}

void MainFileCheck::CheckDevice(TextView key, TextView line, TextView device) {
    const auto rightsOf = [this](TextView path) { return RightsOf(dataFolder_.ResolveSetting(path)); };
    if (!MayBeADevice(device, rightsOf)) findings_.Error(LineOf(key), kTextFileMissing, {line, device});
}

}  // namespace nordkeep
