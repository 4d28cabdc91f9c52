#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <mutex>
#include <set>
#include <string>
#include <string_view>

#include "quillboxd/unique_fd.h"

namespace quillboxd {

class BlobStore;

/// Bytes on their way into the store: they go away with the writer unless they are kept.
class BlobWriter {
  public:
    BlobWriter(BlobStore& store, std::string id, UniqueFd file);
    BlobWriter(const BlobWriter&) = delete;
    BlobWriter& operator=(const BlobWriter&) = delete;
    ~BlobWriter();

    void write(std::string_view bytes);
    const std::string& id() const { return id_; }
    void keep() { kept_ = true; }

  private:
    BlobStore& store_;
    std::string id_;
    UniqueFd file_;
    bool kept_ = false;
};

/// Keeps runs of bytes that never change: plain files below a folder, or files in memory.
/// A blob counts only once the database names it; what it does not name is swept away at the start.
class BlobStore {
  public:
    /// An empty path keeps the bytes in memory.
    explicit BlobStore(std::filesystem::path folder);

    BlobWriter create();
    UniqueFd open(const std::string& id) const;
    void remove(const std::string& id);
    void clear();
    void removeAllBut(const std::set<std::string>& used);

  private:
    std::filesystem::path pathOf(const std::string& id) const;
    bool inMemory() const { return folder_.empty(); }

    std::filesystem::path folder_;
    mutable std::mutex mutex_;
    std::map<std::string, UniqueFd> memory_;
};

}  // namespace quillboxd
