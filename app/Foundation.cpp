#include "app/Foundation.h"

#include "app/start/ProgramFolders.h"
#include "app/start/ServiceUnit.h"
#include "network/ClientSession.h"
#include "runtime/DefaultFiles.h"

#include <algorithm>
#include <cstdio>

namespace nordkeep {
namespace {

constexpr int kTextAlreadyRunning = 1002;
constexpr int kTextCannotWriteTemp = 1063;
constexpr int kTextServerQuestion = 1082;
constexpr int kTextClientQuestion = 1083;
constexpr int kTextCannotListen = 3514;
constexpr int kTextLanguageTaken = 3606;
constexpr int kTextFolderInUse = 3607;
constexpr int kTextCannotWrite = 3609;
constexpr int kTextFolderFree = 3774;
constexpr int kTextUnreadable = 3775;
constexpr int kTextReadable = 3776;

constexpr int kTextDamaged = 3619;

constexpr const char* kSettingsMasks[] = {"*.ini", "*.IDCode", "*.TypeCode", "*.DataCode"};

constexpr int kStandbyMs = 500;
constexpr int kSuccess = 0;
constexpr int kFailure = 1;

NativePath FolderOf(const NativePath& file) {
    return file.substr(0, file.rfind('/'));
}

/// The folder that /PATH: names, made when missing; the default when it cannot be had.
NativePath DataFolderOf(const CommandLine& commandLine, const NativePath& byDefault) {
    const bool isTold = commandLine.path && !commandLine.path->empty();
    const NativePath wanted = isTold ? *commandLine.path : byDefault;
    MakeFolder(wanted);
    if (const auto folder = CanonicalPath(wanted); folder && FolderExists(*folder)) return *folder;
    if (!isTold) return byDefault;
    std::fprintf(stderr, "nordkeep: cannot use the folder \"%s\", using \"%s\"\n", wanted.c_str(),
                 byDefault.c_str());
    return DataFolderOf({}, byDefault);
}

/// Whether the start is that of a service, or sets one up.
bool IsForService(const CommandLine& commandLine) {
    return commandLine.runAsService || commandLine.install || commandLine.uninstall;
}

void Print(const std::string& text) {
    std::printf("%s\n", text.c_str());
    std::fflush(stdout);
}

}  // namespace

const Foundation::Step Foundation::kSteps[] = {
    {"delay", &Foundation::Delay},
    {"settings folder", &Foundation::MakeSettings},
    {"language", &Foundation::LoadLanguage},
    {"second instance", &Foundation::RefuseSecondInstance},
    {"uninstall the service", &Foundation::Uninstall},
    {"install the service", &Foundation::Install},
    {"network settings", &Foundation::ReadNetworkSettings},
    {"role", &Foundation::ChooseRole},
    {"folders", &Foundation::MakeFolders},
    {"client's folder", &Foundation::TestClientFolder},
    // Before anything of the centre exists, so that a second server on the port ends here.
    {"clients", &Foundation::ListenForClients},
    {"client's connection", &Foundation::ConnectToServer},
};

Foundation::Foundation(const PlatformParts& platform, const CommandLine& commandLine)
    : platform_(platform),
      commandLine_(commandLine),
      programFolder_(ProgramFilesFolder(platform.programFile)),
      programsFolder_(platform.programFile.substr(0, platform.programFile.rfind('/'))),
      dataFolder_(
          DataFolderOf(commandLine, DefaultDataFolder(platform.programFile, IsForService(commandLine)))),
      settings_(dataFolder_),
      log_(dataFolder_, platform.clock),
      trafficLog_(dataFolder_, platform.clock),
      networkTraffic_(dataFolder_, platform.clock) {
    settings_.SetListener(this);
}

void Foundation::CannotBeRead(const NativePath& path, const Text& reason) {
    const Text text = language_.GetLanguageText(kTextUnreadable) + FromUtf8(path) + " (" + reason + ")";
    log_.WriteSysLog(text, LogKind::Failure);
}

void Foundation::CanBeReadAgain(const NativePath& path) {
    log_.WriteSysLog(language_.GetLanguageText(kTextReadable) + FromUtf8(path), LogKind::Information);
}

std::optional<int> Foundation::Prepare() {
    for (const Step& step : kSteps) {
        if (const Outcome outcome = (this->*step.run)()) return outcome;
    }
    return std::nullopt;
}

void Foundation::TellFailure(const Text& text) {
    log_.WriteSysLog(text, LogKind::Failure);
    platform_.dialogs.ShowMessage(text);
}

Foundation::Outcome Foundation::Delay() {
    if (commandLine_.delaySeconds > 0) platform_.loop.SleepAndPump(commandLine_.delaySeconds * 1000);
    return std::nullopt;
}

Foundation::Outcome Foundation::MakeSettings() {
    PrepareSettingsFolder(programFolder_, dataFolder_);
    return std::nullopt;
}

Foundation::Outcome Foundation::LoadLanguage() {
    if (language_.Load(programFolder_, settings_.ReadIni("General", "Language", ""))) return std::nullopt;
    if (ChooseLanguage()) return std::nullopt;
    TellFailure("No language file NK_Lang.NNN can be read in the program folder " +
                FromUtf8(programFolder_.Root()));
    return kFailure;
}

// Without a screen the first language there is counts as chosen, so that a service with a lost settings file
// still receives alarms; it is not written down as anybody's choice.
bool Foundation::ChooseLanguage() {
    const std::vector<LanguageChoice> choices = ListLanguages(programFolder_);
    if (platform_.hasScreen && !IsService()) {
        const auto chosen = platform_.dialogs.ChooseLanguage(choices);
        if (!chosen) return false;
        settings_.WriteIni("General", "Language", LanguageNumber(*chosen));
        return language_.Load(programFolder_, LanguageNumber(*chosen));
    }
    if (choices.empty() || !language_.Load(programFolder_, LanguageNumber(choices.front().number)))
        return false;
    NoteForLog(language_.GetLanguageText(kTextLanguageTaken) + choices.front().name, LogKind::Failure);
    return true;
}

Foundation::Outcome Foundation::RefuseSecondInstance() {
    const bool isShared = IsTrue(settings_.ReadIni("General", "IgnoreMultipleInstances", "0"));
    lock_ = std::make_unique<FolderLock>(dataFolder_.Root());
    if (isShared || lock_->Result() != FolderLock::Outcome::HeldByAnother) return std::nullopt;
    if (IsService()) {
        WaitForFolder();
        return std::nullopt;
    }
    platform_.dialogs.ShowMessage(language_.GetLanguageText(kTextAlreadyRunning));
    return kFailure;
}

// The second of two services stands by. It has loaded nothing yet that could be out of date when its turn
// comes.
void Foundation::WaitForFolder() {
    const Text text = language_.GetLanguageText(kTextFolderInUse);
    log_.WriteSysLog(text, LogKind::Failure);
    platform_.serviceManager.Tell("READY=1\nSTATUS=" + ToUtf8(text) + "\n");
    while (lock_->Result() == FolderLock::Outcome::HeldByAnother) {
        platform_.loop.SleepAndPump(kStandbyMs);
        platform_.serviceManager.Tell("WATCHDOG=1\n");
        lock_ = std::make_unique<FolderLock>(dataFolder_.Root());
    }
    log_.WriteSysLog(language_.GetLanguageText(kTextFolderFree), LogKind::Information);
}

Foundation::Outcome Foundation::Uninstall() {
    if (!commandLine_.uninstall) return std::nullopt;
    const ServiceChange change = UninstallService(platform_.loop);
    Print(change.report);
    return change.isDone ? kSuccess : kFailure;
}

Foundation::Outcome Foundation::Install() {
    if (!commandLine_.install) return std::nullopt;
    // A program in a folder of its own is told no data folder: it finds itself.
    const bool isOwn = dataFolder_.Root() == FolderOf(platform_.programFile);
    const ServiceChange change =
        InstallService(platform_.programFile, isOwn ? "" : dataFolder_.Root(), platform_.loop);
    Print(change.report);
    return change.isDone ? kSuccess : kFailure;
}

Foundation::Outcome Foundation::ReadNetworkSettings() {
    network_ = LoadNetworkSettings(settings_);
    return std::nullopt;
}

Foundation::Outcome Foundation::ChooseRole() {
    const bool canBoth = !network_.ServerAddress.empty() && !network_.ClientAddresses.empty();
    if (canBoth && network_.AskForNetworkModeAtStartup && !IsService()) {
        AskForRole();
    } else if (!network_.ServerAddress.empty() && !IsService()) {
        role_ = Role::Client;
    } else if (!network_.ClientAddresses.empty()) {
        role_ = Role::Server;
    }
    log_.SetRole(role_);
    return std::nullopt;
}

void Foundation::AskForRole() {
    if (platform_.dialogs.AskYesNo(language_.GetLanguageText(kTextServerQuestion))) {
        role_ = Role::Server;
        network_.ServerAddress.clear();
    } else if (platform_.dialogs.AskYesNo(language_.GetLanguageText(kTextClientQuestion))) {
        role_ = Role::Client;
        network_.ClientAddresses.clear();
    } else {
        network_.ServerAddress.clear();
        network_.ClientAddresses.clear();
    }
}

Foundation::Outcome Foundation::MakeFolders() {
    static constexpr const char* kOfClient[] = {"LogFiles_Client", "AlarmFiles_Client", "Settings\\Temp"};
    static constexpr const char* kOfOthers[] = {"Data",        "LogFiles", "AlarmFiles",
                                                "Information", "Comments", "Maps"};
    const auto make = [this](const char* folder) { MakeFolder(dataFolder_.Resolve(folder)); };
    if (role_ == Role::Client) {
        for (const char* folder : kOfClient) make(folder);
    } else {
        for (const char* folder : kOfOthers) make(folder);
    }
    NoteDamagedSettings();
    for (const LogRow& note : notes_) log_.WriteSysLog(note.text, note.kind);
    notes_.clear();
    const NativePath probe = dataFolder_.Resolve("Settings\\Nordkeep.Test.$$$");
    if (!WriteFile(probe, "")) {
        log_.WriteSysLog(language_.GetLanguageText(kTextCannotWrite) + FromUtf8(dataFolder_.Root()),
                         LogKind::Failure);
    }
    RemoveFile(probe);
    return std::nullopt;
}

// What a power cut leaves of a file: nothing, or nothing but zeros where text should be.
void Foundation::NoteDamagedSettings() {
    for (const Text& name : ListFiles(dataFolder_.Resolve("Settings"))) {
        const auto isOne = [&](const char* mask) { return MatchesMask(name, mask); };
        if (std::ranges::none_of(kSettingsMasks, isOne)) continue;
        const auto content = ReadFile(dataFolder_.Resolve("Settings\\" + name));
        if (content && !content->empty() && content->find('\0') == Text::npos) continue;
        NoteForLog(language_.GetLanguageText(kTextDamaged) + name, LogKind::Failure);
    }
}

Foundation::Outcome Foundation::TestClientFolder() {
    if (role_ != Role::Client) return std::nullopt;
    const NativePath probe = dataFolder_.Resolve("Settings\\Temp\\Test.$$$");
    if (WriteFile(probe, "") && RemoveFile(probe)) return std::nullopt;
    TellFailure(language_.GetLanguageText(kTextCannotWriteTemp));
    return kFailure;
}

NetworkParts Foundation::PartsOfNetwork() {
    return {.sockets = platform_.sockets,
            .loop = platform_.loop,
            .clock = platform_.clock,
            .language = language_,
            .log = log_,
            .traffic = networkTraffic_,
            .settings = network_,
            .tls = LinkTlsOf(network_, dataFolder_)};
}

Foundation::Outcome Foundation::ListenForClients() {
    networkTraffic_.Configure(network_.LogTraffic, role_);
    if (role_ != Role::Server) return std::nullopt;
    clients_ = std::make_unique<ClientSlots>(PartsOfNetwork());
    if (clients_->Listen()) return std::nullopt;
    TellFailure(language_.GetLanguageText(kTextCannotListen) + std::to_string(network_.NetworkPort) + " (" +
                clients_->LastError() + ")");
    return kFailure;
}

Foundation::Outcome Foundation::ConnectToServer() {
    if (role_ != Role::Client) return std::nullopt;
    server_ = std::make_unique<ServerLink>(PartsOfNetwork());
    ClientStart start = StartClient(*server_, language_, log_);
    if (start.failure.empty()) {
        settings_.UseServerText(std::move(start.serverSettings));
        return std::nullopt;
    }
    TellFailure(start.failure);
    return kFailure;
}

}  // namespace nordkeep
