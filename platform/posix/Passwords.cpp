#include "platform/Passwords.h"

#include <crypt.h>

#include <cstdlib>
#include <cstring>
#include <memory>

namespace nordkeep {
namespace {

constexpr const char* kMethod = "$y$";
// A check takes some milliseconds, since the loop waits for it.
constexpr unsigned long kCost = 3;

struct Free {
    void operator()(char* bytes) const { std::free(bytes); }
};

/// Empty when the system cannot.
std::string Hash(const std::string& password, const char* setting) {
    void* work = nullptr;
    int size = 0;
    const char* const hash = ::crypt_ra(password.c_str(), setting, &work, &size);
    std::string result = hash ? hash : "";
    std::free(work);
    return result;
}

}  // namespace

bool IsPasswordHash(std::string_view text) {
    return text.starts_with(kMethod);
}

bool IsHashOf(const std::string& hash, const std::string& password) {
    const std::string made = Hash(password, hash.c_str());
    if (!IsPasswordHash(hash) || made.size() != hash.size()) return false;
    unsigned char difference = 0;
    for (std::size_t i = 0; i < hash.size(); ++i)
        difference = static_cast<unsigned char>(difference | (hash[i] ^ made[i]));
    return difference == 0;
}

std::optional<std::string> MakePasswordHash(const std::string& password) {
    const std::unique_ptr<char, Free> setting(::crypt_gensalt_ra(kMethod, kCost, nullptr, 0));
    if (!setting) return std::nullopt;
    std::string hash = Hash(password, setting.get());
    return IsPasswordHash(hash) ? std::optional(std::move(hash)) : std::nullopt;
}

}  // namespace nordkeep
