#include "baseapi/json/base64.h"

#include <openssl/evp.h>

#include <algorithm>
#include <limits>

namespace baseapi::inline v1::json {
namespace {

constexpr std::string_view alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
/// libcrypto counts in int.
constexpr std::size_t maxSize = std::numeric_limits<int>::max() / 2;

const unsigned char* bytesOf(std::string_view text) {
    return reinterpret_cast<const unsigned char*>(text.data());
}
unsigned char* bytesOf(std::string& text) {
    return reinterpret_cast<unsigned char*>(text.data());
}

}  // namespace

std::string toBase64(std::string_view bytes) {
    std::string text;
    // Pieces of whole groups of three join without padding between them.
    constexpr std::size_t piece = 3U << 20;
    for (; !bytes.empty(); bytes.remove_prefix(std::min(piece, bytes.size()))) {
        const std::string_view part = bytes.substr(0, piece);
        const std::size_t before = text.size();
        text.resize(before + (part.size() + 2) / 3 * 4 + 1);  // libcrypto writes a closing zero
        const int written =
            EVP_EncodeBlock(bytesOf(text) + before, bytesOf(part), static_cast<int>(part.size()));
        text.resize(before + static_cast<std::size_t>(written));
    }
    return text;
}

std::optional<std::string> fromBase64(std::string_view text) {
    // libcrypto passes over white space and counts padding as bytes, so both are looked at here.
    const std::size_t padding = text.ends_with("==") ? 2 : text.ends_with('=') ? 1 : 0;
    if (text.size() % 4 != 0 || text.size() > maxSize) return std::nullopt;
    if (text.substr(0, text.size() - padding).find_first_not_of(alphabet) != text.npos) return std::nullopt;
    std::string bytes(text.size() / 4 * 3, '\0');
    if (EVP_DecodeBlock(bytesOf(bytes), bytesOf(text), static_cast<int>(text.size())) < 0)
        return std::nullopt;
    bytes.resize(bytes.size() - padding);
    return bytes;
}

}  // namespace baseapi::inline v1::json
