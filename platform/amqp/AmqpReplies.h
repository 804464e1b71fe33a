#pragma once

#include <amqp.h>

#include <optional>
#include <string>

namespace nordkeep {

/// What the broker or the library says has gone wrong; none when all is well.
std::optional<std::string> FailureOf(int status);
std::optional<std::string> FailureOf(const amqp_rpc_reply_t& reply);
/// None for a method that ends nothing.
std::optional<std::string> FailureOf(const amqp_method_t& method);

}  // namespace nordkeep
