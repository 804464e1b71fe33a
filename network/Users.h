#pragma once

#include "network/messages/Messages.h"
#include "runtime/Settings.h"

namespace nordkeep {

/// So much of a user's line is read.
inline constexpr std::size_t kLongestUser = 128;

/// Holds a name and password against the users file of the server, section Users:
/// "user name=full name,initials,password,level". The password stands there as a hash, which is of what was
/// typed to the letter, or plain, and then without regard to case. None when refused: an unknown or empty
/// name, a user without a password, a wrong one, a level below 0.
std::optional<LoginAnswer> CheckLogin(const Settings& files, const LoginRequest& request);

}  // namespace nordkeep
