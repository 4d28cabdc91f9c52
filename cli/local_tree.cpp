#include "cli/local_tree.h"

#include <sys/stat.h>

#include <algorithm>
#include <numeric>
#include <system_error>
#include <utility>

namespace quillbox {
namespace {

namespace fs = std::filesystem;

struct Identity {
    dev_t device;
    ino_t inode;
    bool operator==(const Identity&) const = default;
};

class Walk {
  public:
    void add(fs::path path, std::string label, std::optional<std::size_t> parent) {
        struct stat status {};
        const bool found = ::stat(path.c_str(), &status) == 0;
        LocalItem item{std::move(path), std::move(label), parent};
        item.isFolder = found && S_ISDIR(status.st_mode);
        if (found && S_ISREG(status.st_mode)) item.size = status.st_size;
        items_.push_back(std::move(item));
        if (items_.back().isFolder) addFolder(items_.size() - 1, {status.st_dev, status.st_ino});
    }

    std::vector<LocalItem> take() { return std::move(items_); }

  private:
    void addFolder(std::size_t folder, Identity identity) {
        if (std::find(above_.begin(), above_.end(), identity) != above_.end()) {
            items_[folder].problem = "it leads back to a folder above it";
            return;
        }
        above_.push_back(identity);
        for (auto& path : entries(folder)) {
            auto label = items_[folder].label + "/" + path.filename().string();
            add(std::move(path), std::move(label), folder);
        }
        above_.pop_back();
    }

    std::vector<fs::path> entries(std::size_t folder) {
        std::vector<fs::path> paths;
        std::error_code error;
        for (fs::directory_iterator entry(items_[folder].path, error), end; !error && entry != end;
             entry.increment(error))
            paths.push_back(entry->path());
        if (error) items_[folder].problem = "the folder cannot be read: " + error.message();
        std::sort(paths.begin(), paths.end(),
                  [](const fs::path& left, const fs::path& right) { return left.native() < right.native(); });
        return paths;
    }

    std::vector<LocalItem> items_;
    std::vector<Identity> above_;
};

}  // namespace

std::string LocalItem::name() const {
    if (const auto last = path.filename(); !last.empty() && last != "." && last != "..") return last.string();
    // "folder/", "." and ".." have their name elsewhere.
    std::error_code error;
    const auto whole = fs::canonical(path, error);
    return error ? path.string() : whole.filename().string();
}

std::vector<LocalItem> listLocal(const std::vector<std::string>& paths) {
    Walk walk;
    for (const auto& path : paths) walk.add(path, path, std::nullopt);
    return walk.take();
}

std::int64_t bytesOf(const std::vector<LocalItem>& items) {
    return std::accumulate(items.begin(), items.end(), std::int64_t{0},
                           [](std::int64_t sum, const LocalItem& item) { return sum + item.size; });
}

}  // namespace quillbox
