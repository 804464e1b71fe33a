#include "app/start/ServiceUnit.h"

#include "app/start/ServiceUnitTemplate.h"
#include "platform/ChildProcess.h"
#include "platform/EventLoop.h"
#include "platform/FileOwner.h"
#include "platform/Files.h"

#include <algorithm>
#include <cstdlib>
#include <initializer_list>

namespace nordkeep {
namespace {

constexpr std::string_view kStateFolder = "/var/lib/";
// Where the service manager keeps the state of services that run under an account of its own making.
constexpr std::string_view kPrivateStateFolder = "/var/lib/private/";
constexpr const char* kServiceAccount = "nordkeep";

std::string UnitPath() {
    const char* folder = std::getenv("NORDKEEP_UNIT_FOLDER");
    return std::string(folder && *folder ? folder : "/etc/systemd/system") + "/nordkeep.service";
}

/// A word of a unit file, quoted. A line that is run reads "$" as a variable, others do not.
std::string Quoted(const std::string& word, bool isCommand) {
    std::string quoted = "\"";
    for (const char c : word) {
        if (c == '"' || c == '\\') quoted += '\\';
        if (c == '%' || (isCommand && c == '$')) quoted += c;
        quoted += c;
    }
    return quoted + "\"";
}

bool IsBelowAny(std::initializer_list<std::string> paths, std::initializer_list<std::string_view> folders) {
    return std::ranges::any_of(paths, [&](const std::string& path) {
        return std::ranges::any_of(folders,
                                   [&](std::string_view folder) { return path.starts_with(folder); });
    });
}

/// Under whose account the service runs. A data folder among the machine's state folders that is nobody's is
/// the service manager's to hand out; any other is served by its owner.
std::string AccountLines(const std::string& folder) {
    const FileOwner owner = OwnerOf(folder);
    const bool isPrivate = folder.starts_with(kPrivateStateFolder);
    if (isPrivate || (owner.isRoot && folder.starts_with(kStateFolder))) {
        const std::string name = folder.substr(isPrivate ? kPrivateStateFolder.size() : kStateFolder.size());
        return std::string("DynamicUser=yes\nUser=")
            .append(kServiceAccount)
            .append("\nStateDirectory=")
            .append(Quoted(name, false))
            .append("\nStateDirectoryMode=0750");
    }
    return "User=" + owner.user + "\nGroup=" + owner.group + "\nStateDirectory=" + kServiceAccount +
           "\nReadWritePaths=" + Quoted(folder, false);
}

/// Homes and folders for temporary files are hidden, unless the program or its data lie there.
std::string HidingLines(const std::string& program, const std::string& folder) {
    const bool usesHome = IsBelowAny({program, folder}, {"/home/", "/root/", "/run/user/"});
    const bool usesTemporary = IsBelowAny({program, folder}, {"/tmp/", "/var/tmp/"});
    return std::string("ProtectHome=") + (usesHome ? "read-only" : "yes") +
           "\nPrivateTmp=" + (usesTemporary ? "no" : "yes");
}

/// The name of a state folder that outlives the account which has it at the moment.
std::string PublicName(const std::string& folder) {
    if (!folder.starts_with(kPrivateStateFolder)) return folder;
    return std::string(kStateFolder) + folder.substr(kPrivateStateFolder.size());
}

std::string CommandLineOf(const std::string& program, const std::string& dataFolder) {
    std::string command = Quoted(program, true) + " /RunAsService";
    if (dataFolder.empty()) return command;
    return command + " " + Quoted("/PATH:" + PublicName(dataFolder), true);
}

void Fill(std::string& text, std::string_view mark, const std::string& value) {
    text.replace(text.find(mark), mark.size(), value);
}

/// Lets the service manager read its units anew.
bool ReloadServiceManager(EventLoop& loop) {
    constexpr int kLookAgainMs = 20;
    ChildProcess systemctl;
    if (!systemctl.Start("systemctl", {"daemon-reload"})) return false;
    while (systemctl.IsRunning()) loop.SleepAndPump(kLookAgainMs);
    return systemctl.HasSucceeded();
}

/// What is said behind a change of the unit.
std::string Report(const std::string& done, EventLoop& loop) {
    std::string text = std::string(kServiceName) + done;
    if (ReloadServiceManager(loop)) return text;
    return text + "\nsystemd could not be told: run \"systemctl daemon-reload\" where it runs";
}

}  // namespace

std::string ServiceUnitText(const std::string& program, const std::string& dataFolder) {
    const std::string folder = dataFolder.empty() ? program.substr(0, program.rfind('/')) : dataFolder;
    std::string text(kServiceUnitTemplate);
    Fill(text, "@COMMAND@", CommandLineOf(program, dataFolder));
    Fill(text, "@ACCOUNT@", AccountLines(folder));
    Fill(text, "@HIDING@", HidingLines(program, folder));
    return text;
}

ServiceChange InstallService(const std::string& program, const std::string& dataFolder, EventLoop& loop) {
    const std::string path = UnitPath();
    if (WriteFile(path, ServiceUnitText(program, dataFolder)))
        return {true, Report(" service installation succeeded", loop)};
    return {false,
            std::string(kServiceName).append(" failed to install as service: cannot write ").append(path)};
}

ServiceChange UninstallService(EventLoop& loop) {
    const std::string path = UnitPath();
    if (RemoveFile(path)) return {true, Report(" service uninstalled successfully", loop)};
    return {false,
            std::string(kServiceName).append(" failed to uninstall as service: cannot remove ").append(path)};
}

}  // namespace nordkeep
