#include "platform/qt/QtInet.h"

#include "platform/qt/QtText.h"

#include <QtCore/QCryptographicHash>
#include <QtCore/QUrl>
#include <QtNetwork/QNetworkAccessManager>
#include <QtNetwork/QNetworkProxy>
#include <QtNetwork/QNetworkReply>
#include <QtNetwork/QSslCertificate>
#include <QtNetwork/QSslConfiguration>

#include <algorithm>
#include <utility>

namespace nordkeep {
namespace {

constexpr qint64 kMostOfReply = 4096;
constexpr int kSilenceMs = 60'000;
constexpr qsizetype kMostOfHeaders = 64 << 10;

/// True for what a server answered, which the toolkit calls an error from status 400 on; false when the
/// answer did not come, or broke off.
bool IsAnswer(const QNetworkReply& reply) {
    const int error = reply.error();
    const bool isStatus = (error > 200 && error <= 299) || (error > 400 && error <= 499);
    return error == QNetworkReply::NoError ||
           (isStatus && reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).isValid());
}

qsizetype SizeOfHeaders(const QNetworkReply& reply) {
    qsizetype size = 0;
    for (const auto& [name, value] : reply.rawHeaderPairs()) size += name.size() + value.size();
    return size;
}

class QtInet final : public Inet {
 public:
    QtInet() { manager_.setProxy(QNetworkProxy::NoProxy); }
    ~QtInet() override { LetGo(); }
    QtInet(const QtInet&) = delete;
    QtInet& operator=(const QtInet&) = delete;

    void SetProtocol(InetProtocol protocol) override { protocol_ = protocol; }

    void SetAuthorityFile(const NativePath& file) override { authorityFile_ = file; }

    void Execute(const Text& url) override {
        LetGo();
        answer_.clear();
        lastError_.clear();
        statusCode_ = 0;
        state_ = InetState::None;
        QNetworkRequest request(QUrl::fromEncoded(QByteArray::fromStdString(WithScheme(url))));
        request.setTransferTimeout(kSilenceMs);
        if (!Trust(request)) return Fail("The file of trusted certificates cannot be read");
        reply_ = manager_.get(request);
        // What the far end sends beyond that stays with it.
        reply_->setReadBufferSize(kMostOfReply);
        QObject::connect(reply_, &QNetworkReply::metaDataChanged, &context_, [this] { CheckHeaders(); });
        QObject::connect(reply_, &QNetworkReply::readyRead, &context_, [this] { TakeBytes(); });
        QObject::connect(reply_, &QNetworkReply::finished, &context_, [this] { Finish(); });
    }

    bool StillExecuting() const override { return reply_ != nullptr; }
    InetState LastState() const override { return state_; }
    Text LastError() const override { return lastError_; }
    int StatusCode() const override { return statusCode_; }

    Text GetChunk(std::size_t most) override {
        Text chunk = answer_.substr(0, most);
        answer_.erase(0, chunk.size());
        return chunk;
    }

    void Cancel() override {
        if (reply_ != nullptr) End(InetState::Error);
    }

 private:
    Text WithScheme(const Text& url) const {
        if (url.find("://") != Text::npos) return url;
        return (protocol_ == InetProtocol::Https ? "https://" : "http://") + url;
    }

    bool Trust(QNetworkRequest& request) const {
        if (authorityFile_.empty()) return true;
        const auto trusted = QSslCertificate::fromPath(QString::fromStdString(authorityFile_));
        QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
        configuration.addCaCertificates(trusted);
        request.setSslConfiguration(configuration);
        return !trusted.isEmpty();
    }

    void Fail(const Text& reason) {
        lastError_ = reason;
        End(InetState::Error);
    }

    void CheckHeaders() {
        if (SizeOfHeaders(*reply_) > kMostOfHeaders) Fail("The headers of the answer are too long");
    }

    void TakeBytes() {
        const qint64 room = kMostOfReply - static_cast<qint64>(answer_.size());
        answer_ += reply_->read(std::max<qint64>(room, 0)).toStdString();
        statusCode_ = reply_->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
        if (static_cast<qint64>(answer_.size()) >= kMostOfReply) End(InetState::Complete);
    }

    void Finish() {
        const bool isAnswer = IsAnswer(*reply_);
        statusCode_ = reply_->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
        if (!isAnswer) lastError_ = FromQString(reply_->errorString());
        TakeBytes();
        if (reply_ != nullptr) End(isAnswer ? InetState::Complete : InetState::Error);
    }

    void End(InetState state) {
        state_ = state;
        LetGo();
    }

    void LetGo() {
        QNetworkReply* old = std::exchange(reply_, nullptr);
        if (old == nullptr) return;
        QObject::disconnect(old, nullptr, &context_, nullptr);
        old->abort();
        old->deleteLater();
    }

    QNetworkAccessManager manager_{};
    QObject context_{};
    QNetworkReply* reply_ = nullptr;
    InetProtocol protocol_ = InetProtocol::Http;
    InetState state_ = InetState::None;
    NativePath authorityFile_{};
    Text lastError_{};
    int statusCode_ = 0;
    Text answer_{};
};

}  // namespace

std::unique_ptr<Inet> QtInetFactory::NewInet() {
    return std::make_unique<QtInet>();
}

Text QtInetFactory::Md5(TextView bytes) const {
    const QByteArray data(bytes.data(), static_cast<qsizetype>(bytes.size()));
    return QCryptographicHash::hash(data, QCryptographicHash::Md5).toHex().toStdString();
}

}  // namespace nordkeep
