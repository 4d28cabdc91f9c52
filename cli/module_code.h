#pragma once

/// The codes by which the service tells the backups of a device apart.
namespace quillbox::module_code {

inline constexpr const char* dirs = "100";
inline constexpr const char* album = "101";
inline constexpr const char* contacts = "102";

}  // namespace quillbox::module_code
