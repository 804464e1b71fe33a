#include "ports/collectors/Collector.h"
#include "ports/collectors/MailLines.h"
#include "ports/collectors/MailSettings.h"
#include "ports/collectors/SmtpSession.h"
#include "ports/lines/CallerTable.h"
#include "ports/mail/MailMessage.h"

#include <array>
#include <utility>

namespace nordkeep {
namespace {

constexpr TextView kWhat = "SMTP port";
constexpr std::size_t kMostCallers = 8;
constexpr std::int64_t kMostSilenceMs = 60'000;
// Of one caller in one turn of the loop; the others wait their turn behind the other lines.
constexpr int kLinesInOneTurn = 512;
// What a caller may leave unread of our replies before it counts as gone.
constexpr std::size_t kMostUnsent = 64 << 10;

/// Takes mail from up to eight callers at once. A mail is accepted when its event is safely stored.
class SmtpCollector final : public Collector, private CallerListener {
 public:
    SmtpCollector(const CollectorParts& parts)
        : parts_(parts),
          log_(parts.log),
          taker_(parts.taker),
          settings_(LoadSettings(parts.settings, SmtpSettingRows(), log_.Name())),
          mail_(LoadMailSettings(parts.settings, parts.language, log_.Name())),
          table_({.sockets = parts.sockets,
                  .clock = parts.clock,
                  .log = log_,
                  .listener = *this,
                  .most = kMostCallers}) {
        WarnOfParsingRule(log_, mail_);
    }

    bool IsOpen() const override { return table_.IsOpen(); }
    FarEnd End() const override { return table_.End(); }
    void Open() override { table_.Open(std::to_string(log_.Line().PortNumber), kWhat); }

    void Close(bool) override {
        table_.Close();
        for (std::size_t slot = 0; slot < table_.Size(); ++slot) HangUp(slot);
    }

    void Tick(const CollectorTick&) override {
        for (std::size_t slot = 0; slot < table_.Size(); ++slot) {
            const bool isSilent = table_.IsUsed(slot) && table_.IdleMs(slot) >= kMostSilenceMs;
            if (isSilent && !callers_[slot].isStoring) Dismiss(slot, "Too long without a line");
        }
    }

 private:
    struct Caller {
        MailLines lines{};
        SmtpSession session{};
        std::uint64_t number = 0;  // of the session; a new one each time
        bool isStoring = false;
        bool isContinuing = false;  // a later turn of the loop goes on with what waits
    };

    void OnCall(std::size_t slot) override {
        Forget(callers_[slot]);
        Reply(slot, SmtpSession::Greeting(settings_.SMTPWelcomeMessage));
    }
    void OnData(std::size_t slot) override { TakeData(slot); }
    void OnGone(std::size_t slot, Text) override { Forget(callers_[slot]); }
    void OnPushedOff(std::size_t slot) override { Dismiss(slot, "Others are waiting"); }

    void Dismiss(std::size_t slot, TextView reason) {
        Reply(slot, SmtpSession::Farewell(reason));
        HangUp(slot);
    }

    void HangUp(std::size_t slot) {
        table_.HangUp(slot);
        Forget(callers_[slot]);
    }

    static void Forget(Caller& caller) {
        caller.lines.Clear();
        caller.session = {};
        ++caller.number;
        caller.isStoring = caller.isContinuing = false;
    }

    void Reply(std::size_t slot, const Text& reply) {
        Winsock& socket = table_.SocketOf(slot);
        if (reply.empty() || socket.State() != SocketState::Connected) return;
        if (socket.UnsentBytes() > kMostUnsent) return HangUp(slot);
        if (socket.SendData(reply)) taker_.NoteTraffic(reply, TrafficDirection::Sent);
    }

    void TakeData(std::size_t slot) {
        Caller& caller = callers_[slot];
        while (table_.IsUsed(slot) && !caller.isStoring && !caller.isContinuing) {
            const Text data = table_.SocketOf(slot).GetData();
            if (data.empty()) return;
            taker_.NoteTraffic(data, TrafficDirection::Received);
            if (taker_.IsMuted()) continue;
            caller.lines.Append(data);
            ServeLines(slot);
        }
    }

    void ServeLines(std::size_t slot) {
        Caller& caller = callers_[slot];
        const std::uint64_t number = caller.number;
        for (int i = 0; i < kLinesInOneTurn; ++i) {
            if (caller.number != number || caller.isStoring) return;
            const auto line = caller.lines.Next(caller.session.LongestLine());
            if (!line) return;
            table_.NoteLife(slot);
            Act(slot, caller.session.Take(line->text, line->isCut));
        }
        caller.isContinuing = true;
        parts_.loop.Post([this, slot, number] { Continue(slot, number); });
    }

    void Continue(std::size_t slot, std::uint64_t number) {
        if (callers_[slot].number != number) return;
        callers_[slot].isContinuing = false;
        ServeLines(slot);
        TakeData(slot);
    }

    void Act(std::size_t slot, SmtpStep step) {
        if (step.mail) return HandOver(slot, *step.mail);
        Reply(slot, step.reply);
        if (step.isOver) HangUp(slot);
    }

    void HandOver(std::size_t slot, const SmtpMail& mail) {
        callers_[slot].isStoring = true;
        const auto whenStored = [this, slot, number = callers_[slot].number](bool isStored) {
            Caller& caller = callers_[slot];
            if (caller.number != number) return;
            caller.isStoring = false;
            Act(slot, caller.session.OnMailHandled(isStored));
            Continue(slot, number);
        };
        TelegramStep step = HandleMailMessage(mail.content, mail.sender, mail_, parts_.clock.Now());
        step.isTraffic = true;
        taker_.TakeStep(std::move(step), whenStored);
    }

    CollectorParts parts_;
    PortLog& log_;
    StepTaker& taker_;
    SmtpSettings settings_;
    MailSettings mail_;
    CallerTable table_;
    std::array<Caller, kMostCallers> callers_{};  // by slot
};

}  // namespace

std::unique_ptr<Collector> MakeSmtpCollector(const CollectorParts& parts) {
    return std::make_unique<SmtpCollector>(parts);
}

}  // namespace nordkeep
