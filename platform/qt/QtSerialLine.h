#pragma once

#include "platform/MSComm.h"
#include "platform/qt/TaskQueue.h"

#include <QtSerialPort/QSerialPort>

namespace nordkeep {

/// A serial line slot. Each opening has a toolkit port of its own.
class QtSerialLine : public MSComm {
 public:
    ~QtSerialLine() override { SetPortOpen(false); }

    void SetOnComm(std::function<void(CommEvent)> onComm) override { onComm_ = std::move(onComm); }
    void SetDevice(const Text& device) override { device_ = device; }
    void SetSettings(const Text& settings) override { settings_ = settings; }
    void SetHandshaking(int handshaking) override { handshaking_ = handshaking; }
    bool SetPortOpen(bool open) override;
    bool PortOpen() const override { return port_ != nullptr && !hasFailed_; }
    std::size_t InBufferCount() const override;
    Text Input() override;
    bool Output(TextView bytes) override;
    bool SetControlLines(bool raised) override;
    Text LastError() const override { return lastError_; }

 private:
    bool Open();
    void Close();
    bool Configure(QSerialPort& port);
    void OnReadyRead();
    void OnError(QSerialPort::SerialPortError error);
    void Tell(CommEvent event);
    bool Fail(const QString& text);

    std::function<void(CommEvent)> onComm_{};
    Text device_{};
    Text settings_{};
    int handshaking_ = 0;
    Text lastError_{};
    TaskQueue tasks_{};  // owns the toolkit's ports, and receives what they tell
    QSerialPort* port_ = nullptr;
    bool isArrivalWaiting_ = false;
    bool hasFailed_ = false;  // and the line is about to be closed
};

}  // namespace nordkeep
