#pragma once

#include <cstdint>
#include <string>

struct sqlite3;

namespace nordkeep {

/// A file layer for databases whose write-ahead log gets each transaction in one write, where the library
/// makes two of every page. Nothing else is different: what has been gathered is written before anybody reads
/// the log, synchronises or shortens it, or asks for its length. `below` is the layer that it stands on,
/// empty for the system's own. The name of the layer; none when that below is not known.
std::string GatheredLogLayer(const std::string& below);

/// Lengthens the write-ahead log of a database opened through such a layer to `bytes` on the medium, so that
/// a transaction overwrites what is there: one that makes the file longer has to wait for the file system's
/// own records, too. What stands in the log stays. False when it is as long as before; nothing depends on it.
bool MakeRoomInLog(sqlite3* database, std::int64_t bytes);

}  // namespace nordkeep
