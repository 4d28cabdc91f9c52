#include "quillboxd/crypto/signed_address.h"

#include <openssl/crypto.h>
#include <openssl/evp.h>
#include <openssl/hmac.h>

#include <algorithm>
#include <array>
#include <charconv>

#include "quillboxd/crypto/sha256.h"

namespace quillboxd {
namespace {

constexpr std::size_t signatureLength = 64;

/// Takes an address apart from the left; after the first thing that does not fit, nothing fits any more.
class Scanner {
  public:
    explicit Scanner(std::string_view text) : rest_(text) {}

    bool literal(std::string_view expected) {
        if (!rest_.starts_with(expected)) return false;
        rest_.remove_prefix(expected.size());
        return true;
    }

    bool number(std::int64_t& value) {
        if (rest_.empty() || rest_[0] < '1' || rest_[0] > '9') return false;
        const auto [end, error] = std::from_chars(rest_.data(), rest_.data() + rest_.size(), value);
        if (error != std::errc()) return false;
        rest_.remove_prefix(static_cast<std::size_t>(end - rest_.data()));
        return true;
    }

    bool signature(std::string& value) {
        value = rest_.substr(0, signatureLength);
        rest_.remove_prefix(value.size());
        return value.size() == signatureLength && std::all_of(value.begin(), value.end(), [](char c) {
                   return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f');
               });
    }

    bool atEnd() const { return rest_.empty(); }

  private:
    std::string_view rest_;
};

std::string unsignedText(const PartAddress& address) {
    return "/_part/" + std::to_string(address.file) + '/' + std::to_string(address.number) +
           "?expires=" + std::to_string(address.expires);
}

std::string unsignedText(const ContentAddress& address) {
    return "/_content/" + std::to_string(address.file) +
           (address.revision ? "/revision/" + std::to_string(address.revision) : "") +
           (address.share ? "/share/" + std::to_string(address.share) : "") +
           (address.inlineView ? "/inline" : "") + "?expires=" + std::to_string(address.expires);
}

}  // namespace

std::optional<PartAddress> parsePartAddress(std::string_view target) {
    PartAddress address;
    Scanner scan(target);
    const bool fits = scan.literal("/_part/") && scan.number(address.file) && scan.literal("/") &&
                      scan.number(address.number) && scan.literal("?expires=") &&
                      scan.number(address.expires) && scan.literal("&signature=") &&
                      scan.signature(address.signature) && scan.atEnd();
    return fits ? std::optional(std::move(address)) : std::nullopt;
}

std::optional<ContentAddress> parseContentAddress(std::string_view target) {
    ContentAddress address;
    Scanner scan(target);
    if (!scan.literal("/_content/") || !scan.number(address.file)) return std::nullopt;
    if (scan.literal("/revision/") && !scan.number(address.revision)) return std::nullopt;
    if (scan.literal("/share/") && !scan.number(address.share)) return std::nullopt;
    address.inlineView = scan.literal("/inline");
    const bool fits = scan.literal("?expires=") && scan.number(address.expires) &&
                      scan.literal("&signature=") && scan.signature(address.signature) && scan.atEnd();
    return fits ? std::optional(std::move(address)) : std::nullopt;
}

std::string AddressSigner::part(std::int64_t file, std::int64_t number, std::int64_t now) const {
    const auto text = unsignedText(PartAddress{file, number, now + lifetimeSeconds, {}});
    return text + "&signature=" + sign(text);
}

std::string AddressSigner::content(ContentAddress address, std::int64_t now) const {
    address.expires = now + lifetimeSeconds;
    const auto text = unsignedText(address);
    return text + "&signature=" + sign(text);
}

AddressSigner::Verdict AddressSigner::check(const PartAddress& address, std::int64_t now) const {
    return check(unsignedText(address), address.signature, address.expires, now);
}

AddressSigner::Verdict AddressSigner::check(const ContentAddress& address, std::int64_t now) const {
    return check(unsignedText(address), address.signature, address.expires, now);
}

AddressSigner::Verdict AddressSigner::check(std::string_view unsignedAddress, std::string_view signature,
                                            std::int64_t expires, std::int64_t now) const {
    const auto expected = sign(unsignedAddress);
    const bool same = signature.size() == expected.size() &&
                      CRYPTO_memcmp(signature.data(), expected.data(), expected.size()) == 0;
    if (!same) return Verdict::altered;
    return expires < now ? Verdict::expired : Verdict::valid;
}

std::string AddressSigner::sign(std::string_view unsignedAddress) const {
    Sha256::Digest mac;
    unsigned int length = 0;
    HMAC(EVP_sha256(), key_.data(), static_cast<int>(key_.size()),
         reinterpret_cast<const unsigned char*>(unsignedAddress.data()), unsignedAddress.size(), mac.data(),
         &length);
    return hex(mac);
}

}  // namespace quillboxd
