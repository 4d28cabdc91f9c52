#pragma once

#include <string>
#include <string_view>

namespace baseapi::inline v1 {

/// What follows the last slash, slashes at the end aside; empty for a path of slashes alone.
std::string_view lastPathComponent(std::string_view path);

/// The path with one more component, and without doubled slashes.
std::string appendingPathComponent(std::string_view path, std::string_view component);

}  // namespace baseapi::inline v1
