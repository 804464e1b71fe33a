#pragma once

#include "tests/doubles/TempFolder.h"

#include <amqp.h>

#include <map>
#include <memory>
#include <optional>

namespace nordkeep {

/// A message as it lies in a queue of the broker. All texts are UTF-8.
struct BrokerMessage {
    std::string body{};
    std::string label{};  // of the header table
    std::string contentType{};
    std::string contentEncoding{};
    std::string type{};
    std::string id{};
    int deliveryMode = 0;
};

/// A real RabbitMQ broker on a port of the loopback address, with its own data folder. It runs from Start to
/// Stop; queues that are durable outlive that.
class Broker {
 public:
    Broker();
    ~Broker();
    Broker(const Broker&) = delete;
    Broker& operator=(const Broker&) = delete;

    int Port() const { return port_; }
    /// Waits until it serves; false when it does not, and then Output may tell why.
    bool Start();
    void Stop();
    std::string Output() const { return data_.Read("output"); }

    bool DeclareQueue(const std::string& name);
    bool DeleteQueue(const std::string& name);
    /// Waits up to half a minute for the next message, and takes it out of the queue.
    std::optional<BrokerMessage> Take(const std::string& queue);

 private:
    struct Destroy {
        void operator()(amqp_connection_state_t connection) const { amqp_destroy_connection(connection); }
    };

    int StartProgram(const char* program, const std::vector<std::string>& arguments,
                     const std::map<std::string, std::string>& variables);
    bool Connect();
    std::optional<BrokerMessage> TryToTake(const std::string& queue);

    TempFolder data_{};
    int port_;
    int mapperPort_;  // of the name service that the broker wants beside it
    int mapper_ = 0;
    int server_ = 0;
    std::unique_ptr<amqp_connection_state_t_, Destroy> connection_{};
};

}  // namespace nordkeep
