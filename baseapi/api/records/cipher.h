#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "baseapi/json/record.h"

namespace baseapi::inline v1 {

/// An encrypted key.
struct Keychain {
    std::optional<std::string> id;
    std::optional<std::int64_t> type;
    std::optional<std::string> algorithm;
    std::optional<std::string> ekey;

    BASEAPI_FIELDS(Keychain, id, type, algorithm, ekey)
};

/// How an asset is encrypted.
struct Cipher {
    std::optional<std::string> algorithm;
    std::optional<std::string> hfek;
    std::optional<std::string> iv;
    std::optional<std::int64_t> dataType;
    std::optional<std::vector<Keychain>> keychains;

    BASEAPI_FIELDS(Cipher, algorithm, hfek, iv, dataType, keychains)
};

}  // namespace baseapi::inline v1
