#include "app/ServiceUnit.h"

#include "platform/Files.h"

#include <cstdlib>

namespace nordkeep {
namespace {

constexpr const char* kDescription = "Routes alarm events to Corvane Nordkeep clients";

std::string UnitPath() {
    const char* folder = std::getenv("NORDKEEP_UNIT_FOLDER");
    return std::string(folder && *folder ? folder : "/etc/systemd/system") + "/nordkeep.service";
}

/// A word of an ExecStart line: quoted, with the characters escaped that systemd would read otherwise.
std::string Quoted(const std::string& word) {
    std::string quoted = "\"";
    for (const char c : word) {
        if (c == '"' || c == '\\') quoted += '\\';
        if (c == '%' || c == '$') quoted += c;
        quoted += c;
    }
    return quoted + "\"";
}

}  // namespace

std::string ServiceUnitText(const std::string& program, const std::string& dataFolder) {
    std::string command = Quoted(program) + " /RunAsService";
    if (!dataFolder.empty()) command += " " + Quoted("/PATH:" + dataFolder);
    const std::string folder = dataFolder.empty() ? program.substr(0, program.rfind('/')) : dataFolder;
    return std::string("[Unit]\nDescription=") + kDescription +
           "\nAfter=network.target\n"
           "\n[Service]\nType=simple\nExecStart=" +
           command +
           "\nRestart=on-failure\nRestartSec=2\nTimeoutStopSec=20\n"
           "ProtectSystem=strict\nReadWritePaths=" +
           Quoted(folder) +
           "\nNoNewPrivileges=yes\nPrivateTmp=yes\nProtectKernelModules=yes\nProtectKernelTunables=yes\n"
           "ProtectControlGroups=yes\nRestrictSUIDSGID=yes\nSupplementaryGroups=dialout lp\n"
           "\n[Install]\nWantedBy=multi-user.target\n";
}

bool InstallService(const std::string& program, const std::string& dataFolder) {
    return WriteFile(UnitPath(), ServiceUnitText(program, dataFolder));
}

bool UninstallService() {
    return RemoveFile(UnitPath());
}

}  // namespace nordkeep
