#pragma once

#include "platform/Text.h"

#include <QtSerialPort/QSerialPort>

namespace nordkeep {

/// How characters are sent on a serial line.
struct SerialSettings {
    int baud = 9600;
    QSerialPort::Parity parity = QSerialPort::NoParity;
    QSerialPort::DataBits dataBits = QSerialPort::Data8;
    QSerialPort::StopBits stopBits = QSerialPort::OneStop;
};

/// From "9600,N,8,1"; what is missing or unknown stays at that.
SerialSettings ParseSerialSettings(TextView text);

}  // namespace nordkeep
