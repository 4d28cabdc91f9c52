#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace baseapi::inline v1::json {

/// Whether the text is a number by the grammar of JSON.
bool isNumber(std::string_view text);

/// The exact value of a JSON number that is an integer of 64 bits, however it is spelled (1.0, 1e3).
std::optional<std::int64_t> exactInteger(std::string_view number);

/// The value of a whole text of decimal digits with an optional sign.
std::optional<std::int64_t> parseInteger(std::string_view text);

}  // namespace baseapi::inline v1::json
