#pragma once

#include <filesystem>

namespace quillbox {

/// A folder that its owner alone can look into, gone with all that it holds when this goes.
class PrivateFolder {
  public:
    /// Makes it in the folder `above`. Throws `UsageError` where it cannot.
    explicit PrivateFolder(const std::filesystem::path& above);
    PrivateFolder(const PrivateFolder&) = delete;
    PrivateFolder& operator=(const PrivateFolder&) = delete;
    ~PrivateFolder();

    const std::filesystem::path& path() const { return path_; }

  private:
    std::filesystem::path path_;
};

}  // namespace quillbox
