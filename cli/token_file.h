#pragma once

#include <sys/stat.h>

#include <filesystem>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <thread>

namespace quillbox {

/// The first line of a file without its end; absent where the file cannot be read.
std::optional<std::string> firstLine(const std::filesystem::path& file);

/// Watches a token file and hands over its first line each time that it has changed.
class TokenFile {
  public:
    /// `changed` runs for the token that is there now before this returns, then on a thread of this object's
    /// or inside `look`, once for each change. Throws `UsageError` where the file cannot be read now; a file
    /// that cannot be read later, or is empty then, leaves the last token in place.
    TokenFile(std::filesystem::path file, std::function<void(const std::string&)> changed);
    TokenFile(const TokenFile&) = delete;
    TokenFile& operator=(const TokenFile&) = delete;
    ~TokenFile();

    /// Looks at the file now, in place of waiting until the system tells of a change.
    void look();

  private:
    bool watch() const;
    bool watchFolder(const std::filesystem::path& folder) const;
    void follow(int lookEveryMilliseconds);
    void read(const struct stat& now);

    const std::filesystem::path file_;
    const std::function<void(const std::string&)> changed_;
    int notify_ = -1;
    int stop_ = -1;

    std::mutex mutex_;
    std::string last_;
    struct stat seen_ {};

    std::thread thread_;
};

}  // namespace quillbox
