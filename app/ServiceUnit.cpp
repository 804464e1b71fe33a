#include "app/ServiceUnit.h"

#include "platform/FileOwner.h"
#include "platform/Files.h"

#include <algorithm>
#include <cstdlib>
#include <initializer_list>

namespace nordkeep {
namespace {

constexpr const char* kDescription = "Routes alarm events to Corvane Nordkeep clients";
constexpr std::string_view kStateFolder = "/var/lib/";
// Where the service manager keeps the state of services that run under an account of its own making.
constexpr std::string_view kPrivateStateFolder = "/var/lib/private/";
constexpr const char* kServiceAccount = "nordkeep";

// Device groups are looked up when the service starts, so their drivers are loaded before.
constexpr const char* kDrivers = "modprobe@usbserial.service modprobe@cdc_acm.service modprobe@lp.service";

// The service needs its data folder, the network, serial lines and printers, and nothing else of the machine.
constexpr const char* kConfinement = R"(CapabilityBoundingSet=
AmbientCapabilities=
NoNewPrivileges=yes
ProtectSystem=strict
PrivateMounts=yes
ProtectClock=yes
ProtectHostname=yes
ProtectKernelLogs=yes
ProtectKernelModules=yes
ProtectKernelTunables=yes
ProtectControlGroups=yes
ProtectProc=invisible
ProcSubset=pid
RestrictAddressFamilies=AF_UNIX AF_INET AF_INET6
RestrictNamespaces=yes
RestrictRealtime=yes
RestrictSUIDSGID=yes
LockPersonality=yes
MemoryDenyWriteExecute=yes
RemoveIPC=yes
KeyringMode=private
UMask=0027
SystemCallArchitectures=native
SystemCallFilter=@system-service
SystemCallFilter=~@privileged @resources
SystemCallErrorNumber=EPERM
DevicePolicy=closed
DeviceAllow=char-tty?* rw
DeviceAllow=char-lp rw
DeviceAllow=char-usb rw
)";

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
        return std::string("DynamicUser=yes\nUser=") + kServiceAccount +
               "\nStateDirectory=" + Quoted(name, false) + "\nStateDirectoryMode=0750\n";
    }
    return "User=" + owner.user + "\nGroup=" + owner.group + "\nStateDirectory=" + kServiceAccount +
           "\nReadWritePaths=" + Quoted(folder, false) + "\n";
}

/// Homes and folders for temporary files are hidden, unless the program or its data lie there.
std::string HidingLines(const std::string& program, const std::string& folder) {
    const bool usesHome = IsBelowAny({program, folder}, {"/home/", "/root/", "/run/user/"});
    const bool usesTemporary = IsBelowAny({program, folder}, {"/tmp/", "/var/tmp/"});
    return std::string("ProtectHome=") + (usesHome ? "read-only" : "yes") +
           "\nPrivateTmp=" + (usesTemporary ? "no" : "yes") + "\n";
}

/// The name of a state folder that outlives the account which has it at the moment.
std::string PublicName(const std::string& folder) {
    if (!folder.starts_with(kPrivateStateFolder)) return folder;
    return std::string(kStateFolder) + folder.substr(kPrivateStateFolder.size());
}

std::string CommandLineOf(const std::string& program, const std::string& dataFolder) {
    const std::string command = Quoted(program, true) + " /RunAsService";
    if (dataFolder.empty()) return command;
    return command + " " + Quoted("/PATH:" + PublicName(dataFolder), true);
}

}  // namespace

std::string ServiceUnitText(const std::string& program, const std::string& dataFolder) {
    const std::string folder = dataFolder.empty() ? program.substr(0, program.rfind('/')) : dataFolder;
    return std::string("[Unit]\nDescription=") + kDescription + "\nWants=" + kDrivers +
           "\nAfter=network.target " + kDrivers + "\nStartLimitIntervalSec=0\n" +
           "\n[Service]\nType=notify\nExecStart=" + CommandLineOf(program, dataFolder) +
           "\nRestart=on-failure\nRestartSec=2\nTimeoutStartSec=600\nTimeoutStopSec=20\nWatchdogSec=60\n" +
           AccountLines(folder) + "SupplementaryGroups=dialout lp\n" + HidingLines(program, folder) +
           kConfinement + "\n[Install]\nWantedBy=multi-user.target\n";
}

bool InstallService(const std::string& program, const std::string& dataFolder) {
    return WriteFile(UnitPath(), ServiceUnitText(program, dataFolder));
}

bool UninstallService() {
    return RemoveFile(UnitPath());
}

}  // namespace nordkeep
