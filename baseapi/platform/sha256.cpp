#include "baseapi/platform/sha256.h"

#include <openssl/evp.h>

#include "baseapi/platform/fatal_stop.h"
#include "baseapi/platform/openssl_setup.h"

namespace baseapi::inline v1 {

Sha256Digest sha256(std::string_view bytes) {
    setUpOpenSsl();
    // Fetched once: looking the algorithm up takes longer than hashing a short text.
    static const EVP_MD* const algorithm = EVP_MD_fetch(nullptr, "SHA256", nullptr);
    Sha256Digest digest;
    if (!EVP_Digest(bytes.data(), bytes.size(), digest.data(), nullptr, algorithm, nullptr)) {
        fatalStop("libcrypto has no SHA-256");
    }
    return digest;
}

std::string sha256Hex(std::string_view bytes) {
    constexpr std::string_view kDigits = "0123456789abcdef";
    std::string hex;
    hex.reserve(64);
    for (const auto byte : sha256(bytes)) {
        hex += kDigits[byte >> 4];
        hex += kDigits[byte & 15];
    }
    return hex;
}

}  // namespace baseapi::inline v1
