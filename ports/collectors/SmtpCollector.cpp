#include "ports/collectors/Collector.h"
#include "ports/collectors/MailLines.h"
#include "ports/collectors/MailSettings.h"
#include "ports/collectors/SmtpSession.h"
#include "ports/formats/MailMessage.h"

#include <algorithm>
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
class SmtpCollector final : public Collector {
 public:
    SmtpCollector(const CollectorParts& parts)
        : parts_(parts),
          log_(parts.log),
          taker_(parts.taker),
          settings_(LoadSettings(parts.settings, SmtpSettingRows(), log_.Name())),
          mail_(LoadMailSettings(parts.settings, parts.language, log_.Name())),
          listener_(parts.sockets.NewSocket(SocketKind::Tcp)) {
        WarnOfParsingRule(log_, mail_);
        listener_->SetEvents({.connectionRequest = [this](SocketRequest request) { LetIn(request); }});
        for (Caller& caller : callers_) {
            caller.socket = parts.sockets.NewSocket(SocketKind::Tcp);
            caller.socket->SetEvents({.dataArrival = [this, &caller] { TakeData(caller); },
                                      .closed = [this, &caller] { HangUp(caller); },
                                      .error = [this, &caller](const Text&) { HangUp(caller); }});
        }
    }

    bool IsOpen() const override { return listener_->State() == SocketState::Listening; }

    void Open() override {
        const int port = log_.Line().PortNumber;
        const Text& address = log_.Line().BindSocketToAddress;
        listener_->Close();
        if (!log_.HasListenNumber(std::to_string(port), kWhat)) return;
        listener_->SetLocalPort(port);
        const bool isBound = address.empty() || listener_->Bind(port, address);
        if (isBound && listener_->Listen()) return log_.Opened(std::to_string(port), kWhat);
        log_.OpenFailed(std::to_string(port), listener_->LastError(), kWhat);
    }

    void Close(bool) override {
        listener_->Close();
        for (Caller& caller : callers_) HangUp(caller);
    }

    FarEnd End() const override {
        FarEnd end;
        end.isConnected = std::ranges::any_of(callers_, &Caller::isUsed);
        end.isAwaited = !end.isConnected;
        end.who = lastCaller_;
        return end;
    }

    void Tick(const CollectorTick&) override {
        const std::int64_t now = parts_.clock.MonotonicMs();
        for (Caller& caller : callers_) {
            const bool isSilent = now - caller.lastLineMs >= kMostSilenceMs;
            if (caller.isUsed && isSilent && !caller.isStoring) Dismiss(caller, "Too long without a line");
        }
    }

 private:
    struct Caller {
        std::unique_ptr<Winsock> socket{};
        MailLines lines{};
        SmtpSession session{};
        std::uint64_t number = 0;  // of the session; a new one each time
        std::int64_t lastLineMs = 0;
        bool isUsed = false;
        bool isStoring = false;
        bool isContinuing = false;  // a later turn of the loop goes on with what waits
    };

    Caller& FreeCaller() {
        const auto free = std::ranges::find(callers_, false, &Caller::isUsed);
        if (free != callers_.end()) return *free;
        Caller& idlest = *std::ranges::min_element(callers_, {}, &Caller::lastLineMs);
        Dismiss(idlest, "Others are waiting");
        return idlest;
    }

    void LetIn(SocketRequest request) {
        Caller& caller = FreeCaller();
        caller.socket->Accept(request);
        lastCaller_ = caller.socket->RemoteHostIP();
        caller.lines.Clear();
        caller.session = {};
        caller.lastLineMs = parts_.clock.MonotonicMs();
        caller.isUsed = true;
        Reply(caller, SmtpSession::Greeting(settings_.SMTPWelcomeMessage));
    }

    void Dismiss(Caller& caller, TextView reason) {
        Reply(caller, SmtpSession::Farewell(reason));
        HangUp(caller);
    }

    /// Closing hands over what is still unsent first.
    void HangUp(Caller& caller) {
        caller.socket->Close();
        caller.lines.Clear();
        ++caller.number;
        caller.isUsed = caller.isStoring = caller.isContinuing = false;
    }

    void Reply(Caller& caller, const Text& reply) {
        if (reply.empty() || caller.socket->State() != SocketState::Connected) return;
        if (caller.socket->UnsentBytes() > kMostUnsent) return HangUp(caller);
        if (caller.socket->SendData(reply)) taker_.NoteTraffic(reply, TrafficDirection::Sent);
    }

    void TakeData(Caller& caller) {
        while (caller.isUsed && !caller.isStoring && !caller.isContinuing) {
            const Text data = caller.socket->GetData();
            if (data.empty()) return;
            taker_.NoteTraffic(data, TrafficDirection::Received);
            if (taker_.IsMuted()) continue;
            caller.lines.Append(data);
            ServeLines(caller);
        }
    }

    void ServeLines(Caller& caller) {
        const std::uint64_t number = caller.number;
        for (int i = 0; i < kLinesInOneTurn; ++i) {
            if (caller.number != number || caller.isStoring) return;
            const auto line = caller.lines.Next(caller.session.LongestLine());
            if (!line) return;
            caller.lastLineMs = parts_.clock.MonotonicMs();
            Act(caller, caller.session.Take(line->text, line->isCut));
        }
        caller.isContinuing = true;
        parts_.loop.Post([this, &caller, number] { Continue(caller, number); });
    }

    void Continue(Caller& caller, std::uint64_t number) {
        if (caller.number != number) return;
        caller.isContinuing = false;
        ServeLines(caller);
        TakeData(caller);
    }

    void Act(Caller& caller, SmtpStep step) {
        if (step.mail) return HandOver(caller, *step.mail);
        Reply(caller, step.reply);
        if (step.isOver) HangUp(caller);
    }

    void HandOver(Caller& caller, const SmtpMail& mail) {
        caller.isStoring = true;
        const auto whenStored = [this, &caller, number = caller.number](bool isStored) {
            if (caller.number != number) return;
            caller.isStoring = false;
            Act(caller, caller.session.OnMailHandled(isStored));
            Continue(caller, number);
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
    std::unique_ptr<Winsock> listener_;
    std::array<Caller, kMostCallers> callers_{};
    Text lastCaller_{};
};

}  // namespace

std::unique_ptr<Collector> MakeSmtpCollector(const CollectorParts& parts) {
    return std::make_unique<SmtpCollector>(parts);
}

}  // namespace nordkeep
