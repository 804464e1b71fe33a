#include "platform/mqtt/MosquittoClients.h"

#include <mosquitto.h>
#include <netdb.h>

#include <cerrno>
#include <cstring>
#include <utility>
#include <vector>

namespace nordkeep {
namespace {

constexpr int kKeepAliveSeconds = 20;
constexpr int kTickMs = 250;
constexpr int kFinalWrites = 20;
constexpr unsigned kMostInFlight = 1000;

/// Asks for the addresses of a host without waiting. The library below asks again, and waits: that is only
/// done once somebody has answered.
class HostLookup {
 public:
    static std::shared_ptr<HostLookup> Begin(const std::string& host) {
        // A question on its way cannot be taken back, so its memory stays until it is over.
        static std::vector<std::shared_ptr<HostLookup>> asked;
        std::erase_if(asked, [](const auto& each) { return each->IsOver(); });
        asked.push_back(std::make_shared<HostLookup>(host));
        return asked.back();
    }
    explicit HostLookup(std::string host) : host_(std::move(host)) {
        request_.ar_name = host_.c_str();
        gaicb* list[] = {&request_};
        ::getaddrinfo_a(GAI_NOWAIT, list, 1, nullptr);
    }
    ~HostLookup() {
        if (request_.ar_result) ::freeaddrinfo(request_.ar_result);
    }
    HostLookup(const HostLookup&) = delete;
    HostLookup& operator=(const HostLookup&) = delete;

    bool IsOver() { return Error() != EAI_INPROGRESS; }
    /// 0 when the host is known.
    int Error() { return ::gai_error(&request_); }

 private:
    std::string host_;
    gaicb request_{};
};

class MosquittoClient final : public MqttClient {
 public:
    MosquittoClient(EventLoop& loop, DescriptorWatches& watches, MqttListener& listener)
        : watches_(watches), listener_(listener), timer_(loop.NewTimer([this] { Tick(); })) {}
    ~MosquittoClient() override { Drop(); }

    void Connect(const MqttAddress& address) override {
        Drop();
        address_ = address;
        lookup_ = HostLookup::Begin(address.host);
        timer_->Start(kTickMs);
    }

    void Close() override {
        if (client_) {
            mosquitto_disconnect(client_);
            for (int i = 0; i < kFinalWrites && mosquitto_want_write(client_); ++i)
                mosquitto_loop_write(client_, 1);
        }
        Drop();
    }

    std::optional<int> Publish(const std::string& topic, const std::string& payload,
                               bool isRetained) override {
        int message = 0;
        const int result =
            client_ ? mosquitto_publish(client_, &message, topic.c_str(), static_cast<int>(payload.size()),
                                        payload.data(), 1, isRetained)
                    : MOSQ_ERR_NO_CONN;
        if (client_) WatchSocket();
        return result == MOSQ_ERR_SUCCESS ? std::optional(message) : std::nullopt;
    }

 private:
    void Drop() {
        timer_->Stop();
        read_.reset();
        write_.reset();
        if (client_) mosquitto_destroy(std::exchange(client_, nullptr));
        lookup_.reset();
    }

    void Lose(const std::string& reason) {
        Drop();
        listener_.OnLost(reason);
    }

    void Tick() {
        if (lookup_) {
            if (!lookup_->IsOver()) return;
            const int error = lookup_->Error();
            lookup_.reset();
            return error == 0 ? Begin() : Lose(::gai_strerror(error));
        }
        if (client_) Settle(mosquitto_loop_misc(client_));
    }

    void Begin() {
        client_ = mosquitto_new(address_.client.c_str(), true, this);
        if (!client_) return Lose(std::strerror(errno));
        mosquitto_connect_callback_set(client_, [](mosquitto*, void* self, int code) {
            static_cast<MosquittoClient*>(self)->answer_ = code;
        });
        mosquitto_publish_callback_set(client_, [](mosquitto*, void* self, int message) {
            static_cast<MosquittoClient*>(self)->listener_.OnAcknowledged(message);
        });
        mosquitto_max_inflight_messages_set(client_, kMostInFlight);
        if (!address_.user.empty())
            mosquitto_username_pw_set(client_, address_.user.c_str(), address_.password.c_str());
        if (!address_.willTopic.empty()) {
            mosquitto_will_set(client_, address_.willTopic.c_str(), static_cast<int>(address_.will.size()),
                               address_.will.data(), 1, true);
        }
        if (const int result = Secure(); result != MOSQ_ERR_SUCCESS) return Lose(mosquitto_strerror(result));
        answer_ = -1;
        isUp_ = false;
        const int result =
            mosquitto_connect_async(client_, address_.host.c_str(), address_.port, kKeepAliveSeconds);
        Settle(result);
    }

    int Secure() {
        if (address_.caFile.empty()) return MOSQ_ERR_SUCCESS;
        const auto orNone = [](const NativePath& path) { return path.empty() ? nullptr : path.c_str(); };
        return mosquitto_tls_set(client_, address_.caFile.c_str(), nullptr, orNone(address_.certificate),
                                 orNone(address_.key), nullptr);
    }

    /// Behind everything that the library has done.
    void Settle(int result) {
        if (!client_) return;
        if (answer_ > 0) return Lose(mosquitto_connack_string(answer_));
        if (result != MOSQ_ERR_SUCCESS) {
            const bool isSystem = result == MOSQ_ERR_ERRNO && errno != 0;
            return Lose(isSystem ? std::strerror(errno) : mosquitto_strerror(result));
        }
        WatchSocket();
        if (answer_ != 0 || std::exchange(isUp_, true)) return;
        listener_.OnConnected();
    }

    void WatchSocket() {
        const int socket = mosquitto_socket(client_);
        if (socket < 0) return;
        if (!read_ || socket != watched_) {
            using Readiness = DescriptorWatches::Readiness;
            watched_ = socket;
            read_ = watches_.Watch(socket, Readiness::Read, [this] {
                if (client_) Settle(mosquitto_loop_read(client_, 1));
            });
            write_ = watches_.Watch(socket, Readiness::Write, [this] {
                if (client_) Settle(mosquitto_loop_write(client_, 1));
            });
        }
        write_->SetOn(mosquitto_want_write(client_));
    }

    DescriptorWatches& watches_;
    MqttListener& listener_;
    std::unique_ptr<Timer> timer_;
    MqttAddress address_{};
    std::shared_ptr<HostLookup> lookup_{};
    mosquitto* client_ = nullptr;
    int answer_ = -1;  // of the broker to the connection; -1 while there is none
    bool isUp_ = false;
    int watched_ = -1;
    std::unique_ptr<DescriptorWatch> read_{};
    std::unique_ptr<DescriptorWatch> write_{};
};

}  // namespace

MosquittoClients::MosquittoClients(EventLoop& loop, DescriptorWatches& watches)
    : loop_(loop), watches_(watches) {
    mosquitto_lib_init();
}

MosquittoClients::~MosquittoClients() {
    mosquitto_lib_cleanup();
}

std::unique_ptr<MqttClient> MosquittoClients::NewClient(MqttListener& listener) {
    return std::make_unique<MosquittoClient>(loop_, watches_, listener);
}

}  // namespace nordkeep
