#include "platform/AesCbc.h"

#include <openssl/evp.h>

#include <climits>
#include <memory>

namespace nordkeep {
namespace {

enum class Way { Encrypt, Decrypt };

const EVP_CIPHER* CipherFor(std::size_t keyLength) {
    switch (keyLength) {
        case 16:
            return EVP_aes_128_cbc();
        case 24:
            return EVP_aes_192_cbc();
        case 32:
            return EVP_aes_256_cbc();
        default:
            return nullptr;
    }
}

const unsigned char* BytesOf(TextView text) {
    return reinterpret_cast<const unsigned char*>(text.data());
}

Text Run(Way way, TextView key, TextView bytes) {
    constexpr unsigned char kStart[kAesBlock] = {};
    const EVP_CIPHER* cipher = CipherFor(key.size());
    if (cipher == nullptr || bytes.empty() || bytes.size() % kAesBlock != 0 || bytes.size() > INT_MAX)
        return {};
    const std::unique_ptr<EVP_CIPHER_CTX, decltype(&EVP_CIPHER_CTX_free)> context(EVP_CIPHER_CTX_new(),
                                                                                  &EVP_CIPHER_CTX_free);
    const int encrypts = way == Way::Encrypt ? 1 : 0;
    if (!context || EVP_CipherInit_ex(context.get(), cipher, nullptr, BytesOf(key), kStart, encrypts) != 1)
        return {};
    EVP_CIPHER_CTX_set_padding(context.get(), 0);
    Text result(bytes.size() + kAesBlock, '\0');
    int written = 0;
    auto* const out = reinterpret_cast<unsigned char*>(result.data());
    if (EVP_CipherUpdate(context.get(), out, &written, BytesOf(bytes), static_cast<int>(bytes.size())) != 1)
        return {};
    result.resize(static_cast<std::size_t>(written));
    return result;
}

}  // namespace

Text AesCbcEncrypt(TextView key, TextView plain) {
    return Run(Way::Encrypt, key, plain);
}

Text AesCbcDecrypt(TextView key, TextView cipher) {
    return Run(Way::Decrypt, key, cipher);
}

}  // namespace nordkeep
