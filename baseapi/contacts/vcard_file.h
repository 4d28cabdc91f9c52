#pragma once

#include <filesystem>

#include "baseapi/contacts/vcard_parser.h"

namespace baseapi::inline v1 {

/// The same as `parseVCardText` of the whole file, with only a piece of it in memory at any time. Throws
/// `std::exception` for what is no readable regular file, and where it comes to what is no UTF-8.
void parseVCardFile(const std::filesystem::path& path, const FoundContact& found);

}  // namespace baseapi::inline v1
