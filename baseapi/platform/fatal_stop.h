#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace baseapi::inline v1 {

/// Ends the process with `text` on standard error: a value that must not be absent was, which is a
/// programming error.
[[noreturn]] void fatalStop(std::string_view text);

/// A value that the caller must give.
template <class T>
const T& given(const std::optional<T>& value, std::string_view name) {
    if (!value) fatalStop(std::string(name) + " is absent");
    return *value;
}

}  // namespace baseapi::inline v1
