#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace baseapi::inline v1 {

/// A folder or a file that a walk has found. There may be a million of them: what the files of a folder have
/// in common is kept once.
struct FileDetailBean {
    std::string filePath;
    /// In bytes; 0 for a folder.
    std::int64_t fileSize = 0;
    bool isDirectory = false;
    /// The cloud path of the folder that it goes into; never null.
    std::shared_ptr<const std::string> cloudPath;

    /// The last component of the path; "root" for the root of the file system.
    std::string_view fileName() const;
};

}  // namespace baseapi::inline v1
