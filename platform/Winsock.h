#pragma once

#include "platform/FileTree.h"
#include "platform/Text.h"

#include <cstdint>
#include <functional>
#include <memory>

namespace nordkeep {

/// States of a socket, with the numbers that the logic compares.
enum class SocketState {
    Closed = 0,
    Open = 1,  // a bound UDP socket
    Listening = 2,
    Resolving = 4,
    Connecting = 6,
    Connected = 7,
    Closing = 8,
    Error = 9
};

enum class SocketKind { Tcp, Udp };

/// A caller that waits to be accepted. Valid only inside the ConnectionRequest event.
using SocketRequest = std::uintptr_t;

/// What a socket tells. Every member may be empty. Events arrive from the event loop, never from inside an
/// operation of the socket, and DataArrival can nest: it comes again while its own handler waits.
struct SocketEvents {
    std::function<void(SocketRequest)> connectionRequest{};
    std::function<void()> dataArrival{};
    std::function<void()> connected{};
    /// The peer has closed; not told for an own Close. It comes behind the tasks of that turn of the loop,
    /// and until then the state is Connected: a reply still reaches a peer that has closed only its sending
    /// half.
    std::function<void()> closed{};
    /// The text is the system's description of the error. A peer's close is no error.
    std::function<void(const Text&)> error{};
    /// Everything handed to SendData has left.
    std::function<void()> sendComplete{};
};

/// Whether a connection is encrypted from its first byte on. The certificate of a peer that is called must be
/// good for the remote host's name. With a certificate of its own a side proves itself, by TLS 1.3 or later,
/// and takes no peer without a certificate of the authority; a side that is called needs one.
struct SocketTls {
    bool isOn = false;
    /// PEM certificates that are trusted, besides the system's if there is no certificate of its own; empty:
    /// none.
    NativePath authorityFile{};
    NativePath certificateFile{};  // PEM, the own certificate and those between it and the authority's
    NativePath keyFile{};          // PEM, RSA or EC, without a password
};

/// Who has sent a datagram. An empty one is nobody in particular.
struct SocketPeer {
    Text address{};
    int port = 0;
    friend bool operator==(const SocketPeer&, const SocketPeer&) = default;
};

/// One socket slot. It lives as long as the program and is used for one connection after the other.
class Winsock {
 public:
    virtual ~Winsock() = default;
    virtual void SetEvents(SocketEvents events) = 0;
    /// For the next Connect or Accept of a TCP socket; it is Connected when the peer has proved who it is,
    /// and until then Connecting.
    virtual void SetTls(const SocketTls& tls) = 0;

    virtual void SetLocalPort(int port) = 0;
    virtual void SetRemotePort(int port) = 0;
    virtual void SetRemoteHost(const Text& host) = 0;
    virtual int LocalPort() const = 0;
    /// Dotted quad of the peer, kept until the next connection; empty before the first. On a listening socket
    /// it is the caller, inside ConnectionRequest.
    virtual Text RemoteHostIP() const = 0;

    /// Ends what the socket does; data handed to SendData before still leaves. State is Closed at once.
    virtual void Close() = 0;
    /// Fixes the local address (empty: any) and port for the next Listen, Connect or UDP use.
    /// On UDP it opens the socket. False, with LastError, when the address cannot be had.
    virtual bool Bind(int port, const Text& address) = 0;
    /// Listens on LocalPort and the bound address. False, with LastError, on failure.
    virtual bool Listen() = 0;
    /// While held, who calls this listening socket, now or later, waits with the system and is told of behind
    /// it.
    virtual void HoldCallers(bool /*isHeld*/) {}
    /// Starts a TCP connection to RemoteHost and RemotePort; the outcome comes as an event. On UDP it opens
    /// the socket (unless Bind has) and makes RemoteHost and RemotePort the first destination.
    virtual bool Connect() = 0;
    /// Takes over a caller inside ConnectionRequest of a listening socket.
    virtual void Accept(SocketRequest request) = 0;
    virtual SocketState State() const = 0;
    /// Queues the bytes; false when the socket cannot send. On UDP the destination is the sender of the
    /// last datagram, before one the remote of Connect.
    virtual bool SendData(TextView bytes) = 0;
    /// On UDP: sends to whoever that is instead.
    virtual bool SendDataTo(const SocketPeer& /*peer*/, TextView bytes) { return SendData(bytes); }
    /// Hands waiting data to the system now instead of at the next turn of the loop.
    virtual void Flush() = 0;
    /// Takes everything that has arrived; on UDP one datagram.
    virtual Text GetData() = 0;
    /// The same with what the system holds and no event has told of yet; the last thing ahead of a Close.
    virtual Text GetRest() { return GetData(); }
    /// On UDP: who has sent the datagram that was taken last.
    virtual SocketPeer Sender() const { return {}; }
    /// Bytes handed to SendData that have not left yet.
    virtual std::size_t UnsentBytes() const = 0;
    /// The system's description of the last failure.
    virtual Text LastError() const = 0;
};

class SocketFactory {
 public:
    virtual ~SocketFactory() = default;
    virtual std::unique_ptr<Winsock> NewSocket(SocketKind kind) = 0;
};

}  // namespace nordkeep
