#include "platform/qt/QtSerialLine.h"

#include "platform/qt/QtText.h"
#include "platform/qt/SerialSettings.h"

#include <sys/ioctl.h>
#include <termios.h>

#include <utility>

namespace nordkeep {
namespace {

/// A line that the other end holds up must not fill the memory.
constexpr qint64 kMostUnsent = 1 << 20;
constexpr qint64 kReadBufferSize = 1 << 20;

bool HasSoftwareFlow(int handshaking) {
    return handshaking == 1 || handshaking == 3;
}
bool HasHardwareFlow(int handshaking) {
    return handshaking == 2 || handshaking == 3;
}

QSerialPort::FlowControl FlowOf(int handshaking) {
    if (HasHardwareFlow(handshaking)) return QSerialPort::HardwareControl;
    return HasSoftwareFlow(handshaking) ? QSerialPort::SoftwareControl : QSerialPort::NoFlowControl;
}

/// The toolkit knows one kind of flow control at a time.
void AddSoftwareFlow(int descriptor) {
    termios settings{};
    if (::tcgetattr(descriptor, &settings) != 0) return;
    settings.c_iflag |= IXON | IXOFF;
    ::tcsetattr(descriptor, TCSANOW, &settings);
}

}  // namespace

bool QtSerialLine::SetPortOpen(bool open) {
    if (open && !PortOpen()) return Open();
    if (!open) Close();
    return true;
}

bool QtSerialLine::Open() {
    Close();
    port_ = new QSerialPort(ToQString(device_), &tasks_);
    port_->setReadBufferSize(kReadBufferSize);
    if (!port_->open(QIODevice::ReadWrite) || !Configure(*port_)) {
        const QString text = port_->errorString();
        Close();
        return Fail(text);
    }
    // Only now, since a pseudo terminal answers some of the questions asked while opening with an error.
    QObject::connect(port_, &QSerialPort::readyRead, &tasks_, [this] { OnReadyRead(); });
    const auto onError = [this](QSerialPort::SerialPortError error) { OnError(error); };
    QObject::connect(port_, &QSerialPort::errorOccurred, &tasks_, onError);
    if (port_->bytesAvailable() > 0) OnReadyRead();
    return true;
}

bool QtSerialLine::Configure(QSerialPort& port) {
    const SerialSettings settings = ParseSerialSettings(settings_);
    const bool isSet = port.setBaudRate(settings.baud) && port.setDataBits(settings.dataBits) &&
                       port.setParity(settings.parity) && port.setStopBits(settings.stopBits) &&
                       port.setFlowControl(FlowOf(handshaking_));
    if (isSet && handshaking_ == 3) AddSoftwareFlow(port.handle());
    return isSet;
}

void QtSerialLine::Close() {
    tasks_.Clear();
    isArrivalWaiting_ = hasFailed_ = false;
    QSerialPort* old = std::exchange(port_, nullptr);
    if (old == nullptr) return;
    QObject::disconnect(old, nullptr, &tasks_, nullptr);
    if (old->isOpen()) {
        old->flush();
        // The system's close waits for the last byte, half a minute long when the other end holds the line
        // up.
        if (handshaking_ != 0) ::tcflush(old->handle(), TCOFLUSH);
        old->close();
    }
    old->deleteLater();
}

std::size_t QtSerialLine::InBufferCount() const {
    return port_ == nullptr ? 0 : static_cast<std::size_t>(port_->bytesAvailable());
}

Text QtSerialLine::Input() {
    return port_ == nullptr ? Text() : port_->readAll().toStdString();
}

bool QtSerialLine::Output(TextView bytes) {
    if (!PortOpen()) return Fail(QStringLiteral("The line is not open"));
    const auto size = static_cast<qint64>(bytes.size());
    if (port_->bytesToWrite() + size > kMostUnsent) return Fail(QStringLiteral("The line takes no data"));
    return port_->write(bytes.data(), size) == size || Fail(port_->errorString());
}

// By a call to the system: the toolkit reports a device without these lines as an error of the port.
bool QtSerialLine::SetControlLines(bool raised) {
    if (!PortOpen()) return Fail(QStringLiteral("The line is not open"));
    const int lines = TIOCM_RTS | TIOCM_DTR;
    if (::ioctl(port_->handle(), raised ? TIOCMBIS : TIOCMBIC, &lines) == 0) return true;
    return Fail(QStringLiteral("The line has no control lines"));
}

void QtSerialLine::OnReadyRead() {
    if (std::exchange(isArrivalWaiting_, true)) return;
    tasks_.Add([this] {
        // From here on the next arrival is told anew, also while the handler of this one waits.
        isArrivalWaiting_ = false;
        if (port_->bytesAvailable() > 0) Tell(CommEvent::Receive);
    });
}

// A device that has gone is ready for reading for ever: the line is closed, behind what has arrived before.
void QtSerialLine::OnError(QSerialPort::SerialPortError error) {
    const bool isHarmless = error == QSerialPort::NoError || error == QSerialPort::TimeoutError ||
                            error == QSerialPort::UnsupportedOperationError;
    if (isHarmless || std::exchange(hasFailed_, true)) return;
    Fail(port_->errorString());
    tasks_.Add([this] {
        Close();
        Tell(CommEvent::Error);
    });
}

void QtSerialLine::Tell(CommEvent event) {
    const auto handler = onComm_;
    if (handler) handler(event);
}

bool QtSerialLine::Fail(const QString& text) {
    lastError_ = FromQString(text);
    return false;
}

}  // namespace nordkeep
