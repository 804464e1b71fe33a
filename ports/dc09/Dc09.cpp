#include "ports/dc09/Dc09.h"

#include "ports/dc09/Dc09Events.h"
#include "runtime/Fields.h"
#include "runtime/Protocol.h"

#include <array>
#include <utility>

namespace nordkeep {
namespace {

constexpr int kTextWrongFrame = 5301;
constexpr int kTextUnknownAccount = 5302;
constexpr int kTextNotEncrypted = 5303;
constexpr int kTextUnknownKind = 5304;
constexpr int kTextOtherReceiver = 5305;

constexpr const char* kSia = "SIA-DCS";
constexpr const char* kContactId = "ADM-CID";
constexpr const char* kLinkTest = "NULL";
constexpr const char* kAcknowledged = "ACK";
constexpr const char* kNotUnderstood = "DUH";
// Says the right time; it is the same for all.
constexpr const char* kSetYourClock = "\"NAK\"0000R0L0A0[]";
constexpr const char* kNobody = "\"DUH\"0000R0L0A0[]";

constexpr const char* kSection = "DC09";
constexpr int kMostSeconds = 2'000'000;

using Row = SettingRow<Dc09Settings>;
const std::array kRows = {
    Row{kSection, "TimeBehind", SettingScope::Port, &Dc09Settings::TimeBehind, 0, kMostSeconds},
    Row{kSection, "TimeAhead", SettingScope::Port, &Dc09Settings::TimeAhead, 0, kMostSeconds},
    Row{kSection, "RequireEncryption", SettingScope::Port, &Dc09Settings::RequireEncryption},
    Row{kSection, "OnlyKnownAccounts", SettingScope::Port, &Dc09Settings::OnlyKnownAccounts},
    Row{kSection, "Receiver", SettingScope::Port, &Dc09Settings::Receiver},
};

bool IsKnownKind(const Text& kind) {
    return kind == kSia || kind == kContactId || kind == kLinkTest;
}

/// What a receiver says is never answered: two of them would never end.
bool IsAnswer(const Text& kind) {
    return kind == kAcknowledged || kind == "NAK" || kind == kNotUnderstood;
}

/// A message of this kind to whom `head` comes from.
Text AnswerTo(const Dc09Head& head, const char* kind, bool isEncrypted) {
    Dc09Head answer = head;
    answer.kind = kind;
    answer.isEncrypted = isEncrypted;
    return Dc09HeadText(answer);
}

Text Acknowledgement(const Dc09Head& head, const Text& key, OleDate utc) {
    const Text text = AnswerTo(head, kAcknowledged, head.isEncrypted);
    return head.isEncrypted ? text + EncipherDc09("]" + Dc09TimeStamp(utc), key) : text + "]";
}

}  // namespace

std::span<const SettingRow<Dc09Settings>> Dc09SettingRows() {
    return kRows;
}

TelegramStep Dc09Line::Next(TextView received, const LineClock& clock) {
    const Dc09Frame frame = CutDc09Frame(received);
    TelegramStep step{.consumed = frame.consumed};
    if (frame.isWrong) NoteRefusal(kTextWrongFrame, {}, clock, step);
    if (!frame.isWhole) return step;
    refusals_.End(std::to_string(kTextWrongFrame));
    step.isTraffic = true;
    TakeMessage(frame, clock, step);
    if (!step.reply.empty()) step.reply = MakeDc09Frame(step.reply, frame.check);
    return step;
}

void Dc09Line::TakeMessage(const Dc09Frame& frame, const LineClock& clock, TelegramStep& step) {
    auto head = ReadDc09Head(frame.content);
    if (!head) {
        step.isRefused = true;
        step.reply = kNobody;
        return NoteRefusal(kTextUnknownKind, {}, clock, step);
    }
    if (IsAnswer(head->kind)) return;
    Message message{.head = *std::move(head), .sum = frame.sum};
    message.account = UpperCase(message.head.account);
    if (const Dc09AccountSetting* setting = accounts_.SettingOf(message.account)) message.key = setting->key;
    if (Refuses(message, clock, step)) {
        step.isRefused = true;
        step.reply = AnswerTo(message.head, kNotUnderstood, false) + "]";
        return;
    }
    if (!ReadBody(message, clock, step)) {
        step.isRefused = true;
        step.reply = kSetYourClock + Dc09TimeStamp(clock.utc);
        return;
    }
    TakeSigns(message, clock, step);
    TakeEvents(message, clock, step);
    step.reply = Acknowledgement(message.head, message.key, clock.utc);
}

bool Dc09Line::Refuses(const Message& message, const LineClock& clock, TelegramStep& step) {
    const Dc09Head& head = message.head;
    const auto refuse = [&](bool isRefused, int text, const Text& what) {
        if (isRefused) {
            NoteRefusal(text, what, clock, step);
        } else {
            refusals_.End(std::to_string(text) + what);
        }
        return isRefused;
    };
    const bool isForOther = !settings_.Receiver.empty() && !head.receiver.empty() &&
                            !EqualsNoCase(settings_.Receiver, head.receiver);
    const bool isUnknown = settings_.OnlyKnownAccounts && !accounts_.SettingOf(message.account);
    return refuse(!IsKnownKind(head.kind), kTextUnknownKind, message.account) ||
           refuse(isForOther, kTextOtherReceiver, message.account) ||
           refuse(isUnknown, kTextUnknownAccount, message.account) ||
           refuse(settings_.RequireEncryption && !head.isEncrypted, kTextNotEncrypted, message.account);
}

void Dc09Line::NoteRefusal(int text, const Text& what, const LineClock& clock, TelegramStep& step) {
    if (!refusals_.IsNew(std::to_string(text) + what, clock.monotonicMs)) return;
    step.notes.push_back({text, " " + settings_.PortDescription + (what.empty() ? "" : ": #" + what)});
}

bool Dc09Line::ReadBody(Message& message, const LineClock& clock, TelegramStep& step) {
    const Dc09Head& head = message.head;
    const auto text = head.isEncrypted ? DecipherDc09(head.rest, message.key) : Text(head.rest);
    Dc09Account& account = accounts_.Of(message.account);
    if (!text) {
        if (!std::exchange(account.isKeyTold, true))
            Complain(message, settings_.texts.wrongKey, clock.now, step);
        return false;
    }
    message.body = ReadDc09Body(*text);
    if (HasRightClock(message, clock.utc)) return true;
    if (!std::exchange(account.isClockTold, true))
        Complain(message, settings_.texts.wrongClock, clock.now, step);
    return false;
}

// An encrypted message without its time could be an old one that somebody has kept.
bool Dc09Line::HasRightClock(const Message& message, OleDate utc) const {
    if (settings_.TimeBehind == 0 && settings_.TimeAhead == 0) return true;
    if (!message.body.sentAt) return !message.head.isEncrypted;
    return *message.body.sentAt >= utc.PlusSeconds(-settings_.TimeBehind) &&
           *message.body.sentAt <= utc.PlusSeconds(settings_.TimeAhead);
}

void Dc09Line::TakeSigns(const Message& message, const LineClock& clock, TelegramStep& step) {
    const bool hasReturned = accounts_.NoteHeard(message.account, clock.now);
    Dc09Account& account = accounts_.Of(message.account);
    if (hasReturned) {
        step.events.push_back(Dc09Silence(message.account, account.protocol.value_or(Protocol::SIA), true,
                                          settings_.texts.heardAgain, clock.now));
    }
    if (message.head.isEncrypted) {
        account.hasEncrypted = true;
        account.isPlainTold = false;
    } else if (account.hasEncrypted && !std::exchange(account.isPlainTold, true)) {
        Complain(message, settings_.texts.plainText, clock.now, step);
    }
}

void Dc09Line::TakeEvents(const Message& message, const LineClock& clock, TelegramStep& step) {
    const Text& kind = message.head.kind;
    if (kind == kLinkTest) return TakeLinkTest(message.account, clock.now, step);
    const Dc09Repeats::Noted noted = repeats_.Note(
        message.account + " " + message.head.sequence + " " + std::to_string(message.sum), clock.monotonicMs);
    step.receipt = noted.number;
    step.isRepeat = !noted.isNew;
    if (step.isRepeat) return;
    const bool isContactId = kind == kContactId;
    accounts_.Of(message.account).protocol = isContactId ? Protocol::ContactID : Protocol::SIA;
    if (isContactId) {
        step.events.push_back(Dc09ContactIdEvent(message.head, message.body, settings_.sia, clock.now));
        return;
    }
    for (DecodedEvent& event : Dc09SiaEvents(message.head, message.body, settings_.sia, clock.now))
        step.events.push_back(std::move(event));
}

// Of an account that has reported nothing yet nobody knows how it will.
void Dc09Line::TakeLinkTest(const Text& account, OleDate now, TelegramStep& step) {
    const std::optional<Protocol> known = accounts_.Of(account).protocol;
    for (const Protocol protocol : {Protocol::SIA, Protocol::ContactID}) {
        if (known.value_or(protocol) == protocol)
            step.signs.push_back(Dc09SignOfLife(account, protocol, now));
    }
}

void Dc09Line::Complain(const Message& message, const Text& text, OleDate now, TelegramStep& step) const {
    step.events.push_back(Dc09Complaint(message.head, text, settings_.sia, now));
}

TelegramStep Dc09Line::Due(const ServiceTick& tick) {
    TelegramStep step;
    for (const Dc09Accounts::Silent& silent : accounts_.Tick(tick)) {
        const Text text = ReplaceAll(settings_.texts.silence, "%1", std::to_string(silent.seconds));
        step.events.push_back(
            Dc09Silence(silent.account, silent.protocol.value_or(Protocol::SIA), false, text, tick.now));
    }
    return step;
}

bool Dc09Line::OnStored(std::uint64_t receipt, bool isStored) {
    if (!isStored) repeats_.Forget(receipt);
    return repeats_.Knows(receipt);
}

}  // namespace nordkeep
