#pragma once

#include "platform/MessageQueue.h"

#include <optional>

namespace nordkeep {

/// The queue that MSMQFormatName names: "amqp://[user[:password]@]host[:port]/[vhost/]queue" with percent
/// escapes, "DIRECT=TCP:host[:port]\[PRIVATE$\]queue" or "DIRECT=OS:host\[PRIVATE$\]queue", where "." is this
/// machine. None for anything else.
std::optional<QueueAddress> ParseQueueAddress(TextView formatName);

}  // namespace nordkeep
