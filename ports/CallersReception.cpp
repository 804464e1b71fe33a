#include "ports/Reception.h"
#include "ports/lines/CallerTable.h"

#include <algorithm>

namespace nordkeep {
namespace {

// What all callers together may have sent without a complete telegram in it, and each of them at least and at
// most.
constexpr std::size_t kMostReceivedOfAll = 64 << 20;
constexpr std::size_t kMostReceivedOfFew = 1 << 20;
// What a caller may leave unread of our replies before he counts as gone.
constexpr std::size_t kMostUnsent = 64 << 10;

/// The end of one caller.
class CallerLine final : public Line {
 public:
    CallerLine(CallerTable& table, std::size_t slot) : table_(table), slot_(slot) {}

    bool IsOpen() const override { return CanSend(); }
    void Open() override {}
    void Close(bool) override { table_.HangUp(slot_); }
    Text Take() override { return table_.SocketOf(slot_).GetData(); }
    bool CanSend() const override { return table_.SocketOf(slot_).State() == SocketState::Connected; }

    bool Send(TextView bytes, Behind behind) override {
        const bool isSent = SendBytes(bytes);
        // Closing hands over what is still unsent first.
        if (behind == Behind::HangUp) table_.HangUp(slot_);
        return isSent;
    }

 private:
    bool SendBytes(TextView bytes) {
        if (bytes.empty() || !CanSend()) return false;
        Winsock& socket = table_.SocketOf(slot_);
        if (socket.UnsentBytes() <= kMostUnsent) return socket.SendData(bytes);
        table_.HangUp(slot_);
        return false;
    }

    CallerTable& table_;
    std::size_t slot_;
};

/// A listening port whose callers are served side by side, each with a text and replies of his own. What
/// belongs to the port, as the supervision of senders, they share.
class CallersReception final : public Reception, private CallerListener {
 public:
    CallersReception(const Parts& parts, std::unique_ptr<LineFormat> format, std::size_t most)
        : Reception(parts, std::move(format)),
          mostReceived_(std::min(kMostReceivedOfAll / most, kMostReceivedOfFew)),
          table_({.sockets = parts.line.sockets,
                  .clock = parts.line.clock,
                  .log = parts.line.log,
                  .listener = *this,
                  .most = most}) {}

    bool IsOpen() const override { return table_.IsOpen(); }
    FarEnd End() const override { return table_.End(); }

    void Open() override {
        const LineSettings& line = parts_.line.log.Line();
        table_.Open(line.PortSetting + ":" + std::to_string(line.PortNumber), "PortSettings");
    }

    void Close(bool) override {
        table_.Close();
        for (const auto& caller : callers_) caller->talk.OnNewStream({});
    }

    void Tick(const CollectorTick& tick) override {
        for (const auto& caller : callers_) caller->talk.PurgeHalfTelegram();
        TakeDue(Due(tick.tickMs, IsOpen(), IsAnybodyThere()));
    }

    void Finish() override {
        for (const auto& caller : callers_) caller->talk.Finish();
        TakeDue(DueAtTheEnd());
    }

 private:
    struct Caller {
        Caller(CallerTable& table, std::size_t slot, const Conversation::Parts& parts)
            : line(table, slot), talk(parts) {}
        CallerLine line;
        std::unique_ptr<LineFormat> ownFormat{};
        Conversation talk;
    };

    void OnCall(std::size_t slot) override {
        if (slot < callers_.size()) return;
        callers_.push_back(
            std::make_unique<Caller>(table_, slot, PartsOfConversation(mostReceived_, leftBehind_)));
        Caller& caller = *callers_.back();
        caller.ownFormat = format_->ForAnotherCaller();
        caller.talk.Join(caller.line, caller.ownFormat ? *caller.ownFormat : *format_);
    }

    void OnData(std::size_t slot) override {
        table_.NoteLife(slot);
        callers_[slot]->talk.OnDataWaiting();
    }

    void OnGone(std::size_t slot, Text rest) override { callers_[slot]->talk.OnNewStream(std::move(rest)); }
    void OnPushedOff(std::size_t) override {}

    bool IsAnybodyThere() const {
        return std::ranges::any_of(callers_, [](const auto& caller) { return caller->line.CanSend(); });
    }

    /// What is due is said to all, and its events are nobody's in particular.
    void TakeDue(TelegramStep step) {
        const Text reply = std::exchange(step.reply, {});
        parts_.taker.TakeStep(std::move(step), {});
        if (reply.empty()) return;
        for (const auto& caller : callers_) caller->talk.Act({.reply = reply});
    }

    std::size_t mostReceived_;
    CallerTable table_;
    LeftBehind leftBehind_{[this](bool isHeld) {
        if (isHeld) NoteWait();
        table_.HoldCallers(isHeld);
    }};
    std::vector<std::unique_ptr<Caller>> callers_{};  // by slot
};

}  // namespace

std::unique_ptr<Reception> MakeCallersReception(const Reception::Parts& parts,
                                                std::unique_ptr<LineFormat> format, std::size_t most) {
    return std::make_unique<CallersReception>(parts, std::move(format), most);
}

}  // namespace nordkeep
