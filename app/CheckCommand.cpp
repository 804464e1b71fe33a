#include "app/CheckCommand.h"

#include "app/CentreCheck.h"
#include "app/start/ProgramFolders.h"
#include "platform/ProgramFile.h"
#include "runtime/Language.h"
#include "runtime/Settings.h"

#include <cstdio>

namespace nordkeep {
namespace {

constexpr int kNoErrors = 0;
constexpr int kErrors = 1;
constexpr int kNotChecked = 2;

/// The language of the centre where it can be read, else any.
bool LoadLanguage(Language& language, const FileTree& programFolder, const FileTree& dataFolder) {
    const Settings settings(dataFolder);
    if (language.Load(programFolder, settings.ReadIni("General", "Language", ""))) return true;
    const std::vector<LanguageChoice> choices = ListLanguages(programFolder);
    return !choices.empty() && language.Load(programFolder, LanguageNumber(choices.front().number));
}

int Refuse(const std::string& reason) {
    std::fprintf(stderr, "nordkeep: %s\n", reason.c_str());
    return kNotChecked;
}

void Print(const Findings& findings) {
    for (const Finding& finding : findings.All()) {
        std::printf("%s:%d: %s: %s\n", ToUtf8(finding.file).c_str(), finding.line,
                    finding.severity == Severity::Error ? "error" : "warning",
                    ToUtf8(finding.sentence).c_str());
    }
    std::printf("%zu errors, %zu warnings\n", findings.Errors(), findings.Warnings());
}

}  // namespace

int RunCheckCommand(const CommandLine& commandLine) {
    const NativePath home = ProgramFilesFolder(ProgramFile());
    const NativePath wanted = commandLine.path.value_or("").empty()
                                  ? DefaultDataFolder(ProgramFile(), commandLine.runAsService)
                                  : *commandLine.path;
    const auto folder = CanonicalPath(wanted);
    if (!folder || !FolderExists(*folder)) return Refuse("cannot use the folder \"" + wanted + "\"");
    const FileTree programFolder(home);
    const FileTree dataFolder(*folder);
    Language language;
    if (!LoadLanguage(language, programFolder, dataFolder)) return Refuse("there is no language file");
    CentreCheck check(dataFolder, programFolder, language);
    while (check.Continue()) {
    }
    Print(check.Result());
    return check.Result().Errors() == 0 ? kNoErrors : kErrors;
}

bool IsServiceFolderUsable(const CommandLine& commandLine) {
    if (!commandLine.runAsService || commandLine.path.value_or("").empty()) return true;
    MakeFolder(*commandLine.path);
    const auto folder = CanonicalPath(*commandLine.path);
    if (folder && FolderExists(*folder)) return true;
    std::fprintf(stderr, "nordkeep: cannot use the folder \"%s\", the service does not start\n",
                 commandLine.path->c_str());
    return false;
}

}  // namespace nordkeep
