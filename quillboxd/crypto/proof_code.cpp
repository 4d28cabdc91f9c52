#include "quillboxd/crypto/proof_code.h"

#include <algorithm>

#include "quillboxd/crypto/sha256.h"

namespace quillboxd {

ProofRange proofRange(std::string_view token, std::int64_t size) {
    // The second hash runs over the hexadecimal text of the first one.
    const auto digest = sha256(hex(sha256(token)));
    std::uint64_t number = 0;
    for (std::size_t i = 24; i < 32; ++i) number = number << 8 | digest[i];
    auto offset = static_cast<std::int64_t>(number & 0x7fffffffffffffff);
    if (size < offset) offset %= size;
    return {offset, std::min<std::int64_t>(8, size - offset)};
}

}  // namespace quillboxd
