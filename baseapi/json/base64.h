#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace baseapi::inline v1::json {

std::string toBase64(std::string_view bytes);

/// The bytes behind a base 64 text; nothing where a character, the padding or the length is wrong.
std::optional<std::string> fromBase64(std::string_view text);

}  // namespace baseapi::inline v1::json
