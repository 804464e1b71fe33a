#pragma once

#include <string>

namespace nordkeep {

/// A file layer for databases whose write-ahead log gets each transaction in one write, where the library
/// makes two of every page. Nothing else is different: what has been gathered is written before anybody reads
/// the log, synchronises or shortens it, or asks for its length. `below` is the layer that it stands on,
/// empty for the system's own. The name of the layer; none when that below is not known.
std::string GatheredLogLayer(const std::string& below);

}  // namespace nordkeep
