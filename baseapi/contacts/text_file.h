#pragma once

#include <cstddef>
#include <filesystem>
#include <memory>
#include <string_view>

namespace baseapi::inline v1 {

/// Throws `std::runtime_error` with the path for what is no UTF-8 text.
void requireUTF8(std::string_view text, const std::filesystem::path& path);

/// A whole file of UTF-8 text in memory.
class TextFile {
  public:
    /// Throws `std::exception` for what is no readable regular file or no UTF-8.
    explicit TextFile(const std::filesystem::path& path);

    std::string_view text() const { return {bytes_.get(), size_}; }

  private:
    std::unique_ptr<char[]> bytes_;
    std::size_t size_;
};

}  // namespace baseapi::inline v1
