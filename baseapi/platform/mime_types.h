#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace baseapi::inline v1 {

/// The MIME type that the shared MIME database of this machine gives to file names with this suffix ("jpg",
/// without the dot, in any letter case); absent where it knows none.
std::optional<std::string> mimeTypeOfSuffix(std::string_view suffix);

}  // namespace baseapi::inline v1
