#include "baseapi/transfer/proof_code_calculator.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <exception>
#include <span>
#include <stdexcept>

#include "baseapi/core/log.h"
#include "baseapi/json/utf8.h"
#include "baseapi/platform/fatal_stop.h"
#include "baseapi/platform/sha256.h"
#include "baseapi/transfer/local_file.h"

namespace baseapi::inline v1 {
namespace {

constexpr std::int64_t proofLength = 8;

/// The place that the token names: bytes 24 to 31 of the hash of its hash's text, big-endian, the top bit
/// cleared.
std::int64_t placeOf(std::string_view token) {
    if (!isValidUTF8(token))
        throw std::runtime_error(std::string(localizedDescription(ProofCodeError::hashError)));
    const Sha256Digest digest = sha256(sha256Hex(token));
    std::uint64_t place = 0;
    for (std::size_t i = 24; i < 32; ++i) place = place << 8 | digest[i];
    return static_cast<std::int64_t>(place & INT64_MAX);
}

std::string proofCode(std::string_view token, const URL& url) {
    std::int64_t offset = placeOf(token);
    LocalFile file(url);
    const std::int64_t size = file.seekToEnd();
    if (size < offset) {
        if (size == 0) fatalStop("calcProofCode: division by zero, the file is empty");
        offset %= size;
    }
    std::array<char, proofLength> bytes;
    const auto wanted = static_cast<std::size_t>(std::min(proofLength, size - offset));
    if (wanted == 0) return sha256Hex({});
    return sha256Hex({bytes.data(), file.readAt(offset, bytes.data(), wanted)});
}

}  // namespace

std::string_view localizedDescription(ProofCodeError error) {
    switch (error) {
        case ProofCodeError::hashError:
            return "哈希计算失败";
        case ProofCodeError::invalidHashLength:
            return "哈希长度无效";
        case ProofCodeError::fileError:
            return "文件操作失败";
    }
    return "";
}

std::optional<std::string> ProofCodeCalculator::calcProofCode(std::string_view token, const URL& file) {
    try {
        return proofCode(token, file);
    } catch (const std::exception& error) {
        logLine("calcProofCode exception: ", error.what());
        return std::nullopt;
    }
}

}  // namespace baseapi::inline v1
