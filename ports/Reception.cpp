#include "ports/Reception.h"

namespace nordkeep {
namespace {

// What a line may hold without a complete telegram in it.
constexpr std::size_t kMostReceived = 1 << 20;
constexpr int kTextCallersWait = 5261;

class LineReception final : public Reception {
 public:
    LineReception(const Parts& parts, std::unique_ptr<LineFormat> format)
        : Reception(parts, std::move(format)),
          talk_(PartsOfConversation(kMostReceived, leftBehind_)),
          line_(MakeLine(parts.type, parts.line, talk_)) {
        talk_.Join(*line_, *format_);
    }

    bool IsOpen() const override { return line_->IsOpen(); }
    void Open() override { line_->Open(); }
    void Close(bool isShuttingDown) override { line_->Close(isShuttingDown); }
    FarEnd End() const override { return line_->End(); }
    Line* TheLine() override { return line_.get(); }

    void Tick(const CollectorTick& tick) override {
        talk_.PurgeHalfTelegram();
        talk_.Act(Due(tick.tickMs, line_->IsOpen(), line_->CanSend()));
    }

    void Finish() override {
        talk_.Finish();
        talk_.Act(DueAtTheEnd());
    }

 private:
    LeftBehind leftBehind_{[this](bool isHeld) {
        if (isHeld) NoteWait();
        line_->HoldCallers(isHeld);
    }};
    Conversation talk_;
    std::unique_ptr<Line> line_;
};

}  // namespace

TelegramStep Reception::LookAgain(TextView telegram, OleDate arrived) {
    LineClock clock = ReadLineClock(parts_.line.clock);
    clock.now = arrived;
    return format_->Next(telegram, clock);
}

TelegramStep Reception::Due(int tickMs, bool isOpen, bool canSend) {
    const Clock& clock = parts_.line.clock;
    TelegramStep step = format_->Due({.now = clock.Now(),
                                      .monotonicMs = clock.MonotonicMs(),
                                      .tickMs = tickMs,
                                      .isOpen = isOpen,
                                      .canSend = canSend,
                                      .isClockWanted = isClockWanted_});
    if (canSend) isClockWanted_ = false;
    return step;
}

TelegramStep Reception::DueAtTheEnd() {
    const Clock& clock = parts_.line.clock;
    return format_->Due({.now = clock.Now(), .monotonicMs = clock.MonotonicMs(), .isProgramEnding = true});
}

void Reception::NoteWait() {
    if (!waitLog_.IsDue(parts_.line.clock.MonotonicMs())) return;
    parts_.line.log.Information(kTextCallersWait, " " + parts_.line.log.NameAndDescription());
}

Conversation::Parts Reception::PartsOfConversation(std::size_t mostReceived, LeftBehind& leftBehind) const {
    return {.loop = parts_.loop,
            .stalls = parts_.stalls,
            .taker = parts_.taker,
            .clock = parts_.line.clock,
            .log = parts_.line.log,
            .leftBehind = leftBehind,
            .purgeSeconds = parts_.purgeSeconds,
            .mostReceived = mostReceived};
}

std::unique_ptr<Reception> MakeLineReception(const Reception::Parts& parts,
                                             std::unique_ptr<LineFormat> format) {
    return std::make_unique<LineReception>(parts, std::move(format));
}

}  // namespace nordkeep
