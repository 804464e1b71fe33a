#pragma once

#include "platform/FileTree.h"
#include "platform/MqttClient.h"
#include "runtime/CentreState.h"
#include "runtime/Language.h"
#include "runtime/SysLog.h"
#include "status/MqttSettings.h"
#include "store/EventList.h"
#include "store/Journal.h"

#include <deque>

namespace nordkeep {

/// Publishes every entry of the journal, in order and at least once, and each open alarm in its present
/// state. Its place in the journal is kept with the journal, so that it goes on there after whatever has
/// happened to either side.
class MqttFeed final : private MqttListener {
 public:
    struct Needs {
        MqttClients& clients;
        const MqttSettings& settings;
        const FileTree& dataFolder;
        const Clock& clock;
        const Language& language;
        SysLog& log;
        const EventList& events;
        Journal& journal;
    };
    explicit MqttFeed(const Needs& needs) : needs_(needs) {}

    bool IsConfigured() const { return !needs_.settings.Address.empty(); }
    bool IsUp() const { return stage_ == Stage::Up; }
    const Text& Address() const { return needs_.settings.Address; }
    void Open();
    /// To be called several times a second.
    void Tick(int intervalMs);
    /// Says that the centre goes, if somebody listens.
    void Close();
    OutputState State() const;

 private:
    enum class Stage { Away, Connecting, Up };
    struct Sent {
        int message = 0;
        std::int64_t id = 0;
        bool isAcknowledged = false;
    };

    void OnConnected() override;
    void OnLost(const std::string& reason) override;
    void OnAcknowledged(int message) override;

    void Connect();
    void PublishAlarms();
    void PublishEntries();
    bool PublishEntry(const JournalRow& row);
    bool PublishAlarm(const Text& event, const cAlarm* alarm, std::int64_t id, const std::string& time);
    std::string Topic(const char* below) const;
    void KeepPlace(int intervalMs);
    void Log(int text, const Text& behind, LogKind kind);

    Needs needs_;
    std::unique_ptr<MqttClient> client_{};
    Stage stage_ = Stage::Away;
    bool hasFailed_ = false;  // told, and not yet come back
    int sinceTryMs_ = 0;
    int sinceKeptMs_ = 0;
    std::int64_t place_ = 0;       // everything up to this entry is at the broker
    std::int64_t keptPlace_ = -1;  // as the journal has it
    std::int64_t sentUpTo_ = 0;
    std::deque<Sent> sent_{};                    // on their way, in order
    std::optional<EventSequence> alarmsUpTo_{};  // while open alarms are published anew
};

}  // namespace nordkeep
