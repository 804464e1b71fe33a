#pragma once

#include "ports/collectors/Collector.h"
#include "ports/collectors/CommWait.h"
#include "ports/formats/ModemLines.h"
#include "ports/lines/Line.h"
#include "runtime/SettingTable.h"

#include <vector>

namespace nordkeep {

/// How a modem is initialised and polled. Numbers in seconds unless said.
struct GsmSettings {
    int CommandTimeout = 10;
    int InitInterval = 600;  // 0 or less: never
    int PollInterval = 10;   // 0 or less: only when the modem tells of a message
    int MinSIMIndex = 1;
    int MaxSIMIndex = 10;
    int EmptyLocationsToPoll = 10;
    int PauseBetweenEachPoll = 500;  // ms
    Text SMSCNumber{};
    Text PIN{};
    Text InitString{};
    Text FO{"17"};
    Text VP{"169"};
    Text PID{"0"};
    Text DCS{"240"};
    Text CharSet{"8859-1"};
    SmsSettings sms{};
};
std::span<const SettingRow<GsmSettings>> GsmSettingRows();
GsmSettings LoadGsmSettings(const Settings& files, const Text& portName);

/// The commands of an init run, in order.
std::vector<Text> InitCommands(const GsmSettings& settings);

/// Drives a modem at the other end of a line: initialises it, reads and deletes its stored messages one by
/// one, and reports calls. A command waits for its answer while everything else goes on.
class GsmModem final : public Collector, private LineListener {
 public:
    struct Parts {
        PortType type;
        LineParts line;
        EventLoop& loop;
        CommWait& wait;  // one for all ports
        StepTaker& taker;
        GsmSettings settings;
    };

    explicit GsmModem(const Parts& parts);

    bool IsOpen() const override { return line_->IsOpen(); }
    void Open() override { line_->Open(); }
    void Close(bool isShuttingDown) override { line_->Close(isShuttingDown); }
    void Tick(const CollectorTick& tick) override;
    FarEnd End() const override { return line_->End(); }
    Line& TheLine() { return *line_; }

 private:
    using Responses = ModemLines::Responses;
    enum class Buffer { Keep, Clear };
    enum class Location { Message, Empty, Stuck, Silent };

    void OnDataWaiting() override;
    void OnNewStream(Text rest) override;
    void TakeIn(TextView chunk);

    void Say(TextView bytes);
    int CommResponse(const Text& command, const Responses& expected, Buffer buffer = Buffer::Keep);
    void PauseWithEvents(int ms);
    bool IsLineUp() const;

    void Initialise(int tickMs);
    void PollWhenDue(int tickMs);
    void Poll();
    bool PollLocations(bool wasWoken);
    Location PollLocation(int index);
    bool AwaitMessage();
    bool TakeInMessage();
    void ProveLine();

    EventLoop& loop_;
    const Clock& clock_;
    CommWait& wait_;
    StepTaker& taker_;
    GsmSettings settings_;
    ModemLines lines_;
    std::unique_ptr<Line> line_;

    std::int64_t initCountdownMs_ = 0;
    std::int64_t pollCountdownMs_ = 0;
    std::int64_t restMs_ = 0;  // until late answers have passed
};

}  // namespace nordkeep
