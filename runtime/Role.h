#pragma once

namespace nordkeep {

/// What this copy is among the copies of a centre.
enum class Role { StandAlone, Server, Client };

}  // namespace nordkeep
