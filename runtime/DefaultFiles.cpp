#include "runtime/DefaultFiles.h"

#include "runtime/AlarmTones.h"

#include <array>

namespace nordkeep {
namespace {

constexpr TextView kMainFile = "Settings\\Nordkeep.INI";

struct Template {
    TextView extension;
    TextView target;
};
constexpr std::array<Template, 5> kTemplates = {{{"Default_INI", "INI"},
                                                 {"Default_desc", "desc"},
                                                 {"Default_TypeCode", "TypeCode"},
                                                 {"Default_IDCode", "IDCode"},
                                                 {"Default_DataCode", "DataCode"}}};

void RenameIfThere(const FileTree& folder, TextView from, TextView to) {
    const NativePath source = folder.Resolve(from);
    if (StampOf(source).Exists()) RenameFile(source, folder.Resolve(to));
}

void RenameSettings(const FileTree& dataFolder) {
    RenameIfThere(dataFolder, "Settings\\Nordset.ini", kMainFile);
    RenameIfThere(dataFolder, "Settings\\Nordset.desc", "Settings\\Nordkeep.desc");
}

}  // namespace

void CopyDefaultFiles(const FileTree& programFolder, TextView templateExtension, const FileTree& dataFolder,
                      TextView targetExtension) {
    for (const Text& name : ListFiles(programFolder.Root())) {
        if (!MatchesMask(name, "*." + Text(templateExtension))) continue;
        const Text stem = name.substr(0, name.size() - templateExtension.size());
        const NativePath target = dataFolder.Resolve("Settings\\" + stem + Text(targetExtension));
        if (StampOf(target).Exists()) continue;
        const auto content = ReadFile(programFolder.Resolve(name));
        // Settings are to keep passwords, which are nobody else's.
        const bool isPrivate = EqualsNoCase(targetExtension, "INI");
        if (content) isPrivate ? ReplacePrivateFile(target, *content) : ReplaceFile(target, *content);
    }
}

void CarryOldNamesForward(const FileTree& dataFolder) {
    RenameSettings(dataFolder);
    const Text templates = "Settings\\Templates\\";
    for (const Text& name : ListFiles(dataFolder.Resolve(templates))) {
        if (!MatchesMask(name, "Nordset_*.*")) continue;
        RenameIfThere(dataFolder, templates + name, templates + "Nordkeep" + name.substr(name.find('_')));
    }
}

void PrepareSettingsFolder(const FileTree& programFolder, const FileTree& dataFolder) {
    MakeFolder(dataFolder.Resolve("Settings"));
    CarryOldNamesForward(dataFolder);
    if (StampOf(dataFolder.Resolve(kMainFile)).Exists()) return;
    for (const Template& row : kTemplates)
        CopyDefaultFiles(programFolder, row.extension, dataFolder, row.target);
    WriteAlarmTones(dataFolder);
    // A template may bring an old name of its own.
    RenameSettings(dataFolder);
}

}  // namespace nordkeep
