#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "baseapi/api/records/files_create.h"
#include "cli/file_trail.h"
#include "cli/folder_causes.h"

namespace quillbox {

/// What a host sees of a backup of files while the library works: which file is meant by what happens, how
/// much has gone, and why a file failed. The library reports counts alone. Callable from any thread.
class BackupJournal {
  public:
    struct Failure {
        std::string file;
        /// The library has come to it.
        bool begun = false;
        /// Absent where it is not known.
        std::optional<std::string> cause;
    };
    struct Progress {
        std::int64_t bytes = 0;
        std::int64_t allBytes = 0;
        std::size_t files = 0;
        std::size_t allFiles = 0;
    };

    /// A file that the backup is going to send into the folder of this cloud path.
    void expect(std::string file, std::int64_t size, std::shared_ptr<const std::string> cloudPath);
    /// The library begins with a file on the calling thread.
    std::shared_ptr<FileTrail> begin(const std::string& file);
    /// A log line in pieces, on the thread that logs it.
    void read(std::span<const std::string_view> pieces);

    // Requests name a file by what the answer to its creation brought.
    void created(const std::shared_ptr<FileTrail>& trail, const baseapi::FilesCreateResponse& response);
    std::shared_ptr<FileTrail> trailOfId(const std::string& fileId);
    std::shared_ptr<FileTrail> trailOfPart(const std::string& url);
    /// So many more bytes of the file have gone, or fewer where a part has failed.
    void moved(FileTrail& trail, std::int64_t bytes);

    /// Told whenever there is progress, on the thread that brings it about; to be set before the start.
    std::function<void(const Progress&)> onProgress;

    /// Files that are expected and not there yet, by name.
    std::vector<Failure> failures() const;
    /// What the walk has left out and why, in one line each.
    std::set<std::string> leftOut() const;

  private:
    /// A file, which goes up once for each scope that it stands in.
    struct Entry {
        std::int64_t size = 0;
        /// Where those that have not begun go.
        std::vector<std::shared_ptr<const std::string>> waiting;
        /// Of those that have begun and not succeeded.
        std::vector<std::shared_ptr<FileTrail>> trails;
    };
    using Trails = std::unordered_map<std::string, std::weak_ptr<FileTrail>>;

    void readOfWalk(std::string_view line);
    void succeeded(const std::shared_ptr<FileTrail>& trail);
    void tellProgress() const;
    std::optional<std::string> folderCause(const std::string& cloudPath) const;
    std::shared_ptr<FileTrail> take(Trails& trails, const std::string& key);

    mutable std::mutex mutex_;
    std::unordered_map<std::string, Entry> entries_;
    Progress progress_;
    Trails byId_;
    Trails byPart_;
    FolderCauses folders_;
    std::set<std::string> leftOut_;
};

}  // namespace quillbox
