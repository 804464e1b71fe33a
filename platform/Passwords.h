#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace nordkeep {

/// The text is a hash that MakePasswordHash has made, and not a password.
bool IsPasswordHash(std::string_view text);
/// Whether the hash is of this password, exactly as typed, in UTF-8. Takes some milliseconds.
bool IsHashOf(const std::string& hash, const std::string& password);
/// A hash with a salt of its own, about 75 characters without a comma; none when the system makes none.
std::optional<std::string> MakePasswordHash(const std::string& password);

}  // namespace nordkeep
