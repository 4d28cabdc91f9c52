#pragma once

#include <string>
#include <string_view>

namespace quillboxd {

/// Lower-case text of UTF-8, letter by letter; what is no valid UTF-8 stays as it is.
std::string foldCase(std::string_view text);

}  // namespace quillboxd
