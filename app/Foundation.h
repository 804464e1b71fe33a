#pragma once

#include "app/PlatformParts.h"
#include "app/start/CommandLine.h"
#include "network/ClientSlots.h"
#include "network/NetworkSettings.h"
#include "network/NetworkTraffic.h"
#include "network/ServerLink.h"
#include "platform/FolderLock.h"
#include "runtime/Language.h"
#include "runtime/Settings.h"
#include "runtime/SysLog.h"
#include "runtime/TrafficLog.h"

#include <memory>
#include <optional>

namespace nordkeep {

/// What start-up settles before the rest of the program can exist: folders, settings, language and the role
/// of this copy.
class Foundation : private SettingsListener {
 public:
    Foundation(const PlatformParts& platform, const CommandLine& commandLine);
    Foundation(const Foundation&) = delete;
    Foundation& operator=(const Foundation&) = delete;

    /// Runs the steps in their order. None to go on, else the exit status with which the program ends
    /// quietly.
    std::optional<int> Prepare();

    const PlatformParts& Platform() const { return platform_; }
    const CommandLine& Switches() const { return commandLine_; }
    /// Where languages and templates are.
    const FileTree& ProgramFolder() const { return programFolder_; }
    /// Where the programs are that this one starts.
    const FileTree& ProgramsFolder() const { return programsFolder_; }
    const FileTree& DataFolder() const { return dataFolder_; }
    Settings& Files() { return settings_; }
    Language& Texts() { return language_; }
    SysLog& Log() { return log_; }
    TrafficLog& Traffic() { return trafficLog_; }
    Role CopyRole() const { return role_; }
    bool IsService() const { return commandLine_.runAsService; }
    const NetworkSettings& Network() const { return network_; }
    /// The connections of the clients; none on any copy but a server.
    ClientSlots* Clients() { return clients_.get(); }
    const ClientSlots* Clients() const { return clients_.get(); }
    /// The connection to the server; none on any copy but a client.
    ServerLink* Server() { return server_.get(); }
    const ServerLink* Server() const { return server_.get(); }

    /// Tells a failure that ends the start: a message and a line in the log.
    void TellFailure(const Text& text);

 private:
    using Outcome = std::optional<int>;
    struct Step {
        const char* name;
        Outcome (Foundation::*run)();
    };
    static const Step kSteps[];

    Outcome Delay();
    Outcome MakeSettings();
    Outcome LoadLanguage();
    Outcome RefuseSecondInstance();
    Outcome Uninstall();
    Outcome Install();
    Outcome ReadNetworkSettings();
    Outcome ChooseRole();
    Outcome MakeFolders();
    Outcome TestClientFolder();
    NetworkParts PartsOfNetwork();
    Outcome ListenForClients();
    Outcome ConnectToServer();

    void CannotBeRead(const NativePath& path, const Text& reason) override;
    void CanBeReadAgain(const NativePath& path) override;

    void WaitForFolder();
    void NoteDamagedSettings();
    bool ChooseLanguage();
    void AskForRole();
    void NoteForLog(const Text& text, LogKind kind) { notes_.push_back({{}, {}, kind, text}); }

    PlatformParts platform_;
    CommandLine commandLine_;
    FileTree programFolder_;
    FileTree programsFolder_;
    FileTree dataFolder_;
    Settings settings_;
    Language language_{};
    SysLog log_;
    TrafficLog trafficLog_;
    std::unique_ptr<FolderLock> lock_{};
    NetworkSettings network_{};
    Role role_ = Role::StandAlone;
    NetworkTraffic networkTraffic_;
    std::unique_ptr<ClientSlots> clients_{};
    std::unique_ptr<ServerLink> server_{};
    std::vector<LogRow> notes_{};  // for the log, once it has a folder
};

}  // namespace nordkeep
