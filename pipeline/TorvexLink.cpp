#include "pipeline/TorvexLink.h"

namespace nordkeep {
namespace {

constexpr int kRetryMs = 10'000;
constexpr int kTextNoAnswer = 5222;
constexpr int kTextNoCaller = 5223;
constexpr int kTextClosed = 5224;

}  // namespace

TorvexLink::TorvexLink(const Needs& needs)
    : settings_(needs.settings),
      language_(needs.language),
      outage_(needs.log, needs.language),
      listener_(needs.sockets.NewSocket(SocketKind::Tcp)),
      data_(needs.sockets.NewSocket(SocketKind::Tcp)),
      timer_(needs.loop.NewTimer([this] { KeepUp(); })) {
    listener_->SetEvents({.connectionRequest = [this](SocketRequest request) {
        data_->Close();
        data_->Accept(request);
        outage_.NoteReached(Name());
    }});
    data_->SetEvents({.dataArrival = [this] { data_->GetData(); },
                      .connected = [this] { outage_.NoteReached(Name()); },
                      .closed =
                          [this] {
                              data_->Close();
                              NoteFailure(kTextClosed);
                          },
                      .error =
                          [this](const Text& why) {
                              data_->Close();
                              NoteFailure(why);
                          }});
}

Text TorvexLink::Name() const {
    const Text port = std::to_string(settings_.Port);
    return ConnectsOut() ? "Torvex " + settings_.Address + ":" + port : "Torvex, TCP " + port;
}

void TorvexLink::Start() {
    if (!IsConfigured()) return;
    KeepUp();
    timer_->Start(kRetryMs);
}

void TorvexLink::KeepUp() {
    if (!ConnectsOut()) {
        if (listener_->State() != SocketState::Listening) Listen();
    } else if (!IsConnected()) {
        Connect();
    }
}

void TorvexLink::Listen() {
    listener_->Close();
    listener_->SetLocalPort(settings_.Port);
    if (!listener_->Listen()) NoteFailure(listener_->LastError());
}

void TorvexLink::Connect() {
    // The attempt before had its time.
    if (data_->State() != SocketState::Closed) NoteFailure(kTextNoAnswer);
    data_->Close();
    data_->SetRemoteHost(settings_.Address);
    data_->SetRemotePort(settings_.Port);
    if (!data_->Connect()) NoteFailure(data_->LastError());
}

void TorvexLink::Close() {
    timer_->Stop();
    listener_->Close();
    data_->Close();
}

bool TorvexLink::Send(TextView line) {
    if (IsConnected() && data_->SendData(line)) return true;
    // One that connects out has told already why it is not connected.
    if (IsConfigured()) NoteFailure(kTextNoCaller);
    return false;
}

}  // namespace nordkeep
