#pragma once

#include "network/NetworkParts.h"
#include "network/messages/Frames.h"
#include "network/messages/Messages.h"

#include <memory>

namespace nordkeep {

/// Who takes what the server sends without having been asked.
class ServerPushes {
 public:
    virtual ~ServerPushes() = default;
    virtual void HandleMessage(std::uint8_t number, TextView payload) = 0;
    /// A new connection is about to be tried: what is mirrored is no longer true.
    virtual void ConnectionStarts() = 0;
    /// The request that was pending has ended, with or without an answer.
    virtual void RequestEnded() = 0;
};

/// The client's side of the connection: sends, asks and waits for the answer, and notices the loss. There is
/// one request at a time. Once lost, nothing is sent until ConnectToServer has succeeded.
class ServerLink {
 public:
    explicit ServerLink(const NetworkParts& needs);

    /// Without pushes their messages are dropped.
    void SetPushes(ServerPushes* pushes) { pushes_ = pushes; }

    /// Tries the server's addresses in turn, for at most 30 seconds together; first the one that answered
    /// last.
    bool ConnectToServer();
    /// The address that is or was tried last.
    const Text& ServerAddress() const { return addresses_[current_]; }
    /// It is not the first of the settings.
    bool IsAtStandby() const { return current_ > 0; }
    void Close();
    bool IsConnectionLost() const { return isLost_; }
    bool IsRequestPending() const { return isPending_; }
    /// "address is connected to server host:port", for the log.
    Text ConnectionText() const;

    /// False when the message cannot be sent; the first time this is the loss of the connection.
    bool SendToServer(Message message, TextView payload = {});

    // Requests. None, and the connection is lost, when no answer comes in time; none also while another
    // request is pending.
    bool RequestInitialData() { return SendToServerAndWait(Message::InitialData, {}); }
    bool RequestAllEvents() { return SendToServerAndWait(Message::AllEvents, {}); }
    std::optional<std::int32_t> RequestVersion();
    std::optional<Text> RequestTextFile(TextView path);
    std::optional<Text> RequestBinaryFile(TextView path);
    /// As FileDateToLong.
    std::optional<std::int32_t> RequestFileTime(TextView path);
    /// The names, each with a "|" behind it.
    std::optional<Text> RequestScan(TextView pattern);
    bool RequestMakeDir(TextView path);

 private:
    bool ConnectTo(const Text& address, std::int64_t mostMs);
    bool SendToServerAndWait(Message message, TextView payload);
    bool AwaitAnswer();
    std::optional<Text> RequestFile(Message message, TextView path);
    void OnData();
    void OnClosed();
    void OnError(const Text& description);
    void HandleFrames();
    void HandleFrame(const Frame& frame);
    bool TakeAnswer(Message message, TextView payload);
    void Lose(const Text& reason = {});

    NetworkParts needs_;
    std::unique_ptr<Winsock> socket_;
    ServerPushes* pushes_ = nullptr;
    FrameBuffer buffer_{};
    std::vector<Text> addresses_;
    std::size_t current_ = 0;
    bool hasAnswered_ = true;  // the server at the present address, ever since it was tried
    bool isLost_ = true;
    bool isPending_ = false;
    Text text_{};              // the last answer 18, 21 or 22
    std::int32_t number_ = 0;  // the last answer 20 or 23
};

}  // namespace nordkeep
