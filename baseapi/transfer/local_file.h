#pragma once

#include <cstdint>
#include <filesystem>

namespace baseapi::inline v1 {

/// A local file that is read. What fails throws `std::system_error` with the path and the system's words.
class LocalFile {
  public:
    /// Never waits for the other end of a pipe.
    explicit LocalFile(const std::filesystem::path& path);
    ~LocalFile();
    LocalFile(const LocalFile&) = delete;
    LocalFile& operator=(const LocalFile&) = delete;

    /// Moves to the end and gives its position.
    std::int64_t seekToEnd();
    void seek(std::int64_t offset);
    /// Reads up to `size` bytes; fewer only at the end of the file.
    std::size_t read(char* bytes, std::size_t size);

  private:
    [[noreturn]] void fail() const;

    std::filesystem::path path_;
    int descriptor_;
};

}  // namespace baseapi::inline v1
