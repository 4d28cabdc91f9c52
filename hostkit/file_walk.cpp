#include "hostkit/file_walk.h"

#include <sys/stat.h>

#include <algorithm>
#include <system_error>
#include <utility>
#include <vector>

namespace hostkit {
namespace {

namespace fs = std::filesystem;
using Identity = std::pair<dev_t, ino_t>;

class Walk {
  public:
    explicit Walk(const FileVisitor& visitor) : visitor_(visitor) {}

    void enter(const fs::path& folder) {
        struct stat status {};
        if (::stat(folder.c_str(), &status) != 0) return fail(folder, {errno, std::generic_category()});
        const Identity identity(status.st_dev, status.st_ino);
        if (std::ranges::find(above_, identity) != above_.end()) return;
        above_.push_back(identity);
        // The listing is closed by then, however deep the folders go.
        for (const auto& inner : list(folder)) enter(inner);
        above_.pop_back();
    }

  private:
    /// Visits what is no folder, and returns the folders.
    std::vector<fs::path> list(const fs::path& folder) {
        std::vector<fs::path> folders;
        std::error_code error;
        for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
             entry.increment(error)) {
            std::error_code ignored;
            if (entry->is_directory(ignored))
                folders.push_back(entry->path());
            else
                visitor_.file(entry->path());
        }
        if (error) fail(folder, error);
        return folders;
    }

    void fail(const fs::path& folder, std::error_code error) { visitor_.unreadable(folder, error.message()); }

    const FileVisitor& visitor_;
    /// The folders on the way from the root.
    std::vector<Identity> above_;
};

}  // namespace

void walkFiles(const fs::path& root, const FileVisitor& visitor) {
    Walk(visitor).enter(root);
}

}  // namespace hostkit
