#pragma once

#include "ports/dc09/Dc09Accounts.h"
#include "ports/dc09/Dc09Body.h"
#include "ports/dc09/Dc09Frame.h"
#include "ports/formats/LineFormat.h"
#include "ports/formats/SiaDecoding.h"

namespace nordkeep {

struct Dc09Settings {
    int TimeBehind = 40;  // seconds by which the clock of a sender may be wrong; both 0: it is not looked at
    int TimeAhead = 20;
    bool RequireEncryption = false;
    bool OnlyKnownAccounts = false;
    Text Receiver{};  // hexadecimal digits; empty: messages for any receiver are taken
    SiaSettings sia{};
    Dc09AccountSettings accounts{};
    Text PortDescription{};
    /// What operators read.
    struct Texts {
        Text wrongClock{};
        Text wrongKey{};
        Text plainText{};
        Text silence{};  // "%1" is the time in seconds
        Text heardAgain{};
    } texts{};
};

std::span<const SettingRow<Dc09Settings>> Dc09SettingRows();

/// A line of format "SIA DC-09": senders by network with SIA or Contact ID messages, in plain text or
/// encrypted, which have a clock and are supervised.
class Dc09Line {
 public:
    explicit Dc09Line(Dc09Settings settings)
        : settings_(std::move(settings)), accounts_(settings_.accounts) {}

    TelegramStep Next(TextView received, const LineClock& clock);
    /// Who has been silent for too long.
    TelegramStep Due(const ServiceTick& tick);
    /// False when the message is not to be acknowledged.
    bool OnStored(std::uint64_t receipt, bool isStored);
    std::vector<LineAccount> Accounts() const { return accounts_.List(); }

 private:
    struct Message {
        Dc09Head head{};
        std::uint16_t sum = 0;
        Text account{};  // in capitals
        Text key{};
        Dc09Body body{};
    };

    void TakeMessage(const Dc09Frame& frame, const LineClock& clock, TelegramStep& step);
    bool Refuses(const Message& message, const LineClock& clock, TelegramStep& step);
    bool ReadBody(Message& message, const LineClock& clock, TelegramStep& step);
    bool HasRightClock(const Message& message, OleDate utc) const;
    void TakeSigns(const Message& message, const LineClock& clock, TelegramStep& step);
    void TakeEvents(const Message& message, const LineClock& clock, TelegramStep& step);
    void TakeLinkTest(const Text& account, OleDate now, TelegramStep& step);
    void Complain(const Message& message, const Text& text, OleDate now, TelegramStep& step) const;
    void NoteRefusal(int text, const Text& what, const LineClock& clock, TelegramStep& step);

    Dc09Settings settings_;
    Dc09Accounts accounts_;
    Dc09Repeats repeats_{};
    Dc09Refusals refusals_{};
};

}  // namespace nordkeep
