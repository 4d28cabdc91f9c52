#pragma once

#include <cstddef>
#include <cstdint>
#include <new>
#include <utility>

namespace baseapi::inline v1 {

/// The size of an object of so many bytes; throws `std::bad_alloc` where no object of this machine is as
/// large.
inline std::size_t memorySize(std::uint64_t bytes) {
    if (!std::in_range<std::ptrdiff_t>(bytes)) throw std::bad_alloc();
    return static_cast<std::size_t>(bytes);
}

}  // namespace baseapi::inline v1
