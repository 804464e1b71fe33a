#include "ports/Transport.h"
#include "runtime/SerialDevices.h"

namespace nordkeep {
namespace {

constexpr int kTextPort = 1035;
constexpr int kTextClosed = 1028;
constexpr int kTextVanished = 3610;

class SerialTransport final : public Transport {
 public:
    SerialTransport(const TransportParts& parts, PortLog& log, TransportEvents events)
        : settings_(parts.settings), log_(log), events_(std::move(events)), line_(parts.serial.NewLine()) {
        line_->SetOnComm([this](CommEvent event) { OnComm(event); });
    }

    bool IsOpen() const override { return line_->PortOpen(); }

    void Open() override {
        events_.newStream();
        line_->SetDevice(Device());
        line_->SetSettings(log_.Line().PortSetting);
        line_->SetHandshaking(log_.Line().Handshaking);
        if (line_->SetPortOpen(true)) {
            log_.Opened(Address());
        } else {
            log_.OpenFailed(Address(), Device() + ": " + line_->LastError());
        }
    }

    void Close(bool) override {
        if (!line_->PortOpen()) return;
        line_->SetPortOpen(false);
        log_.Information(kTextPort,
                         " '" + log_.Line().PortDescription + "' " + log_.GetLanguageText(kTextClosed));
    }

    Text Take() override { return line_->InBufferCount() == 0 ? Text() : line_->Input(); }

    bool CanSend() const override { return line_->PortOpen(); }

    bool Send(TextView bytes) override { return line_->PortOpen() && line_->Output(bytes); }

 private:
    Text Address() const {
        return "COM" + std::to_string(log_.Line().PortNumber) + ":" + log_.Line().PortSetting;
    }

    Text Device() const { return SerialDeviceOf(settings_, log_.Line().PortNumber); }

    void OnComm(CommEvent event) {
        if (event == CommEvent::Receive) return events_.dataWaiting();
        log_.Failure(kTextVanished, log_.NameAndDescription() + " (" + line_->LastError() + ")");
    }

    const Settings& settings_;
    PortLog& log_;
    TransportEvents events_;
    std::unique_ptr<MSComm> line_;
};

}  // namespace

std::unique_ptr<Transport> MakeSerialTransport(const TransportParts& parts, PortLog& log,
                                               TransportEvents events) {
    return std::make_unique<SerialTransport>(parts, log, std::move(events));
}

}  // namespace nordkeep
