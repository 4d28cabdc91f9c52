#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace baseapi::inline v1 {

/// A file that is written under another name in the same folder, hidden and readable by its owner alone, and
/// then takes its place at once: at the place stands the old file or the whole new one. Where it never takes
/// its place it is gone with this object. What fails throws `std::system_error`.
class SideFile {
  public:
    explicit SideFile(std::filesystem::path place);
    ~SideFile();
    SideFile(SideFile&& other) noexcept;
    SideFile& operator=(SideFile&&) = delete;

    const std::filesystem::path& place() const { return place_; }

    /// Writes the whole content.
    void write(std::string_view content);
    /// Replaces what is at the place. Needs the content written.
    void takePlace();

  private:
    [[noreturn]] void fail() const;

    std::filesystem::path place_;
    std::string name_;
    int descriptor_;
};

}  // namespace baseapi::inline v1
