#include "platform/amqp/AmqpConnection.h"

#include "platform/amqp/AmqpReplies.h"

#include <amqp_tcp_socket.h>
#include <sys/time.h>

#include <chrono>

namespace nordkeep {
namespace {

constexpr amqp_channel_t kChannel = 1;
constexpr int kHeartbeatSeconds = 30;
constexpr int kAnyFrameSize = 131'072;
// A broker writes a message to disk before it confirms it.
constexpr int kConfirmTimeouts = 2;

timeval TimeOf(std::int64_t ms) {
    return {.tv_sec = ms / 1000, .tv_usec = ms % 1000 * 1000};
}

amqp_bytes_t BytesOf(const std::string& text) {
    return {.len = text.size(), .bytes = const_cast<char*>(text.data())};
}

std::int64_t NowMs() {
    using namespace std::chrono;
    return duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count();
}

/// How the message is to be kept and read. Holds the texts that the properties point to.
class Properties {
 public:
    Properties(const std::string& label, const std::string& id) {
        header_.key = amqp_cstring_bytes("Label");
        header_.value.kind = AMQP_FIELD_KIND_UTF8;
        header_.value.value.bytes = BytesOf(label);
        list_._flags = AMQP_BASIC_CONTENT_TYPE_FLAG | AMQP_BASIC_CONTENT_ENCODING_FLAG |
                       AMQP_BASIC_HEADERS_FLAG | AMQP_BASIC_DELIVERY_MODE_FLAG | AMQP_BASIC_TYPE_FLAG;
        list_.content_type = amqp_cstring_bytes("text/plain");
        list_.content_encoding = amqp_cstring_bytes("utf-8");
        list_.headers = {.num_entries = 1, .entries = &header_};
        list_.delivery_mode = AMQP_DELIVERY_PERSISTENT;
        list_.type = amqp_cstring_bytes("nordkeep.alarm");
        if (id.empty()) return;
        list_._flags |= AMQP_BASIC_MESSAGE_ID_FLAG;
        list_.message_id = BytesOf(id);
    }
    Properties(const Properties&) = delete;
    Properties& operator=(const Properties&) = delete;
    const amqp_basic_properties_t* Get() const { return &list_; }

 private:
    amqp_table_entry_t header_{};
    amqp_basic_properties_t list_{};
};

}  // namespace

AmqpConnection::Failure AmqpConnection::Open() {
    connection_.reset(amqp_new_connection());
    if (connection_ == nullptr) return "out of memory";
    for (const auto step : {&AmqpConnection::Connect, &AmqpConnection::LogIn, &AmqpConnection::OpenChannel,
                            &AmqpConnection::CheckQueue}) {
        if (auto failure = (this->*step)()) return Drop(*failure);
    }
    return {};
}

AmqpConnection::Failure AmqpConnection::Connect() {
    const timeval timeout = TimeOf(timeoutMs_);
    amqp_set_handshake_timeout(connection_.get(), &timeout);
    amqp_set_rpc_timeout(connection_.get(), &timeout);
    amqp_socket_t* socket = amqp_tcp_socket_new(connection_.get());
    if (socket == nullptr) return "out of memory";
    const int status = amqp_socket_open_noblock(socket, address_.host.c_str(), address_.port, &timeout);
    return FailureOf(status);
}

AmqpConnection::Failure AmqpConnection::LogIn() {
    return FailureOf(amqp_login(connection_.get(), address_.virtualHost.c_str(), kChannel, kAnyFrameSize,
                                kHeartbeatSeconds, AMQP_SASL_METHOD_PLAIN, address_.user.c_str(),
                                address_.password.c_str()));
}

AmqpConnection::Failure AmqpConnection::OpenChannel() {
    amqp_channel_open(connection_.get(), kChannel);
    if (auto failure = FailureOf(amqp_get_rpc_reply(connection_.get()))) return failure;
    amqp_confirm_select(connection_.get(), kChannel);
    return FailureOf(amqp_get_rpc_reply(connection_.get()));
}

AmqpConnection::Failure AmqpConnection::CheckQueue() {
    constexpr amqp_boolean_t kPassive = 1;
    amqp_queue_declare(connection_.get(), kChannel, BytesOf(address_.queue), kPassive, 0, 0, 0,
                       amqp_empty_table);
    return FailureOf(amqp_get_rpc_reply(connection_.get()));
}

AmqpConnection::Failure AmqpConnection::Publish(const QueueMessage& message) {
    constexpr amqp_boolean_t kMandatory = 1;
    const std::string label = ToUtf8(message.label);
    const std::string body = ToUtf8(message.body);
    const std::string id = message.id > 0 ? std::to_string(message.id) : std::string();
    const Properties properties(label, id);
    const int status =
        amqp_basic_publish(connection_.get(), kChannel, amqp_empty_bytes, BytesOf(address_.queue), kMandatory,
                           0, properties.Get(), BytesOf(body));
    if (auto failure = FailureOf(status)) return Drop(*failure);
    if (auto failure = AwaitConfirmation()) return Drop(*failure);
    amqp_maybe_release_buffers(connection_.get());
    return {};
}

AmqpConnection::Failure AmqpConnection::AwaitConfirmation() {
    const std::int64_t endMs = NowMs() + kConfirmTimeouts * timeoutMs_;
    bool hasReturned = false;
    while (true) {
        const timeval left = TimeOf(std::max<std::int64_t>(endMs - NowMs(), 0));
        amqp_frame_t frame{};
        const int status = amqp_simple_wait_frame_noblock(connection_.get(), &frame, &left);
        if (auto failure = FailureOf(status)) return failure;
        if (frame.frame_type != AMQP_FRAME_METHOD) continue;  // the body of a message that comes back
        switch (frame.payload.method.id) {
            case AMQP_BASIC_ACK_METHOD:
                return hasReturned ? Failure("the broker has no such queue any more") : Failure();
            case AMQP_BASIC_NACK_METHOD:
                return "the broker refuses the message";
            case AMQP_BASIC_RETURN_METHOD:
                hasReturned = true;
                break;
            default:
                if (auto failure = FailureOf(frame.payload.method)) return failure;
        }
    }
}

AmqpConnection::Failure AmqpConnection::Tend() {
    const timeval atOnce = TimeOf(0);
    amqp_frame_t frame{};
    const int status = amqp_simple_wait_frame_noblock(connection_.get(), &frame, &atOnce);
    if (status == AMQP_STATUS_TIMEOUT) return {};
    if (auto failure = FailureOf(status)) return Drop(*failure);
    if (frame.frame_type == AMQP_FRAME_METHOD) {
        if (auto failure = FailureOf(frame.payload.method)) return Drop(*failure);
    }
    amqp_maybe_release_buffers(connection_.get());
    return {};
}

void AmqpConnection::Close() {
    if (connection_ == nullptr) return;
    amqp_connection_close(connection_.get(), AMQP_REPLY_SUCCESS);
    connection_.reset();
}

AmqpConnection::Failure AmqpConnection::Drop(std::string why) {
    connection_.reset();
    return why;
}

}  // namespace nordkeep
