#pragma once

#include <cstdint>
#include <string>

#include "baseapi/core/url.h"

namespace baseapi::inline v1 {

/// A local file that is read. What fails throws `std::system_error` with the path and the system's words.
class LocalFile {
  public:
    /// Never waits for the other end of a pipe.
    explicit LocalFile(std::string path);
    /// The same; what is no file's address is not found.
    explicit LocalFile(const URL& file);
    ~LocalFile();
    LocalFile(const LocalFile&) = delete;
    LocalFile& operator=(const LocalFile&) = delete;

    /// Where the file ends, also of what is no regular file. Reading goes on there.
    std::int64_t seekToEnd();
    /// Reads up to `size` bytes; fewer only at the end of the file.
    std::size_t read(char* bytes, std::size_t size);
    /// The same from this place, wherever reading would go on.
    std::size_t readAt(std::int64_t offset, char* bytes, std::size_t size) const;

  private:
    template <class ReadSome>
    std::size_t readAll(std::size_t size, ReadSome readSome) const;
    [[noreturn]] void fail() const;

    std::string path_;
    int descriptor_;
};

}  // namespace baseapi::inline v1
