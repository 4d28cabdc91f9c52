#pragma once

#include <chrono>
#include <cstdint>

namespace baseapi::inline v1 {

/// Whole seconds since 1970.
inline std::int64_t secondsSince1970() {
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::seconds>(now).count();
}

}  // namespace baseapi::inline v1
