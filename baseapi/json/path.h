#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace baseapi::inline v1::json {

/// Puts one more step in front of a path, which grows from the inside out as a failure is handed up.
void prependKey(std::string& path, std::string_view key);
void prependIndex(std::string& path, std::size_t index);

}  // namespace baseapi::inline v1::json
