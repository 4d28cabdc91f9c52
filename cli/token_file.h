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
    /// `changed` runs on a thread of this object's or inside `look`, once for each change. Throws
    /// `UsageError` where the file cannot be read now; a file that cannot be read later leaves the last token
    /// in place.
    TokenFile(std::filesystem::path file, std::function<void(const std::string&)> changed);
    TokenFile(const TokenFile&) = delete;
    TokenFile& operator=(const TokenFile&) = delete;
    ~TokenFile();

    const std::string& initial() const { return initial_; }

    /// Looks at the file now, in place of waiting until the system tells of a change.
    void look();

  private:
    void watchFolder(const std::filesystem::path& folder) const;
    void follow();
    void handOver(const std::string& token);

    const std::filesystem::path file_;
    const std::function<void(const std::string&)> changed_;
    std::string initial_;
    int notify_ = -1;
    int stop_ = -1;

    std::mutex mutex_;
    std::string last_;
    struct stat seen_ {};

    std::thread thread_;
};

}  // namespace quillbox
