#pragma once

#include "platform/Files.h"

#include <memory>
#include <optional>
#include <string>

namespace nordkeep {

/// Where a broker is found and who calls there. All texts are UTF-8.
struct MqttAddress {
    std::string host{};
    int port = 1883;
    std::string client{};  // the name that the broker knows the program by
    std::string user{};
    std::string password{};
    // PEM files; empty for a plain connection, and where the broker asks for no certificate.
    NativePath caFile{};
    NativePath certificate{};
    NativePath key{};
    // What the broker publishes, retained, when the program is gone without a word.
    std::string willTopic{};
    std::string will{};
};

/// Told what happens on the connection, always from the loop.
class MqttListener {
 public:
    virtual ~MqttListener() = default;
    virtual void OnConnected() = 0;
    /// The connection could not be made, or has gone. What was not acknowledged may have arrived or not.
    virtual void OnLost(const std::string& reason) = 0;
    /// The broker has the message.
    virtual void OnAcknowledged(int message) = 0;
};

/// A connection to a message broker that nothing waits for.
class MqttClient {
 public:
    virtual ~MqttClient() = default;
    /// Begins to connect, with nothing left of an earlier connection; the listener is told how it went.
    virtual void Connect(const MqttAddress& address) = 0;
    /// Sends what it can without waiting, and closes. The listener is told nothing.
    virtual void Close() = 0;
    /// Sends with one acknowledgement; a number for it, or none when it cannot be sent.
    virtual std::optional<int> Publish(const std::string& topic, const std::string& payload,
                                       bool isRetained) = 0;
};

class MqttClients {
 public:
    virtual ~MqttClients() = default;
    virtual std::unique_ptr<MqttClient> NewClient(MqttListener& listener) = 0;
};

}  // namespace nordkeep
