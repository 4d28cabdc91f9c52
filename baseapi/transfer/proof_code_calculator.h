#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "baseapi/core/url.h"

namespace baseapi::inline v1 {

enum class ProofCodeError { hashError, invalidHashLength, fileError };

/// What the log says of it.
std::string_view localizedDescription(ProofCodeError error);

/// The proof that a client really holds a file: the SHA-256 of at most eight of its bytes, at a place that
/// the session token names.
class ProofCodeCalculator {
  public:
    ProofCodeCalculator() = delete;

    /// 64 lower-case hexadecimal digits, or nothing where the file cannot be read or the token is not UTF-8;
    /// one log line then says why. The token may be empty. Callable from several threads at once.
    ///
    /// The place in an empty file does not exist: asking for it ends the process.
    static std::optional<std::string> calcProofCode(std::string_view token, const URL& file);
};

}  // namespace baseapi::inline v1
