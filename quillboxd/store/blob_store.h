#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <string_view>

#include "quillboxd/unique_fd.h"

namespace quillboxd {

class BlobStore;

/// A blob that is open: its bytes stand in the file from `base` on.
struct OpenBlob {
    UniqueFd file;
    std::int64_t base = 0;
};

/// Bytes on their way into the store: they go away with the writer unless they are kept.
class BlobWriter {
  public:
    BlobWriter(BlobStore& store, std::string id, OpenBlob blob);
    BlobWriter(const BlobWriter&) = delete;
    BlobWriter& operator=(const BlobWriter&) = delete;
    ~BlobWriter();

    void write(std::string_view bytes);
    const std::string& id() const { return id_; }
    void keep() { kept_ = true; }

  private:
    BlobStore& store_;
    std::string id_;
    OpenBlob blob_;
    std::int64_t written_ = 0;
    bool kept_ = false;
};

/// Keeps runs of bytes that never change: plain files below a folder, or regions of one file in memory.
/// A blob counts only once the database names it; what it does not name is swept away at the start.
class BlobStore {
  public:
    /// An empty path keeps the bytes in memory.
    explicit BlobStore(std::filesystem::path folder);

    /// No more than `size` bytes will be written.
    BlobWriter create(std::int64_t size);
    OpenBlob open(const std::string& id) const;
    void remove(const std::string& id);
    void clear();
    void removeAllBut(const std::set<std::string>& used);

  private:
    bool inMemory() const { return folder_.empty(); }

    struct Region {
        std::int64_t base = 0;
        std::int64_t size = 0;
    };

    OpenBlob openRegion(const Region& region) const;
    void freeRegion(const Region& region);

    std::filesystem::path folder_;
    mutable std::mutex mutex_;
    UniqueFd memory_;
    std::map<std::string, Region> regions_;
    std::int64_t nextBase_ = 0;
};

}  // namespace quillboxd
