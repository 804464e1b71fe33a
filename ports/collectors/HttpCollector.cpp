#include "ports/collectors/Collector.h"
#include "ports/formats/VirtualReceiver.h"
#include "runtime/SettingTable.h"
#include "runtime/SharedTexts.h"

#include <algorithm>
#include <set>

namespace nordkeep {
namespace {

constexpr int kTextNoAnswer = 1036;
constexpr int kTextSeconds = 1037;
constexpr int kTextServiceError = 1133;
constexpr int kTextReplyCut = 3615;
constexpr int kTextNotUnderstood = 5329;
constexpr int kFirstErrorStatus = 400;

constexpr std::size_t kMostOfReply = 4096;
constexpr std::size_t kMostOfSection = 4096;
constexpr std::size_t kShownOfError = 200;
constexpr const char* kSection = "VirtualReceivers";

/// Polls a web service for one virtual receiver after the other. A round takes the receivers as the settings
/// file has them at that time; one that has events is asked several times in a row.
class HttpCollector final : public Collector {
 public:
    HttpCollector(const CollectorParts& parts)
        : parts_(parts),
          log_(parts.log),
          taker_(parts.taker),
          settings_(LoadSettings(parts.settings, PollSettingRows(), log_.Name())),
          inet_(parts.inet.NewInet()) {
        if (!settings_.HTTPCAFile.empty())
            inet_->SetAuthorityFile(parts.dataFolder.Resolve(settings_.HTTPCAFile));
    }

    bool IsOpen() const override { return isOpen_; }

    void Open() override {
        isOpen_ = true;
        log_.Opened(log_.Line().PortSetting);
    }

    void Close(bool) override {
        if (!isOpen_) return;
        isOpen_ = false;
        failing_.clear();
        inet_->Cancel();
        lines_.clear();
        state_ = State::Begin;
        countdownMs_ = 0;
    }

    FarEnd End() const override {
        FarEnd end;
        end.isMissed = !failing_.empty();
        end.who = log_.Line().PortSetting;
        return end;
    }

    void Tick(const CollectorTick& tick) override {
        // The next request tells the service what has arrived: not before that is stored.
        if (!isOpen_ || isStoring_) return;
        if (lines_.empty() && state_ == State::Begin) {
            if (!tick.mayBegin) return;
            BeginRoundWhenDue(tick.tickMs);
        }
        if (lines_.empty()) return;
        if (state_ == State::Begin) {
            current_ = FindOrAdd(lines_.front());
            Current().m_GotData = false;
        }
        PollVirtualReceiver(tick);
        if (state_ == State::Begin) GoOn();
    }

 private:
    enum class State { Begin, AwaitCancel, Send, AwaitReply, Read };

    cVirtualReceiver& Current() { return receivers_[current_]; }

    void BeginRoundWhenDue(int tickMs) {
        if (countdownMs_ > 0) {
            countdownMs_ -= tickMs;
            return;
        }
        const bool isSecure = EqualsNoCase(log_.Line().PortSetting.substr(0, 8), "HTTPS://");
        inet_->SetProtocol(isSecure ? InetProtocol::Https : InetProtocol::Http);
        ReadSection();
        for (cVirtualReceiver& receiver : receivers_) receiver.m_PollCount = 0;
        countdownMs_ = settings_.HTTPGetInterval * 1000;
    }

    void ReadSection() {
        std::size_t size = 0;
        for (const Text& key : parts_.settings.ListKeys(kSection, "Settings\\" + log_.Name() + ".ini")) {
            if (key.empty() || size >= kMostOfSection) return;
            const Text value = parts_.settings.ReadPortIni(kSection, key, "", log_.Name());
            const Text line = (key + "=" + value).substr(0, kMostOfSection - size);
            size += line.size() + 1;
            lines_.push_back(line);
        }
    }

    /// A receiver keeps the password that it was first seen with.
    std::size_t FindOrAdd(const Text& line) {
        const Text csid = CsidOf(line);
        const auto known = std::ranges::find(receivers_, csid, &cVirtualReceiver::m_CSID);
        const auto index = static_cast<std::size_t>(known - receivers_.begin());
        if (known == receivers_.end()) receivers_.push_back(ReceiverOf(line));
        return index;
    }

