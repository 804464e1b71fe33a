#pragma once

#include "platform/EventLoop.h"
#include "ports/LeftBehind.h"
#include "ports/ReplyQueue.h"
#include "ports/collectors/Collector.h"
#include "ports/formats/LineFormat.h"
#include "ports/formats/ReceivedText.h"
#include "runtime/StallWatch.h"

#include <deque>

namespace nordkeep {

/// What comes from one end of a line: takes the bytes in, lets the format cut telegrams from their front,
/// hands these on and answers the sender once their events are stored.
class Conversation final : public LineListener, private ReplySender {
 public:
    struct Parts {
        EventLoop& loop;
        StallWatch& stalls;
        StepTaker& taker;
        const Clock& clock;
        PortLog& log;
        LeftBehind& leftBehind;
        int purgeSeconds;          // of silence, until half a telegram is thrown away; 0 or less: never
        std::size_t mostReceived;  // bytes that may wait without a complete telegram in them
    };

    explicit Conversation(const Parts& parts) : parts_(parts), replies_(*this) {}
    /// Both outlive this object; called once, before anything comes.
    void Join(Line& line, LineFormat& format) {
        line_ = &line;
        format_ = &format;
    }

    void OnDataWaiting() override;
    void OnNewStream(Text rest) override;
    /// Takes in what is complete.
    void Finish();
    /// Takes the events of a step in, and sends its reply to whoever is there.
    void Act(TelegramStep step, const SocketPeer& sender = {});
    void PurgeHalfTelegram();

 private:
    void SendReply(const SocketPeer& to, TextView bytes, Behind behind) override;

    void TakeChunks();
    /// False when it is told as traffic only.
    bool TakeIn(const Text& bytes);
    void ServeReceived(int most);
    /// False when nothing complete waits.
    bool ServeNext();
    void GoOnLater();
    void DropWhatNeverEnds();
    StepTaker::WhenStored WhenSettled(std::uint64_t receipt, std::optional<ReplyQueue::Ticket> ticket);

    Parts parts_;
    Line* line_ = nullptr;
    LineFormat* format_ = nullptr;
    /// Of the callers who are gone, in their order, and last of whoever is there.
    std::deque<ReceivedText> streams_{1};
    ReplyQueue replies_;
    int lastReceiveSecond_ = 0;  // of the day; 0 when nothing has been received
    bool isContinuing_ = false;  // a later turn of the loop goes on with what waits
};

/// All clocks of this moment.
LineClock ReadLineClock(const Clock& clock);

}  // namespace nordkeep
