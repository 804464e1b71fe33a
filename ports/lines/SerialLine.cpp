#include "ports/lines/Line.h"
#include "ports/lines/SerialSetting.h"
#include "runtime/SerialDevices.h"
#include "runtime/SharedTexts.h"

#include <utility>

namespace nordkeep {
namespace {

constexpr int kTextVanished = 3610;
constexpr int kTextGarbage = 5328;

class SerialLine final : public Line {
 public:
    SerialLine(const LineParts& parts, LineListener& listener)
        : settings_(parts.settings), log_(parts.log), listener_(listener), line_(parts.serial.NewLine()) {
        line_->SetOnComm([this](CommEvent event) { OnComm(event); });
    }

    bool IsOpen() const override { return line_->PortOpen(); }

    void Open() override {
        listener_.OnNewStream({});
        TellGarbage();
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
        log_.Information(
            kTextPort, " '" + log_.Line().PortDescription + "' " + log_.GetLanguageText(kTextHasBeenClosed));
    }

    Text Take() override { return line_->InBufferCount() == 0 ? Text() : line_->Input(); }

    bool CanSend() const override { return line_->PortOpen(); }

    bool Send(TextView bytes, Behind) override {
        return !bytes.empty() && line_->PortOpen() && line_->Output(bytes);
    }

 private:
    void TellGarbage() {
        const Text& setting = log_.Line().PortSetting;
        if (IsSerialSetting(setting) || std::exchange(isGarbageTold_, true)) return;
        log_.Failure(kTextGarbage, " " + log_.NameAndDescription() + " (PortSetting=" + setting + ")");
    }

    Text Address() const {
        return "COM" + std::to_string(log_.Line().PortNumber) + ":" + log_.Line().PortSetting;
    }

    Text Device() const { return SerialDeviceOf(settings_, log_.Line().PortNumber); }

    void OnComm(CommEvent event) {
        if (event == CommEvent::Receive) return listener_.OnDataWaiting();
        log_.Failure(kTextVanished, log_.NameAndDescription() + " (" + line_->LastError() + ")");
    }

    const Settings& settings_;
    PortLog& log_;
    LineListener& listener_;
    std::unique_ptr<MSComm> line_;
    bool isGarbageTold_ = false;
};

}  // namespace

std::unique_ptr<Line> MakeSerialLine(const LineParts& parts, LineListener& listener) {
    return std::make_unique<SerialLine>(parts, listener);
}

}  // namespace nordkeep
