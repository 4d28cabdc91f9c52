#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace baseapi::inline v1 {

/// The bytes of an answer of status 206, from `first` to `last` inclusive.
struct ContentRange {
    std::int64_t first = 0;
    std::int64_t last = 0;
    /// Absent where the service does not know it.
    std::optional<std::int64_t> total;
};

/// Reads "bytes 0-99/200" or "bytes 0-99/*"; absent for anything else.
std::optional<ContentRange> parseContentRange(std::string_view text);

}  // namespace baseapi::inline v1
