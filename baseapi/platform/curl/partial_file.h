#pragma once

#include <cstdint>
#include <filesystem>
#include <string_view>

namespace baseapi::inline v1 {

/// The file that a download is written to. What fails throws std::runtime_error with the cause in words.
class PartialFile {
  public:
    PartialFile() = default;
    ~PartialFile() { close(); }
    PartialFile(const PartialFile&) = delete;
    PartialFile& operator=(const PartialFile&) = delete;

    /// Opens the file at its end, and makes it where it does not exist.
    void open(const std::filesystem::path& path);
    std::int64_t size() const { return size_; }
    void append(std::string_view bytes);
    /// Makes it empty.
    void clear();
    void close();

  private:
    [[noreturn]] void fail() const;

    std::filesystem::path path_;
    int descriptor_ = -1;
    std::int64_t size_ = 0;
};

}  // namespace baseapi::inline v1
