#pragma once

#include <filesystem>
#include <string_view>

namespace quillbox {

/// Writes a file that its owner alone can read, in place of an older one and whole or not at all; a missing
/// folder is made. Throws `std::filesystem::filesystem_error`.
void writePrivateFile(const std::filesystem::path& file, std::string_view content);

}  // namespace quillbox
