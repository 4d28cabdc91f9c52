#pragma once

#include <string_view>

namespace baseapi::inline v1 {

/// Whether the bytes are UTF-8 text; the empty text is.
bool isValidUTF8(std::string_view bytes);

}  // namespace baseapi::inline v1
