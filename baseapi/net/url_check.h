#pragma once

#include <map>
#include <string>
#include <string_view>

namespace baseapi::inline v1 {

/// Whether the text is a URI or a relative reference by RFC 3986 as it stands. A space, a control character,
/// a byte outside ASCII, a broken percent sequence and any other character that the grammar does not allow at
/// its place make it none, so that no value can end a request line or add a header.
bool isURL(std::string_view text);

/// The URL with its query replaced by the items, escaped. The text must be a URL.
std::string withQueryItems(std::string_view url, const std::map<std::string, std::string>& items);

}  // namespace baseapi::inline v1
