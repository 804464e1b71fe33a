#pragma once

#include "ports/formats/LineFormat.h"
#include "ports/formats/Sms.h"
#include "runtime/SettingTable.h"

#include <array>
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
    Text FO{};
    Text VP{};
    Text PID{};
    Text DCS{};
    Text CharSet{};
    int TestTelegramInterval = -1;  // of the port's supervision
    Text PortName{};
    SmsSettings sms{};
};
std::span<const SettingRow<GsmSettings>> GsmSettingRows();
std::span<const SettingRow<SmsSettings>> SmsSettingRows();
GsmSettings LoadGsmSettings(const Settings& files, const Text& portName);

/// The commands of an init run, in order.
std::vector<Text> InitCommands(const GsmSettings& settings);

/// Drives a modem: cuts what it says into lines, initialises it, reads and deletes its stored messages one by
/// one, and reports calls. A command waits for its answer while everything else goes on.
class GsmModem final : public LineFormat {
 public:
    GsmModem(GsmSettings settings, Conversation conversation);

    TelegramStep Next(TextView received, OleDate now) override;
    TelegramStep Service(const ServiceTick& tick) override;
    void Converse(const ServiceTick& tick) override;
    void BeginStream() override;

 private:
    /// Texts that end a wait; the number of the first that a line holds is a bit of the result.
    using Responses = std::array<Text, 4>;
    enum class Buffer { Keep, Clear };
    enum class Location { Message, Empty, Stuck, Silent };

    int CommResponse(const Text& command, const Responses& expected, Buffer buffer = Buffer::Keep);
    void PauseWithEvents(int ms);
    bool IsLineUp() const;

    void TakeLine(Text line, TelegramStep& step, OleDate now);
    void HandleTextLine(const Text& line, TelegramStep& step, OleDate now);
    void HandleCall(const Text& line, TelegramStep& step, OleDate now);

    void Initialise(int tickMs);
    void PollWhenDue(int tickMs);
    void Poll();
    bool PollLocations(bool wasWoken);
    Location PollLocation(int index);
    bool AwaitMessage();
    bool TakeInMessage();

    GsmSettings settings_;
    Conversation conversation_;

    Text line_{};  // without its end so far
    bool isOverflowTold_ = false;
    Responses expected_{};  // while a command waits
    int result_ = 0;
    bool isReading_ = false;
    Text answer_{};  // all lines, while reading
    bool isMessageWaiting_ = false;
    std::int64_t initCountdownMs_ = 0;
    std::int64_t pollCountdownMs_ = 0;
    std::int64_t restMs_ = 0;  // until late answers have passed
    Text lastCaller_{};
    OleDate lastCallAt_{};
};

}  // namespace nordkeep
