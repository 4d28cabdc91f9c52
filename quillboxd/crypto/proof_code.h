#pragma once

#include <cstdint>
#include <string_view>

namespace quillboxd {

/// The run of at most eight bytes of a file whose SHA-256 proves that its sender holds it.
struct ProofRange {
    std::int64_t offset = 0;
    std::int64_t length = 0;
};

/// The run that belongs to a session's token; `size` is more than 0.
ProofRange proofRange(std::string_view token, std::int64_t size);

}  // namespace quillboxd
