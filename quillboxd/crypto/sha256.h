#pragma once

#include <openssl/sha.h>

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace quillboxd {

/// SHA-256 whose eight state words can be read, and which can start from given ones.
class Sha256 {
  public:
    using State = std::array<std::uint32_t, 8>;
    using Digest = std::array<unsigned char, 32>;

    Sha256();

    /// Goes on where `bytes` bytes have led to `state`; `bytes` is a multiple of 64.
    static Sha256 resume(const State& state, std::uint64_t bytes);

    void update(std::string_view bytes);

    /// The state after the last whole block of 64 bytes.
    State state() const;

    /// The digest of all bytes so far; more may follow.
    Digest digest() const;

  private:
    SHA256_CTX context_;
};

Sha256::Digest sha256(std::string_view bytes);

/// Lower-case hexadecimal.
std::string hex(std::string_view bytes);
std::string hex(const Sha256::Digest& digest);

}  // namespace quillboxd
