#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace quillbox {

/// The text in valid UTF-8: what is not becomes U+FFFD, one for each byte.
std::string repairUtf8(std::string_view text);
bool isUtf8(std::string_view text);

/// The text in one line that does nothing to a terminal: control characters and marks that turn the direction
/// of writing are spelled out, as "\n" or "\u202e".
std::string harmless(std::string_view text);

/// How many columns of a terminal a harmless text takes.
std::size_t columns(std::string_view text);

/// At most `width` columns of a harmless text; what is cut away in its middle becomes one "…".
std::string shortened(std::string_view text, std::size_t width);

}  // namespace quillbox
