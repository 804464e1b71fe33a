#pragma once

#include "platform/Clock.h"
#include "platform/Winsock.h"
#include "ports/lines/Line.h"
#include "ports/lines/OnceAnHour.h"

#include <memory>
#include <optional>
#include <vector>

namespace nordkeep {

/// Who talks with the callers of a listening socket. A caller has a slot, from 0; the slot is another's when
/// he has gone.
class CallerListener {
 public:
    virtual ~CallerListener() = default;
    virtual void OnCall(std::size_t slot) = 0;
    /// Bytes wait to be taken. Can come nested.
    virtual void OnData(std::size_t slot) = 0;
    /// He has gone, and left `rest` behind. His slot is free, or has been given to another already, whose
    /// OnCall follows.
    virtual void OnGone(std::size_t slot, Text rest) = 0;
    /// He has been idle longest and has to make room: the moment for a last word. OnGone follows.
    virtual void OnPushedOff(std::size_t slot) = 0;
};

/// A listening socket and its callers, up to a number of them.
class CallerTable {
 public:
    struct Parts {
        SocketFactory& sockets;
        const Clock& clock;
        PortLog& log;
        CallerListener& listener;
        std::size_t most = 1;
    };

    explicit CallerTable(const Parts& parts);

    /// Listens as the settings of the line say, with a line in the log; `place` and `name` are what that line
    /// shows.
    void Open(const Text& place, TextView name);
    bool IsOpen() const { return server_->State() == SocketState::Listening; }
    /// Who is there; of several the one who has called last, with how many others.
    FarEnd End() const;
    /// As Winsock's.
    void HoldCallers(bool isHeld) { server_->HoldCallers(isHeld); }
    /// No caller is told; who had one forgets them.
    void Close();

    /// How many slots there are by now.
    std::size_t Size() const { return slots_.size(); }
    bool IsUsed(std::size_t slot) const { return slots_[slot]->isUsed; }
    Winsock& SocketOf(std::size_t slot) { return *slots_[slot]->socket; }
    /// The caller has done something.
    void NoteLife(std::size_t slot) { slots_[slot]->lastLifeMs = parts_.clock.MonotonicMs(); }
    /// Milliseconds since then.
    std::int64_t IdleMs(std::size_t slot) const {
        return parts_.clock.MonotonicMs() - slots_[slot]->lastLifeMs;
    }
    /// Ends the call; what has been sent still leaves. Nobody is told.
    void HangUp(std::size_t slot);

 private:
    struct Slot {
        std::unique_ptr<Winsock> socket{};
        bool isUsed = false;
        std::int64_t lastLifeMs = 0;
    };

    void LetIn(SocketRequest request);
    std::size_t TakeFreeSlot();
    std::size_t NewSlot();
    /// What he has left behind.
    Text PushOffIdlest();
    void LogFull();
    void LetGo(std::size_t slot);

    Parts parts_;
    std::unique_ptr<Winsock> server_;
    std::vector<std::unique_ptr<Slot>> slots_{};  // one that has been made stays
    std::vector<std::size_t> free_{};
    Text lastCaller_{};
    OnceAnHour isFullLog_{};
};

}  // namespace nordkeep
