#pragma once

#include <string>
#include <string_view>

namespace quillboxd {

/// Lower-case text of UTF-8, letter by letter; what is no valid UTF-8 stays as it is.
std::string foldCase(std::string_view text);

bool isUtf8(std::string_view text);

/// The text itself, or with "?" for every byte outside ASCII where it is no valid UTF-8.
std::string readable(std::string text);

}  // namespace quillboxd
