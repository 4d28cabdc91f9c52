#pragma once

#include <map>
#include <mutex>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace quillbox {

/// Why folders could not be made in the cloud, read from the library's log lines as they pass; the library
/// makes one folder after the other. Callable from any thread.
class FolderCauses {
  public:
    /// One log line in pieces.
    void read(std::span<const std::string_view> pieces);
    /// Why the folder of this cloud path, or one above it, could not be made; absent where that is not known.
    std::optional<std::string> causeFor(std::string cloudPath) const;
    /// The cause of the topmost folder that could not be made.
    std::optional<std::string> cause() const;

  private:
    void readWhole(std::string_view line);
    void say(std::string cause);

    mutable std::mutex mutex_;
    /// The one that is being made.
    std::string folder_;
    std::map<std::string, std::string> causes_;
};

}  // namespace quillbox
