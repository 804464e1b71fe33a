#include "tests/app/ground/Broker.h"

#include "tests/app/ground/RunningCopy.h"

#include <amqp_tcp_socket.h>
#include <fcntl.h>
#include <sys/time.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <vector>

namespace nordkeep {
namespace {

// Not the program on the search path, which wants to run under an account of its own.
constexpr const char* kServer = "/usr/lib/rabbitmq/bin/rabbitmq-server";
constexpr amqp_channel_t kChannel = 1;

std::string TextOf(amqp_bytes_t bytes) {
    return {static_cast<const char*>(bytes.bytes), bytes.len};
}

amqp_bytes_t BytesOf(const std::string& text) {
    return {.len = text.size(), .bytes = const_cast<char*>(text.data())};
}

bool IsWell(const amqp_rpc_reply_t& reply) {
    return reply.reply_type == AMQP_RESPONSE_NORMAL;
}

/// Ends a program and all that it has started.
void EndGroup(int& leader) {
    if (leader <= 0) return;
    ::kill(-leader, SIGTERM);
    if (!WaitFor([&] { return ::waitpid(leader, nullptr, WNOHANG) != 0; })) {
        ::kill(-leader, SIGKILL);
        ::waitpid(leader, nullptr, 0);
    }
    leader = 0;
}

BrokerMessage MessageOf(const amqp_message_t& content) {
    const amqp_basic_properties_t& properties = content.properties;
    BrokerMessage message{.body = TextOf(content.body),
                          .contentType = TextOf(properties.content_type),
                          .contentEncoding = TextOf(properties.content_encoding),
                          .type = TextOf(properties.type),
                          .id = TextOf(properties.message_id),
                          .deliveryMode = properties.delivery_mode};
    for (int i = 0; i < properties.headers.num_entries; ++i) {
        const amqp_table_entry_t& entry = properties.headers.entries[i];
        if (TextOf(entry.key) == "Label") message.label = TextOf(entry.value.value.bytes);
    }
    return message;
}

}  // namespace

Broker::Broker() : port_(FreePort()), mapperPort_(FreePort()) {}

Broker::~Broker() {
    Stop();
}

int Broker::StartProgram(const char* program, const std::vector<std::string>& arguments,
                         const std::map<std::string, std::string>& variables) {
    const std::string output = data_.Path() + "/output";
    const int child = ::fork();
    if (child != 0) return child;
    ::setpgid(0, 0);
    const int log = ::open(output.c_str(), O_WRONLY | O_CREAT | O_APPEND, 0644);
    ::dup2(log, STDOUT_FILENO);
    ::dup2(log, STDERR_FILENO);
    for (const auto& [name, value] : variables) ::setenv(name.c_str(), value.c_str(), 1);
    std::vector<char*> words{const_cast<char*>(program)};
    for (const std::string& argument : arguments) words.push_back(const_cast<char*>(argument.c_str()));
    words.push_back(nullptr);
    ::execvp(program, words.data());
    ::_exit(127);
}

bool Broker::Start() {
    const std::string mapper = std::to_string(mapperPort_);
    mapper_ = StartProgram("epmd", {"-port", mapper, "-address", "127.0.0.1"}, {});
    const std::string& folder = data_.Path();
    server_ = StartProgram(
        kServer, {},
        {{"HOME", folder},
         {"ERL_EPMD_ADDRESS", "127.0.0.1"},
         {"ERL_EPMD_PORT", mapper},
         {"RABBITMQ_NODE_IP_ADDRESS", "127.0.0.1"},
         {"RABBITMQ_NODE_PORT", std::to_string(port_)},
         {"RABBITMQ_DIST_PORT", std::to_string(FreePort())},
         {"RABBITMQ_NODENAME", "nordkeep" + std::to_string(port_) + "@localhost"},
         {"RABBITMQ_MNESIA_BASE", folder + "/data"},
         {"RABBITMQ_LOG_BASE", folder + "/log"},
         {"RABBITMQ_ENABLED_PLUGINS_FILE", folder + "/plugins"},
         {"RABBITMQ_CONFIG_FILE", folder + "/none"},
         {"RABBITMQ_SERVER_ADDITIONAL_ERL_ARGS", "-kernel inet_dist_use_interface {127,0,0,1}"}});
    const auto serves = [this] { return Connect(); };
    // Half a minute may not be enough on a machine that is busy with other tests.
    return WaitFor(serves) || WaitFor(serves) || WaitFor(serves);
}

void Broker::Stop() {
    connection_.reset();
    EndGroup(server_);
    EndGroup(mapper_);
}

bool Broker::Connect() {
    const timeval patience{.tv_sec = 10, .tv_usec = 0};
    connection_.reset(amqp_new_connection());
    amqp_set_handshake_timeout(connection_.get(), &patience);
    amqp_set_rpc_timeout(connection_.get(), &patience);
    amqp_socket_t* socket = amqp_tcp_socket_new(connection_.get());
    if (amqp_socket_open_noblock(socket, "127.0.0.1", port_, &patience) != AMQP_STATUS_OK) return false;
    if (!IsWell(amqp_login(connection_.get(), "/", 0, 131'072, 0, AMQP_SASL_METHOD_PLAIN, "guest", "guest")))
        return false;
    amqp_channel_open(connection_.get(), kChannel);
    return IsWell(amqp_get_rpc_reply(connection_.get()));
}

bool Broker::DeclareQueue(const std::string& name) {
    constexpr amqp_boolean_t kDurable = 1;
    amqp_queue_declare(connection_.get(), kChannel, BytesOf(name), 0, kDurable, 0, 0, amqp_empty_table);
    return IsWell(amqp_get_rpc_reply(connection_.get()));
}

bool Broker::DeleteQueue(const std::string& name) {
    amqp_queue_delete(connection_.get(), kChannel, BytesOf(name), 0, 0);
    return IsWell(amqp_get_rpc_reply(connection_.get()));
}

std::optional<BrokerMessage> Broker::TryToTake(const std::string& queue) {
    constexpr amqp_boolean_t kNoAck = 1;
    const amqp_rpc_reply_t reply = amqp_basic_get(connection_.get(), kChannel, BytesOf(queue), kNoAck);
    if (!IsWell(reply) || reply.reply.id != AMQP_BASIC_GET_OK_METHOD) return std::nullopt;
    amqp_message_t content{};
    if (!IsWell(amqp_read_message(connection_.get(), kChannel, &content, 0))) return std::nullopt;
    const BrokerMessage message = MessageOf(content);
    amqp_destroy_message(&content);
    return message;
}

std::optional<BrokerMessage> Broker::Take(const std::string& queue) {
    std::optional<BrokerMessage> message;
    WaitFor([&] { return (message = TryToTake(queue)).has_value(); });
    return message;
}

}  // namespace nordkeep
