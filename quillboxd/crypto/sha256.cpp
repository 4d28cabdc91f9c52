// The state words are in reach only through the low-level functions, which OpenSSL 3 marks as deprecated.
#define OPENSSL_SUPPRESS_DEPRECATED

#include "quillboxd/crypto/sha256.h"

#include <algorithm>
#include <iterator>

namespace quillboxd {

Sha256::Sha256() {
    SHA256_Init(&context_);
}

Sha256 Sha256::resume(const State& state, std::uint64_t bytes) {
    Sha256 hash;
    std::copy(state.begin(), state.end(), std::begin(hash.context_.h));
    const std::uint64_t bits = bytes * 8;
    hash.context_.Nl = static_cast<SHA_LONG>(bits);
    hash.context_.Nh = static_cast<SHA_LONG>(bits >> 32);
    return hash;
}

void Sha256::update(std::string_view bytes) {
    SHA256_Update(&context_, bytes.data(), bytes.size());
}

Sha256::State Sha256::state() const {
    State state;
    std::copy(std::begin(context_.h), std::end(context_.h), state.begin());
    return state;
}

Sha256::Digest Sha256::digest() const {
    SHA256_CTX copy = context_;
    Digest digest;
    SHA256_Final(digest.data(), &copy);
    return digest;
}

Sha256::Digest sha256(std::string_view bytes) {
    Sha256 hash;
    hash.update(bytes);
    return hash.digest();
}

std::string hex(std::string_view bytes) {
    static constexpr char digits[] = "0123456789abcdef";
    std::string text;
    text.reserve(bytes.size() * 2);
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        text += digits[byte >> 4];
        text += digits[byte & 15];
    }
    return text;
}

std::string hex(const Sha256::Digest& digest) {
    return hex(std::string_view(reinterpret_cast<const char*>(digest.data()), digest.size()));
}

}  // namespace quillboxd
