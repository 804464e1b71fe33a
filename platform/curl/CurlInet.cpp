#include "platform/curl/CurlInet.h"

#include "platform/curl/CurlTransfers.h"

#include <curl/curl.h>
#include <openssl/evp.h>

#include <array>

namespace nordkeep {
namespace {

constexpr std::size_t kMostOfReply = 4096;
constexpr std::size_t kMostOfHeaders = 64 << 10;
constexpr long kSilenceSeconds = 60;
constexpr long kMostRedirections = 10;

class CurlInet final : public Inet {
 public:
    explicit CurlInet(std::shared_ptr<CurlTransfers> transfers)
        : transfers_(std::move(transfers)), transfer_(curl_easy_init()) {}
    ~CurlInet() override {
        transfers_->End(transfer_);
        curl_easy_cleanup(transfer_);
    }
    CurlInet(const CurlInet&) = delete;
    CurlInet& operator=(const CurlInet&) = delete;

    void SetProtocol(InetProtocol protocol) override { protocol_ = protocol; }
    void SetAuthorityFile(const NativePath& file) override { authorityFile_ = file; }

    void Execute(const Text& url) override {
        transfers_->End(transfer_);
        answer_.clear();
        lastError_.clear();
        error_.fill('\0');
        headers_ = 0;
        statusCode_ = 0;
        state_ = InetState::None;
        Prepare(WithScheme(url));
        isRunning_ = true;
        transfers_->Begin(transfer_, [this](CURLcode result) { Finish(result); });
    }

    bool StillExecuting() const override { return isRunning_; }
    InetState LastState() const override { return state_; }
    Text LastError() const override { return lastError_; }
    int StatusCode() const override { return statusCode_; }

    Text GetChunk(std::size_t most) override {
        Text chunk = answer_.substr(0, most);
        answer_.erase(0, chunk.size());
        return chunk;
    }

    void Cancel() override {
        if (!isRunning_) return;
        transfers_->End(transfer_);
        End(InetState::Error);
    }

 private:
    Text WithScheme(const Text& url) const {
        if (url.find("://") != Text::npos) return url;
        return (protocol_ == InetProtocol::Https ? "https://" : "http://") + url;
    }

    template <class Value>
    void Set(CURLoption option, Value value) {
        curl_easy_setopt(transfer_, option, value);
    }

    // Everything anew each time, but for connections that are still open.
    void Prepare(const Text& url) {
        curl_easy_reset(transfer_);
        const bool isSecure = EqualsNoCase(TextView(url).substr(0, 8), "https://");
        Set(CURLOPT_URL, url.c_str());
        Set(CURLOPT_PROTOCOLS_STR, "http,https");
        Set(CURLOPT_FOLLOWLOCATION, 1L);
        Set(CURLOPT_MAXREDIRS, kMostRedirections);
        // A page that was asked for safely is not taken from anywhere else.
        Set(CURLOPT_REDIR_PROTOCOLS_STR, isSecure ? "https" : "http,https");
        Set(CURLOPT_PROXY, "");
        Set(CURLOPT_NOSIGNAL, 1L);
        Set(CURLOPT_USERAGENT, "Nordkeep");
        Set(CURLOPT_CONNECTTIMEOUT, kSilenceSeconds);
        Set(CURLOPT_LOW_SPEED_LIMIT, 1L);
        Set(CURLOPT_LOW_SPEED_TIME, kSilenceSeconds);
        Set(CURLOPT_ERRORBUFFER, error_.data());
        Set(CURLOPT_HEADERFUNCTION, &CurlInet::OnHeader);
        Set(CURLOPT_HEADERDATA, this);
        Set(CURLOPT_WRITEFUNCTION, &CurlInet::OnBytes);
        Set(CURLOPT_WRITEDATA, this);
        if (!authorityFile_.empty()) Set(CURLOPT_CAINFO, authorityFile_.c_str());
    }

    // Less than what was given ends the transfer.
    static std::size_t OnHeader(char*, std::size_t size, std::size_t count, void* self) {
        auto* const inet = static_cast<CurlInet*>(self);
        inet->headers_ += size * count;
        return inet->headers_ > kMostOfHeaders ? 0 : size * count;
    }

    static std::size_t OnBytes(char* bytes, std::size_t size, std::size_t count, void* self) {
        Text& answer = static_cast<CurlInet*>(self)->answer_;
        answer.append(TextView(bytes, size * count).substr(0, kMostOfReply - answer.size()));
        return answer.size() < kMostOfReply ? size * count : 0;
    }

    void Finish(CURLcode result) {
        long status = 0;
        curl_easy_getinfo(transfer_, CURLINFO_RESPONSE_CODE, &status);
        statusCode_ = static_cast<int>(status);
        const bool isCut = answer_.size() == kMostOfReply;
        if (result == CURLE_OK || isCut) return End(InetState::Complete);
        lastError_ =
            headers_ > kMostOfHeaders ? Text("The headers of the answer are too long") : Reason(result);
        End(InetState::Error);
    }

    Text Reason(CURLcode result) const {
        const Text said = error_.data();
        return FromUtf8(said.empty() ? curl_easy_strerror(result) : said);
    }

    void End(InetState state) {
        isRunning_ = false;
        state_ = state;
    }

    std::shared_ptr<CurlTransfers> transfers_;
    CURL* transfer_;
    InetProtocol protocol_ = InetProtocol::Http;
    InetState state_ = InetState::None;
    NativePath authorityFile_{};
    std::array<char, CURL_ERROR_SIZE> error_{};
    std::size_t headers_ = 0;
    Text lastError_{};
    int statusCode_ = 0;
    Text answer_{};
    bool isRunning_ = false;
};

}  // namespace

CurlInetFactory::CurlInetFactory(EventLoop& loop, DescriptorWatches& watches)
    : transfers_(std::make_shared<CurlTransfers>(loop, watches)) {}

std::unique_ptr<Inet> CurlInetFactory::NewInet() {
    return std::make_unique<CurlInet>(transfers_);
}

Text CurlInetFactory::Md5(TextView bytes) const {
    std::array<unsigned char, EVP_MAX_MD_SIZE> digest{};
    unsigned int size = 0;
    EVP_Digest(bytes.data(), bytes.size(), digest.data(), &size, EVP_md5(), nullptr);
    constexpr TextView kDigits = "0123456789abcdef";
    Text text;
    for (unsigned int i = 0; i < size; ++i) {
        text += kDigits[digest[i] >> 4];
        text += kDigits[digest[i] & 15];
    }
    return text;
}

}  // namespace nordkeep
