#pragma once

#include "ports/ReplyQueue.h"
#include "ports/collectors/Collector.h"
#include "ports/formats/LineFormat.h"
#include "ports/formats/ReceivedText.h"
#include "runtime/StallWatch.h"

#include <deque>

namespace nordkeep {

/// What comes on the line of a port: takes the bytes in, lets the format cut telegrams from their front,
/// hands these on and answers the sender once their events are stored.
class Reception final : public Collector, private LineListener, private ReplySender {
 public:
    struct Parts {
        PortType type;
        LineParts line;
        EventLoop& loop;
        StallWatch& stalls;
        StepTaker& taker;
        int purgeSeconds;  // of silence, until half a telegram is thrown away; 0 or less: never
    };

    Reception(const Parts& parts, std::unique_ptr<LineFormat> format);

    bool IsOpen() const override { return line_->IsOpen(); }
    void Open() override { line_->Open(); }
    void Close(bool isShuttingDown) override { line_->Close(isShuttingDown); }
    void Tick(const CollectorTick& tick) override;
    FarEnd End() const override { return line_->End(); }
    /// Takes in what is complete and what the format still holds back, when the program ends.
    void Finish();
    /// What the format makes of a telegram that it has seen before the program was killed.
    TelegramStep LookAgain(TextView telegram, OleDate arrived) { return format_->Next(telegram, arrived); }
    /// The clock of the far end is set as soon as the line can send.
    void RequestClock() { isClockWanted_ = true; }
    Line& TheLine() { return *line_; }

 private:
    void OnDataWaiting() override;
    void OnNewStream(Text rest) override;
    void SendReply(TextView bytes, Behind behind) override;

    void TakeChunks();
    /// False when it is told as traffic only.
    bool TakeIn(const Text& bytes);
    void ServeReceived(int most);
    /// False when nothing complete waits.
    bool ServeNext();
    void GoOnLater();
    void DropWhatNeverEnds();
    std::size_t LeftBehind() const;
    void Act(TelegramStep step);
    void PurgeHalfTelegram();

    Parts parts_;
    const Clock& clock_;
    PortLog& log_;
    std::unique_ptr<Line> line_;
    std::unique_ptr<LineFormat> format_;
    /// Of the callers who are gone, in their order, and last of whoever is there.
    std::deque<ReceivedText> streams_{1};
    ReplyQueue replies_;
    int lastReceiveSecond_ = 0;  // of the day; 0 when nothing has been received
    bool isContinuing_ = false;  // a later turn of the loop goes on with what waits
    bool isClockWanted_ = false;
};

}  // namespace nordkeep
