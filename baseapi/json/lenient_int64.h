#pragma once

#include <cstdint>

namespace baseapi::inline v1 {

/// An integer that the service sends as a number or as a string of decimal digits. Anything else, a missing
/// key included, reads as 0; it is written as a number.
struct LenientInt64 {
    std::int64_t value = 0;
    bool operator==(const LenientInt64&) const = default;
};

}  // namespace baseapi::inline v1
