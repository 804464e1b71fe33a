#include "ports/collectors/Collector.h"
#include "ports/collectors/MailLines.h"
#include "ports/collectors/MailSettings.h"
#include "ports/collectors/Pop3Session.h"
#include "ports/mail/MailMessage.h"

#include <algorithm>
#include <utility>

namespace nordkeep {
namespace {

constexpr int kTextNotReached = 1154;
constexpr int kTextRefused = 1155;

// Of one session in one turn of the loop; the others wait their turn behind the other lines.
constexpr int kLinesInOneTurn = 2048;

/// Fetches mail from a server at intervals. A mail is deleted there when its event is safely stored; a
/// session that ends before its QUIT deletes nothing, and the mails come again.
class Pop3Collector final : public Collector {
 public:
    Pop3Collector(const CollectorParts& parts)
        : parts_(parts),
          log_(parts.log),
          taker_(parts.taker),
          settings_(LoadSettings(parts.settings, Pop3SettingRows(), log_.Name())),
          mail_(LoadMailSettings(parts.settings, parts.language, log_.Name())),
          socket_(parts.sockets.NewSocket(SocketKind::Tcp)) {
        WarnOfParsingRule(log_, mail_);
        socket_->SetEvents({.dataArrival = [this] { TakeData(); },
                            .closed = [this] { POP3Close(); },
                            .error = [this](const Text& error) { OnError(error); }});
    }

    bool IsOpen() const override { return isOpen_; }

    void Open() override {
        isOpen_ = true;
        log_.Opened(Server(), "POP3 server");
        POP3Close();
    }

    void Close(bool) override {
        if (!isOpen_) return;
        isOpen_ = false;
        POP3Close();
    }

    FarEnd End() const override {
        FarEnd end;
        end.isMissed = !lastFailure_.empty();
        end.who = log_.Line().PortSetting;
        return end;
    }

    void Tick(const CollectorTick& tick) override {
        if (!isOpen_) return;
        if (isBusy_) {
            connectionTimerMs_ += tick.tickMs;
            if (connectionTimerMs_ > settings_.POP3ConnectionTimeout) OnError("no answer");
            return;
        }
        intervalTimerMs_ += tick.tickMs;
        // What a muted port fetches would be gone.
        if (intervalTimerMs_ < settings_.POP3Interval || taker_.IsMuted()) return;
        intervalTimerMs_ = 0;
        POP3Connect();
    }

 private:
    void POP3Connect() {
        POP3Close();
        isBusy_ = true;
        socket_->SetTls({.isOn = IsTlsWanted(settings_, log_.Line().PortNumber),
                         .authorityFile = settings_.POP3CAFile.empty()
                                              ? NativePath()
                                              : parts_.dataFolder.ResolveSetting(settings_.POP3CAFile)});
        socket_->SetRemoteHost(log_.Line().PortSetting);
        socket_->SetRemotePort(log_.Line().PortNumber);
        const Text& address = log_.Line().BindSocketToAddress;
        const bool isBound = address.empty() || socket_->Bind(0, address);
        if (!isBound || !socket_->Connect()) OnError(socket_->LastError());
    }

    void POP3Close() {
        socket_->Close();
        lines_.Clear();
        session_ = Pop3Session(settings_.POP3User, settings_.POP3Password,
                               static_cast<std::size_t>(settings_.POP3MaxMessages));
        ++sessionNumber_;
        isBusy_ = isContinuing_ = false;
        connectionTimerMs_ = 0;
    }

    void OnError(const Text& error) {
        LogFailure(kTextNotReached, Server() + " " + error);
        POP3Close();
    }

    /// A server that is out of order for a night writes one line.
    void LogFailure(int text, const Text& tail) {
        if (std::exchange(lastFailure_, tail) != tail) log_.Failure(text, tail);
    }

    void TakeData() {
        while (isBusy_ && !isContinuing_ && !session_.IsWaiting()) {
            const Text data = socket_->GetData();
            if (data.empty()) return;
            taker_.NoteTraffic(data, TrafficDirection::Received);
            if (taker_.IsMuted()) continue;
            lines_.Append(data);
            ServeLines();
        }
    }

    void ServeLines() {
        const std::uint64_t session = sessionNumber_;
        for (int i = 0; i < kLinesInOneTurn; ++i) {
            if (session != sessionNumber_ || session_.IsWaiting()) return;
            const auto line = lines_.Next(Pop3Session::kMostOfMail);
            if (!line) return;
            Act(session_.Take(line->text));
        }
        isContinuing_ = true;
        parts_.loop.Post([this, session] { Continue(session); });
    }

    void Continue(std::uint64_t session) {
        if (session != sessionNumber_) return;
        isContinuing_ = false;
        ServeLines();
        TakeData();
    }

    void Act(Pop3Step step) {
        if (step.isGreeting) taker_.TakeStep({.isTraffic = true}, {});
        if (step.isAccepted) lastFailure_.clear();
        if (step.isRefused) LogFailure(kTextRefused, log_.Name() + ": " + log_.Line().PortDescription);
        if (step.mail) return HandOver(*step.mail);
        if (step.isOver) return POP3Close();
        if (!step.send.empty()) POP3SendDataRow(step.send);
    }

    void HandOver(const Text& mail) {
        const auto whenStored = [this, session = sessionNumber_](bool isStored) {
            if (session != sessionNumber_) return;
            Act(session_.OnMailHandled(isStored));
            Continue(session);
        };
        taker_.TakeStep(HandleMailMessage(mail, {}, mail_, parts_.clock.Now()), whenStored);
    }

    void POP3SendDataRow(const Text& row) {
        if (socket_->State() != SocketState::Connected || !socket_->SendData(row + "\r\n")) return;
        const bool isSecret = row.starts_with("PASS ");
        taker_.NoteTraffic((isSecret ? "PASS *" : row) + "\r\n", TrafficDirection::Sent);
    }

    Text Server() const { return log_.Line().PortSetting + ":" + std::to_string(log_.Line().PortNumber); }

    CollectorParts parts_;
    PortLog& log_;
    StepTaker& taker_;
    Pop3Settings settings_;
    MailSettings mail_;
    std::unique_ptr<Winsock> socket_;

    MailLines lines_{};
    Pop3Session session_{{}, {}, 0};
    std::uint64_t sessionNumber_ = 0;
    Text lastFailure_{};  // logged, since the last good login
    std::int64_t intervalTimerMs_ = 0;
    std::int64_t connectionTimerMs_ = 0;
    bool isOpen_ = false;
    bool isBusy_ = false;
    bool isContinuing_ = false;  // a later turn of the loop goes on with what waits
};

}  // namespace

std::unique_ptr<Collector> MakePop3Collector(const CollectorParts& parts) {
    return std::make_unique<Pop3Collector>(parts);
}

}  // namespace nordkeep
