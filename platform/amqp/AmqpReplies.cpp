#include "platform/amqp/AmqpReplies.h"

namespace nordkeep {
namespace {

template <class Close>
std::string TextOf(const amqp_method_t& method) {
    const auto& text = static_cast<const Close*>(method.decoded)->reply_text;
    return {static_cast<const char*>(text.bytes), text.len};
}

}  // namespace

std::optional<std::string> FailureOf(int status) {
    if (status == AMQP_STATUS_OK) return std::nullopt;
    if (status == AMQP_STATUS_TIMEOUT) return "the broker does not answer";
    return amqp_error_string2(status);
}

std::optional<std::string> FailureOf(const amqp_rpc_reply_t& reply) {
    switch (reply.reply_type) {
        case AMQP_RESPONSE_NORMAL:
            return std::nullopt;
        case AMQP_RESPONSE_LIBRARY_EXCEPTION:
            return FailureOf(reply.library_error).value_or("no answer");
        case AMQP_RESPONSE_SERVER_EXCEPTION:
            return FailureOf(reply.reply).value_or("the broker refuses");
        default:
            return "no answer";
    }
}

std::optional<std::string> FailureOf(const amqp_method_t& method) {
    switch (method.id) {
        case AMQP_CONNECTION_CLOSE_METHOD:
            return TextOf<amqp_connection_close_t>(method);
        case AMQP_CHANNEL_CLOSE_METHOD:
            return TextOf<amqp_channel_close_t>(method);
        default:
            return std::nullopt;
    }
}

}  // namespace nordkeep
