#pragma once

#include "platform/Text.h"

#include <QtNetwork/QHostAddress>

namespace nordkeep {

/// The local address of Winsock::Bind; null for a text that is none.
QHostAddress LocalAddress(const Text& address);
/// Of a peer: a dotted quad, also where it came by a socket of both kinds, else the longer form.
Text AddressText(const QHostAddress& address);

}  // namespace nordkeep
