#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quillboxd {

/// What `/_part/{file}/{number}?expires={seconds}&signature={hex}` says.
struct PartAddress {
    std::int64_t file = 0;
    std::int64_t number = 0;
    std::int64_t expires = 0;
    std::string signature;

    bool operator==(const PartAddress&) const = default;
};

/// What `/_content/{file}?expires={seconds}&signature={hex}` says; behind the file stand
/// `revision/{revision}` for what it held before, `share/{share}` for the visitor of a link, and `inline` for
/// a viewer.
struct ContentAddress {
    std::int64_t file = 0;
    std::int64_t revision = 0;  ///< 0: the newest
    std::int64_t share = 0;     ///< 0: none
    std::int64_t expires = 0;
    bool inlineView = false;
    std::string signature;

    bool operator==(const ContentAddress&) const = default;
};

/// Reads path and query of an address; nothing where a character differs from what this service writes.
std::optional<PartAddress> parsePartAddress(std::string_view target);
std::optional<ContentAddress> parseContentAddress(std::string_view target);

/// Signs addresses and knows its own again.
class AddressSigner {
  public:
    static constexpr std::int64_t lifetimeSeconds = 3600;

    explicit AddressSigner(std::string key) : key_(std::move(key)) {}

    /// Path and query, valid for `lifetimeSeconds` from `now` (seconds since 1970).
    std::string part(std::int64_t file, std::int64_t number, std::int64_t now) const;
    std::string content(ContentAddress address, std::int64_t now) const;

    enum class Verdict { valid, expired, altered };
    Verdict check(const PartAddress& address, std::int64_t now) const;
    Verdict check(const ContentAddress& address, std::int64_t now) const;

  private:
    std::string sign(std::string_view unsignedAddress) const;
    Verdict check(std::string_view unsignedAddress, std::string_view signature, std::int64_t expires,
                  std::int64_t now) const;

    std::string key_;
};

}  // namespace quillboxd
