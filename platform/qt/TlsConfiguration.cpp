#include "platform/qt/TlsConfiguration.h"

#include <QtCore/QFile>
#include <QtNetwork/QSslCertificate>
#include <QtNetwork/QSslKey>

namespace nordkeep {
namespace {

QSslKey KeyIn(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return {};
    const QByteArray bytes = file.readAll();
    for (const QSsl::KeyAlgorithm algorithm : {QSsl::Ec, QSsl::Rsa}) {
        QSslKey key(bytes, algorithm);
        if (!key.isNull()) return key;
    }
    return {};
}

/// Both sides prove who they are: with a certificate of the one authority, by the newest protocol only.
bool UseOwnCertificate(const SocketTls& tls, QSslConfiguration& configuration, QString& failure) {
    const auto chain = QSslCertificate::fromPath(QString::fromStdString(tls.certificateFile));
    if (chain.isEmpty()) {
        failure = QStringLiteral("The file of the certificate cannot be read");
        return false;
    }
    const QSslKey key = KeyIn(QString::fromStdString(tls.keyFile));
    if (key.isNull()) {
        failure = QStringLiteral("The file of the key cannot be read");
        return false;
    }
    configuration.setLocalCertificateChain(chain);
    configuration.setPrivateKey(key);
    configuration.setProtocol(QSsl::TlsV1_3OrLater);
    configuration.setPeerVerifyMode(QSslSocket::VerifyPeer);
    return true;
}

}  // namespace

std::optional<QSslConfiguration> TlsConfigurationOf(const SocketTls& tls, QString& failure) {
    QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
    const bool isMutual = !tls.certificateFile.empty() || !tls.keyFile.empty();
    if (isMutual || !tls.authorityFile.empty()) {
        const auto trusted = QSslCertificate::fromPath(QString::fromStdString(tls.authorityFile));
        if (trusted.isEmpty()) {
            failure = QStringLiteral("The file of trusted certificates cannot be read");
            return std::nullopt;
        }
        isMutual ? configuration.setCaCertificates(trusted) : configuration.addCaCertificates(trusted);
    }
    if (isMutual && !UseOwnCertificate(tls, configuration, failure)) return std::nullopt;
    return configuration;
}

}  // namespace nordkeep
