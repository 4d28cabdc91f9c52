#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "baseapi/platform/export.h"

namespace baseapi::inline v1 {

/// The address of a local file or of something on the network.
class BASEAPI_API URL {
  public:
    /// An address as text, such as "https://example.org/a". A text with the scheme "file" is a file's
    /// address; its percent sequences are decoded, all but "%00", which no path can hold.
    explicit URL(std::string_view text);

    /// The address of a local file; the path's bytes are taken as they are.
    static URL file(const std::filesystem::path& path);

    /// Whether the address is that of a local file.
    bool isFileURL() const { return isFile_; }
    /// The text as given, or the path of a file's address.
    const std::string& text() const { return text_; }
    /// The local path; empty for what is no file's address.
    std::filesystem::path path() const;
    /// The last component of the path, its percent sequences decoded, without a slash at its end; the path
    /// "/" is its own. Empty where there is no path.
    std::string lastPathComponent() const;
    /// What follows the last component's last dot, without it; empty where there is none, or where the dot
    /// comes first (".profile").
    std::string pathExtension() const;

    bool operator==(const URL&) const = default;

  private:
    URL() = default;

    std::string text_;
    bool isFile_ = false;
};

}  // namespace baseapi::inline v1
