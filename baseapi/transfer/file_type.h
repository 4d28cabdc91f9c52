#pragma once

#include <optional>
#include <string_view>

namespace baseapi::inline v1 {

/// What a file is, as its suffix says.
enum class FileType { folder, picture, video, word, excel, ppt, audio, archive, application, pdf, other };

/// The type's name, such as "picture".
std::string_view rawValue(FileType type);

/// The type of that name, or nothing where there is none.
std::optional<FileType> fileTypeOf(std::string_view rawValue);

/// The code that the service takes, such as "15". `pdf` and `other` share "45".
std::string_view fileTypeCode(FileType type);

}  // namespace baseapi::inline v1
