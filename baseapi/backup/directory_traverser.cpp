#include "baseapi/backup/directory_traverser.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <deque>
#include <memory>
#include <string_view>
#include <system_error>
#include <utility>

#include "baseapi/backup/path_text.h"
#include "baseapi/core/log.h"

namespace baseapi::inline v1 {
namespace {

/// A folder on the way from the root to where the walk is.
struct Ancestor {
    dev_t device = 0;
    ino_t inode = 0;
    std::shared_ptr<const Ancestor> parent;
};

struct Folder {
    std::string path;
    /// Of the folder that takes this one.
    std::shared_ptr<const std::string> cloudPath;
    std::shared_ptr<const Ancestor> parent;
};

struct CloseFolder {
    void operator()(DIR* listing) const { ::closedir(listing); }
};
using Listing = std::unique_ptr<DIR, CloseFolder>;

Listing openFolder(const std::string& path) {
    const int descriptor = ::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC | O_NONBLOCK);
    return Listing(descriptor < 0 ? nullptr : ::fdopendir(descriptor));
}

bool isFolder(const std::string& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

bool isThere(int error) {
    return error != ENOENT && error != ENOTDIR && error != ELOOP;
}

void logFailure(const std::string& folder, int error) {
    logLine("generateFileDetailBeans path failed : ", folder,
            ", error: ", std::generic_category().message(error));
}

class Walk {
  public:
    explicit Walk(const DirectoryTraverser::Found& found) : found_(found) {}

    void run(Folder root) {
        folders_.push_back(std::move(root));
        while (!folders_.empty()) {
            const Folder folder = std::move(folders_.front());
            folders_.pop_front();
            visit(folder);
        }
    }

  private:
    void visit(const Folder& folder) {
        const auto listing = openFolder(folder.path);
        const int error = errno;
        if (!listing && (!isThere(error) || !isFolder(folder.path))) return;
        const auto here = listing ? ancestorOf(listing.get(), folder.parent) : nullptr;
        if (here && cameThrough(*here))
            return logLine("generateFileDetailBeans link leads back : ", folder.path);
        FileDetailBean bean{folder.path, 0, true, folder.cloudPath};
        const auto cloudPath =
            std::make_shared<const std::string>(appendingPathComponent(*folder.cloudPath, bean.fileName()));
        found_(std::move(bean));
        if (!listing) return logFailure(folder.path, error);
        list(folder, listing.get(), cloudPath, here);
    }

    void list(const Folder& folder, DIR* listing, const std::shared_ptr<const std::string>& cloudPath,
              const std::shared_ptr<const Ancestor>& here) {
        for (errno = 0; const dirent* entry = ::readdir(listing); errno = 0) {
            const std::string_view name = entry->d_name;
            if (name == "." || name == "..") continue;
            if (entry->d_type == DT_DIR) {
                folders_.push_back({appendingPathComponent(folder.path, name), cloudPath, here});
                continue;
            }
            struct stat status {};
            if (::fstatat(::dirfd(listing), entry->d_name, &status, 0) != 0) {
                if (!isThere(errno)) continue;
                return logFailure(folder.path, errno);
            }
            auto path = appendingPathComponent(folder.path, name);
            if (S_ISDIR(status.st_mode))
                folders_.push_back({std::move(path), cloudPath, here});
            else
                found_({std::move(path), static_cast<std::int64_t>(status.st_size), false, cloudPath});
        }
        if (errno != 0) logFailure(folder.path, errno);
    }

    static std::shared_ptr<const Ancestor> ancestorOf(DIR* listing,
                                                      const std::shared_ptr<const Ancestor>& parent) {
        struct stat status {};
        ::fstat(::dirfd(listing), &status);
        return std::make_shared<const Ancestor>(Ancestor{status.st_dev, status.st_ino, parent});
    }

    static bool cameThrough(const Ancestor& here) {
        for (auto above = here.parent; above; above = above->parent)
            if (above->device == here.device && above->inode == here.inode) return true;
        return false;
    }

    const DirectoryTraverser::Found& found_;
    std::deque<Folder> folders_;
};

}  // namespace

std::string_view FileDetailBean::fileName() const {
    const auto name = lastPathComponent(filePath);
    return name.empty() ? "root" : name;
}

void DirectoryTraverser::generateFileDetailBeans(const std::string& rootPath,
                                                 const std::string& targetCloudPath, const Found& found) {
    if (!isFolder(rootPath)) return logLine("generateFileDetailBeans is not exist or folder : ", rootPath);
    Walk(found).run({rootPath, std::make_shared<const std::string>(targetCloudPath), nullptr});
}

}  // namespace baseapi::inline v1
