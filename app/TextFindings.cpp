#include "app/TextFindings.h"

#include "app/MainFileCheck.h"
#include "app/settings/KnownSettings.h"
#include "console/setup/LineKinds.h"
#include "network/UsersCheck.h"
#include "ports/PortCheck.h"
#include "ports/PortList.h"
#include "translation/IdCodeFile.h"
#include "translation/ObjectForm.h"

namespace nordkeep {
namespace {

constexpr TextView kSettings = "Settings\\";
constexpr TextView kIdCode = ".IDCode";

bool EndsIn(TextView name, TextView ending) {
    return name.size() > ending.size() && EqualsNoCase(name.substr(name.size() - ending.size()), ending);
}

/// The name of a file in the folder Settings; empty for any other.
TextView NameOf(TextView path) {
    return EqualsNoCase(path.substr(0, kSettings.size()), kSettings) ? path.substr(kSettings.size())
                                                                     : TextView();
}

}  // namespace

void TextFindings::Begin(const Text& path, const Text& content) {
    objects_.reset();
    findings_.Take();
    path_ = path;
    content_ = content;
    const TextView name = NameOf(path_);
    isDone_ = name.empty() || content_.empty();
    if (isDone_ || !EndsIn(name, kIdCode)) return;
    const TextView set = name.substr(0, name.size() - kIdCode.size());
    objects_.emplace(content_, ground_.Of(set), FileFindings(findings_, path_));
}

bool TextFindings::Continue() {
    if (isDone_) return false;
    if (objects_ && objects_->Continue()) return true;
    FileFindings findings(findings_, path_);
    if (!objects_) CheckAtOnce(findings);
    isDone_ = true;
    return false;
}

std::vector<Finding> TextFindings::Take() {
    findings_.Sort();
    return findings_.Take();
}

// The settings of a client's own and those of its server are not the same; neither knows the other's machine.
void TextFindings::CheckAtOnce(FileFindings& findings) {
    const TextView name = NameOf(path_);
    const bool isClient = foundation_.CopyRole() == Role::Client;
    if (EndsIn(name, ".TypeCode")) return CheckTypeCodes(content_, findings);
    if (EndsIn(name, ".DataCode")) return CheckDataCodes(content_, findings);
    if (EqualsNoCase(name, "ObjectInfo.desc")) return CheckObjectForm(content_, findings);
    if (isClient) return;
    if (EqualsNoCase(name, "Users.INI")) return CheckUsers(content_, findings);
    if (EqualsNoCase(name, "Nordkeep.INI")) {
        const IniLines lines(content_);
        return MainFileCheck(lines, foundation_.DataFolder(), foundation_.ProgramFolder(), findings).Run();
    }
    if (MatchesMask(name, "Port*.ini")) CheckPort(Text(name.substr(0, name.find('.'))), findings);
}

/// The lines in front of it are looked at, too: two of them may not have the same number.
void TextFindings::CheckPort(const Text& name, FileFindings& findings) {
    const FileTree& folder = foundation_.DataFolder();
    const Text mainContent = ReadFile(folder.Resolve("Settings\\Nordkeep.INI")).value_or(Text());
    const IniLines main(mainContent);
    const auto isSetThere = [&folder](TextView set) {
        return StampOf(folder.Resolve(IdCodeFileName(set))).Exists();
    };
    const PortSurroundings around{
        .known = KnownSettings(),
        .main = main,
        .addresses = InterfaceAddresses(),
        .rightsOf = [&folder](TextView path) { return RightsOf(folder.ResolveSetting(path)); },
        .isSetThere = isSetThere,
        .readsKey = &LineReadsKey};
    PortCheck check(around);
    Findings ofOthers(foundation_.Texts());
    for (const Text& other : PortNames(folder)) {
        if (EqualsNoCase(other, name)) continue;
        const auto content = ReadFile(folder.Resolve("Settings\\" + other + ".ini"));
        FileFindings into(ofOthers, other);
        if (content) check.Check(other, *content, into);
    }
    check.Check(name, content_, findings);
}

}  // namespace nordkeep
