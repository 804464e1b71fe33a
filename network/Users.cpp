#include "network/Users.h"

#include "platform/Passwords.h"
#include "runtime/Fields.h"

namespace nordkeep {

std::optional<LoginAnswer> CheckLogin(const Settings& files, const LoginRequest& request) {
    if (request.userName.empty()) return std::nullopt;
    const Text user =
        files.ReadIni("Users", request.userName, "", "Settings\\Users.INI").substr(0, kLongestUser);
    const Text password = GetField(user, 2, ",");
    const int level = LeadingInt32(GetField(user, 3, ","));
    if (password.empty() || level < 0) return std::nullopt;
    const bool isRight = IsPasswordHash(password) ? IsHashOf(ToUtf8(password), ToUtf8(request.password))
                                                  : EqualsNoCase(password, request.password);
    if (!isRight) return std::nullopt;
    return LoginAnswer{
        .level = level, .fullName = GetField(user, 0, ","), .initials = GetField(user, 1, ",")};
}

}  // namespace nordkeep
