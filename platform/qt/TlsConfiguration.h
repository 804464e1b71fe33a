#pragma once

#include "platform/Winsock.h"

#include <QtCore/QString>
#include <QtNetwork/QSslConfiguration>

#include <optional>

namespace nordkeep {

/// What the toolkit needs for such an encryption. None, with the failure in words, when a file of it cannot
/// be used. The files are read each time, so that a new certificate counts from the next connection on.
std::optional<QSslConfiguration> TlsConfigurationOf(const SocketTls& tls, QString& failure);

}  // namespace nordkeep