    void PollVirtualReceiver(const CollectorTick& tick) {
        switch (state_) {
            case State::Begin:
                if (!inet_->StillExecuting()) {
                    state_ = State::Send;
                    break;
                }
                // One tick is enough for a request that only has to be given up.
                timerMs_ = settings_.HTTPTimeout;
                inet_->Cancel();
                state_ = State::AwaitCancel;
                break;
            case State::AwaitCancel:
                if (HasEndedOrTimedOut(tick.tickMs)) state_ = State::Send;
                break;
            case State::Send:
                SendRequest();
                timerMs_ = settings_.HTTPTimeout * 1000LL;
                state_ = State::AwaitReply;
                break;
            case State::AwaitReply:
                if (HasEndedOrTimedOut(tick.tickMs)) state_ = State::Read;
                break;
            case State::Read:
                state_ = State::Begin;
                ReadReply();
                break;
        }
    }

    bool HasEndedOrTimedOut(int tickMs) {
        if (inet_->LastState() != InetState::None && !inet_->StillExecuting()) return true;
        timerMs_ -= tickMs;
        return timerMs_ <= 0;
    }

    void SendRequest() {
        const Text url = PollUrl(log_.Line().PortSetting, Current(), parts_.inet.Md5(PassInput(Current())));
        taker_.NoteTraffic(url, TrafficDirection::Sent);
        inet_->Execute(url);
    }

    void ReadReply() {
        if (inet_->LastState() != InetState::Complete) return NoteNoAnswer();
        const Text reply = inet_->GetChunk(kMostOfReply);
        taker_.NoteTraffic(reply, TrafficDirection::Received);
        if (taker_.IsMuted()) return;
        PollReply read = ReadPollReply(reply, Current(), parts_.clock.Now());
        LogReply(read, IsPollReply(reply) || inet_->StatusCode() < kFirstErrorStatus);
        HandOver(std::move(read));
    }

    /// One that is still on its way has had its time; it must not fill the memory.
    void NoteNoAnswer() {
        const Text reason = inet_->LastError();
        inet_->Cancel();
        const Text port = " " + log_.Line().PortDescription + " ";
        if (!reason.empty()) return NoteFailure(port + reason + CurrentTail());
        NoteFailure(port + log_.GetLanguageText(kTextNoAnswer) + " " + std::to_string(settings_.HTTPTimeout) +
                    " " + log_.GetLanguageText(kTextSeconds) + CurrentTail());
    }

    /// A service that is out of order for a night writes one line for each receiver.
    void NoteFailure(const Text& tail) {
        if (failing_.insert(Current().m_CSID).second) log_.Failure(kTextPort, tail);
    }

    void LogReply(const PollReply& read, bool isUnderstood) {
        if (!isUnderstood) {
            NoteFailure(" " + log_.Line().PortDescription + " " + log_.GetLanguageText(kTextNotUnderstood) +
                        " " + std::to_string(inet_->StatusCode()) + CurrentTail());
        } else if (read.error.empty()) {
            failing_.erase(Current().m_CSID);
        } else {
            NoteFailure(" " + log_.Line().PortDescription + " " + log_.GetLanguageText(kTextServiceError) +
                        CurrentTail() + " -> " + read.error.substr(0, kShownOfError));
        }
        if (read.isCut) log_.Failure(kTextReplyCut, log_.NameAndDescription() + CurrentTail());
    }

    void HandOver(PollReply read) {
        isStoring_ = true;
        const auto keep = [this, index = current_, number = read.eventNumber](bool isStored) {
            isStoring_ = false;
            if (!number) return;
            // What could not be stored comes again, in the next round.
            const bool isInHand = !lines_.empty() && CsidOf(lines_.front()) == receivers_[index].m_CSID;
            if (isStored) {
                receivers_[index].m_EventNumber = *number;
            } else if (isInHand) {
                lines_.erase(lines_.begin());
            }
        };
        taker_.TakeStep(std::move(read.step), keep);
    }

    void GoOn() {
        cVirtualReceiver& receiver = Current();
        ++receiver.m_PollCount;
        if (receiver.m_GotData && receiver.m_PollCount < settings_.HTTPPolls) return;
        lines_.erase(lines_.begin());
    }

    Text CurrentTail() { return " (CSID=" + Current().m_CSID + ") " + Current().m_Description; }

    CollectorParts parts_;
    PortLog& log_;
    StepTaker& taker_;
    PollSettings settings_;
    std::unique_ptr<Inet> inet_;

    std::vector<cVirtualReceiver> receivers_{};
    std::set<Text> failing_{};   // by CSID; each has been logged
    std::vector<Text> lines_{};  // of the section, from the receiver in hand on
    std::size_t current_ = 0;
    State state_ = State::Begin;
    std::int64_t timerMs_ = 0;
    std::int64_t countdownMs_ = 0;
    bool isOpen_ = false;
    bool isStoring_ = false;
};

}  // namespace

std::unique_ptr<Collector> MakeHttpCollector(const CollectorParts& parts) {
    return std::make_unique<HttpCollector>(parts);
}

}  // namespace nordkeep
