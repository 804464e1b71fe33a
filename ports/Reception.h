#pragma once

#include "ports/Conversation.h"
#include "ports/lines/OnceAnHour.h"

namespace nordkeep {

/// What comes on the line of a port.
class Reception : public Collector {
 public:
    struct Parts {
        PortType type;
        LineParts line;
        EventLoop& loop;
        StallWatch& stalls;
        StepTaker& taker;
        int purgeSeconds;  // of silence, until half a telegram is thrown away; 0 or less: never
    };

    /// Takes in what is complete and what the format still holds back, when the program ends.
    virtual void Finish() = 0;
    /// None where there is not one line.
    virtual Line* TheLine() { return nullptr; }
    /// What the format makes of a telegram that it has seen before the program was killed.
    TelegramStep LookAgain(TextView telegram, OleDate arrived);
    /// The senders that the format tells apart, by name.
    std::vector<LineAccount> Accounts() const { return format_->Accounts(); }
    /// The clock of the far end is set as soon as the line can send.
    void RequestClock() { isClockWanted_ = true; }

 protected:
    Reception(const Parts& parts, std::unique_ptr<LineFormat> format)
        : parts_(parts), format_(std::move(format)) {}

    /// What the format does at this tick, on a line that is open, and that somebody listens to.
    TelegramStep Due(int tickMs, bool isOpen, bool canSend);
    TelegramStep DueAtTheEnd();
    /// Tells, now and then, that who calls has to wait until what others have left is worked off.
    void NoteWait();
    Conversation::Parts PartsOfConversation(std::size_t mostReceived, LeftBehind& leftBehind) const;

    Parts parts_;
    std::unique_ptr<LineFormat> format_;

 private:
    bool isClockWanted_ = false;
    OnceAnHour waitLog_{};
};

/// A line with one end.
std::unique_ptr<Reception> MakeLineReception(const Reception::Parts& parts,
                                             std::unique_ptr<LineFormat> format);
/// A listening port of TCP that serves up to `most` callers at once.
std::unique_ptr<Reception> MakeCallersReception(const Reception::Parts& parts,
                                                std::unique_ptr<LineFormat> format, std::size_t most);

}  // namespace nordkeep
