#include "platform/AnyAddress.h"
#include "ports/lines/Line.h"

namespace nordkeep {
namespace {

constexpr int kTextAtUdp = 1130;
constexpr int kTextSocketOfPort = 1131;

class UdpLine final : public Line {
 public:
    UdpLine(const LineParts& parts, LineListener& listener)
        : log_(parts.log), listener_(listener), socket_(parts.sockets.NewSocket(SocketKind::Udp)) {
        socket_->SetEvents({.dataArrival = [this] { listener_.OnDataWaiting(); },
                            .closed = [this] { Close(false); },
                            .error = [this](const Text& error) { OnError(error); }});
    }

    bool IsOpen() const override { return socket_->State() == SocketState::Open; }

    void Open() override {
        listener_.OnNewStream({});
        const LineSettings& line = log_.Line();
        socket_->Close();
        if (!log_.HasListenNumber(Address())) return;
        socket_->SetRemotePort(line.PortNumber);
        socket_->SetRemoteHost(line.PortSetting);
        if (!socket_->Bind(line.PortNumber, LocalAddress())) {
            return log_.OpenFailed(Address(), socket_->LastError());
        }
        // Where to send before anybody has sent here; without a host there is no such place.
        if (!line.PortSetting.empty() && line.PortSetting != "0") socket_->Connect();
        log_.Opened(Address());
    }

    void Close(bool isShuttingDown) override {
        if (socket_->State() == SocketState::Closed) return;
        socket_->Close();
        log_.Closed(isShuttingDown, Address(), {.at = kTextAtUdp, .subject = kTextSocketOfPort});
    }

    Text Take() override { return socket_->GetData(); }

    bool CanSend() const override { return IsOpen(); }

    bool Send(TextView bytes, Behind) override {
        return !bytes.empty() && IsOpen() && socket_->SendData(bytes);
    }

    SocketPeer Sender() const override { return socket_->Sender(); }

    bool SendTo(const SocketPeer& peer, TextView bytes, Behind behind) override {
        if (peer == SocketPeer()) return Send(bytes, behind);
        return !bytes.empty() && IsOpen() && socket_->SendDataTo(peer, bytes);
    }

 private:
    Text LocalAddress() const {
        const Text& address = log_.Line().BindSocketToAddress;
        return address.empty() ? Text(kAnyAddress) : address;
    }

    Text Address() const { return log_.Line().PortSetting + ":" + std::to_string(log_.Line().PortNumber); }

    void OnError(const Text& error) {
        log_.ConnectionFailed(Address(), error);
        socket_->Close();
    }

    PortLog& log_;
    LineListener& listener_;
    std::unique_ptr<Winsock> socket_;
};

}  // namespace

std::unique_ptr<Line> MakeUdpLine(const LineParts& parts, LineListener& listener) {
    return std::make_unique<UdpLine>(parts, listener);
}

}  // namespace nordkeep
