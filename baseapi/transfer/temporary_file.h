#pragma once

#include <filesystem>

namespace baseapi::inline v1 {

/// A file in a folder of its own that its owner alone can enter; both are gone with this object. The file
/// itself has the rights of any new file, so that it can be moved to its last place as it is.
class TemporaryFile {
  public:
    /// Throws `std::system_error` where the folder cannot be made.
    explicit TemporaryFile(const std::filesystem::path& parent);
    ~TemporaryFile();
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    /// Where the file lies once somebody has made it.
    std::filesystem::path path() const { return folder_ / "download"; }

  private:
    std::filesystem::path folder_;
};

/// Moves a file to its last place: makes the place's folder where there is none, removes what is there, and
/// moves. A failure throws `std::system_error` and leaves the steps before it done; half a file never stands
/// at the place.
void moveIntoPlace(const std::filesystem::path& file, const std::filesystem::path& place);

}  // namespace baseapi::inline v1
