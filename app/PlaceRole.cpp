#include "app/PlaceRole.h"

#include "network/FileService.h"
#include "network/RemoteDataFiles.h"
#include "platform/ProgramFile.h"
#include "reports/LocalHistory.h"
#include "runtime/DataFiles.h"
#include "translation/AliveTestReset.h"

namespace nordkeep {
namespace {

// --- A copy with ports of its own

/// Nobody logs in here.
const Doer kOperator{.user = {}, .station = kHere};

class LocalCentre final : public CentreOperations {
 public:
    explicit LocalCentre(const PlaceParts& parts) : parts_(parts) {}

    void SetService(cTranslate& set, cIDCode& object, const ServicePeriod& period) override {
        parts_.servicePeriods.Set(set, object, period, kOperator);
    }
    void ResetAliveTests(cTranslate& set, cIDCode& object) override {
        const AliveTestReset reset({parts_.timers, parts_.objectViews, parts_.network.Objects()});
        reset.Reset(set, object, parts_.foundation.Platform().clock.Now());
        parts_.deeds.Note(JournalKind::AliveTest, kOperator, object.m_IdCode, set.m_FileName);
    }
    bool SendToDispatcher(const Text& line) override {
        parts_.deeds.Note(JournalKind::Send, kOperator, {},
                          line.substr(0, line.find_last_not_of("\r\n") + 1));
        return parts_.torvex.Send(line);
    }
    void Reload() override { parts_.reload.Ask(); }
    void SetClocks() override { parts_.ports.SetClocks(); }
    void LoadEvents() override { parts_.store.ReloadEvents(); }

 private:
    PlaceParts parts_;
};

class LocalEditorHost final : public EditorHost {
 public:
    LocalEditorHost(const FileTree& dataFolder, const PlaceParts& parts)
        : programs_(dataFolder), reload_(parts.reload), deeds_(parts.deeds), check_(parts.check) {}
    bool StartProgram(const EditedFile& edited) override { return programs_.Start(edited); }
    void NoteSaved(const Text& path) override {
        deeds_.Note(JournalKind::Edit, kOperator, {}, path);
        if (IsTranslationFile(path)) return reload_.Ask();
        // The check begins when they have been taken in.
        if (FindNoCase(path, "Settings\\Nordkeep.INI") == 0) return reload_.AskForSettings();
        constexpr TextView kSettings = "Settings\\";
        if (EqualsNoCase(TextView(path).substr(0, kSettings.size()), kSettings)) check_.Begin();
    }

 private:
    EditorPrograms programs_;
    ReloadRequest& reload_;
    Deeds& deeds_;
    RunningCheck& check_;
};

PlaceRole LocalPlace(const PlaceParts& parts, const PlaceState::Needs& state) {
    const FileTree& dataFolder = parts.foundation.DataFolder();
    PlaceRole role;
    role.files = std::make_unique<LocalDataFiles>(dataFolder);
    role.maps = std::make_unique<OwnMaps>(*role.files);
    role.editorHost = std::make_unique<LocalEditorHost>(dataFolder, parts);
    role.centre = std::make_unique<LocalCentre>(parts);
    role.server = std::make_unique<NoServerContact>();
    role.state = std::make_unique<LocalPlaceState>(state);
    role.localHistory = std::make_unique<LocalHistory>(parts.history, parts.deeds);
    role.history = role.localHistory.get();
    role.hasLines = true;
    role.lines =
        std::make_unique<LocalLines>(LocalLines::Needs{.ports = parts.portList,
                                                       .dataFolder = dataFolder,
                                                       .files = parts.foundation.Files(),
                                                       .clock = parts.foundation.Platform().clock,
                                                       .reload = parts.reload,
                                                       .host = *role.editorHost,
                                                       .loop = parts.foundation.Platform().loop,
                                                       .log = parts.foundation.Log(),
                                                       .language = parts.foundation.Texts(),
                                                       .centre = parts.conditions,
                                                       .sendTool = ProgramFolder() + "/nordkeep-send"});
    return role;
}

// --- A client

class ClientCentre final : public CentreOperations {
 public:
    ClientCentre(ClientReplica& server, const ServerLink& link, NetworkPeers& peers)
        : server_(server), link_(link), peers_(peers) {}

    void SetService(cTranslate& set, cIDCode& object, const ServicePeriod& period) override {
        const Mirror::ServerState* server = peers_.ServerState();
        const bool isReasonKnown = server && server->knowsUpTo >= static_cast<int>(Message::ServiceReason);
        if (!period.reason.empty() && isReasonKnown) server_.TellServiceReason(set, object, period.reason);
        server_.RequestServiceMode(set, object, period);
    }
    void ResetAliveTests(cTranslate& set, cIDCode& object) override {
        server_.RequestAliveTestReset(set, object);
    }
    bool SendToDispatcher(const Text& line) override {
        server_.RequestTorvexLine(line);
        return !link_.IsConnectionLost();
    }
    void Reload() override { peers_.RequestInitialData(); }
    void SetClocks() override {}
    void LoadEvents() override {}

 private:
    ClientReplica& server_;
    const ServerLink& link_;
    NetworkPeers& peers_;
};

class ClientContact final : public ServerContact {
 public:
    ClientContact(ClientReplica& server, NetworkPeers& peers) : server_(server), peers_(peers) {}

    void Login(const Text& userName, const Text& password) override {
        server_.RequestLogin({userName, password});
    }
    void Logout() override { server_.RequestLogout(); }
    void Reconnect() override { peers_.Reconnect(); }
    void GiveUp() override { peers_.GiveUp(); }

 private:
    ClientReplica& server_;
    NetworkPeers& peers_;
};

class ClientEditorHost final : public EditorHost {
 public:
    bool StartProgram(const EditedFile&) override { return false; }
    void NoteSaved(const Text&) override {}
};

PlaceRole ClientPlace(const PlaceParts& parts, const PlaceState::Needs& state, ServerLink& link) {
    const NetworkSettings& network = parts.foundation.Network();
    const bool logsInByItself = !network.AutoLoginUserName.empty() && !network.AutoLoginPassword.empty();
    ClientReplica& server = *parts.network.Client();
    PlaceRole role;
    role.files = std::make_unique<RemoteDataFiles>(link);
    role.maps = std::make_unique<FetchedMaps>(*role.files, parts.foundation.DataFolder());
    role.editorHost = std::make_unique<ClientEditorHost>();
    role.centre = std::make_unique<ClientCentre>(server, link, parts.peers);
    role.server = std::make_unique<ClientContact>(server, parts.peers);
    role.state = std::make_unique<ClientPlaceState>(state, link, parts.peers);
    role.lines = std::make_unique<ClientLines>(parts.peers, *parts.network.Accounts(), parts.conditions);
    role.history = parts.network.History();
    role.readsObjectFiles = false;
    role.knowsCallers = false;
    role.asksForLogin = network.ViewLoginFormAutomatically && !logsInByItself;
    return role;
}

}  // namespace

PlaceRole MakePlaceRole(const PlaceParts& parts) {
    const PlaceState::Needs state{.foundation = parts.foundation,
                                  .sound = parts.sound,
                                  .conditions = parts.conditions,
                                  .ports = parts.ports};
    if (ServerLink* link = parts.foundation.Server()) return ClientPlace(parts, state, *link);
    return LocalPlace(parts, state);
}

}  // namespace nordkeep
