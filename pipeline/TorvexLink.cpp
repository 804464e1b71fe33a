#include "pipeline/TorvexLink.h"

namespace nordkeep {
namespace {

constexpr int kRetryMs = 10'000;

}  // namespace

TorvexLink::TorvexLink(const TorvexSettings& settings, SocketFactory& sockets, EventLoop& loop)
    : settings_(settings),
      listener_(sockets.NewSocket(SocketKind::Tcp)),
      data_(sockets.NewSocket(SocketKind::Tcp)),
      timer_(loop.NewTimer([this] { KeepUp(); })) {
    listener_->SetEvents({.connectionRequest = [this](SocketRequest request) {
        data_->Close();
        data_->Accept(request);
    }});
    data_->SetEvents({.dataArrival = [this] { data_->GetData(); },
                      .closed = [this] { data_->Close(); },
                      .error = [this](const Text&) { data_->Close(); }});
}

void TorvexLink::Start() {
    if (!IsConfigured()) return;
    KeepUp();
    timer_->Start(kRetryMs);
}

void TorvexLink::KeepUp() {
    if (!ConnectsOut()) {
        if (listener_->State() == SocketState::Listening) return;
        listener_->Close();
        listener_->SetLocalPort(settings_.Port);
        listener_->Listen();
        return;
    }
    if (IsConnected()) return;
    data_->Close();
    data_->SetRemoteHost(settings_.Address);
    data_->SetRemotePort(settings_.Port);
    data_->Connect();
}

void TorvexLink::Close() {
    timer_->Stop();
    listener_->Close();
    data_->Close();
}

bool TorvexLink::Send(TextView line) {
    return IsConnected() && data_->SendData(line);
}

}  // namespace nordkeep
