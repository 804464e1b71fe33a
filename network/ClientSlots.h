#pragma once

#include "network/NetworkParts.h"
#include "network/PeerLog.h"
#include "network/messages/Frames.h"

#include <array>
#include <memory>
#include <span>

namespace nordkeep {

/// How many clients a server has at the same time.
inline constexpr int kSlotCount = 8;

/// What a server does with the messages of its clients.
class SlotHandler {
 public:
    virtual ~SlotHandler() = default;
    virtual void HandleMessage(int slot, std::uint8_t number, TextView payload) = 0;
    /// A client has come into the slot.
    virtual void ClientCame(int) {}
    /// All that the client was sent has left.
    virtual void SendCompleted(int) {}
    /// A slice of what a request of this slot still has to do; true while more is left. Asked for by
    /// RequestTurn.
    virtual bool ContinueWork(int) { return false; }
};

/// The server's side of the connections: who may call, eight slots with their buffers, and the sending to
/// one, all or all but one of them. What the messages mean is the handler's.
class ClientSlots {
 public:
    explicit ClientSlots(const NetworkParts& needs);

    /// Messages that arrive without a handler are dropped.
    void SetHandler(SlotHandler* handler) { handler_ = handler; }

    /// False when the port cannot be had; LastError tells why.
    bool Listen();
    Text LastError() const { return listener_->LastError(); }
    int ConnectedCount() const;
    bool IsConnected(int slot) const;
    /// The client's address, kept from its call on for all lines in the log.
    const Text& AddressOf(int slot) const { return At(slot).address; }

    /// Bytes that the client has been sent and has not taken yet.
    std::size_t UnsentBytes(int slot) const { return At(slot).socket->UnsentBytes(); }
    void SendTo(int slot, Message message, TextView payload);
    /// One message for each payload, handed to the system in one go.
    void SendEach(int slot, Message message, std::span<const Text> payloads);
    void SendToAll(Message message, TextView payload) { SendToAllBut(-1, message, payload); }
    void SendToAllBut(int slot, Message message, TextView payload);

    /// Has ContinueWork called for every slot in a later turn of the loop, so that other lines come first.
    void RequestTurn();

    /// Counts the time of a tick, and about once a second closes the clients of which nothing has been heard
    /// for five intervals.
    void Supervise(int elapsedMs);
    /// Tells the clients that the server goes, waits up to two seconds until that has left, and closes.
    void Shutdown();

    /// One line about a client, in the log.
    void Log(int slot, TextView text, LogKind kind) { log_.Write(AddressOf(slot), text, kind); }

 private:
    struct Slot {
        std::unique_ptr<Winsock> socket{};
        Text address{};
        FrameBuffer buffer{};
        std::int64_t lastHeardMs = 0;
        bool isWelcome = false;  // it is a client: an encrypted one has proved who it is
        // A later turn goes on with them; what arrives meanwhile stays in the system.
        bool hasFramesLeft = false;
        bool hasPeerLeft = false;
        bool isSendCompleted = false;
    };

    Slot& At(int slot) { return slots_[static_cast<std::size_t>(slot)]; }
    const Slot& At(int slot) const { return slots_[static_cast<std::size_t>(slot)]; }
    SocketEvents EventsOf(int slot);

    void OnCall(SocketRequest request);
    void Refuse(Winsock& socket, const Text& address, int textNumber);
    int FreeSlot() const;
    void OnData(int slot);
    /// The caller is a client from now on.
    void Welcome(int slot);
    void OnClosed(int slot);
    void OnError(int slot, const Text& description);
    void OnSendComplete(int slot);
    bool HandleFrames(int slot);
    void TakeTurn();
    void LetGo(int slot);
    void CloseSlot(int slot);
    /// The frame of a message, which stands in the traffic log.
    Text NotedFrame(Message message, TextView payload);
    void WriteClientSocket(int slot, TextView frame);
    Text Line(int textNumber, const Text& address) const;

    NetworkParts needs_;
    PeerLog log_;
    std::unique_ptr<Winsock> listener_;
    std::array<Slot, kSlotCount> slots_{};
    std::unique_ptr<Winsock> refusal_{};  // takes the calls that find no free slot
    SlotHandler* handler_ = nullptr;
    int supervisionMs_ = 0;
    bool isTurnRequested_ = false;
    std::shared_ptr<bool> life_ = std::make_shared<bool>(true);  // for turns that come after the end
};

/// True when `caller` stands in the list: "*" alone is anybody; else addresses between commas, compared as
/// they stand, up to the first empty one.
bool IsAllowedToCall(TextView clientAddresses, TextView caller);

}  // namespace nordkeep
