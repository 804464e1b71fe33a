#include "platform/qt/Addresses.h"

#include "platform/AnyAddress.h"
#include "platform/qt/QtText.h"

namespace nordkeep {

QHostAddress LocalAddress(const Text& address) {
    if (address.empty()) return QHostAddress(QHostAddress::AnyIPv4);
    if (address == kAnyAddress) return QHostAddress(QHostAddress::Any);
    return QHostAddress(ToQString(address));
}

Text AddressText(const QHostAddress& address) {
    bool isIPv4 = false;
    const quint32 number = address.toIPv4Address(&isIPv4);
    return FromQString(isIPv4 ? QHostAddress(number).toString() : address.toString());
}

}  // namespace nordkeep
