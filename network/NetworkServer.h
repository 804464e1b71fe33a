#pragma once

#include "network/ClientSlots.h"
#include "network/FileService.h"
#include "network/HistoryService.h"
#include "network/LoginBrake.h"
#include "network/messages/Messages.h"
#include "pipeline/AlarmHandling.h"
#include "pipeline/TorvexLink.h"
#include "runtime/CentreState.h"
#include "translation/AliveTestTimers.h"
#include "translation/PortBinding.h"
#include "translation/ServicePeriods.h"
#include "translation/Translations.h"

#include <array>
#include <functional>
#include <optional>
#include <vector>

namespace nordkeep {

/// A port as it stands in the tree of the clients.
struct PortInTree {
    Text description{};
    const PortBinding* binding = nullptr;
};
/// The tree of these ports: each port, below it its protocols that have a set, below these the sets.
std::vector<PortTreeNode> MakePortTree(const std::vector<PortInTree>& ports);

/// What a server does for its clients: answers their requests and takes their changes. Whether somebody has
/// logged in is the client's affair; the server checks passwords and remembers nobody.
class NetworkServer final : public SlotHandler {
 public:
    struct Needs {
        ClientSlots& slots;
        const FileTree& dataFolder;
        const Settings& files;
        const Language& language;
        const Clock& clock;
        const NetworkSettings& settings;
        EventStore& store;
        EventCommit& commit;
        AlarmHandling& handling;
        Translations& translations;
        ObjectViews& objectViews;
        ObjectReplica& objectReplica;
        ServicePeriods& servicePeriods;
        Deeds& deeds;
        HistoryWork& history;
        const AliveTestTimers& timers;
        TorvexLink& torvex;
        /// The ports in their order.
        std::function<std::vector<PortInTree>()> ports;
        /// The senders that share a line, as they are told; none for a name that no line has.
        std::function<std::vector<LineAccount>(const Text& line)> accounts;
        /// A client has changed the files of a translation set.
        std::function<void()> requestReload;
        std::function<void()> noteSettings = [] {};  // a client has written a settings file
    };
    explicit NetworkServer(const Needs& needs);
    ~NetworkServer() override;
    NetworkServer(const NetworkServer&) = delete;
    NetworkServer& operator=(const NetworkServer&) = delete;

    /// To be called behind a reload of the translations: renews the sets and the tree of every client.
    void SendReload();
    /// Some client wants to know how the lines do and what is wrong.
    bool IsCentreStateWanted() const;
    /// Tells those clients what they have not been told yet. To be called about once a second.
    void SendCentreState(const std::vector<LineFigures>& lines, const std::vector<ConditionFact>& facts);

    void HandleMessage(int slot, std::uint8_t number, TextView payload) override;
    void ClientCame(int slot) override {
        walks_.at(static_cast<std::size_t>(slot)).reset();
        ForgetUser(slot);
        told_.at(static_cast<std::size_t>(slot)) = {};
        history_.Forget(slot);
    }
    // Never at once: where each piece is told to have left, one turn would lead to all the others.
    void SendCompleted(int slot) override {
        if (walks_.at(static_cast<std::size_t>(slot))) needs_.slots.RequestTurn();
    }
    bool ContinueWork(int slot) override;

 private:
    struct Handler {
        Message message;
        void (NetworkServer::*handle)(int slot, TextView payload);
    };
    static const Handler kHandlers[];

    void SendInitialData(int slot, TextView payload);
    void SendAllEvents(int slot, TextView payload);
    void ChangeEvent(int slot, TextView payload);
    void ForwardToTorvex(int slot, TextView payload);
    void ResetAliveTests(int slot, TextView payload);
    void ChangeServiceMode(int slot, TextView payload);
    void Login(int slot, TextView payload);
    void Logout(int slot, TextView payload);
    void ReadTextFile(int slot, TextView payload);
    void WriteTextFile(int slot, TextView payload);
    void TellFileTime(int slot, TextView payload);
    void ScanForFiles(int slot, TextView payload);
    void ReadBinaryFile(int slot, TextView payload);
    void TellVersion(int slot, TextView payload);
    void MakeDir(int slot, TextView payload);
    void TellExtensions(int slot, TextView payload);
    void TakeServiceReason(int slot, TextView payload);
    void SearchHistory(int slot, TextView payload);
    void MakeReport(int slot, TextView payload);
    void TakeHandover(int slot, TextView payload);
    void TellAccounts(int slot, TextView payload);

    /// What a client has been told beyond what every client is.
    struct Told {
        std::int32_t knowsUpTo = 0;  // the highest message number
        std::optional<Text> lines{};
        std::optional<Text> conditions{};
        ServiceReasonGiven reason{};  // that it has given, for the mode that follows
    };
    void TellIfNew(int slot, Message message, std::optional<Text>& told, const Text& payload);

    std::vector<Text> NextEvents(EventSequence& walk) const;
    void SendTranslations(int slot);
    void SendPortTree(int slot);
    void ForgetUser(int slot);
    void RefuseLogin(int slot);
    /// What who has logged in at a client may do; that of nobody when there is no users file.
    int LevelAt(int slot) const;
    /// The path that a client may not touch is answered like one of a missing file.
    void LogRefusal(int slot, TextView path);
    /// Who has logged in at a client, for the journal.
    Doer DoerAt(int slot) const;
    Text AddressLine(int textNumber, int slot) const;

    Needs needs_;
    FileService fileService_;
    HistoryService history_;
    /// Of each client that is being sent all events: the last that it has got.
    std::array<std::optional<EventSequence>, kSlotCount> walks_{};
    bool hasChanged_ = false;  // by a client, and not brought to safety yet
    std::array<Told, kSlotCount> told_{};
    LoginBrake brake_{};
    std::array<int, kSlotCount> levels_{};  // of who has logged in
    std::array<Text, kSlotCount> users_{};  // login names; empty where nobody has logged in
};

}  // namespace nordkeep
