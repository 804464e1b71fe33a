#pragma once

#include "pipeline/ComCallLink.h"
#include "pipeline/DispatchSettings.h"
#include "pipeline/outputs/LinePrinter.h"
#include "pipeline/outputs/MessageQueueOutput.h"
#include "pipeline/outputs/Outputs.h"
#include "pipeline/outputs/QueueFeed.h"
#include "pipeline/outputs/RelayOutput.h"
#include "pipeline/outputs/SoundPlayer.h"
#include "runtime/CentreState.h"
#include "runtime/Settings.h"
#include "store/AlarmText.h"

#include <optional>
#include <vector>

namespace nordkeep {

/// The outputs with a real line, queue, sound, relay and printer behind them. One that is not configured
/// opens nothing and does nothing.
class AlarmOutputs final : public Outputs {
 public:
    struct Needs {
        const FileTree& dataFolder;
        const Settings& files;
        const Language& language;
        SysLog& log;
        const DispatchSettings& dispatchSettings;
        const DeskSettings& deskSettings;
        const OutputSettings& settings;
        const ComCallSettings& comCallSettings;
        SocketFactory& sockets;
        SerialFactory& serial;
        MessageQueueFactory& queues;
        PrinterPort& printer;
        SoundDevice& sound;
        Journal* journal = nullptr;  // what the message queue goes on from; none: what it missed is lost
        bool isSilent = false;       // a copy without an operator plays nothing
    };
    explicit AlarmOutputs(const Needs& needs);

    void SendToComCall(const cAlarm& alarm) override;
    void SendToMessageQueue(const cAlarm& alarm) override;
    void PlaySound(SoundRequest request, long priority) override;
    void RequestRelay() override { relay_.Request(); }
    void PrintAlarm(const cAlarm& alarm) override;

    /// The journal has been opened, and nothing has come in yet.
    void Open() {
        if (queueFeed_) queueFeed_->Open();
    }
    ComCallLink& ComCall() { return comCall_; }
    const MessageQueueOutput& Queue() const { return queue_; }
    SoundPlayer& Sound() { return sound_; }
    RelayOutput& Relay() { return relay_; }
    /// Those that are configured.
    std::vector<OutputState> States() const;
    /// The sounds that the settings name now.
    AlarmSound SoundOfSettings() const;
    /// The outputs that do not reach their peer at present, by their names.
    std::vector<Text> LostPeers() const;
    bool HasSoundFailed() const { return sound_.HasFailed(); }
    /// Goes on with what the printer and the message queue were not ready for.
    void TendPrinterAndQueue(int intervalMs);
    /// The end: sound off, relay at rest, lines closed; messages that wait may still leave for a short time.
    void Close();

 private:
    Needs needs_;
    QueueMessage MessageOf(const cAlarm& alarm) const;
    cAlarm WithoutSpeechMark(cAlarm alarm) const;

    AlarmText text_;
    ComCallLink comCall_;
    MessageQueueOutput queue_;
    std::optional<QueueFeed> queueFeed_{};
    SoundPlayer sound_;
    RelayOutput relay_;
    LinePrinter printer_;
};

}  // namespace nordkeep
